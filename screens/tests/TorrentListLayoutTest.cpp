#include "ListWindow.h"

namespace seedmote {
namespace {

using platform::Idiom;

const char* const kTorrents =
    R"({"id":1,"name":"debian-12.5.0-amd64-netinst.iso","status":6,"percentDone":1,"totalSize":658505728,"uploadedEver":1934217216,"rateUpload":348160},)"
    R"({"id":2,"name":"A name that is a good deal longer than the others and has to be cut off somewhere on a small screen.bin","status":4,"percentDone":0.43,"totalSize":1099511627776,"uploadedEver":1099511627776,"rateDownload":12345678,"rateUpload":1234567},)"
    R"({"id":3,"name":"日本語のとても長い名前のトレントファイル・第十二巻・完全版.tar.gz","status":2,"percentDone":0.87,"totalSize":73400320},)"
    R"({"id":4,"name":"مجموعة الصور العائلية من الصيف الماضي","status":0,"percentDone":0.02,"totalSize":5368709120},)"
    R"({"id":5,"name":"finished-and-paused.tar.xz","status":0,"percentDone":1,"totalSize":41943040,"uploadedEver":1024},)"
    R"({"id":6,"name":"waiting for its turn","status":3,"percentDone":0,"totalSize":734003200},)"
    R"({"id":7,"name":"No peers yet <b>&amp;","status":4,"percentDone":0.999,"totalSize":734003200})";

class TorrentListLayout : public ListWindow {
 protected:
  explicit TorrentListLayout(Idiom idiom) : ListWindow(idiom) { torrents = kTorrents; }

  QQuickItem* iconOf(std::int64_t id) {
    for (QQuickItem* item : window.contentItem()->findChildren<QQuickItem*>()) {
      const auto* torrent = item->property("torrent").value<RVTorrentListCell*>();
      if (item->inherits("seedmote::platform::SharpImage") && torrent != nullptr &&
          torrent->torrentidx() == id) {
        return item;
      }
    }
    return nullptr;
  }

  // Labels of the visible rows that reach into each other or out of their row.
  void expectNoCollisions() {
    showAll();
    std::vector<std::string> found;
    bool any = false;
    for (QQuickItem* row : window.contentItem()->findChildren<QQuickItem*>()) {
      if (!row->property("torrent").isValid() || !row->property("cell").isValid() || !row->isVisible()) {
        continue;
      }
      any = true;
      std::vector<std::pair<QRectF, std::string>> texts;
      for (QQuickItem* item : row->findChildren<QQuickItem*>()) {
        const std::string text = item->property("text").toString().toStdString();
        if (text.empty()) {
          continue;
        }
        const QRectF place = item->mapRectToItem(
            row, {0, 0, std::min(item->width(), item->property("contentWidth").toDouble()), item->height()});
        if (!QRectF(0, 0, row->width(), row->height()).contains(place)) {
          found.push_back(text + " leaves its row");
        }
        for (const auto& [other, what] : texts) {
          // Lines may share the air around their letters.
          if (place.adjusted(0, 2, 0, -2).intersects(other.adjusted(0, 2, 0, -2))) {
            found.push_back(text + " over " + what);
          }
        }
        texts.emplace_back(place, text);
      }
    }
    EXPECT_TRUE(any);
    EXPECT_THAT(found, testing::IsEmpty());
  }
};

class TabletLayoutTest : public TorrentListLayout {
 protected:
  TabletLayoutTest() : TorrentListLayout(Idiom::tablet) {}
};

class PhoneLayoutTest : public TorrentListLayout {
 protected:
  PhoneLayoutTest() : TorrentListLayout(Idiom::phone) {}
};

TEST_F(TabletLayoutTest, NothingOverlaps) {
  expectNoCollisions();
}

TEST_F(PhoneLayoutTest, NothingOverlaps) {
  expectNoCollisions();
}

TEST_F(PhoneLayoutTest, CutsNoFiguresOnANarrowScreen) {
  torrents = R"({"id":1,"status":4,"percentDone":1,"totalSize":690487296,"uploadedEver":1934217216,)"
             R"("rateDownload":12345678,"rateUpload":348160})";
  showAll();
  for (const double width : {288.0, 419.0}) {
    controller->view()->setFrame({0, 0, width, 355});
    for (QQuickItem* item : list->findChildren<QQuickItem*>()) {
      EXPECT_FALSE(item->property("truncated").toBool()) << item->property("text").toString().toStdString();
    }
  }
}

TEST_F(PhoneLayoutTest, SaysWhyItIsEmpty) {
  controller->viewDidLoad();
  showWindow();
  const QList<QQuickItem*> items = window.contentItem()->findChildren<QQuickItem*>();
  EXPECT_TRUE(std::any_of(items.begin(), items.end(), [&](QQuickItem* item) {
    return item->isVisible() && item->property("text").toString() == controller->emptyState();
  }));
}

TEST_F(TabletLayoutTest, ATapSelectsAndTheIconShakes) {
  showAll();
  QTest::mouseClick(&window, Qt::LeftButton, {}, {300, 78 + 40});
  settle();
  EXPECT_EQ(RVTrans::getTorrentSelection(), 2);
  EXPECT_EQ(lines.count("touch begin"), 1);
  EXPECT_EQ(lines.count("touch end"), 1);
  QQuickItem* icon = iconOf(2);
  ASSERT_NE(icon, nullptr);
  EXPECT_TRUE(QTest::qWaitFor([&] { return icon->rotation() > 1; }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return icon->rotation() < -1; }));
  EXPECT_LE(std::abs(icon->rotation()), 5.8);
  QTest::mouseClick(&window, Qt::LeftButton, {}, {300, 78 + 40});
  settle();
  EXPECT_EQ(icon->rotation(), 0);
}

TEST_F(TabletLayoutTest, IconsAreDrawnForTheScaleOfTheWindow) {
  showAll();
  list->setTransformOrigin(QQuickItem::TopLeft);
  QObject::connect(window.contentItem(), &QQuickItem::widthChanged,
                   [&] { list->setScale(window.width() / 660.0); });
  for (const auto& [scale, drawing] : std::vector<std::pair<double, const char*>>{
           {1, "ios7_upload.png"}, {1.5, "@2x.png"}, {2, "@2x.png"}, {2.5, "@3x.png"}, {3, "@3x.png"}}) {
    window.resize(static_cast<int>(660 * scale), static_cast<int>(600 * scale));
    EXPECT_TRUE(QTest::qWaitFor([&, end = QLatin1String(drawing)] {
      return iconOf(1)->property("drawing").toString().endsWith(end);
    })) << scale;
    EXPECT_GT(iconOf(1)->implicitWidth(), 0) << "the drawing exists";
  }
}

TEST_F(TabletLayoutTest, AnUnknownStateIsPlainGreyOnTheCellsColour) {
  torrents = R"({"id":1,"name":"odd","status":99})";
  showAll();
  controller->table()->setBackgroundColor(Qt::red);
  EXPECT_EQ(colorAt(iconOf(1), {16, 16}), QColor(250, 250, 250));
  EXPECT_EQ(colorAt(iconOf(1), {-5, 16}), QColor(240, 250, 254));
  EXPECT_EQ(colorAt(iconOf(1), {-5, 78}), QColor(Qt::red)) << "beyond the row";
}

}  // namespace
}  // namespace seedmote

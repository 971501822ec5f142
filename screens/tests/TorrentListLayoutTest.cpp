#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>

#include "ListFixture.h"
#include "platform/ui/LayoutLoader.h"

namespace seedmote {
namespace {

using platform::Idiom;
using platform::LayoutLoader;

const char* const kTorrents =
    R"({"id":1,"name":"debian-12.5.0-amd64-netinst.iso","status":6,"percentDone":1,"totalSize":658505728,"uploadedEver":1934217216,"rateUpload":348160},)"
    R"({"id":2,"name":"A name that is a good deal longer than the others and has to be cut off somewhere on a small screen.bin","status":4,"percentDone":0.43,"totalSize":1099511627776,"uploadedEver":1099511627776,"rateDownload":12345678,"rateUpload":1234567},)"
    R"({"id":3,"name":"日本語のとても長い名前のトレントファイル・第十二巻・完全版.tar.gz","status":2,"percentDone":0.87,"totalSize":73400320},)"
    R"({"id":4,"name":"مجموعة الصور العائلية من الصيف الماضي","status":0,"percentDone":0.02,"totalSize":5368709120},)"
    R"({"id":5,"name":"finished-and-paused.tar.xz","status":0,"percentDone":1,"totalSize":41943040,"uploadedEver":1024},)"
    R"({"id":6,"name":"waiting for its turn","status":3,"percentDone":0,"totalSize":734003200},)"
    R"({"id":7,"name":"No peers yet <b>&amp;","status":4,"percentDone":0.999,"totalSize":734003200})";

class TorrentListLayout : public ListFixture {
 protected:
  explicit TorrentListLayout(Idiom idiom) : ListFixture(idiom), idiom_(idiom) {}

  void showWindow(int width, int height) {
    window.resize(width, height);
    QQuickItem* list = loader.load(LayoutLoader::layoutName("RVTorrentListController", idiom_), *controller,
                                   window.contentItem());
    list->setSize({double(width), double(height)});
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    settle();
  }

  // With a folder in SEEDMOTE_PICTURES the scene is kept there for a look.
  void keepPicture(const char* name) {
    const QString folder = qEnvironmentVariable("SEEDMOTE_PICTURES");
    if (!folder.isEmpty()) {
      window.grabWindow().save(folder + QLatin1Char('/') + QLatin1String(name));
    }
  }

  // Labels of the visible rows that reach into each other or out of their row.
  std::vector<std::string> collisions() {
    std::vector<std::string> found;
    std::vector<QQuickItem*> rows;
    for (QQuickItem* item : window.contentItem()->findChildren<QQuickItem*>()) {
      if (item->property("torrent").isValid() && item->property("cell").isValid() && item->isVisible()) {
        rows.push_back(item);
      }
    }
    for (QQuickItem* row : rows) {
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
    EXPECT_FALSE(rows.empty());
    return found;
  }

  Idiom idiom_;
  QQmlEngine engine;
  LayoutLoader loader{engine};
  QQuickWindow window;
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
  torrents = kTorrents;
  show();
  showWindow(660, 600);
  keepPicture("tablet.png");
  EXPECT_THAT(collisions(), testing::IsEmpty());
}

TEST_F(PhoneLayoutTest, NothingOverlaps) {
  torrents = kTorrents;
  show();
  showWindow(419, 355);
  keepPicture("phone.png");
  EXPECT_THAT(collisions(), testing::IsEmpty());
}

TEST_F(PhoneLayoutTest, SaysWhyItIsEmpty) {
  controller->viewDidLoad();
  showWindow(419, 355);
  keepPicture("empty.png");
  const QList<QQuickItem*> items = window.contentItem()->findChildren<QQuickItem*>();
  EXPECT_TRUE(std::any_of(items.begin(), items.end(), [&](QQuickItem* item) {
    return item->isVisible() && item->property("text").toString() == controller->emptyState();
  }));
}

TEST_F(TabletLayoutTest, ATapSelectsAndTheIconShakes) {
  torrents = kTorrents;
  show();
  showWindow(660, 600);
  QTest::mouseClick(&window, Qt::LeftButton, {}, {300, 78 + 40});
  settle();
  EXPECT_EQ(RVTrans::getTorrentSelection(), 2);
  EXPECT_EQ(lines.count("touch begin"), 1);
  EXPECT_EQ(lines.count("touch end"), 1);
  QQuickItem* icon = nullptr;
  for (QQuickItem* item : window.contentItem()->findChildren<QQuickItem*>()) {
    const auto* torrent = item->property("torrent").value<RVTorrentListCell*>();
    if (item->inherits("QQuickImage") && torrent != nullptr && torrent->torrentidx() == 2) {
      icon = item;
    }
  }
  ASSERT_NE(icon, nullptr);
  EXPECT_TRUE(QTest::qWaitFor([&] { return icon->rotation() > 1; }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return icon->rotation() < -1; }));
  EXPECT_LE(std::abs(icon->rotation()), 5.8);
  QTest::mouseClick(&window, Qt::LeftButton, {}, {300, 78 + 40});
  settle();
  EXPECT_EQ(icon->rotation(), 0);
}

}  // namespace
}  // namespace seedmote

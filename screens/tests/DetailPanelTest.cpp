#include <gmock/gmock.h>

#include <QPointingDevice>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>

#include "platform/ui/LayoutLoader.h"
#include "screens/LabelPairCell.h"
#include "screens/RVTorrentDetailController.h"
#include "screens/RVTorrentDetailFileListCell.h"
#include "tests/support/TestServices.h"

namespace seedmote {
namespace {

using platform::SwipeDirection;

std::shared_ptr<RVTorrentInfo> hardTorrent() {
  auto info = std::make_shared<RVTorrentInfo>();
  info->activityDate = RVDate{1795240320};
  info->addedDate = RVDate{0};
  info->dateCreated = RVDate{-1};
  info->doneDate = RVDate{2147483647};
  info->bandwidthPrioritys = -9223372036854775807 - 1;
  info->comment = "A comment <b>that</b> says more\nthan one line holds, and then some more words";
  info->creator = "مولد الملفات";
  info->downloadDir = "/srv/media/downloads/complete/linux/distributions/debian/12.5.0/images";
  info->downloadLimited = true;
  info->errorString = "エラーが発生しました。ディスクの空き容量が不足しています";
  info->eta = -1;
  info->hashString = "0123456789abcdef0123456789abcdef01234567";
  info->haveUnchecked = 9223372036854775807;
  const auto add = [&](const char* name, std::int64_t done, std::int64_t length) {
    info->files.push_back({name, json::Value::integer(length), json::Value::integer(done)});
  };
  add("debian-12.5.0-amd64-netinst.iso", 658505728, 658505728);
  add("a folder/with a very long name that does not fit/and a file with a long name as well.tar.gz", 1, 3);
  add("3 GiB, half of it", 1610612736, 3221225472);
  add("日本語のとても長い名前のファイル・第十二巻・完全版・特別編集.mkv", 734003200, 1073741824);
  add("مجموعة الصور العائلية من الصيف الماضي.zip", 0, 1099511627776);
  add("empty", 0, 0);
  add("more than all", 2147483647, 1);
  return info;
}

class DetailPanelTest : public testing::Test {
 protected:
  DetailPanelTest() {
    panel.view()->setFrame({28, 28, 596, 732});
    panel.viewDidLoad();
    panel.resetPosition();
  }

  // The root view with the panel in it, in a window of so many pixels a point.
  void show(double scale = 1) {
    window.resize(QSize(1024, 768) * scale);
    window.setColor(QColor(240, 250, 254));
    window.contentItem()->setTransformOrigin(QQuickItem::TopLeft);
    window.contentItem()->setScale(scale);
    root.reset(loader.load(QStringLiteral("RVTorrentDetailController_iPad"), panel, window.contentItem()));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    services.settle();
  }
  void keepPicture(const std::string& name) {
    const QString folder = qEnvironmentVariable("SEEDMOTE_PICTURES");
    if (!folder.isEmpty()) {
      services.settle();
      QTest::qWait(50);
      window.grabWindow().save(folder + QLatin1Char('/') + QString::fromStdString(name));
    }
  }

  support::TestServices services;
  platform::LogRecorder lines;
  QQmlEngine engine;
  platform::LayoutLoader loader{engine};
  RVTorrentDetailController panel;
  QQuickWindow window;
  std::unique_ptr<QQuickItem> root;
};

TEST_F(DetailPanelTest, Pictures) {
  for (const int scale : {1, 2, 3}) {
    panel.resetPosition();
    show(scale);
    keepPicture("detail1020@" + std::to_string(scale) + ".png");
    panel.moveToPos(580);
    panel.setDetailInfo(hardTorrent());
    for (const int stop : {580, 340}) {
      panel.moveToPos(static_cast<float>(stop));
      keepPicture("detail" + std::to_string(stop) + "@" + std::to_string(scale) + ".png");
    }
    panel.setDetailInfo(nullptr);
    keepPicture("detail-empty@" + std::to_string(scale) + ".png");
  }
}

}  // namespace
}  // namespace seedmote

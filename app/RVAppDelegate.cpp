#include "app/RVAppDelegate.h"

#include "app/resources/RVRes.h"
#include "client/RVUtility.h"
#include "platform/core/Device.h"
#include "platform/core/Log.h"
#include "platform/core/Screen.h"
#include "platform/core/Services.h"

namespace seedmote {

using platform::Idiom;
using platform::LayoutLoader;
using platform::log;

namespace {

constexpr int kTopbarColor = 32;
constexpr float kStatusBarSystem = 7.0F;  // since then the content begins below the status bar

float systemVersion() {
  return platform::services().device.systemVersionNumber();
}

// Keeps the view as large as the root view, but for the status bar.
void fillBelowStatusBar(QQuickItem& view, QQuickItem& rootView) {
  const double top = systemVersion() >= kStatusBarSystem ? platform::Screen::kStatusBarHeight : 0;
  const auto follow = [&view, &rootView, top] {
    view.setPosition({0, top});
    view.setSize({rootView.width(), rootView.height() - top});
  };
  QObject::connect(&rootView, &QQuickItem::widthChanged, &view, follow);
  QObject::connect(&rootView, &QQuickItem::heightChanged, &view, follow);
  follow();
}

QColor toQColor(const Color& color) {
  return QColor::fromRgbF(color.red, color.green, color.blue, color.alpha);
}

}  // namespace

RVAppDelegate::RVAppDelegate() = default;

RVAppDelegate::~RVAppDelegate() = default;

bool RVAppDelegate::didFinishLaunchingWithOptions() {
  log("Seedmote Start\n");
  const Idiom idiom = platform::services().device.userInterfaceIdiom();
  makeWindow();
  if (idiom == Idiom::tablet) {
    log("Seedmote is running on iPad\n");
  } else {
    log("Seedmote is running on iPhone\n");
    log("Setup all controllers\n");
  }
  LayoutLoader layouts(*window_->engine());
  auto* rootView = new RootView(idiom, platform::services().screen, window_->contentItem());
  const auto layoutOf = [idiom](const char* controller) {
    return LayoutLoader::layoutName(controller, idiom);
  };

  mainViewController_ = std::make_unique<RVMainViewController>();
  QQuickItem* mainView = layouts.load(layoutOf("RVMainViewController"), *mainViewController_, rootView);
  mainViewController_->viewDidLoad();

  torrentListController_ = std::make_unique<RVTorrentListController>();
  rightBarViewController_ = std::make_unique<RVRightBarController>();
  rightBarViewController_->viewDidLoad();
  QQuickItem* listView = layouts.load(layoutOf("RVTorrentListController"), *torrentListController_, mainView);
  fillBelowStatusBar(*listView, *rootView);
  torrentListController_->viewDidLoad();

  sessionWatcher_ = std::make_unique<SessionWatcher>();
  applySystemVersion();
  window_->show();
  return true;
}

void RVAppDelegate::makeWindow() {
  window_ = std::make_unique<QQuickView>();
  window_->setTitle(QStringLiteral("Seedmote"));
  window_->setColor(toQColor(RVRes::getColor(kTopbarColor)));
  const bool tablet = platform::services().device.userInterfaceIdiom() == Idiom::tablet;
  window_->resize(tablet ? QSize(1024, 768) : QSize(667, 375));
  window_->setMinimumSize(tablet ? QSize(640, 400) : QSize(400, 225));
}

void RVAppDelegate::applySystemVersion() {
  if (systemVersion() >= kStatusBarSystem) {
    log("Change coordination over 7.0\n");
    mainViewController_->setTopbarColor(toQColor(RVRes::getColor(kTopbarColor)));
  } else {
    mainViewController_->setTopbarAlpha(0);
  }
}

}  // namespace seedmote

#include "app/RVAppDelegate.h"

#include <algorithm>
#include <utility>

#include "app/RVRightBarController.h"
#include "app/ScreenPlan.h"
#include "app/WindowPlace.h"
#include "app/resources/RVResQt.h"
#include "platform/core/Device.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/core/Screen.h"
#include "platform/core/Services.h"
#include "settings/RVSettingsViewController.h"

namespace seedmote {

using platform::Idiom;
using platform::log;
using platform::ViewStack;

namespace {

constexpr int kTopbarColor = 32;
constexpr float kStatusBarSystem = 7.0F;  // since then the content begins below the status bar
constexpr double kTabletListAside = 50;
constexpr double kPhoneListAside = 200;
constexpr double kDetailAside = 1020;

bool hasStatusBarSystem() {
  return platform::services().device.systemVersionNumber() >= kStatusBarSystem;
}

Idiom idiom() {
  return platform::services().device.userInterfaceIdiom();
}

}  // namespace

RVAppDelegate::RVAppDelegate(RVSettingsStore& store) : store_(store) {}

RVAppDelegate::~RVAppDelegate() {
  if (mainViewController_) {
    dropPanel();
    mainViewController_->rightBarViewController()->setPanelPlace({});
  }
}

bool RVAppDelegate::didFinishLaunchingWithOptions(const LaunchOptions& options) {
  log("Seedmote Start\n");
  makeWindow();
  if (idiom() == Idiom::tablet) {
    log("Seedmote is running on iPad\n");
  } else {
    log("Seedmote is running on iPhone\n");
    log("Setup all controllers\n");
  }
  makeControllers();
  stackViews();
  applySystemVersion();
  wire();
  makeShortcuts();
  placeViews();
  slideAside();
  loadHiddenViewsLater();
  QObject::connect(rootView_, &RootView::sizeChanged, rootView_, [this] { placeViews(); });
  sessionWatcher_ = std::make_unique<SessionWatcher>();
  const std::optional<WindowPlace> before = WindowPlace::take();
  before ? before->show(*window_) : window_->show();
  if (options.url) {
    loadFrontView();  // a message comes up at once
    handleOpenURL(options.url);
  }
  return true;
}

void RVAppDelegate::makeWindow() {
  window_ = std::make_unique<QQuickView>();
  window_->setTitle(QStringLiteral("Seedmote"));
  window_->setColor(colorOf(kTopbarColor));
  window_->resize(idiom() == Idiom::tablet ? QSize(1024, 768) : QSize(667, 375));
  window_->contentItem()->setSize(window_->size());  // by itself not before the window is shown
  window_->setMinimumSize(idiom() == Idiom::tablet ? QSize(640, 400) : QSize(400, 225));
  QObject::connect(window_.get(), &QWindow::widthChanged, window_.get(), [this] { keepLandscapeShape(); });
  QObject::connect(window_.get(), &QWindow::heightChanged, window_.get(), [this] { keepLandscapeShape(); });
  layouts_.emplace(*window_->engine());
}

// A window that fills the screen cannot choose its shape; what it shows is turned then.
void RVAppDelegate::keepLandscapeShape() {
  const bool fills = (window_->windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0;
  if (!fills && window_->height() > window_->width()) {
    window_->resize(window_->width(), window_->width() * 3 / 4);
  }
}

void RVAppDelegate::makeControllers() {
  mainViewController_ = std::make_unique<RVMainViewController>();
  rootView_ = new RootView(
      idiom(), platform::services().screen,
      [main = mainViewController_.get()](platform::InterfaceOrientation orientation) {
        return main->shouldAutorotateToInterfaceOrientation(static_cast<int>(orientation));
      },
      window_->contentItem());
  filterBarController_ = std::make_unique<RVFilterBarController>();
  torrentListController_ = std::make_unique<RVTorrentListController>();
  if (idiom() == Idiom::tablet) {
    torrentInfoViewController_ = std::make_unique<RVTorrentDetailController>();
  }
  auto rightBar = std::make_unique<RVRightBarController>(store_);
  rightBar->setPanelPlace(
      {[this](RVSettingsViewController& panel) { showPanel(panel); }, [this] { dropPanel(); }});
  mainViewController_->setRightBarViewController(std::move(rightBar));
}

QQuickItem* RVAppDelegate::load(const char* controllerName, QObject& controller, QQuickItem* parent) {
  return layouts_->load(platform::LayoutLoader::layoutName(controllerName, idiom()), controller, parent);
}

// Each view that is to be seen is loaded when it is stacked.
void RVAppDelegate::stackViews() {
  RVMainViewController& main = *mainViewController_;
  ViewStack& stack = main.subviews();
  placeViews();
  mainView_ = load("RVMainViewController", main, rootView_);
  main.viewDidLoad();

  RVRightBarController& rightBar = *main.rightBarViewController();
  rightBarView_ = layouts_->load(platform::LayoutLoader::layoutName("RVRightBarController", Idiom::tablet),
                                 rightBar, mainView_);
  rightBar.viewDidLoad();
  stack.addSubview(*rightBar.view());

  const platform::ViewGeometry* above = main.rightBarView();
  if (torrentInfoViewController_) {
    torrentInfoViewController_->viewDidLoad();
    stack.insertSubview(*torrentInfoViewController_->view(), *above);
    above = torrentInfoViewController_->view();
  }
  QQuickItem* const list = load("RVTorrentListController", *torrentListController_, mainView_);
  torrentListController_->viewDidLoad();
  stack.insertSubview(*torrentListController_->view(), *above);
  QQuickItem* const filters = load("RVFilterBarController", *filterBarController_, mainView_);
  filterBarController_->viewDidLoad();
  stack.insertSubview(*filterBarController_->view(), *torrentListController_->view());
  orderKeys({filters, list, rightBarView_});
}

// Tab goes from one child to the next, which says nothing about what lies above what: from the filters at the
// left to the action bar at the right, and then to the other regions.
void RVAppDelegate::orderKeys(const std::vector<QQuickItem*>& views) {
  QQuickItem* const others = mainView_->childItems().front();
  for (QQuickItem* view : views) {
    view->stackBefore(others);
  }
}

// A fifth of what a start has to load is not to be seen yet, and must not hold the first picture up: what
// comes up in front waits for that, the details for the first list, and the list of the shortcuts until it is
// shown.
void RVAppDelegate::loadHiddenViewsLater() {
  afterNextFrame(&RVAppDelegate::loadFrontView);
  if (torrentInfoViewController_) {
    const platform::TableView* const list = torrentListController_->table();
    QObject::connect(list, &platform::TableView::laidOut, window_.get(), [this, list] {
      if (!list->isEmpty() && !std::exchange(wantsDetailView_, true)) {
        afterNextFrame(&RVAppDelegate::loadDetailView);
      }
    });
  }
  QObject::connect(
      shortcuts_.get(), &Shortcuts::shownChanged, window_.get(),
      [this] {
        loadFrontView();
        layouts_->load(QStringLiteral("ShortcutsOverlay"), *shortcuts_, frontView_);
      },
      Qt::SingleShotConnection);
}

void RVAppDelegate::afterNextFrame(void (RVAppDelegate::*step)()) {
  const auto carryOut = [this, step] {
    platform::services().main.guard("hidden views", [this, step] { (this->*step)(); });
  };
  QObject::connect(window_.get(), &QQuickWindow::frameSwapped, window_.get(), carryOut,
                   static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

void RVAppDelegate::loadFrontView() {
  if (frontView_ == nullptr) {
    frontView_ = layouts_->load(QStringLiteral("FrontView"), *mainViewController_, mainView_);
  }
}

void RVAppDelegate::loadDetailView() {
  load("RVTorrentDetailController", *torrentInfoViewController_, mainView_)->stackBefore(rightBarView_);
}

void RVAppDelegate::makeShortcuts() {
  shortcuts_ = std::make_unique<Shortcuts>(Shortcuts::Screens{
      *mainViewController_->rightBarViewController(), *filterBarController_, *torrentListController_,
      torrentInfoViewController_.get(), [this] { window_->close(); }});
  shortcuts_->listenTo(*window_);
}

void RVAppDelegate::applySystemVersion() {
  if (hasStatusBarSystem()) {
    log("Change coordination over 7.0\n");
    mainViewController_->topbarView()->setBackgroundColor(colorOf(kTopbarColor));
  } else {
    mainViewController_->topbarView()->setAlpha(0);
  }
}

void RVAppDelegate::wire() {
  if (torrentInfoViewController_) {
    torrentListController_->setTorrentInfoViewController(torrentInfoViewController_.get());
  }
  filterBarController_->setTorrentListController(torrentListController_.get());
}

// Whenever the root view has another size as well.
void RVAppDelegate::placeViews() {
  const QSizeF root = rootView_->size();
  ScreenPlan plan = ScreenPlan::make(idiom(), root);
  if (hasStatusBarSystem()) {
    plan.moveBelowStatusBar(idiom(), root.height());
  } else {
    plan.useWholeHeight(idiom(), root.height());
  }
  plan.stretchList(idiom(), root.height());
  mainViewController_->place(plan, root);
  filterBarController_->view()->setFrame(plan.filterBar);
  torrentListController_->view()->setFrame(plan.torrentList);
  torrentListController_->setHiddenBottom(std::max(0.0, plan.torrentList.bottom() - root.height()));
  if (torrentInfoViewController_) {
    torrentInfoViewController_->view()->setFrame(plan.torrentDetail);
  }
  mainViewController_->rightBarViewController()->place(plan.rightBar);
}

void RVAppDelegate::slideAside() {
  const bool tablet = idiom() == Idiom::tablet;
  torrentListController_->view()->setTranslation({tablet ? kTabletListAside : kPhoneListAside, 0});
  if (torrentInfoViewController_) {
    torrentInfoViewController_->view()->setTranslation({kDetailAside, 0});
  }
}

// The settings panel.

void RVAppDelegate::showPanel(RVSettingsViewController& panel) {
  panel_ = &panel;
  panelView_.reset(load("RVSettingsViewController", panel, mainView_));
  panel.viewDidLoad();
  mainViewController_->subviews().addSubview(*panel.view());
  if (serverChange_) {
    serverChange_->panelOpened();
    QObject::connect(&panel, &RVSettingsViewController::closed, window_.get(),
                     [this] { serverChange_->panelClosed(); });
  }
}

void RVAppDelegate::dropPanel() {
  if (panel_ != nullptr) {
    mainViewController_->subviews().removeSubview(*panel_->view());
    panelView_.reset();
    panel_ = nullptr;
  }
}

// The daemon that is looked at.

void RVAppDelegate::refreshEvery(std::optional<double> seconds) {
  const std::optional<double> period = ListRefresher::period(seconds);
  listRefresher_ = period ? std::make_unique<ListRefresher>(
                                *period, [this] { return isWindowSeen(); },
                                [list = torrentListController_.get()] { list->updateTorrentList(); })
                          : nullptr;
}

bool RVAppDelegate::isWindowSeen() const {
  return window_->isVisible() && window_->isExposed() && !(window_->windowStates() & Qt::WindowMinimized);
}

void RVAppDelegate::onRestart(std::function<void()> restart) {
  serverChange_ = std::make_unique<ServerChange>(std::move(restart));
}

// What other programs hand over.

bool RVAppDelegate::handleOpenURL(const std::optional<std::string>& url) {
  log("handleOpenURL URL = %@", url);
  if (url) {
    log("app is open with url");
    log("%@", platform::format("url = %@", *url));
    torrentListController_->addRemoteTorrent(*url);
  }
  return true;
}

bool RVAppDelegate::openURL(const std::optional<std::string>& url,
                            const std::optional<std::string>& sourceApplication,
                            const std::optional<std::string>& annotation) {
  log("Open URL:\t%@\nFrom source:\t%@\nWith annotation:%@", url, sourceApplication, annotation);
  if (url) {
    log("app is open with url");
    torrentListController_->addLocalTorrent(*url);
  }
  return true;
}

}  // namespace seedmote

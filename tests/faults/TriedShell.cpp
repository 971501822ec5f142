#include "tests/faults/TriedShell.h"

#include <QImage>
#include <algorithm>
#include <fstream>
#include <set>

#include "app/InboxNotice.h"
#include "settings/RVSettingsViewController.h"

namespace seedmote::faults {
namespace {

constexpr const char* kTorrents =
    R"({"arguments":{"torrents":[{"id":7,"name":"seven","totalSize":70,"status":4,"percentDone":0.5,)"
    R"("files":[{"name":"f","length":70,"bytesCompleted":7}]},{"id":8,"name":"eight","totalSize":80},)"
    R"({"id":9,"name":"nine","totalSize":90,"status":6,"percentDone":1}]},"result":"success"})";
constexpr int kTorrentCount = 3;
constexpr const char* kLink =
    "magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567&dn=a%20copied%20one";
constexpr double kLongestMessage = 3;  // seconds, once nothing runs that it speaks of

}  // namespace

Reply Outside::answer(const RecordedRequest& sent) {
  const Fault* fault = nullptr;
  {
    const std::lock_guard lock(present.mutex);
    const bool meets = present.fault != nullptr && present.fault->reply && present.request->is(sent.body);
    fault = meets && present.times++ < present.fault->times ? present.fault : nullptr;
  }
  return fault != nullptr ? fault->reply(world) : world.daemon.model().reply(sent);
}

TriedShell::TriedShell()
    : file_(folder_.filePath(QStringLiteral("some.torrent")).toStdString()),
      inbox_(folder_.filePath(QStringLiteral("inbox")).toStdString(), [this] {
        platform::services().main.post([this] {
          if (courier_) courier_->look();
        });
      }) {
  faulty.setNext(*http);
  http = &faulty;
  std::ofstream(file_) << "d4:infod4:name3:aaaee";
  support::DaemonModel& model = world.daemon.model();
  model.setTorrents(kTorrents);
  model.setDetail(kTorrents);
  world.daemon.setHandler(
      [outside = static_cast<Outside*>(this)](const RecordedRequest& sent) { return outside->answer(sent); });
  world.other.setReply(replies::html(200, "<h1>Something else</h1>"));
  world.tls.setReply(replies::nothing());
}

TriedShell::~TriedShell() {
  if (services) end();
}

void TriedShell::start(platform::Idiom idiom) {
  install(idiom);
  confirmSettings(world.daemon.port());
  openConnected();
  useSmallWindow();
  delegate->onRestart([] {});
  courier_ = std::make_unique<InboxCourier>(inbox_, *delegate);
  listen();
  time_.start(2);
}

// There is less to paint in it.
void TriedShell::useSmallWindow() {
  window().resize(window().minimumSize());
}

void TriedShell::listen() {
  QObject::connect(&time_, &QTimer::timeout, &time_, [this] { letTimeGo(); });
  QObject::connect(&overlay(), &OvProgressHUD::changed, &window(), [this] { note(); });
  RVTorrentListController& rows = delegate->torrentListController();
  QObject::connect(&rows, &RVTorrentListController::emptyStateChanged, &window(),
                   [this, &rows] { sentences_.push_back(rows.emptyState().toStdString()); });
  QObject::connect(&window(), &QQuickWindow::afterRendering, &window(), [this] { ++frames_; });
  // Qt says that the last window was closed only where it runs the program's own loop.
  QObject::connect(&window(), &QWindow::visibleChanged, &window(), [this](bool visible) {
    if (!visible) services->main.quit();
  });
}

void TriedShell::note() {
  const bool wasResult = std::exchange(isResult_, overlay().panelShown() && overlay().imageView().shown);
  results_ += isResult_ && !wasResult ? 1 : 0;
  if (isResult_ && (messages_.empty() || messages_.back() != message())) {
    messages_.push_back(message());
  }
}

// Nobody waits for a daemon, so what sleeps may wake up.
void TriedShell::letTimeGo() {
  if (faulty.underWay() == 0 && services && services->clock.sleeping() > 0) {
    services->clock.advanceSeconds(0.25);
  }
}

// Faults.

void TriedShell::meet(const Request& request, const Fault& fault) {
  messages_.clear();
  sentences_.clear();
  {
    const std::lock_guard lock(present.mutex);
    present.request = &request;
    present.fault = &fault;
    present.times = 0;
  }
  faulty.mislead(request.is, fault.url ? fault.url(world) : "", fault.slow);
}

void TriedShell::meetNone() {
  faulty.letPass();
  const std::lock_guard lock(present.mutex);
  present.fault = nullptr;
}

// What a person does.

void TriedShell::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&window(), key, modifiers);
  settle();
}

void TriedShell::selectFirst() {
  list().wantKeys();
  press(Qt::Key_Home);
  press(Qt::Key_Return);
}

void TriedShell::addCopied() {
  ui.pasteboard.text = kLink;
  press(Qt::Key_V, Qt::ControlModifier);
  press(Qt::Key_Return);
}

void TriedShell::addFile() {
  services->main.enter("the test", [this] { delegate->openURL(file_, {}, {}); });
  settle();
}

void TriedShell::pass(double seconds) {
  advance(seconds);
  untilNobodyIsBusy();
}

void TriedShell::refreshByItself() {
  constexpr double kPeriod = 5;
  delegate->refreshEvery(kPeriod);
  pass(kPeriod);
  delegate->refreshEvery(std::nullopt);
}

// A poll meets the new session, and some time later the list is fetched.
void TriedShell::passIntoNewSession() {
  world.daemon.changeSessionId();
  pass(10);
  pass(31);
}

void TriedShell::handOver() {
  inbox_.take({inbox_.waiting().size() % 2 == 0 ? std::string(kLink) : file_});
}

void TriedShell::forgetClient() {
  RVTrans::drop();
  delegate->torrentListController().refreshAll();
  settle();
}

// What comes of it.

bool TriedShell::isBusy() {
  return services->threads.running() > 0 || services->main.isWaiting() || faulty.underWay() > 0;
}

void TriedShell::untilNobodyIsBusy() {
  until("nobody is busy", [this] { return !isBusy(); });
  settle();
}

void TriedShell::comeToRest() {
  double shown = 0;
  int results = 0;
  until("everything has come to rest", [&] {
    const bool wasBusy = isBusy();
    settle();  // what it said last is shown now
    const bool isAnother = std::exchange(results, results_) != results_;
    shown = wasBusy || isBusy() || isAnother ? 0 : shown;
    if (wasBusy || isBusy()) return false;
    if (overlay().panelShown()) {
      if (shown > kLongestMessage) throw std::runtime_error("a message stays: " + message());
      const double step = shown == 0 ? OvProgressHUD::kResultDelay : 0.1;
      shown += step;
      advance(step);
      return false;
    }
    return !list().isReloading();
  });
  settle();
}

bool TriedShell::hasSeen(const std::string& sentence) {
  std::vector<std::string> all = sentences_;
  if (list().isEmpty()) all.push_back(delegate->torrentListController().emptyState().toStdString());
  return std::ranges::any_of(
      all, [&](const std::string& one) { return one == sentence || one.starts_with(sentence + "\n("); });
}

bool TriedShell::isPainting() {
  const int before = frames_;
  window().update();
  until("a frame comes", [&] { return frames_ > before; });
  const QImage picture = window().grabWindow();
  std::set<QRgb> colors;
  for (int y = 0; y < picture.height(); y += 7) {
    for (int x = 0; x < picture.width(); x += 7) colors.insert(picture.pixel(x, y));
  }
  constexpr std::size_t kFew = 8;
  return colors.size() > kFew;
}

// Putting things right.

void TriedShell::putSettingsRight() {
  store.ipaddressChanged({"127.0.0.1"});
  store.usernameChanged({""});
  store.passwordChanged({""});
  store.usesslChanged({});
  store.timeoutChanged({"20"});
  confirmSettings(world.daemon.port());
}

void TriedShell::closePanels() {
  until("nothing lies in front", [this] {
    if (isBusy()) return false;
    if (ui.alerts.isShown()) ui.alerts.press(0);
    RVSettingsViewController* const panel = bar().settingsViewController();
    const bool isOpen = panel != nullptr && panel->bShown();
    if (isOpen && !panel->isClosing()) panel->pressClose();
    if (delegate->shortcuts().isShown()) delegate->shortcuts().hide();
    services->clock.advanceSeconds(0.1);
    settle();
    return !ui.alerts.isShown() && !isOpen && !delegate->shortcuts().isShown();
  });
}

bool TriedShell::isAsBefore() {
  const bool showsAll = delegate->torrentListController().filterID() == 1 && !list().isEmpty();
  return RVTrans::isConnected() && !RVTrans::isOutOfStep() && list().rowCount() == kTorrentCount && showsAll;
}

void TriedShell::recover() {
  meetNone();
  constexpr int kTries = 6;
  for (int tries = 0; tries < kTries; ++tries) {
    comeToRest();
    closePanels();
    putSettingsRight();
    useSmallWindow();
    press(Qt::Key_1, Qt::ControlModifier);
    press(Qt::Key_F5);
    comeToRest();
    pass(2);
    comeToRest();
    if (isAsBefore()) return;
    pass(31);
  }
  throw std::runtime_error("the program does not go on, though the daemon does; last said: " + message());
}

bool TriedShell::isAllDelivered() {
  constexpr int kTries = 20;
  for (int tries = 0; tries < kTries && !inbox_.waiting().empty(); ++tries) {
    delegate->mainViewController().inboxNotice()->tryAgain();
    pass(6);
    comeToRest();
    closePanels();
  }
  return inbox_.waiting().empty();
}

// The end.

void TriedShell::quit(Way way) {
  ending_.start();
  if (way == Way::closedWindow) {
    hand().closeWindow();
  } else {
    services->main.quit();
  }
}

double TriedShell::end() {
  if (!ending_.isValid()) quit(Way::signal);
  services->spinUntil([this] { return services->main.isQuitting(); });
  services->threads.join(std::chrono::minutes(1));
  const double seconds = static_cast<double>(ending_.elapsed()) / 1000;
  time_.stop();
  courier_.reset();
  delegate.reset();
  services.reset();
  RVTrans::drop();
  return seconds;
}

}  // namespace seedmote::faults

#include "tests/soak/Person.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

#include "client/RVTrans.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "settings/RVSettingsViewController.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote::soak {

namespace {

// What can be touched now, in the window's places.
template <class Add>
void visit(QWindow& window, const Add& add) {
  std::vector<QAccessibleInterface*> all{QAccessible::queryAccessibleInterface(&window)};
  for (std::size_t at = 0; at < all.size(); ++at) {
    QAccessibleInterface* const one = all[at];
    if (one == nullptr) continue;
    for (int child = 0; child < one->childCount(); ++child) all.push_back(one->child(child));
    const QAccessible::Role role = one->role();
    const bool isField = role == QAccessible::EditableText;
    if ((isField || role == QAccessible::Button || role == QAccessible::ListItem) &&
        !one->state().invisible) {
      const QString called = one->text(QAccessible::Name);
      add(isField && called.isEmpty() ? one->text(QAccessible::Description) : called, role,
          window.mapFromGlobal(one->rect().center()));
    }
  }
}

}  // namespace

Person::Person(MainLoop& loop, DaemonKeeper& keeper, bool touches, unsigned seed, std::string folder)
    : loop_(loop), keeper_(keeper), hand_(loop, touches), random_(seed), folder_(std::move(folder)) {
  for (const Way& way : ways()) weights_.push_back(way.weight);
}

const std::vector<Person::Way>& Person::ways() {
  static const std::vector<Way> ways{
      {26, "row", &Person::tapRow},           {12, "anything", &Person::tapAnything},
      {3, "anywhere", &Person::tapAnywhere},  {6, "refresh", &Person::refresh},
      {5, "start", &Person::start},           {5, "stop", &Person::stop},
      {5, "remove", &Person::remove},         {6, "filter", &Person::filter},
      {8, "flick", &Person::flick},           {3, "wheel", &Person::turnWheel},
      {5, "swipe", &Person::swipe},           {3, "pull", &Person::pull},
      {4, "settings", &Person::editSettings}, {3, "hand-over", &Person::handOver},
      {3, "keys", &Person::pressKeys},        {1, "resize", &Person::resize},
      {0.3, "close", &Person::close},
  };
  return ways;
}

bool Person::doOnly(const std::string& name) {
  weights_.assign(ways().size(), 0);
  bool isKnown = false;
  for (std::size_t way = 0; way < weights_.size(); ++way) {
    const bool isMeant = name == ways()[way].name;
    weights_[way] = isMeant ? 1 : 0;
    isKnown = isKnown || isMeant;
  }
  only_ = isKnown;
  return isKnown;
}

void Person::act() {
  bool isEmpty = false;
  loop_.run([&isEmpty](Shell& shell) { isEmpty = shell.list().isEmpty(); });
  ++acts_;
  if (!only_ && isEmpty && any(0, 9) == 0) {
    editSettings();
  } else if (!answerAlert() || any(0, 3) == 0) {
    const auto way = std::discrete_distribution<std::size_t>(weights_.begin(), weights_.end())(random_);
    (this->*ways()[way].act)();
  }
  pause(!only_ && any(0, 5) == 0 ? any(300, 1500) : any(20, 300));
}

void Person::pause(int milliseconds) const {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

// What can be touched.

std::vector<Person::Target> Person::targets(std::optional<QAccessible::Role> role) {
  std::vector<Target> found;
  loop_.run([&](Shell& shell) {
    visit(shell.delegate().window(), [&](const QString& name, QAccessible::Role is, QPoint place) {
      if (!role || *role == is) found.push_back({name, is, place});
    });
  });
  return found;
}

bool Person::tap(const QString& name) {
  std::vector<Target> named;
  for (const Target& target : targets()) {
    if (target.name == name) named.push_back(target);
  }
  return tapOne(named);
}

bool Person::tapOne(const std::vector<Target>& targets) {
  if (targets.empty()) {
    return false;
  }
  hand_.tap(targets[static_cast<std::size_t>(any(0, static_cast<int>(targets.size()) - 1))].place);
  return true;
}

QPoint Person::anyPlace() {
  QSize size(1, 1);
  loop_.run([&size](Shell& shell) { size = shell.delegate().window().size(); });
  return {any(0, size.width()), any(0, size.height())};
}

bool Person::answerAlert() {
  QStringList buttons;
  loop_.run([&buttons](Shell& shell) {
    if (shell.ui().alerts.isShown()) buttons = shell.ui().alerts.buttons();
  });
  return !buttons.isEmpty() && tap(buttons[any(0, static_cast<int>(buttons.size()) - 1)]);
}

// What can be done.

void Person::tapRow() {
  tapOne(targets(QAccessible::ListItem));
}
void Person::tapAnything() {
  tapOne(targets());
}
void Person::tapAnywhere() {
  hand_.tap(anyPlace());
}
void Person::refresh() {
  tap(QStringLiteral("Refresh"));
}
void Person::start() {
  tap(QStringLiteral("Start"));
}
void Person::stop() {
  tap(QStringLiteral("Stop"));
}

void Person::remove() {
  tapRow();
  pause(any(50, 600));
  tap(QStringLiteral("Delete"));
  pause(any(50, 400));
  tap(QStringLiteral("Confirm delete"));
}

void Person::filter() {
  static const QStringList states{QStringLiteral("All"),      QStringLiteral("Downloading"),
                                  QStringLiteral("Seeding"),  QStringLiteral("Paused"),
                                  QStringLiteral("Finished"), QStringLiteral("All")};
  tap(states[any(0, static_cast<int>(states.size()) - 1)]);
}

void Person::flick() {
  const QPoint from = anyPlace();
  hand_.drag(from, from + QPoint(any(-10, 10), any(-400, 400)), any(2, 12));
}

void Person::turnWheel() {
  const QPoint place = anyPlace();
  for (int turn = any(1, 6); turn > 0; --turn) hand_.wheel(place, any(-3, 3));
}

void Person::swipe() {
  const QPoint from = anyPlace();
  hand_.drag(from, from + QPoint(any(0, 1) == 0 ? 160 : -160, any(-10, 10)), 8);
}

void Person::pull() {
  const QString hash = QStringLiteral("%1").arg(random_(), 40, 16, QLatin1Char('0'));
  const QString link = QStringLiteral("magnet:?xt=urn:btih:%1&dn=copied%20%2").arg(hash).arg(++made_);
  loop_.run([&](Shell& shell) { shell.ui().pasteboard.text = link.toStdString(); });
  hand_.drag({300, 60}, {300, 360}, 12);
  pause(any(100, 800));
  answerAlert();
}

// Password: mostly the one that the daemon has by then.
void Person::editSettings() {
  tap(QStringLiteral("Settings"));
  pause(700);
  if (any(0, 2) > 0 && tap(QStringLiteral("Password"))) {
    hand_.type(any(0, 2) > 0 ? QString::fromStdString(keeper_.password()) : QStringLiteral("wrong"));
  }
  if (any(0, 2) == 0 && tap(QStringLiteral("Time-out (s)"))) {
    hand_.type(QString::number(any(1, 12)));
  }
  pause(any(0, 300));
  tap(QStringLiteral("Close"));
  pause(any(200, 1000));
  answerAlert();
}

void Person::handOver() {
  std::vector<std::string> given;
  for (int count = any(1, 4); count > 0; --count) {
    const std::string name = "handed " + std::to_string(++made_);
    const std::string path = folder_ + "/" + name + ".torrent";
    const bool isJunk = any(0, 5) == 0;
    std::ofstream(path) << (isJunk ? "d4:junki0ee" : support::makeTinyTorrent(name, -made_).metainfo);
    given.push_back(any(0, 3) > 0 ? path
                                  : "magnet:?xt=urn:btih:" + std::string(32, '0') +
                                        std::to_string(10000000 + made_) + "&dn=linked");
  }
  loop_.run([&given](Shell& shell) { shell.intake().take(given); });
}

void Person::pressKeys() {
  static constexpr int kKeys[] = {
      Qt::Key_Tab, Qt::Key_Down, Qt::Key_Up, Qt::Key_Return,   Qt::Key_Space, Qt::Key_Escape, Qt::Key_Delete,
      Qt::Key_End, Qt::Key_Home, Qt::Key_F5, Qt::Key_PageDown, Qt::Key_F1,    Qt::Key_Backtab};
  for (int count = any(1, 8); count > 0; --count) {
    hand_.press(kKeys[any(0, static_cast<int>(std::size(kKeys)) - 1)]);
    pause(any(5, 60));
  }
}

void Person::resize() {
  const QSize size(any(500, 1400), any(300, 1000));
  loop_.run([size](Shell& shell) { shell.delegate().window().resize(size); });
}

void Person::close() {
  if (!stays_) hand_.closeWindow();
}

bool Person::comeToRest() {
  bool rests = false;
  for (int look = 0; look < 400 && !rests; ++look) {
    loop_.run([&rests](Shell& shell) {
      platform::MainThread& main = platform::services().main;
      RVSettingsViewController* const panel = shell.bar().settingsViewController();
      const bool isOpen = panel != nullptr && panel->bShown();
      if (shell.ui().alerts.isShown()) main.enter("soak", [&shell] { shell.ui().alerts.press(0); });
      if (isOpen && !panel->isClosing()) {
        main.enter("soak", [&shell] { shell.bar().settingsViewController()->onCloseBtn(); });
      }
      rests = !main.isWaiting() && !isOpen && !shell.ui().alerts.isShown() && !RVTrans::isConnecting() &&
              !OvProgressHUD::sharedView()->panelShown() && !shell.list().isReloading();
    });
    if (!rests) pause(100);
  }
  return rests;
}

}  // namespace seedmote::soak

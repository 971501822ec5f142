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

Person::Person(MainLoop& loop, DaemonKeeper& keeper, bool touches, unsigned seed, std::string folder)
    : Hand({}, touches, seed), loop_(loop), keeper_(keeper), folder_(std::move(folder)) {
  for (const Way& way : ways()) weights_.push_back(way.weight);
}

const std::vector<Person::Way>& Person::ways() {
  static const std::vector<Way> ways{
      {26, "row", &Person::tapRow},           {12, "anything", &Person::tapAnything},
      {3, "anywhere", &Person::tapAnywhere},  {6, "refresh", &Person::refresh},
      {5, "start", &Person::start},           {5, "stop", &Person::stop},
      {5, "remove", &Person::remove},         {6, "filter", &Person::filter},
      {8, "flick", &Person::flick},           {3, "wheel", &Person::turnWheel},
      {5, "swipe", &Person::swipe},           {3, "pull", &Person::addCopied},
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
    const auto way = std::discrete_distribution<std::size_t>(weights_.begin(), weights_.end())(random());
    (this->*ways()[way].act)();
  }
  rest(!only_ && any(0, 5) == 0 ? any(300, 1500) : any(20, 300));
}

void Person::onMain(const std::function<void(QWindow&)>& work) {
  loop_.run([&work](Shell& shell) { work(shell.delegate().window()); });
}

void Person::rest(int milliseconds) {
  Hand::rest(milliseconds);
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

bool Person::tapOne(const std::vector<Target>& targets) {
  if (targets.empty()) {
    return false;
  }
  Hand::tap(targets[static_cast<std::size_t>(any(0, static_cast<int>(targets.size()) - 1))].place);
  return true;
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
  std::vector<Target> rows = targets();
  std::erase_if(rows, [](const Target& target) { return target.role != QAccessible::ListItem; });
  tapOne(rows);
}

void Person::remove() {
  tapRow();
  rest(any(50, 600));
  tap(QStringLiteral("Delete"));
  rest(any(50, 400));
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
  drag(from, from + QPoint(any(-10, 10), any(-400, 400)), any(2, 12));
}

void Person::turnWheel() {
  const QPoint place = anyPlace();
  for (int turn = any(1, 6); turn > 0; --turn) wheel(place, any(-3, 3));
}

void Person::addCopied() {
  loop_.run([link = anyLink()](Shell& shell) { shell.ui().pasteboard.text = link.toStdString(); });
  pull();
  rest(any(100, 800));
  answerAlert();
}

// Password: mostly the one that the daemon has by then.
void Person::editSettings() {
  tap(QStringLiteral("Settings"));
  rest(700);
  if (any(0, 2) > 0 && tap(QStringLiteral("Password"))) {
    type(any(0, 2) > 0 ? QString::fromStdString(keeper_.password()) : QStringLiteral("wrong"));
  }
  if (any(0, 2) == 0 && tap(QStringLiteral("Time-out (s)"))) {
    type(QString::number(any(1, 12)));
  }
  rest(any(0, 300));
  tap(QStringLiteral("Close"));
  rest(any(200, 1000));
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
  for (int count = any(1, 8); count > 0; --count) {
    pressAnyKey();
    rest(any(5, 60));
  }
}

void Person::close() {
  if (!stays_) closeWindow();
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
    if (!rests) rest(100);
  }
  return rests;
}

}  // namespace seedmote::soak

#pragma once

#include <QAccessible>
#include <QPoint>
#include <QString>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "tests/soak/DaemonKeeper.h"
#include "tests/soak/Hand.h"

namespace seedmote::soak {

// One who does with the program whatever comes to mind, and finds what can be touched as an assistive
// technology does. On a thread other than the main one.
class Person final {
 public:
  Person(MainLoop& loop, DaemonKeeper& keeper, bool touches, unsigned seed, std::string folder);

  // Closes the window no more.
  void stay() { stays_ = true; }
  // From now on does one and the same; false when nothing is called so.
  bool doOnly(const std::string& name);

  // Does one thing or another, or nothing for a moment.
  void act();
  int acts() const { return acts_; }

  // Leaves the settings and whatever asks, and waits until no message is shown. False when that does not come
  // to be.
  bool comeToRest();

 private:
  struct Target {
    QString name;
    QAccessible::Role role;
    QPoint place;
  };
  struct Way {
    double weight;
    std::string name;
    void (Person::*act)();
  };
  static const std::vector<Way>& ways();

  std::vector<Target> targets(std::optional<QAccessible::Role> role = std::nullopt);
  bool tap(const QString& name);
  bool tapOne(const std::vector<Target>& targets);
  void pause(int milliseconds) const;
  int any(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }
  QPoint anyPlace();
  bool answerAlert();

  void tapRow();
  void tapAnything();
  void tapAnywhere();
  void refresh();
  void start();
  void stop();
  void remove();
  void filter();
  void flick();
  void turnWheel();
  void swipe();
  void pull();
  void editSettings();
  void handOver();
  void pressKeys();
  void resize();
  void close();

  MainLoop& loop_;
  DaemonKeeper& keeper_;
  Hand hand_;
  std::mt19937 random_;
  std::string folder_;  // for the files that are handed over
  std::vector<double> weights_;
  bool stays_ = false;
  bool only_ = false;
  int acts_ = 0;
  int made_ = 0;  // torrents
};

}  // namespace seedmote::soak

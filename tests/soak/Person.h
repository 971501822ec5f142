#pragma once

#include <string>
#include <vector>

#include "tests/soak/DaemonKeeper.h"
#include "tests/soak/MainLoop.h"
#include "tests/support/Hand.h"

namespace seedmote::soak {

// One who does with the program whatever comes to mind, taking their time. On a thread other than the main
// one.
class Person final : public support::Hand {
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
  struct Way {
    double weight;
    std::string name;
    void (Person::*act)();
  };
  static const std::vector<Way>& ways();

  void onMain(const std::function<void(QWindow&)>& work) override;
  void rest(int milliseconds) override;

  bool tap(const QString& name) { return tapOne(targets(name)); }
  bool tapOne(const std::vector<Target>& targets);
  bool answerAlert();

  void tapRow();
  void tapAnything() { tapOne(targets()); }
  void tapAnywhere() { Hand::tap(anyPlace()); }
  void refresh() { tap(QStringLiteral("Refresh")); }
  void start() { tap(QStringLiteral("Start")); }
  void stop() { tap(QStringLiteral("Stop")); }
  void remove();
  void filter();
  void flick();
  void turnWheel();
  void addCopied();
  void editSettings();
  void handOver();
  void pressKeys();
  void close();

  MainLoop& loop_;
  DaemonKeeper& keeper_;
  std::string folder_;  // for the files that are handed over
  std::vector<double> weights_;
  bool stays_ = false;
  bool only_ = false;
  int acts_ = 0;
  int made_ = 0;  // torrents
};

}  // namespace seedmote::soak

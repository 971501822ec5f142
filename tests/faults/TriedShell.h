#pragma once

#include <QTemporaryDir>
#include <memory>
#include <string>
#include <vector>

#include "app/InboxCourier.h"
#include "app/tests/AppFixture.h"
#include "tests/faults/FaultyHttp.h"
#include "tests/faults/Request.h"
#include "tests/support/FakeNames.h"

namespace seedmote::faults {

// What there is beside the program. It lies below the shell, whose threads use it to the end.
struct Outside {
  struct Present {  // what is met now
    std::mutex mutex;
    const Request* request = nullptr;
    const Fault* fault = nullptr;
    int times = 0;
  };

  Reply answer(const RecordedRequest& sent);  // on a thread of the daemon

  Present present;
  support::FakeNames names;
  World world;
  FaultyHttp faulty;
};

// The whole program before a daemon of the test's, with its inbox, and what it has shown of late. Time goes
// by itself where the program sleeps.
class TriedShell : private Outside, public AppFixture {
 public:
  using Outside::faulty;
  using Outside::world;

  TriedShell();
  ~TriedShell() override;

  void start(platform::Idiom idiom);

  // Faults.
  void meet(const Request& request, const Fault& fault);  // from now on
  void meetNone();

  // What a person does.
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
  void selectFirst();
  void addCopied();
  void addFile();
  void pass(double seconds);
  void refreshByItself();
  void passIntoNewSession();
  void handOver();
  // As a new start, but for the window.
  void forgetClient();

  // Until nothing runs, moves or is shown any more; raises when a message stays beyond its time.
  void comeToRest();
  // The daemon behaves, and a person puts things right. Raises when that does not help.
  void recover();
  // What is shown of late, and forgets it.
  std::vector<std::string> takeMessages() { return std::exchange(messages_, {}); }
  bool hasSeen(const std::string& sentence);
  // Whether frames come and something is to be seen in them.
  bool isPainting();

  // Ends the program, wherever it is.
  enum class Way { signal, closedWindow };
  void quit(Way way);
  // Waits for the end, takes all down, and returns the seconds from quit() to then.
  double end();

  // Whether all that was handed over has reached the daemon; waits for it.
  bool isAllDelivered();

  using AppFixture::delegate;
  using AppFixture::services;
  using AppFixture::store;
  using AppFixture::ui;
  using AppFixture::window;

 private:
  void useSmallWindow();
  void listen();
  void note();
  void letTimeGo();
  bool isBusy();
  void untilNobodyIsBusy();
  void putSettingsRight();
  void closePanels();
  bool isAsBefore();

  QTemporaryDir folder_;
  std::string file_;
  platform::Inbox inbox_;
  std::unique_ptr<InboxCourier> courier_;
  QTimer time_;
  std::vector<std::string> messages_;
  std::vector<std::string> sentences_;
  QElapsedTimer ending_;  // valid once the program is to end
  int results_ = 0;       // messages that said how something ended
  bool isResult_ = false;
  int frames_ = 0;
};

}  // namespace seedmote::faults

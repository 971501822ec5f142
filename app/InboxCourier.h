#pragma once

#include <QFileSystemWatcher>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/InboxDelivery.h"
#include "platform/core/BackgroundPoll.h"
#include "platform/core/Clock.h"
#include "platform/core/Shared.h"
#include "platform/core/Timers.h"
#include "platform/ui/Inbox.h"

namespace seedmote {

class RVAppDelegate;

// Delivers what waits in the inbox, in order, once the client is connected and the main thread is free: a
// link, or a file that is alone, through the delegate as a person sees it; several files at once in the
// background, with one summary. What the daemon did not deal with stays, and is tried again when the daemon
// answers again or the user asks for it. Main thread.
class InboxCourier final {
 public:
  static constexpr double kLookSeconds = 1;
  static constexpr double kAskSeconds = 5;  // between two questions whether the daemon answers

  // Both outlive the courier; the inbox outlives the background threads.
  InboxCourier(platform::Inbox& inbox, RVAppDelegate& delegate);
  ~InboxCourier();
  InboxCourier(const InboxCourier&) = delete;
  InboxCourier& operator=(const InboxCourier&) = delete;

  // Something came into the inbox.
  void look();

  // Tells what could not be taken into the inbox.
  static void tell(const std::vector<platform::Refusal>& refusals);

 private:
  using Items = std::vector<platform::Inbox::Item>;

  void lookSoon();
  void lookOften();
  void goOn();
  Items pending();
  void readInbox();
  void showNotice();
  std::string waitingLine() const;
  std::string whyNot() const;
  void deliver(const Items& next);
  void deliverFirst(const platform::Inbox::Item& item);
  void settleFirst(const platform::Inbox::Item& item, const AddOutcome& outcome);
  void settleTogether(const InboxDelivery& delivery);
  void hold(const platform::Inbox::Item& item, const AddOutcome& outcome);
  void askDaemon();
  void hearDaemon(bool reachable);
  void tryAgain();
  void offerToDrop();

  platform::Inbox& inbox_;
  RVAppDelegate& delegate_;
  Items waiting_;  // as it was last read
  bool stale_ = true;
  bool looked_ = false;  // what waits has been waiting since the turn before
  bool delivering_ = false;
  bool hold_ = false;                  // until the daemon answers again
  std::optional<AddOutcome> trouble_;  // why something was not delivered
  std::uint64_t heldNumber_ = 0;       // of what was tried last, in vain
  int tries_ = 0;                      // of that
  std::set<std::uint64_t> stuck_;      // what is left alone until the user asks for it
  platform::Clock::Duration nextAsk_{};
  double connectPause_ = kAskSeconds;                 // between two attempts to connect
  std::shared_ptr<platform::Shared<Items>> sending_;  // the files under way, for the thread that sends them
  platform::BackgroundPoll poll_;
  platform::BackgroundPoll batch_;
  platform::Timers::Handle timer_;
  QFileSystemWatcher watcher_;  // another Seedmote may put things there, too
};

}  // namespace seedmote

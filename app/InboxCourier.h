#pragma once

#include <QFileSystemWatcher>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/InboxDelivery.h"
#include "platform/core/BackgroundPoll.h"
#include "platform/core/Clock.h"
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
  struct Together;

  void goOn();
  void readInbox();
  void showNotice();
  std::string waitingLine() const;
  std::string whyNot() const;
  void deliver();
  void deliverFirst();
  void settleFirst(const AddOutcome& outcome);
  void deliverTogether(Items files);
  void settleTogether(const InboxDelivery& delivery);
  void hold(const AddOutcome& outcome);
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
  std::optional<AddOutcome> hold_;  // why the first one was not delivered
  platform::Clock::Duration nextAsk_{};
  double connectPause_ = kAskSeconds;  // between two attempts to connect
  std::shared_ptr<Together> together_;
  platform::BackgroundPoll poll_;
  platform::BackgroundPoll batch_;
  platform::Timers::Handle timer_;
  QFileSystemWatcher watcher_;  // another Seedmote may put things there, too
};

}  // namespace seedmote

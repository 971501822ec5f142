#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/ui/Inbox.h"

namespace seedmote {

class InboxCourier;
class RVAppDelegate;

// What other programs and the command line hand over: kept in the inbox at once, delivered when that can be.
// Made before the services and gone after them, for their threads use it.
class Intake final {
 public:
  Intake();
  ~Intake();
  Intake(const Intake&) = delete;
  Intake& operator=(const Intake&) = delete;

  // Links, "file://" URLs, paths; what cannot be added is told in the window. Any thread, while there are
  // services; blocks until all is on the disk.
  void take(const std::vector<std::string>& given);

  // Says in the window what could not be taken. Any thread.
  static void tell(std::vector<platform::Refusal> refusals);

  // Delivers from now on, until stopDelivering(). `delegate` has its window. Main thread.
  void deliverTo(RVAppDelegate& delegate);
  void stopDelivering();

 private:
  platform::Inbox inbox_;
  std::unique_ptr<InboxCourier> courier_;
};

}  // namespace seedmote

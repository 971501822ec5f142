#pragma once

#include <string>

#include "platform/core/Timers.h"

class QQuickWindow;

namespace seedmote {

class RVTorrentListController;

// Saves one picture of the window once its list stands, prints what the list shows, and ends the program:
// for a machine without a display. Main thread.
class Snapshot final {
 public:
  enum Exit { kShown = 0, kNotSaved = 1, kNotSetUp = 2, kNoDaemon = 3, kTooLate = 4 };

  Snapshot(std::string file, QQuickWindow& window, RVTorrentListController& list);

 private:
  void look();
  bool standsStill() const;
  void finish();
  void printRows() const;
  void end(Exit code, const std::string& message);

  std::string file_;
  QQuickWindow& window_;
  RVTorrentListController& list_;
  platform::Timers::Handle looking_;
  platform::Timers::Handle limit_;
};

}  // namespace seedmote

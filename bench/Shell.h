#pragma once

#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "app/RVAppDelegate.h"
#include "app/RealServices.h"
#include "app/RealUiServices.h"
#include "bench/PreparedDaemonProcess.h"
#include "settings/RVSettingsStore.h"

namespace seedmote::bench {

// All of the program but main(), in this process, with the real clock, before a prepared daemon of so many
// torrents. One at a time; main thread, after a QGuiApplication.
class Shell final {
 public:
  // Returns once the list is laid out and nothing moves any more.
  explicit Shell(int torrents);
  ~Shell();
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;

  RVAppDelegate& delegate() { return *delegate_; }
  platform::TableView& table() { return *delegate_->torrentListController().table(); }

 private:
  struct Home {
    Home();  // the environment names it from now on
    QTemporaryDir folder;
  };

  void storeSettings();

  Home home_;
  PreparedDaemonProcess daemon_;
  std::unique_ptr<RealServices> services_;
  std::unique_ptr<RealUiServices> uiServices_;
  RVSettingsStore store_;
  std::unique_ptr<RVAppDelegate> delegate_;
};

// Runs the event loop until `done`; raises std::runtime_error after a minute.
void runUntil(const std::function<bool()>& done);
void runFor(double seconds);

}  // namespace seedmote::bench

#pragma once

#include <functional>
#include <memory>

#include "app/Intake.h"
#include "app/RVAppDelegate.h"
#include "app/RVRightBarController.h"
#include "app/RealServices.h"
#include "settings/RVSettingsStore.h"
#include "tests/support/TestUiServices.h"

namespace seedmote::soak {

// The program from its start to its end, with the real clock, settings file, inbox and HTTP; only what would
// leave the program is in memory: copied texts and links that are opened. Main thread.
class Shell final {
 public:
  // `restarts`: when the person asks for it after a change of the server. Else that does nothing.
  Shell(platform::Idiom idiom, bool restarts);
  ~Shell();
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;

  // Until the program is quit, by whatever way.
  void run();

  RVAppDelegate& delegate() { return *delegate_; }
  RVRightBarController& bar() { return *delegate_->mainViewController().rightBarViewController(); }
  platform::TableView& list() { return *delegate_->torrentListController().table(); }
  RVSettingsStore& store() { return store_; }
  Intake& intake() { return intake_; }
  support::TestUiServices& ui() { return *ui_; }

  // Settings as of somebody who has used the settings panel before.
  static void install(const std::string& port, const std::string& user, const std::string& password);

 private:
  Intake intake_;
  RealServices services_;
  std::unique_ptr<support::TestUiServices> ui_;
  RVSettingsStore store_;
  std::unique_ptr<RVAppDelegate> delegate_;
  QMetaObject::Connection closed_;
};

}  // namespace seedmote::soak

#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "app/RVAppDelegate.h"
#include "app/RVRightBarController.h"
#include "client/RVTrans.h"
#include "platform/core/Log.h"
#include "settings/RVSettingsStore.h"
#include "tests/support/TestServices.h"
#include "tests/support/TestUiServices.h"

namespace seedmote {

// The whole program in one process, before a scripted daemon that is not there, with a clock that the test
// drives.
class ShellFixture : public testing::Test {
 protected:
  void launch(platform::Idiom idiom, const std::string& systemVersion, const LaunchOptions& options = {}) {
    makeServices(idiom, systemVersion);
    services->setSetting("Version", "9.9");
    services->defaults.setObject("SavedVersion", savedVersion);
    makeShell(options);
  }
  void makeServices(platform::Idiom idiom, const std::string& systemVersion) {
    services = std::make_unique<support::TestServices>(http, idiom);
    services->device = platform::Device(idiom, systemVersion, "test device");
  }
  void makeShell(const LaunchOptions& options = {}) {
    delegate = std::make_unique<RVAppDelegate>(store);
    delegate->didFinishLaunchingWithOptions(options);
    settle();
  }
  void settle() {
    services->settle();
    services->settle();
  }
  void advance(double seconds) {
    services->clock.advanceSeconds(seconds);
    settle();
  }
  RVRightBarController& bar() { return *delegate->mainViewController().rightBarViewController(); }
  void tap(int row) {
    bar().table()->setContentOffset(0, false);  // what glides would take the rows away again
    bar().table()->setViewport(0, 4000);
    settle();
    bar().table()->tapRow(row);
    settle();
  }
  // What was logged of the given lines, in the order in which it was.
  std::vector<std::string> logged(const std::vector<std::string>& wanted) const {
    std::vector<std::string> found;
    for (const std::string& record : lines.records()) {
      if (std::find(wanted.begin(), wanted.end(), record) != wanted.end()) found.push_back(record);
    }
    return found;
  }

  ~ShellFixture() override {
    delegate.reset();
    if (services) {
      services->main.quit();
      services->threads.join(std::chrono::minutes(1));
    }
    RVTrans::drop();
  }

  platform::Http* http = nullptr;  // in the scripted daemon's stead
  std::string savedVersion = "9.9";
  platform::LogRecorder lines;
  support::TestUiServices ui;
  RVSettingsStore store{std::nullopt};
  std::unique_ptr<support::TestServices> services;
  std::unique_ptr<RVAppDelegate> delegate;
};

}  // namespace seedmote

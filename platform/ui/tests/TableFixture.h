#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <future>

#include "FakeTable.h"
#include "tests/support/TestServices.h"

namespace seedmote::platform {

class TableFixture : public testing::Test {
 protected:
  // Runs what is queued for the main thread until nothing of the table is under way.
  void settle() {
    for (int turn = 0; turn < 5 || table.isReloading(); ++turn) {
      services.settle();
    }
  }

  // From the job of a wait: runs `work` on the main thread, behind what runs there during waits.
  void duringWait(const std::function<void()>& work) {
    std::promise<void> done;
    services.main.post(
        [&] {
          work();
          done.set_value();
        },
        MainThread::Lane::overlay);
    done.get_future().wait();
  }

  support::TestServices services;
  FakeController controller;
  TableView& table = controller.table;
};

}  // namespace seedmote::platform

#pragma once

#include <functional>
#include <optional>

#include "client/RVDaemonInfo.h"
#include "platform/core/Timers.h"

namespace seedmote {

// A connected client goes on with its server whatever the settings say. When the settings panel has closed
// over another server this asks whether the program is to be started anew with that one, once for each
// change. Main thread.
class ServerChange final {
 public:
  static constexpr double kLookSeconds = 2;  // between two looks whether the client has connected

  // `restart` is called when that is the answer.
  explicit ServerChange(std::function<void()> restart);

  // Whether requests would go elsewhere, or with another login.
  static bool isOther(const RVDaemonInfo& used, const RVDaemonInfo& stored);

  void panelOpened();
  void panelClosed();

 private:
  void look();
  void ask(const RVDaemonInfo& used, const RVDaemonInfo& stored) const;

  std::function<void()> restart_;
  std::optional<RVDaemonInfo> asked_;  // about this one, as long as it is what the settings say
  platform::Timers::Handle looking_;
};

}  // namespace seedmote

#pragma once

#include <QString>
#include <chrono>
#include <optional>

namespace seedmote {

// The session's bus, by its address as D-Bus's own documents have it. Main thread.
class SessionBus final {
 public:
  static constexpr std::chrono::milliseconds kPatience{2000};

  // Absent: the session has none, or SEEDMOTE_ALONE keeps this program off it.
  static std::optional<QString> address();

  // Who connects to a bus that takes connections and then says nothing waits for ever, Qt as well. When this
  // session's is such a one, the process does without from now on; answers whether. Before there are other
  // threads: it changes the environment.
  static bool leaveWhenDeaf(std::chrono::milliseconds patience = kPatience);
};

}  // namespace seedmote

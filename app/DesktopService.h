#pragma once

#include <QThread>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace seedmote {

class DesktopServiceCalls;

// Seedmote on the session bus, as "org.freedesktop.Application": one to a session. Calls come in on a thread
// of its own, so they are answered while the main thread waits. Made and destroyed on the main thread, after
// the services and before they go. A bus that goes away ends nothing.
class DesktopService final {
 public:
  static constexpr const char* kName = "org.seedmote.Seedmote";
  static constexpr const char* kPath = "/org/seedmote/Seedmote";
  static constexpr const char* kInterface = "org.freedesktop.Application";

  // A token is what the caller's window system lets a window come to the front with; empty: none.
  struct Callbacks {
    // URIs, in order. On the bus thread; the caller is answered when it returns, with an error when it
    // raises.
    std::function<void(std::vector<std::string> uris)> open;
    // The window is wanted in front. Main thread, also while that waits.
    std::function<void(std::string token)> activate;
    // One of `actions`. Main thread, through the gate.
    std::function<void(std::string name, std::string token)> action;
    std::vector<std::string> actions;
  };

  enum class Claim {
    mine,
    elsewhere,  // another program has the name
    noBus,
  };

  explicit DesktopService(Callbacks callbacks);
  ~DesktopService();
  DesktopService(const DesktopService&) = delete;
  DesktopService& operator=(const DesktopService&) = delete;

  // Asks for the name, and serves it from then on. Blocks; may be called again after `elsewhere`.
  Claim claim();

  // Gives the name back, so that the next start is a first one. What was sent before is still answered.
  // Does not block.
  void release();

 private:
  QThread thread_;
  std::unique_ptr<DesktopServiceCalls> calls_;
};

}  // namespace seedmote

#pragma once

#include <sys/types.h>

#include <QTemporaryDir>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/core/CurlHttp.h"
#include "tests/support/Needs.h"
#include "tests/support/TinyTorrent.h"

namespace seedmote::support {

// Debian's transmission-daemon in a temporary directory, on loopback ports, with everything off that would
// look for other machines. Ended and removed with this object. Operations raise std::runtime_error. Use it
// on the thread that made it: the daemon is told to die with that thread.
class RealDaemon final {
 public:
  struct Options {
    std::string credentials{};  // "user:password"; empty: no authentication
  };

  RealDaemon() : RealDaemon(Options{}) {}
  explicit RealDaemon(Options options);
  ~RealDaemon() { stop(); }
  RealDaemon(const RealDaemon&) = delete;
  RealDaemon& operator=(const RealDaemon&) = delete;

  // Why there can be none here; empty when there can. See SEEDMOTE_NEEDS_REAL_DAEMON.
  static std::string absence();

  int port() const { return port_; }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_) + "/transmission/rpc"; }
  std::filesystem::path downloads() const { return inFolder("data"); }

  // Sends one RPC request and returns the JSON answer; deals with the session id.
  std::string rpc(const std::string& body);

  // Adds so many paused torrents, "PREFIX-0" and so on. Each is another one.
  void addTorrents(int count, const std::string& prefix = "tiny");

  void stop();     // until restart()
  void restart();  // same directory and port; the torrents' ids may be others than before
  void restart(std::string credentials);  // from now on with these

 private:
  std::string inFolder(const char* name) const;
  void writeSettings() const;
  void start();
  void launch();
  std::size_t keptTorrents() const;
  bool hasEnded();
  bool isReady();
  platform::HttpAnswer post(const std::string& body);

  Options options_;
  QTemporaryDir folder_;
  pid_t process_ = -1;
  int port_ = 0;
  int added_ = 0;
  std::string sessionId_;
  platform::CurlHttp http_;
};

}  // namespace seedmote::support

#define SEEDMOTE_NEEDS_REAL_DAEMON() SEEDMOTE_NEEDS(::seedmote::support::RealDaemon::absence())

#include "tests/support/RealDaemon.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

#include "tests/support/DeafPort.h"
#include "tests/support/Encodings.h"

namespace seedmote::support {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

constexpr const char* kProgram = "/usr/bin/transmission-daemon";
constexpr auto kPatience = seconds(20);
constexpr auto kPollEvery = std::chrono::milliseconds(5);

std::filesystem::path makeDirectory() {
  std::string name = (std::filesystem::temp_directory_path() / "seedmote-daemon-XXXXXX").string();
  if (!mkdtemp(name.data())) {
    throw std::runtime_error("no temporary directory could be made");
  }
  return name;
}

// True once `ready` is, false after `patience`.
template <class Condition>
bool poll(Condition ready, seconds patience) {
  const auto deadline = steady_clock::now() + patience;
  while (!ready()) {
    if (steady_clock::now() > deadline) {
      return false;
    }
    std::this_thread::sleep_for(kPollEvery);
  }
  return true;
}

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string authentication(const std::string& credentials) {
  if (credentials.empty()) {
    return {};
  }
  const std::size_t colon = credentials.find(':');
  return " \"rpc-authentication-required\": true,\n \"rpc-username\": " +
         quoted(credentials.substr(0, colon)) +
         ",\n \"rpc-password\": " + quoted(credentials.substr(colon + 1)) + ",\n";
}

std::size_t countOf(std::string_view part, std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

// What stands between the code markers of a 409, behind the header's name.
std::string sessionIdIn(const std::string& body) {
  constexpr std::string_view kBefore = "<code>X-Transmission-Session-Id: ";
  const std::size_t start = body.find(kBefore);
  if (start == std::string::npos) {
    throw std::runtime_error("a 409 without session id: " + body);
  }
  const std::size_t from = start + kBefore.size();
  return body.substr(from, body.find("</code>", from) - from);
}

}  // namespace

std::string RealDaemon::absence() {
  return access(kProgram, X_OK) == 0 ? "" : std::string(kProgram) + " is not installed";
}

RealDaemon::RealDaemon(Options options)
    : options_(std::move(options)),
      directory_(makeDirectory()),
      port_(closedPort()),
      peerPort_(closedPort()) {
  try {
    std::filesystem::create_directories(downloads());
    writeSettings();
    start();
  } catch (...) {
    stop();
    std::filesystem::remove_all(directory_);
    throw;
  }
}

RealDaemon::~RealDaemon() {
  stop();
  std::error_code ignored;
  std::filesystem::remove_all(directory_, ignored);
}

void RealDaemon::writeSettings() const {
  std::filesystem::create_directories(directory_ / "config");
  std::ofstream file(directory_ / "config" / "settings.json");
  file << "{\n"
       << authentication(options_.credentials) << options_.moreSettings
       << " \"rpc-bind-address\": \"127.0.0.1\", \"rpc-whitelist\": \"127.0.0.1\",\n"
       << " \"rpc-port\": " << port_ << ", \"peer-port\": " << peerPort_ << ",\n"
       << " \"bind-address-ipv4\": \"127.0.0.1\", \"bind-address-ipv6\": \"::1\",\n"
       << " \"dht-enabled\": false, \"lpd-enabled\": false, \"pex-enabled\": false, \"utp-enabled\": false,\n"
       << " \"port-forwarding-enabled\": false, \"blocklist-enabled\": false, \"preallocation\": 0,\n"
       << " \"download-dir\": " << quoted(downloads().string()) << "\n}\n";
  if (!file.flush()) {
    throw std::runtime_error("settings.json could not be written");
  }
}

void RealDaemon::launch() {
  const std::string config = (directory_ / "config").string();
  const std::string output = (directory_ / "output").string();
  process_ = fork();
  if (process_ < 0) {
    throw std::runtime_error("fork failed");
  }
  if (process_ > 0) {
    return;
  }
  prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test program that crashes leaves no daemon behind
  const int log = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  dup2(log, STDOUT_FILENO);
  dup2(log, STDERR_FILENO);
  execl(kProgram, kProgram, "-f", "-g", config.c_str(), static_cast<char*>(nullptr));
  _exit(127);
}

void RealDaemon::start() {
  launch();
  waitUntilReady();
}

// Another daemon may sit on the port, and this one loads its torrents after it has begun to answer.
void RealDaemon::waitUntilReady() {
  const std::string ours = "\"config-dir\":" + quoted((directory_ / "config").string());
  const bool answers = poll(
      [&] {
        if (waitpid(process_, nullptr, WNOHANG) != 0) {
          process_ = -1;
          throw std::runtime_error("transmission-daemon ended at once");
        }
        const platform::HttpAnswer answer = post("{\"method\":\"session-get\"}");
        return answer.status == 200 && answer.body.find(ours) != std::string::npos;
      },
      kPatience);
  const bool loaded =
      answers &&
      poll(
          [&] {
            return countOf("\"id\":", rpc(R"({"method":"torrent-get","arguments":{"fields":["id"]}})")) >=
                   torrents_;
          },
          kPatience);
  if (!loaded) {
    throw std::runtime_error("transmission-daemon did not become ready on port " + std::to_string(port_));
  }
}

void RealDaemon::stop() {
  if (process_ < 0) {
    return;
  }
  kill(process_, SIGTERM);
  const auto ended = [this] { return waitpid(process_, nullptr, WNOHANG) != 0; };
  if (!poll(ended, kPatience)) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  process_ = -1;
}

void RealDaemon::restart() {
  stop();
  start();
}

platform::HttpAnswer RealDaemon::post(const std::string& body) {
  platform::HttpRequest request{url(), "POST", {{"X-Transmission-Session-Id", sessionId_}}, body, 20};
  if (!options_.credentials.empty()) {
    request.headers.push_back({"Authorization", "Basic " + base64(options_.credentials)});
  }
  platform::HttpAnswer answer = http_.exchange(request);
  if (answer.status == 409) {
    sessionId_ = sessionIdIn(answer.body);
    request.headers.front().value = sessionId_;
    answer = http_.exchange(request);
  }
  return answer;
}

std::string RealDaemon::rpc(const std::string& body) {
  const platform::HttpAnswer answer = post(body);
  if (answer.status != 200) {
    throw std::runtime_error("status " + std::to_string(answer.status) + ": " + answer.message + answer.body);
  }
  return answer.body;
}

std::vector<TinyTorrent> RealDaemon::addTorrents(int count, const std::string& prefix) {
  std::vector<TinyTorrent> added;
  for (int i = 0; i < count; ++i) {
    TinyTorrent torrent = makeTinyTorrent(prefix + "-" + std::to_string(i), static_cast<int>(torrents_));
    const std::string answer = rpc(R"({"method":"torrent-add","arguments":{"paused":true,"metainfo":")" +
                                   base64(torrent.metainfo) + "\"}}");
    if (answer.find(torrent.hash) == std::string::npos) {
      throw std::runtime_error("a torrent was not added: " + answer);
    }
    ++torrents_;
    added.push_back(std::move(torrent));
  }
  return added;
}

}  // namespace seedmote::support

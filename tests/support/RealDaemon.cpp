#include "tests/support/RealDaemon.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <thread>
#include <utility>

#include "tests/support/DaemonTexts.h"
#include "tests/support/DeafPort.h"
#include "tests/support/Encodings.h"

namespace seedmote::support {
namespace {

constexpr const char* kProgram = "/usr/bin/transmission-daemon";

// Whether `done` became true in good time.
bool poll(const std::function<bool()>& done) {
  constexpr auto kPollEvery = std::chrono::milliseconds(5);
  for (int turn = 0; turn < 4000; ++turn) {
    if (done()) {
      return true;
    }
    std::this_thread::sleep_for(kPollEvery);
  }
  return false;
}

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

}  // namespace

std::string RealDaemon::absence() {
  return access(kProgram, X_OK) == 0 ? "" : std::string(kProgram) + " is not installed";
}

RealDaemon::RealDaemon(Options options) : options_(std::move(options)), port_(closedPort()) {
  std::filesystem::create_directories(downloads());
  writeSettings();
  start();
}

std::string RealDaemon::inFolder(const char* name) const {
  return folder_.filePath(QString::fromLatin1(name)).toStdString();
}

void RealDaemon::writeSettings() const {
  std::ofstream file(inFolder("settings.json"));
  const std::size_t colon = options_.credentials.find(':');
  file << "{\n \"rpc-authentication-required\": " << (options_.credentials.empty() ? "false" : "true")
       << ", \"rpc-username\": " << quoted(options_.credentials.substr(0, colon))
       << ",\n \"rpc-password\": " << quoted(options_.credentials.substr(colon + 1)) << ",\n"
       << " \"rpc-bind-address\": \"127.0.0.1\", \"rpc-whitelist\": \"127.0.0.1\",\n"
       << " \"rpc-port\": " << port_ << ", \"peer-port\": " << closedPort() << ",\n"
       << " \"bind-address-ipv4\": \"127.0.0.1\", \"bind-address-ipv6\": \"::1\",\n"
       << " \"dht-enabled\": false, \"lpd-enabled\": false, \"pex-enabled\": false, \"utp-enabled\": false,\n"
       << " \"port-forwarding-enabled\": false, \"blocklist-enabled\": false, \"preallocation\": 0,\n"
       << " \"download-dir\": " << quoted(downloads().string()) << "\n}\n";
}

void RealDaemon::start() {
  launch();
  if (!poll([this] { return isReady() || hasEnded(); }) || process_ < 0) {
    stop();
    throw std::runtime_error("transmission-daemon did not become ready on port " + std::to_string(port_));
  }
}

// Not by way of Qt: ThreadSanitizer loses the thread that starts a process so.
void RealDaemon::launch() {
  const std::string folder = folder_.path().toStdString();
  const std::string output = inFolder("output");
  process_ = fork();
  if (process_ != 0) {
    return;
  }
  prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test program that crashes leaves no daemon behind
  const int log = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  dup2(log, STDOUT_FILENO);
  dup2(log, STDERR_FILENO);
  execl(kProgram, kProgram, "-f", "-g", folder.c_str(), static_cast<char*>(nullptr));
  _exit(127);
}

// The daemon keeps a file for each of its torrents.
std::size_t RealDaemon::keptTorrents() const {
  std::error_code problem;
  const std::filesystem::directory_iterator files(inFolder("torrents"), problem);
  return problem ? 0 : static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

bool RealDaemon::hasEnded() {
  if (process_ > 0 && waitpid(process_, nullptr, WNOHANG) != 0) {
    process_ = -1;
  }
  return process_ < 0;
}

// Another daemon may sit on the port, and this one loads its torrents after it has begun to answer.
bool RealDaemon::isReady() {
  const platform::HttpAnswer session = post(R"({"method":"session-get"})");
  const std::string ours = "\"config-dir\":" + quoted(folder_.path().toStdString());
  if (session.body.find(ours) == std::string::npos) {
    return false;
  }
  const std::string stats = rpc(R"({"method":"session-stats"})");
  return stats.find("\"torrentCount\":" + std::to_string(keptTorrents()) + ",") != std::string::npos;
}

void RealDaemon::stop() {
  if (process_ > 0) {
    kill(process_, SIGTERM);
  }
  if (!poll([this] { return hasEnded(); })) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
}

void RealDaemon::restart() {
  stop();
  start();
}

void RealDaemon::restart(std::string credentials) {
  stop();
  options_.credentials = std::move(credentials);
  writeSettings();
  start();
}

platform::HttpAnswer RealDaemon::post(const std::string& body) {
  platform::HttpRequest request{url(), "POST", {{"X-Transmission-Session-Id", sessionId_}}, body, 20};
  if (!options_.credentials.empty()) {
    request.headers.push_back({"Authorization", "Basic " + base64(options_.credentials)});
  }
  platform::HttpAnswer answer = http_.exchange(request);
  if (answer.status == 409) {
    sessionId_ = texts::sessionIdIn(answer.body);
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

void RealDaemon::addTorrents(int count, const std::string& prefix) {
  for (int i = 0; i < count; ++i) {
    const TinyTorrent torrent = makeTinyTorrent(prefix + "-" + std::to_string(i), added_);
    const std::string answer = rpc(R"({"method":"torrent-add","arguments":{"paused":true,"metainfo":")" +
                                   base64(torrent.metainfo) + "\"}}");
    if (answer.find("\"torrent-added\"") == std::string::npos) {
      throw std::runtime_error("a torrent was not added: " + answer);
    }
    ++added_;
  }
}

}  // namespace seedmote::support

#include "app/Restart.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <system_error>
#include <utility>

#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"

namespace seedmote {

namespace {

constexpr const char* kThisProgram = "/proc/self/exe";
constexpr std::array<std::string_view, 3> kKept = {"--idiom", "--system-version", "--refresh"};

// Comes back when it fails. By its own name first: that is how the process is then called, and a newer
// version stands there after an update.
void start(const std::vector<std::string>& commandLine) {
  std::vector<char*> arguments;
  for (const std::string& argument : commandLine) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  std::error_code problem;
  const std::filesystem::path file = std::filesystem::read_symlink(kThisProgram, problem);
  if (!problem) {
    execv(file.c_str(), arguments.data());
  }
  execv(kThisProgram, arguments.data());
}

}  // namespace

Restart::Restart(std::vector<std::string> commandLine) : commandLine_(std::move(commandLine)) {}

void Restart::ask(const QWindow& window) {
  platform::log("Seedmote starts anew\n");
  window_ = WindowPlace::of(window);
  platform::services().main.quit();
}

int Restart::carryOut(int code) const {
  if (!window_) {
    return code;
  }
  std::vector<std::string> again{commandLine_.front()};
  const std::vector<std::string> kept = keptOptions({commandLine_.begin() + 1, commandLine_.end()});
  again.insert(again.end(), kept.begin(), kept.end());
  window_->handOver();
  platform::flushLog();
  start(again);
  std::cerr << "seedmote: it could not be started again: " << std::strerror(errno) << '\n';
  return kFailed;
}

std::vector<std::string> Restart::keptOptions(const std::vector<std::string>& arguments) {
  std::vector<std::string> kept;
  for (auto at = arguments.begin(); at != arguments.end(); ++at) {
    const std::size_t equals = at->find('=');
    const bool isKept =
        std::find(kKept.begin(), kKept.end(), std::string_view(*at).substr(0, equals)) != kKept.end();
    if (isKept) {
      kept.push_back(*at);
    }
    if (isKept && equals == std::string::npos && at + 1 != arguments.end()) {
      kept.push_back(*++at);
    }
  }
  return kept;
}

}  // namespace seedmote

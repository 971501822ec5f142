#include "tests/support/TlsFront.h"

#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <thread>

#include "tests/support/DeafPort.h"
#include "tests/support/SelfSigned.h"

namespace seedmote::support {
namespace {

using std::chrono::steady_clock;

constexpr const char* kProgram = "/usr/bin/socat";
constexpr auto kPatience = std::chrono::seconds(20);
constexpr auto kPollEvery = std::chrono::milliseconds(5);

// The child process inherits it and reads it by its number.
FileDescriptor fileInMemory(const std::string& bytes) {
  FileDescriptor file(memfd_create("certificate", 0));
  if (write(file.get(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
    throw std::runtime_error("the certificate could not be written");
  }
  return file;
}

}  // namespace

std::string TlsFront::absence() {
  return access(kProgram, X_OK) == 0 ? "" : std::string(kProgram) + " is not installed";
}

TlsFront::TlsFront(int plainPort) : port_(closedPort()), pem_(fileInMemory(SelfSigned().pem())) {
  try {
    launch(plainPort);
    waitUntilReady();
  } catch (...) {
    stop();
    throw;
  }
}

TlsFront::~TlsFront() {
  stop();
}

void TlsFront::launch(int plainPort) {
  const std::string listener = "OPENSSL-LISTEN:" + std::to_string(port_) +
                               ",bind=127.0.0.1,fork,reuseaddr,verify=0,cert=/proc/self/fd/" +
                               std::to_string(pem_.get());
  const std::string target = "TCP:127.0.0.1:" + std::to_string(plainPort);
  process_ = fork();
  if (process_ < 0) {
    throw std::runtime_error("fork failed");
  }
  if (process_ == 0) {
    setpgid(0, 0);  // with its children, one for each connection
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    execl(kProgram, kProgram, "-lf/dev/null", listener.c_str(), target.c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
}

void TlsFront::waitUntilReady() {
  const auto deadline = steady_clock::now() + kPatience;
  while (connectToLoopback(port_).get() < 0) {
    const bool ended = waitpid(process_, nullptr, WNOHANG) != 0;
    if (ended) {
      process_ = -1;
    }
    if (ended || steady_clock::now() > deadline) {
      throw std::runtime_error("socat does not listen on port " + std::to_string(port_));
    }
    std::this_thread::sleep_for(kPollEvery);
  }
}

void TlsFront::stop() {
  if (process_ > 0) {
    kill(-process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
}

}  // namespace seedmote::support

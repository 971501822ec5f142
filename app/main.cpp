#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "app/Program.h"
#include "platform/core/Log.h"

namespace {

// A core holds the password. The limit of 1 also keeps the kernel from handing one to a crash reporter, which
// a limit of 0 does not. Whoever looks for a fault lifts it: prlimit --core=unlimited --pid PID.
void leaveNoCore() {
  rlimit limit{};
  if (getrlimit(RLIMIT_CORE, &limit) == 0) {
    limit.rlim_cur = limit.rlim_max < 1 ? limit.rlim_max : 1;
    setrlimit(RLIMIT_CORE, &limit);
  }
}

}  // namespace

int main(int argc, char** argv) {
  // What the program writes (settings, a password among them) is its owner's alone.
  umask(S_IRWXG | S_IRWXO);
  leaveNoCore();
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);  // what cannot be written is told like a full disk
  seedmote::platform::installLogTerminateHandler();
  return seedmote::Program().run(argc, argv);
}

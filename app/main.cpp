#include <sys/stat.h>

#include <csignal>

#include "app/Program.h"
#include "platform/core/Log.h"

int main(int argc, char** argv) {
  // What the program writes (settings, a password among them) is its owner's alone.
  umask(S_IRWXG | S_IRWXO);
  std::signal(SIGPIPE, SIG_IGN);
  seedmote::platform::installLogTerminateHandler();
  return seedmote::Program().run(argc, argv);
}

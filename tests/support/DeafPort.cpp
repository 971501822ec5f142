#include "tests/support/DeafPort.h"

#include <sys/socket.h>

#include <utility>

namespace seedmote::support {

// With a backlog of 0 one connection fits into the queue; the attempts of later ones are dropped.
DeafPort::DeafPort() : listener_(listenOnLoopback(0, 0)) {
  const sockaddr_in address = loopbackAddress(port());
  for (int i = 0; i < 4; ++i) {
    FileDescriptor filler(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // In progress for ever, but for the first.
    (void)connect(filler.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    fillers_.push_back(std::move(filler));
  }
}

int closedPort() {
  const FileDescriptor listener = listenOnLoopback(0, 1);
  return portOf(listener);
}

}  // namespace seedmote::support

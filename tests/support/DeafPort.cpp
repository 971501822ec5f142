#include "tests/support/DeafPort.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace seedmote::support {
namespace {

constexpr int kRoomyBacklog = 16;

}  // namespace

// With a backlog of 0 one connection fits into the queue; the attempts of later ones are dropped.
DeafPort::DeafPort(Kind kind) : listener_(listenOnLoopback(0, kind == Kind::full ? 0 : kRoomyBacklog)) {
  if (kind == Kind::connects) {
    return;
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port()));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  for (int i = 0; i < 4; ++i) {
    FileDescriptor filler(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // In progress for ever, but for the first.
    (void)connect(filler.get(), reinterpret_cast<sockaddr*>(&address), sizeof address);
    fillers_.push_back(std::move(filler));
  }
}

int closedPort() {
  const FileDescriptor listener = listenOnLoopback(0, 1);
  return portOf(listener);
}

}  // namespace seedmote::support

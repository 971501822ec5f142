#include "tests/support/FileDescriptor.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace seedmote::support {
namespace {

void check(int result, const char* what) {
  if (result < 0) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

}  // namespace

sockaddr_in loopbackAddress(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
  if (this != &other) {
    reset();
    descriptor_ = other.descriptor_.exchange(-1);
  }
  return *this;
}

void FileDescriptor::reset() {
  const int descriptor = descriptor_.exchange(-1);
  if (descriptor >= 0) {
    close(descriptor);
  }
}

void FileDescriptor::shutDown() const {
  if (descriptor_ >= 0) {
    shutdown(descriptor_, SHUT_RDWR);
  }
}

FileDescriptor listenOnLoopback(int port, int backlog) {
  FileDescriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  check(listener.get(), "socket");
  const int on = 1;
  check(setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on), "SO_REUSEADDR");
  const sockaddr_in address = loopbackAddress(port);
  check(bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), "bind");
  check(listen(listener.get(), backlog), "listen");
  return listener;
}

FileDescriptor connectToLoopback(int port) {
  FileDescriptor client(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_in address = loopbackAddress(port);
  if (connect(client.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    client.reset();
  }
  return client;
}

int portOf(const FileDescriptor& listener) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  check(getsockname(listener.get(), reinterpret_cast<sockaddr*>(&address), &size), "getsockname");
  return ntohs(address.sin_port);
}

}  // namespace seedmote::support

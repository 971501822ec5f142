#include "tests/support/ByteStream.h"

#include <sys/socket.h>

namespace seedmote::support {

long ByteStream::read(char* to, std::size_t size) {
  return recv(socket_.get(), to, size, 0);
}

bool ByteStream::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

}  // namespace seedmote::support

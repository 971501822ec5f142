#pragma once

#include <sys/socket.h>

#include <cstddef>
#include <string_view>

#include "tests/support/FileDescriptor.h"

namespace seedmote::support {

// The server's end of one connection.
class ByteStream {
 public:
  explicit ByteStream(FileDescriptor& socket) : socket_(socket) {}
  virtual ~ByteStream() = default;

  // False when the peer broke the handshake off.
  virtual bool open() { return true; }
  // At most `size` bytes; 0 or less at the end or after an error.
  virtual long read(char* to, std::size_t size) { return recv(socket_.get(), to, size, 0); }
  // False when the connection is gone.
  virtual bool write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t sent = send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (sent <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
  }
  // A polite end of what was written.
  virtual void finish() {}

 protected:
  FileDescriptor& socket_;
};

}  // namespace seedmote::support

#pragma once

#include <netinet/in.h>

#include <atomic>

namespace seedmote::support {

// Owns a descriptor; -1 is none.
class FileDescriptor final {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  ~FileDescriptor() { reset(); }
  FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(other.descriptor_.exchange(-1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept;

  int get() const { return descriptor_; }
  void reset();
  // Ends both directions, so that a thread that blocks on it wakes. Any thread.
  void shutDown() const;

 private:
  std::atomic<int> descriptor_{-1};
};

sockaddr_in loopbackAddress(int port);  // 127.0.0.1

// A listener on 127.0.0.1; `port` 0 lets the system choose. Raises std::system_error.
FileDescriptor listenOnLoopback(int port, int backlog);
// A connection to a port of 127.0.0.1; none when nobody listens there.
FileDescriptor connectToLoopback(int port);
int portOf(const FileDescriptor& listener);

}  // namespace seedmote::support

#pragma once

#include <vector>

#include "tests/support/FileDescriptor.h"

namespace seedmote::support {

// A port of 127.0.0.1 where a connection attempt is never answered, as by a host that is switched off.
class DeafPort final {
 public:
  DeafPort();
  int port() const { return portOf(listener_); }

 private:
  FileDescriptor listener_;
  std::vector<FileDescriptor> fillers_;
};

// A port of 127.0.0.1 where nobody listens.
int closedPort();

}  // namespace seedmote::support

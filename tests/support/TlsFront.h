#pragma once

#include "tests/support/LoopbackDaemon.h"
#include "tests/support/RawClient.h"

namespace seedmote::support {

// Stands before a plain port of 127.0.0.1: what comes over TLS it hands on.
class TlsFront final {
 public:
  explicit TlsFront(int plainPort) {
    daemon_.setHandler([plainPort](const RecordedRequest& request) {
      return Reply{.bytes = rawExchange(plainPort, request.raw)};
    });
  }

  int port() const { return daemon_.port(); }

 private:
  LoopbackDaemon daemon_{{.tls = true}};
};

}  // namespace seedmote::support

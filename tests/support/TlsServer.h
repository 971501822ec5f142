#pragma once

#include <memory>

#include "tests/support/ByteStream.h"

namespace seedmote::support {

// Speaks TLS with a certificate that nobody trusts (SelfSigned).
class TlsServer final {
 public:
  TlsServer();
  ~TlsServer();

  // Wants a certificate of the client from now on, which none here has.
  void demandClientCertificate();

  std::unique_ptr<ByteStream> streamOn(FileDescriptor& socket) const;

 private:
  class Stream;
  struct Context;
  std::unique_ptr<Context> context_;
};

}  // namespace seedmote::support

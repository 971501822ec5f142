#pragma once

#include <memory>

#include "tests/support/ByteStream.h"

namespace seedmote::support {

// Speaks TLS with a certificate that it signed itself, for a name that fits nobody, and that expired long
// ago: what a home server shows at its worst. Raises std::runtime_error.
class TlsServer final {
 public:
  // With `demandClientCertificate` it wants one of the client too, which none here has.
  explicit TlsServer(bool demandClientCertificate);
  ~TlsServer();

  std::unique_ptr<ByteStream> streamOn(FileDescriptor& socket) const;

 private:
  class Stream;
  struct Context;
  std::unique_ptr<Context> context_;
};

}  // namespace seedmote::support

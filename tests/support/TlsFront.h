#pragma once

#include <sys/types.h>

#include <string>

#include "tests/support/FileDescriptor.h"
#include "tests/support/Needs.h"

namespace seedmote::support {

// socat before a plain port of 127.0.0.1: what comes over TLS it hands on, with a certificate that nobody
// trusts (SelfSigned). Ended with this object. Use it on the thread that made it: socat is told to die with
// that thread.
class TlsFront final {
 public:
  explicit TlsFront(int plainPort);  // raises std::runtime_error
  ~TlsFront();
  TlsFront(const TlsFront&) = delete;
  TlsFront& operator=(const TlsFront&) = delete;

  // Why there can be none here; empty when there can. See SEEDMOTE_NEEDS_TLS_FRONT.
  static std::string absence();

  int port() const { return port_; }

 private:
  void launch(int plainPort);
  void waitUntilReady();
  void stop();

  int port_ = 0;
  FileDescriptor pem_;  // a file in memory
  pid_t process_ = -1;
};

}  // namespace seedmote::support

#define SEEDMOTE_NEEDS_TLS_FRONT() SEEDMOTE_NEEDS(::seedmote::support::TlsFront::absence())

#pragma once

namespace seedmote::support {

// Stands in for the name service while it lives, one at a time: no test asks a name server. A look-up of
// "slow.invalid" hangs; all other names are unknown; numeric addresses and "localhost" keep their meaning.
// Works by a getaddrinfo() of the test program's own, which the libraries then call.
class FakeNames final {
 public:
  FakeNames();
  // Lets hanging look-ups fail and waits until they have left.
  ~FakeNames();
  FakeNames(const FakeNames&) = delete;
  FakeNames& operator=(const FakeNames&) = delete;

  // Waits until one look-up hangs.
  void waitForHanging();
};

}  // namespace seedmote::support

#pragma once

namespace seedmote {

// Stands around an action of the user that puts a message of its own up. Taken while the client is not
// connected, such an action sends nothing, and nobody would take its message down: at its end this does, with
// an error that says so. Main thread.
class UnconnectedNotice final {
 public:
  UnconnectedNotice();
  ~UnconnectedNotice();
  UnconnectedNotice(const UnconnectedNotice&) = delete;
  UnconnectedNotice& operator=(const UnconnectedNotice&) = delete;

 private:
  bool connected_;
};

}  // namespace seedmote

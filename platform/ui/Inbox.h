#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/ui/HandedOver.h"

namespace seedmote::platform {

// Keeps the links and files that were handed to the program, in order and over restarts, until somebody says
// that they were dealt with. Each is a folder below the inbox's own, "000000000012.link/link" or
// "000000000012.file/NAME", which is there whole or not at all; the owner alone can read it. Several programs
// may put things into one folder, but only the one that holds its lock may deliver them. Any thread.
class Inbox final {
 public:
  struct Item {
    enum class Kind : std::uint8_t { link, file };
    std::uint64_t number = 0;
    Kind kind = Kind::link;
    std::string name;  // for people: the link, or the file's name
    std::string path;  // of the file that holds the link, or of the kept file
  };

  // Below `folder`, which is made when it is missing. `changed` is called, on any thread, after something
  // came.
  Inbox(std::string folder, std::function<void()> changed);
  ~Inbox();
  Inbox(const Inbox&) = delete;
  Inbox& operator=(const Inbox&) = delete;

  // Keeps links and files, those named first before the others, but those that wait already; they are on the
  // disk when this returns. What cannot be added, or kept, is told. Blocks. The changed function is called
  // before it returns.
  std::vector<Refusal> take(const std::vector<std::string>& given);

  // Whether somebody is putting things in: there is more to come.
  bool isTaking() const { return taking_ > 0; }

  // What waits, oldest first.
  std::vector<Item> waiting() const;

  // Ends an item: it was dealt with, or is not wanted any more.
  void drop(const Item& item);

  // Whether this object may deliver; tries again to become the one that may. One thread.
  bool mayDeliver();

  const std::string& folder() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
  std::atomic<int> taking_{0};
};

// $XDG_STATE_HOME/seedmote/inbox, by default in ~/.local/state.
std::string standardInboxFolder();

}  // namespace seedmote::platform

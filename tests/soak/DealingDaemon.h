#pragma once

#include <cstdint>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/support/LoopbackDaemon.h"

namespace seedmote::soak {

// A daemon on the wire with torrents that can be removed. It starts anew when it is told to, and by chance in
// the midst of a request; each start brings a new session id, deals the ids of its torrents anew, and for a
// request or two there are no torrents, as with the real one. Thread-safe.
//
// Some torrents have the same name as another one, or the same name and size. What nobody sees but the test
// tells them apart: a torrent's number, which the list has as the bytes that were uploaded.
class DealingDaemon final {
 public:
  DealingDaemon(unsigned seed, int torrents);

  int port() const { return wire_.port(); }

  void restart();
  // The chance, at each request, that the daemon starts anew before it looks at it, and the same chance that
  // it does so when it has carried the request out, whose answer is lost then.
  void setUnrest(double chance);

  // The numbers of the torrents that are there.
  std::set<int> numbers() const;
  // Puts a torrent into the place of each that was removed.
  void replenish();
  int restarts() const;

 private:
  struct Torrent {
    int number;
    int id;
    std::string name;
    int size;
  };

  support::Reply reply(const support::RecordedRequest& request);
  bool happens(double chance);
  void startAnew();
  void remove(const std::string& ids);
  std::string listed(const std::string& ids) const;
  void add();

  mutable std::mutex mutex_;
  std::mt19937 random_;
  std::vector<Torrent> torrents_;
  std::size_t count_;
  double unrest_ = 0;
  int loading_ = 0;  // requests that find no torrents yet
  int numbers_ = 0;
  int ids_ = 0;  // that this session has dealt; none comes twice
  int restarts_ = 0;
  support::LoopbackDaemon wire_;  // the last to be made, the first to go
};

}  // namespace seedmote::soak

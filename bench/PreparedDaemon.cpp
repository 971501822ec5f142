// A daemon on 127.0.0.1 whose answers are made before anybody asks.
//
//   prepared-daemon TORRENTS [FILES]   prints its port; ends with its standard input. Two lists are answered
//   in
//                                      turn, so that whoever fetches again gets something new; the first one
//                                      is always the same. FILES: those of the detail answer
#include <atomic>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <string>

#include "bench/TorrentList.h"
#include "tests/support/LoopbackDaemon.h"

namespace seedmote::bench {

namespace {

using support::RecordedRequest;
using support::Reply;
namespace replies = support::replies;

bool asks(const RecordedRequest& request, const char* what) {
  return request.body.find(what) != std::string::npos;
}

void serve(int torrents, int files) {
  const Reply lists[] = {replies::json(torrentList(torrents)), replies::json(torrentList(torrents, 39))};
  const Reply detail = replies::json(torrentDetail(files));
  std::atomic<unsigned> asked{0};
  support::LoopbackDaemon daemon;
  daemon.setHandler([&](const RecordedRequest& request) {
    const bool isLoggedIn = request.header("X-Transmission-Session-Id") == daemon.sessionId();
    if (!isLoggedIn || !asks(request, "torrent-get")) return daemon.model().reply(request);
    return asks(request, "\"ids\"") ? detail : lists[asked++ % 2];
  });
  std::cout << daemon.port() << std::endl;
  std::cin.ignore(std::numeric_limits<std::streamsize>::max());
}

}  // namespace

}  // namespace seedmote::bench

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "prepared-daemon TORRENTS [FILES]\n";
    return 2;
  }
  seedmote::bench::serve(std::atoi(argv[1]), argc > 2 ? std::atoi(argv[2]) : 10);
  return 0;
}

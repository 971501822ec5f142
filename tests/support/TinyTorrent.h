#pragma once

#include <string>

namespace seedmote::support {

// A torrent of one file of a few bytes, without tracker.
struct TinyTorrent {
  std::string name;
  std::string metainfo;  // the bytes of the .torrent file
  std::string content;   // the bytes of its one file
};

// Another `number` makes another torrent.
TinyTorrent makeTinyTorrent(const std::string& name, int number);

}  // namespace seedmote::support

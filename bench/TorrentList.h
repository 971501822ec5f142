#pragma once

#include <string>

namespace seedmote::bench {

// Answers as the daemon writes them, with a line feed at the end; the same for the same arguments on every
// machine.

// To the list query: ten fields a torrent, names of about 38 letters. Another `seed`, other torrents.
std::string torrentList(int count, unsigned seed = 38);

// To the detail query: one torrent of so many files, and a gigabyte in pieces for each hundred of them.
std::string torrentDetail(int files);

// A request that hands over a large torrent file: one text of 30 MB.
std::string longText();

}  // namespace seedmote::bench

#include "tests/support/TinyTorrent.h"

#include "tests/support/Encodings.h"

namespace seedmote::support {
namespace {

constexpr int kPieceLength = 32768;

std::string bencoded(const std::string& text) {
  return std::to_string(text.size()) + ":" + text;
}
std::string bencoded(std::size_t number) {
  return "i" + std::to_string(number) + "e";
}

}  // namespace

TinyTorrent makeTinyTorrent(const std::string& name, int number) {
  const std::string content = "torrent " + std::to_string(number) + "\n";
  // The keys of a bencoded dictionary are sorted.
  const std::string info = "d" + bencoded("length") + bencoded(content.size()) + bencoded("name") +
                           bencoded(name) + bencoded("piece length") + bencoded(kPieceLength) +
                           bencoded("pieces") + bencoded(sha1(content)) + "e";
  return {name, "d" + bencoded("info") + info + "e", content, hex(sha1(info))};
}

}  // namespace seedmote::support

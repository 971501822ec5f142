#include "tests/support/TinyTorrent.h"

#include <QCryptographicHash>

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
  const QByteArray piece =
      QCryptographicHash::hash(QByteArray::fromStdString(content), QCryptographicHash::Sha1);
  // The keys of a bencoded dictionary are sorted.
  const std::string info = "d" + bencoded("length") + bencoded(content.size()) + bencoded("name") +
                           bencoded(name) + bencoded("piece length") + bencoded(kPieceLength) +
                           bencoded("pieces") + bencoded(piece.toStdString()) + "e";
  return {name, "d" + bencoded("info") + info + "e", content};
}

}  // namespace seedmote::support

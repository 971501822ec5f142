#include "tests/support/Encodings.h"

#include <zlib.h>

#include <QByteArray>
#include <stdexcept>

namespace seedmote::support {

std::string gzip(std::string_view bytes) {
  constexpr int kGzipWindow = 15 + 16;  // 16 asks zlib for the gzip wrapping
  z_stream stream{};
  if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kGzipWindow, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("deflateInit2");
  }
  std::string packed(deflateBound(&stream, bytes.size()), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

std::string base64(std::string_view bytes) {
  return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())).toBase64().toStdString();
}

}  // namespace seedmote::support

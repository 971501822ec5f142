#include "tests/support/Encodings.h"

#include <openssl/evp.h>
#include <zlib.h>

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace seedmote::support {
namespace {

constexpr int kGzipWindow = 15 + 16;  // 16 asks zlib for the gzip wrapping

// Packs `count` bytes that `next` hands out in pieces of at most the size that it is asked for.
std::string pack(std::size_t count, const std::function<std::string_view(std::size_t)>& next) {
  z_stream stream{};
  if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kGzipWindow, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("deflateInit2");
  }
  std::string packed;
  char buffer[16 << 10];
  int result = Z_OK;
  while (result == Z_OK) {
    if (stream.avail_in == 0 && count > 0) {
      const std::string_view piece = next(count);
      stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.data()));
      stream.avail_in = static_cast<uInt>(piece.size());
      count -= piece.size();
    }
    stream.next_out = reinterpret_cast<Bytef*>(buffer);
    stream.avail_out = sizeof buffer;
    result = deflate(&stream, count == 0 ? Z_FINISH : Z_NO_FLUSH);
    packed.append(buffer, sizeof buffer - stream.avail_out);
  }
  deflateEnd(&stream);
  if (result != Z_STREAM_END) {
    throw std::runtime_error("deflate");
  }
  return packed;
}

}  // namespace

std::string gzip(std::string_view bytes) {
  return pack(bytes.size(), [&](std::size_t) { return bytes; });
}

std::string gzippedZeros(std::size_t count) {
  const std::string zeros(64 << 10, '\0');
  return pack(count, [&](std::size_t left) {
    return std::string_view(zeros).substr(0, std::min(left, zeros.size()));
  });
}

std::string base64(std::string_view bytes) {
  std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0');
  const int length =
      EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                      reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string sha1(std::string_view bytes) {
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned size = 0;
  if (EVP_Digest(bytes.data(), bytes.size(), digest, &size, EVP_sha1(), nullptr) != 1) {
    throw std::runtime_error("SHA-1");
  }
  return std::string(reinterpret_cast<char*>(digest), size);
}

std::string hex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

}  // namespace seedmote::support

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace seedmote::support {

std::string gzip(std::string_view bytes);
// What unpacks to so many zero bytes: about a thousandth of it, made without holding it.
std::string gzippedZeros(std::size_t count);
std::string base64(std::string_view bytes);  // standard alphabet, padded, no line ends
std::string sha1(std::string_view bytes);    // 20 bytes
std::string hex(std::string_view bytes);     // lower case

}  // namespace seedmote::support

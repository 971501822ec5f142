#pragma once

#include <string>
#include <string_view>

namespace seedmote::support {

std::string gzip(std::string_view bytes);
std::string base64(std::string_view bytes);  // standard alphabet, padded, no line ends

}  // namespace seedmote::support

#pragma once

#include <string_view>

namespace seedmote::fuzz {

// Reads the text with RapidJSON, too, and aborts when they differ otherwise than is wanted. Where RapidJSON
// is not installed nothing is compared.
void compareWithOracle(std::string_view text);

}  // namespace seedmote::fuzz

#pragma once

#include <cstddef>
#include <string_view>

// The text side of the writer: which bytes need escapes. For the files of this room only.
namespace seedmote::json::detail {

// How many bytes at the start need no escape. Bytes of 0x80 and above never need one.
std::size_t plainPrefix(std::string_view text);

// Copies up to the first byte that needs an escape: how many bytes that is. `to` has room for all.
std::size_t copyPlain(char* to, std::string_view text);

std::string_view escapeFor(char byte);

// The order of strings: by UTF-16 units, which puts U+10000 and above before U+E000.
bool comesBefore(std::string_view left, std::string_view right);

}  // namespace seedmote::json::detail

#pragma once

#include <string_view>

namespace seedmote::platform {

// True when the bytes are UTF-8 by RFC 3629: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValidUtf8(std::string_view bytes);

}  // namespace seedmote::platform

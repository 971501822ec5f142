#pragma once

#include <string>

namespace seedmote {

// The link that opens a letter to the author, percent-escaped: it names the versions of what is at work.
std::string authorMailLink(const std::string& address);

}  // namespace seedmote

#pragma once

#include <optional>
#include <string>

namespace seedmote::platform {

// The path that a "file://" URL (RFC 8089) names, or a path from the root as it is; empty for what names no
// file of this machine. Its bytes need not be UTF-8.
std::string pathOfFile(const std::string& file);

// The bytes of the file at pathOfFile(). Absent for what can't be
// read: no file, a folder, a device, another kind of URL, more than a gigabyte. Blocks; any thread.
std::optional<std::string> contentsOfFile(const std::string& file);

}  // namespace seedmote::platform

#pragma once

#include <optional>
#include <string>

namespace seedmote::platform {

// The bytes of a file that a "file://" URL (RFC 8089) or a path from the root names. Absent for what can't be
// read: no file, a folder, a device, another kind of URL, more than a gigabyte. Blocks; any thread.
std::optional<std::string> contentsOfFile(const std::string& file);

}  // namespace seedmote::platform

#pragma once

#include <optional>
#include <string>

#include "json/Value.h"

namespace seedmote::json {

// A dictionary or an array as compact JSON text (UTF-8), entries in their own order, at most 32 levels
// deep. Absent on failure, after one log line that names the error. Any thread.
std::optional<std::string> JSONRepresentation(ValueRef value);

}  // namespace seedmote::json

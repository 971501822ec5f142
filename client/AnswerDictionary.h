#pragma once

#include <string_view>

#include "json/Value.h"

namespace seedmote {

// A copy of the daemon's answer with one entry more; that entry alone when the answer is no dictionary.
json::Value withEntry(const json::Value& answer, std::string_view key, const json::Value& value);

}  // namespace seedmote

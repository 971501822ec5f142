#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "json/Value.h"

namespace seedmote::json {

// Reads one JSON document (an array or an object at the outside) from UTF-8 text. Absent on failure, after
// one log line that names the error. Any thread.
Value JSONValue(std::string_view text);

// As above; on failure `error` gets the reader's message, on success it is left alone.
Value JSONValue(std::string_view text, std::string& error);

// As above, in pieces, between which `goOn` is asked; see YxJsonParser::setGoOn.
Value JSONValue(std::string_view text, std::string& error,
                const std::function<bool(std::size_t treeBytes)>& goOn);

}  // namespace seedmote::json

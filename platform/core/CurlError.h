#pragma once

#include <curl/curl.h>

#include <string_view>

#include "platform/core/Http.h"

namespace seedmote::platform {

// What a failed transfer means to the program. `text` is curl's own sentence: some kinds are told apart
// by the TLS library's words alone. `osError` is the errno of a connection that failed, 0 if unknown.
HttpError httpErrorOf(CURLcode code, std::string_view text, long osError);

}  // namespace seedmote::platform

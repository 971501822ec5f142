#pragma once

#include <string>

namespace seedmote::support {

// Sends these bytes to a port of 127.0.0.1 and returns one HTTP answer, head and body, as it came; what came
// until then when the connection ends or five seconds pass, nothing when nobody listens.
std::string rawExchange(int port, const std::string& request);

}  // namespace seedmote::support

#pragma once

#include <string_view>

namespace seedmote::json {

// Gets each line that this room has to log, whole, on the thread that reads or writes.
using LogFunction = void (*)(std::string_view line);

// Sets where log lines go; a null function (the state at the start) drops them. Any thread.
void setLogFunction(LogFunction function);

void logLine(std::string_view line);

}  // namespace seedmote::json

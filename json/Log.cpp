#include "json/Log.h"

#include <atomic>

namespace seedmote::json {

namespace {
std::atomic<LogFunction> logFunction{nullptr};
}

void setLogFunction(LogFunction function) {
  logFunction.store(function, std::memory_order_release);
}

void logLine(std::string_view line) {
  if (LogFunction function = logFunction.load(std::memory_order_acquire)) function(line);
}

}  // namespace seedmote::json

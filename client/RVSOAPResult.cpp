#include "client/RVSOAPResult.h"

#include "json/JSONValue.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"

namespace seedmote {

namespace {
constexpr std::size_t kReadAtOnce = std::size_t{64} << 10;  // bytes; well under a millisecond to read
}

json::Value RVSOAPResult::getResponseDict() const {
  if (!response) {
    return {};
  }
  if (response->size() <= kReadAtOnce) {
    return json::JSONValue(*response);
  }
  return platform::services().main.wait([this] { return json::JSONValue(*response); });
}

}  // namespace seedmote

#include "client/RVSOAPResult.h"

#include "json/JSONValue.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/core/Threads.h"

namespace seedmote {

namespace {

constexpr std::size_t kReadAtOnce = std::size_t{64} << 10;  // bytes; well under a millisecond to read

// A text may become a tree of twenty times its size. A hundred thousand torrents take about 24 MiB.
constexpr std::size_t kLargestTree = std::size_t{512} << 20;

bool mayGoOn(std::size_t treeBytes) {
  return treeBytes <= kLargestTree && !platform::services().threads.isStopping();
}

}  // namespace

json::Value RVSOAPResult::getResponseDict() const {
  std::string problem;
  return getResponseDict(problem);
}

json::Value RVSOAPResult::getResponseDict(std::string& problem) const {
  if (!response) {
    problem = "there is no text";
    return {};
  }
  if (response->size() <= kReadAtOnce) {
    return json::JSONValue(*response, problem);
  }
  return platform::services().main.wait([&] { return json::JSONValue(*response, problem, mayGoOn); });
}

}  // namespace seedmote

#include "client/AnswerDictionary.h"

#include <string>
#include <utility>
#include <vector>

namespace seedmote {

json::Value withEntry(const json::Value& answer, std::string_view key, const json::Value& value) {
  std::vector<std::pair<std::string, json::Value>> entries;
  for (const json::Entry entry : answer.ref().entries()) {
    entries.emplace_back(entry.key, answer.share(entry.value));
  }
  entries.emplace_back(key, value);
  return json::Value::dictionary(entries);
}

}  // namespace seedmote

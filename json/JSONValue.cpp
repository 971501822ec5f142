#include "json/JSONValue.h"

#include "json/Log.h"
#include "json/YxJsonParser.h"

namespace seedmote::json {

Value JSONValue(std::string_view text) {
  std::string error;
  return JSONValue(text, error);
}

Value JSONValue(std::string_view text, std::string& error) {
  return JSONValue(text, error, nullptr);
}

Value JSONValue(std::string_view text, std::string& error,
                const std::function<bool(std::size_t treeBytes)>& goOn) {
  YxJsonParser parser;
  parser.setGoOn(goOn);
  Value value = parser.objectWithString(text);
  if (!value) {
    error = parser.error();
    logLine("-JSONValue failed. Error is: " + error);
  }
  return value;
}

}  // namespace seedmote::json

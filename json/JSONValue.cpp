#include "json/JSONValue.h"

#include "json/Log.h"
#include "json/YxJsonParser.h"

namespace seedmote::json {

Value JSONValue(std::string_view text) {
  std::string error;
  return JSONValue(text, error);
}

Value JSONValue(std::string_view text, std::string& error) {
  YxJsonParser parser;
  Value value = parser.objectWithString(text);
  if (!value) {
    error = parser.error();
    logLine("-JSONValue failed. Error is: " + error);
  }
  return value;
}

}  // namespace seedmote::json

#include "json/JSONRepresentation.h"

#include "json/Log.h"
#include "json/YxJsonWriter.h"

namespace seedmote::json {

std::optional<std::string> JSONRepresentation(ValueRef value) {
  YxJsonWriter writer;
  std::optional<std::string> text = writer.stringWithObject(value);
  if (!text) logLine("-JSONRepresentation failed. Error is: " + writer.error());
  return text;
}

}  // namespace seedmote::json

#include "json/YxJsonWriter.h"

#include "json/Utf8.h"
#include "json/YxJsonStreamWriter.h"
#include "json/YxJsonStreamWriterAccumulator.h"

namespace seedmote::json {

std::optional<std::string> YxJsonWriter::dataWithObject(ValueRef value) {
  error_.clear();
  Value proxy;
  for (int replaced = 0; value.offersProxyForJson() && replaced < 1000; ++replaced) {
    proxy = value.proxyForJson();
    value = proxy;
  }
  YxJsonStreamWriterAccumulator accumulator;
  YxJsonStreamWriter writer;
  writer.setSortKeys(sortKeys_);
  writer.setMaxDepth(maxDepth_);
  writer.setHumanReadable(humanReadable_);
  writer.setDelegate(&accumulator);
  bool written = false;
  if (value.kind() == Kind::dictionary) {
    written = writer.writeObject(value);
  } else if (value.kind() == Kind::array) {
    written = writer.writeArray(value);
  } else {
    writer.setError("Not valid type for JSON");
  }
  if (written) return accumulator.takeData();
  error_ = writer.error();
  return std::nullopt;
}

std::optional<std::string> YxJsonWriter::stringWithObject(ValueRef value) {
  std::optional<std::string> data = dataWithObject(value);
  if (data && !detail::isUtf8(*data)) {
    error_ = "A text is not valid UTF-8";
    data.reset();
  }
  return data;
}

std::optional<std::string> YxJsonWriter::stringWithObject(ValueRef value, std::optional<JsonError>* error) {
  std::optional<std::string> text = stringWithObject(value);
  if (!text && error != nullptr) *error = JsonError{std::string(jsonErrorDomain), 0, error_};
  return text;
}

}  // namespace seedmote::json

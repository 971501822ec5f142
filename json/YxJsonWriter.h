#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "json/JsonError.h"
#include "json/Value.h"

namespace seedmote::json {

// Writes a dictionary or an array: value in, text or a message out. Used by one thread.
class YxJsonWriter {
 public:
  bool sortKeys() const { return sortKeys_; }
  void setSortKeys(bool sort) { sortKeys_ = sort; }
  bool humanReadable() const { return humanReadable_; }
  void setHumanReadable(bool readable) { humanReadable_ = readable; }
  // Containers within each other; 32 unless set, 0 for any number.
  std::size_t maxDepth() const { return maxDepth_; }
  void setMaxDepth(std::size_t depth) { maxDepth_ = depth; }
  const std::string& error() const { return error_; }  // of the last call; "" after a success

  std::optional<std::string> dataWithObject(ValueRef value);
  // As dataWithObject; also absent when a text in the value is not UTF-8.
  std::optional<std::string> stringWithObject(ValueRef value);
  // On failure `error`, unless null, becomes what error() says.
  std::optional<std::string> stringWithObject(ValueRef value, std::optional<JsonError>* error);

 private:
  bool sortKeys_ = false;
  bool humanReadable_ = false;
  std::size_t maxDepth_ = 32;
  std::string error_;
};

}  // namespace seedmote::json

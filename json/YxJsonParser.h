#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "json/JsonError.h"
#include "json/Value.h"

namespace seedmote::json {

// Reads one whole document: text in, one value or a message out. Used by one thread.
class YxJsonParser {
 public:
  Value objectWithData(std::string_view data);  // UTF-8; absent on failure
  Value objectWithString(std::string_view text) { return objectWithData(text); }
  // On failure `error`, unless null, becomes what error() says.
  Value objectWithString(std::string_view text, std::optional<JsonError>* error);

  // Asked between pieces of a large text with the bytes that the tree takes so far; false gives the reading
  // up. Unless set, a text is read in one piece, however long that takes.
  using GoOn = std::function<bool(std::size_t treeBytes)>;
  void setGoOn(GoOn goOn) { goOn_ = std::move(goOn); }

  // Containers within each other; 32 unless set.
  std::size_t maxDepth() const { return maxDepth_; }
  void setMaxDepth(std::size_t depth) { maxDepth_ = depth; }
  // The last failure's message; a success does not clear it.
  const std::string& error() const { return error_; }

 private:
  std::size_t maxDepth_ = 32;
  GoOn goOn_;
  std::string error_;
};

}  // namespace seedmote::json

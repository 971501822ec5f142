#pragma once

#include <utility>

#include "json/YxJsonStreamParserAdapter.h"

namespace seedmote::json {

// Keeps the last top-level value that an adapter found.
class YxJsonStreamParserAccumulator final : public YxJsonStreamParserAdapterDelegate {
 public:
  void foundArray(YxJsonStreamParserBase&, Value array) override { value_ = std::move(array); }
  void foundObject(YxJsonStreamParserBase&, Value object) override { value_ = std::move(object); }
  const Value& value() const { return value_; }

 private:
  Value value_;
};

}  // namespace seedmote::json

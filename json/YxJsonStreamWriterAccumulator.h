#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "json/YxJsonStreamWriter.h"

namespace seedmote::json {

// Collects what a stream writer writes.
class YxJsonStreamWriterAccumulator final : public YxJsonStreamWriterDelegate {
 public:
  void appendBytes(YxJsonStreamWriter&, const char* bytes, std::size_t length) override {
    // Doubling would move a long text many times; after a large piece little follows.
    const std::size_t needed = data_.size() + length;
    if (needed > data_.capacity())
      data_.reserve(needed + (length >= largePiece ? length / 8 : data_.size() * 3));
    data_.append(bytes, length);
  }
  const std::string& data() const { return data_; }
  std::string takeData() { return std::move(data_); }

 private:
  static constexpr std::size_t largePiece = std::size_t{1} << 20;

  std::string data_;
};

}  // namespace seedmote::json

#pragma once

#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace seedmote::json {

// A growable buffer of bytes with a read index: the lowest layer of the reader. Used by one thread.
//
// Bytes may also be lent: then they are read in place and only what is left of them when the loan ends is
// copied. To whoever reads there is no difference.
class YxJsonUTF8Stream {
 public:
  static constexpr std::size_t initialCapacity = 4096;

  YxJsonUTF8Stream() = default;
  // Points into itself, so it stays where it is.
  YxJsonUTF8Stream(const YxJsonUTF8Stream&) = delete;
  YxJsonUTF8Stream& operator=(const YxJsonUTF8Stream&) = delete;

  // Drops what lies before the index, then appends.
  void appendData(std::string_view bytes);

  // appendData without the copy where possible: `bytes` must stay until endLoan.
  void lend(std::string_view bytes);
  void endLoan();

  // The byte at the index, read as signed: one of 0x80 and above becomes a unit at the top of the 16-bit
  // range. False at the end of the data.
  bool getUnichar(char16_t& unit) const;
  // Advances by one, at the end of the data too, then as getUnichar.
  bool getNextUnichar(char16_t& unit);
  void skip() { ++_index; }
  void skipWhitespace();  // tab, line feed, carriage return, blank
  bool haveRemainingCharacters(std::size_t count) const { return _index + count <= _length; }
  // Whether the bytes at the index are `literal`; if so, advances past it. Callers check the length first.
  bool skipCharacters(std::string_view literal);
  // From the index to the next quote, backslash or control byte. False when the data ends before (the index
  // then stands at the end); `fragment` is absent when the bytes are no UTF-8.
  bool getRetainedStringFragment(std::optional<std::string>& fragment);
  // The bytes from `start` to `start + length`; absent when they are no UTF-8 or lie outside.
  std::optional<std::string> stringWithRange(std::size_t start, std::size_t length) const;

  std::size_t index() const { return _index; }
  void setIndex(std::size_t index) { _index = index; }

  // For the scanner, which walks the bytes itself.
  const char* current() const { return _bytes + _index; }
  const char* end() const { return _bytes + _length; }
  void setCurrent(const char* at) { _index = static_cast<std::size_t>(at - _bytes); }

 private:
  void refresh();

  std::string _data;  // what was appended, or left over from a loan
  std::size_t _index = 0;
  const char* _bytes = "";
  std::size_t _length = 0;
  bool lent_ = false;
};

}  // namespace seedmote::json

#include "json/YxJsonUTF8Stream.h"

#include <algorithm>

#include "json/Utf8.h"

namespace seedmote::json {

void YxJsonUTF8Stream::refresh() {
  _bytes = _data.data();
  _length = _data.size();
}

void YxJsonUTF8Stream::appendData(std::string_view bytes) {
  endLoan();
  if (_index > 0) {
    _data.erase(0, std::min(_index, _data.size()));
    _index = 0;
  }
  if (_data.capacity() < initialCapacity) _data.reserve(initialCapacity);
  _data.append(bytes);
  refresh();
}

void YxJsonUTF8Stream::lend(std::string_view bytes) {
  endLoan();
  if (_index < _data.size() || bytes.empty()) {
    appendData(bytes);
    return;
  }
  _data.clear();
  _index = 0;
  _bytes = bytes.data();
  _length = bytes.size();
  lent_ = true;
}

void YxJsonUTF8Stream::endLoan() {
  if (!lent_) return;
  lent_ = false;
  const std::size_t used = std::min(_index, _length);
  if (used < _length) _data.assign(_bytes + used, _length - used);
  _index = 0;
  refresh();
}

bool YxJsonUTF8Stream::getUnichar(char16_t& unit) const {
  if (_index >= _length) return false;
  unit = static_cast<char16_t>(static_cast<signed char>(_bytes[_index]));
  return true;
}

bool YxJsonUTF8Stream::getNextUnichar(char16_t& unit) {
  ++_index;
  return getUnichar(unit);
}

void YxJsonUTF8Stream::skipWhitespace() {
  while (_index < _length) {
    const char byte = _bytes[_index];
    if (byte != ' ' && byte != '\t' && byte != '\n' && byte != '\r') return;
    ++_index;
  }
}

bool YxJsonUTF8Stream::skipCharacters(std::string_view literal) {
  if (std::memcmp(_bytes + _index, literal.data(), literal.size()) != 0) return false;
  _index += literal.size();
  return true;
}

bool YxJsonUTF8Stream::getRetainedStringFragment(std::optional<std::string>& fragment) {
  const std::size_t start = _index;
  while (_index < _length) {
    const auto byte = static_cast<unsigned char>(_bytes[_index]);
    if (byte < 0x20 || byte == '"' || byte == '\\') {
      fragment = stringWithRange(start, _index - start);
      return true;
    }
    ++_index;
  }
  return false;
}

std::optional<std::string> YxJsonUTF8Stream::stringWithRange(std::size_t start, std::size_t length) const {
  if (start > _length || length > _length - start) return std::nullopt;
  const std::string_view bytes(_bytes + start, length);
  if (!detail::isUtf8(bytes)) return std::nullopt;
  return std::string(bytes);
}

}  // namespace seedmote::json

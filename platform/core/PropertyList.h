#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace seedmote::platform {

// One value of a property list: a copy is a value of its own. Format: Apple's property lists, XML form.
// Texts are UTF-8 without NUL. Dates, data and UIDs are not used here.
class PropertyList {
 public:
  using Array = std::vector<PropertyList>;
  using Dictionary = std::map<std::string, PropertyList, std::less<>>;

  PropertyList() = default;  // absent
  PropertyList(std::string value) : value_(std::move(value)) {}
  PropertyList(std::string_view value) : value_(std::string(value)) {}
  PropertyList(const char* value) : value_(std::string(value)) {}
  PropertyList(Array value) : value_(std::move(value)) {}
  PropertyList(Dictionary value) : value_(std::move(value)) {}
  static PropertyList integer(std::int64_t value);
  static PropertyList real(double value);
  static PropertyList boolean(bool value);

  bool isAbsent() const { return std::holds_alternative<std::monostate>(value_); }
  const std::string* text() const { return std::get_if<std::string>(&value_); }
  const Array* array() const { return std::get_if<Array>(&value_); }
  const Dictionary* dictionary() const { return std::get_if<Dictionary>(&value_); }
  Dictionary* dictionary() { return std::get_if<Dictionary>(&value_); }

  // The entry under `key`; absent when there is none or this is no dictionary.
  const PropertyList& operator[](std::string_view key) const;

  // The text of a text or a number; absent for any other kind.
  std::optional<std::string> asText() const;

  // For the log. What holdsSecret() names shows as bullets.
  std::string description() const;

  // True for the entries that nobody may read: the values of a specifier whose "ValueType" is "PasswordBox",
  // or whose "Title" is "Password".
  static bool holdsSecret(const Dictionary& dictionary, std::string_view key);

  // XML. Absent values are left out. `parse` gives an absent value and a message in `error` for what is no
  // property list, holds a kind that is not used here, is nested more than 32 deep, or has more than 4,096
  // arrays and dictionaries.
  std::string toXml() const;
  static PropertyList parse(std::string_view bytes, std::string* error = nullptr);

  bool operator==(const PropertyList&) const = default;

  // Calls `visitor` with the value in its own kind; std::monostate when absent.
  template <class Visitor>
  auto visit(Visitor&& visitor) const {
    return std::visit(visitor, value_);
  }

 private:
  std::variant<std::monostate, std::string, std::int64_t, double, bool, Array, Dictionary> value_;
};

}  // namespace seedmote::platform

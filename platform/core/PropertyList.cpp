#include "platform/core/PropertyList.h"

#include <plist/plist.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>

#include "platform/core/Format.h"

namespace seedmote::platform {
namespace {

constexpr int kDeepest = 32;
constexpr int kMostContainers = 4096;

struct FreeNode {
  void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, FreeNode>;

struct FreeText {
  void operator()(char* text) const { std::free(text); }
};
using Text = std::unique_ptr<char, FreeText>;

// The library takes its nodes apart by recursion, so too many must not reach it that may be nested. Which of
// them are closed only the library knows: what looks like the end of one may stand in a comment.
bool hasTooManyContainers(std::string_view xml) {
  int count = 0;
  for (std::size_t at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at + 1)) {
    const std::string_view tag = xml.substr(at + 1, 5);
    if ((tag == "array" || tag.starts_with("dict")) && ++count > kMostContainers) return true;
  }
  return false;
}

PropertyList fromNode(plist_t node, int depth);

// Asked for a copy of a text that has a zero in it, the library would abort.
std::string textFrom(plist_t node) {
  std::uint64_t length = 0;
  const char* const text = plist_get_string_ptr(node, &length);
  if (text == nullptr) return "";
  if (std::strlen(text) != length) throw std::invalid_argument("it holds a text that has a zero in it");
  return {text, length};
}

PropertyList arrayFrom(plist_t node, int depth) {
  PropertyList::Array items;
  const std::uint32_t size = plist_array_get_size(node);
  items.reserve(size);
  for (std::uint32_t i = 0; i < size; ++i)
    items.push_back(fromNode(plist_array_get_item(node, i), depth + 1));
  return items;
}

PropertyList dictionaryFrom(plist_t node, int depth) {
  PropertyList::Dictionary entries;
  plist_dict_iter given = nullptr;
  plist_dict_new_iter(node, &given);
  const std::unique_ptr<void, decltype(&std::free)> iterator(given, &std::free);
  for (;;) {
    char* key = nullptr;
    plist_t item = nullptr;
    plist_dict_next_item(node, iterator.get(), &key, &item);
    const Text owned(key);
    if (item == nullptr) break;
    entries.insert_or_assign(std::string(key), fromNode(item, depth + 1));
  }
  return entries;
}

PropertyList fromNode(plist_t node, int depth) {
  if (depth > kDeepest) throw std::invalid_argument("it is nested too deep");
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      std::uint8_t value = 0;
      plist_get_bool_val(node, &value);
      return PropertyList::boolean(value != 0);
    }
    case PLIST_UINT: {
      std::uint64_t value = 0;
      plist_get_uint_val(node, &value);
      return PropertyList::integer(static_cast<std::int64_t>(value));
    }
    case PLIST_REAL: {
      double value = 0;
      plist_get_real_val(node, &value);
      return PropertyList::real(value);
    }
    case PLIST_STRING:
      return textFrom(node);
    case PLIST_ARRAY:
      return arrayFrom(node, depth);
    case PLIST_DICT:
      return dictionaryFrom(node, depth);
    default:
      throw std::invalid_argument("it holds a value of a kind that is not used here");
  }
}

struct NodeMaker {
  plist_t operator()(std::monostate) const { return nullptr; }
  plist_t operator()(const std::string& value) const { return plist_new_string(value.c_str()); }
  plist_t operator()(std::int64_t value) const { return plist_new_uint(static_cast<std::uint64_t>(value)); }
  plist_t operator()(double value) const { return plist_new_real(value); }
  plist_t operator()(bool value) const { return plist_new_bool(value ? 1 : 0); }
  plist_t operator()(const PropertyList::Array& items) const {
    plist_t node = plist_new_array();
    for (const PropertyList& item : items) {
      if (plist_t made = item.visit(*this)) plist_array_append_item(node, made);
    }
    return node;
  }
  plist_t operator()(const PropertyList::Dictionary& entries) const {
    plist_t node = plist_new_dict();
    for (const auto& [key, value] : entries) {
      if (plist_t made = value.visit(*this)) plist_dict_set_item(node, key.c_str(), made);
    }
    return node;
  }
};

std::string quoted(std::string_view text) {
  return std::string("\"").append(text).append("\"");
}

struct Describer {
  std::string operator()(std::monostate) const { return "(null)"; }
  std::string operator()(const std::string& value) const { return quoted(value); }
  std::string operator()(std::int64_t value) const { return format("%@", value); }
  std::string operator()(double value) const { return format("%@", value); }
  std::string operator()(bool value) const { return value ? "1" : "0"; }
  std::string operator()(const PropertyList::Array& items) const {
    std::string text = "(";
    for (const PropertyList& item : items) {
      if (text.size() > 1) text += ", ";
      text += item.visit(*this);
    }
    return text + ")";
  }
  std::string operator()(const PropertyList::Dictionary& entries) const {
    std::string text = "{";
    for (const auto& [key, value] : entries) {
      if (text.size() > 1) text += " ";
      text += quoted(key) + " = ";
      text += PropertyList::holdsSecret(entries, key) ? quoted(format("%@", Secret{})) : value.visit(*this);
      text += ";";
    }
    return text + "}";
  }
};

}  // namespace

PropertyList PropertyList::integer(std::int64_t value) {
  PropertyList made;
  made.value_ = value;
  return made;
}

PropertyList PropertyList::real(double value) {
  PropertyList made;
  made.value_ = value;
  return made;
}

PropertyList PropertyList::boolean(bool value) {
  PropertyList made;
  made.value_ = value;
  return made;
}

const PropertyList& PropertyList::operator[](std::string_view key) const {
  static const PropertyList kAbsent;
  const Dictionary* entries = dictionary();
  if (entries == nullptr) return kAbsent;
  const auto found = entries->find(key);
  return found == entries->end() ? kAbsent : found->second;
}

std::optional<std::string> PropertyList::asText() const {
  if (const std::string* value = text()) return *value;
  if (isAbsent() || array() != nullptr || dictionary() != nullptr) return std::nullopt;
  return description();
}

std::string PropertyList::description() const {
  return visit(Describer());
}

bool PropertyList::holdsSecret(const Dictionary& dictionary, std::string_view key) {
  if (key != "Value" && key != "DefaultValue") return false;
  const auto is = [&dictionary](std::string_view entry, std::string_view text) {
    const auto found = dictionary.find(entry);
    return found != dictionary.end() && found->second == PropertyList(text);
  };
  return is("ValueType", "PasswordBox") || is("Title", "Password");
}

std::string PropertyList::toXml() const {
  const Node node(visit(NodeMaker()));
  if (!node) return {};
  char* xml = nullptr;
  std::uint32_t length = 0;
  plist_to_xml(node.get(), &xml, &length);
  const Text owned(xml);
  return xml == nullptr ? std::string() : std::string(xml, length);
}

PropertyList PropertyList::parse(std::string_view bytes, std::string* error) {
  const auto refuse = [error](const char* message) {
    if (error != nullptr) *error = message;
    return PropertyList();
  };
  if (bytes.size() > std::numeric_limits<std::int32_t>::max()) return refuse("it is too large");
  if (hasTooManyContainers(bytes)) return refuse("it holds too many arrays and dictionaries");
  plist_t parsed = nullptr;
  plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &parsed);
  const Node node(parsed);
  if (!node) return refuse("it is no XML property list");
  try {
    return fromNode(node.get(), 0);
  } catch (const std::invalid_argument& unusable) {
    return refuse(unusable.what());
  }
}

}  // namespace seedmote::platform

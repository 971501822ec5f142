#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace seedmote {

// Icon names by theme and words by language, both under the English name of a state. Any thread.
class RVResource {
 public:
  RVResource() = delete;

  // Builds the tables; every other operation does so by itself.
  static void initResource();

  // "Default" (at first) or "Ellegant". Under a style or language that does not exist nothing is found.
  static void setStyle(std::string style);
  // "English" (at first) or "Chinese".
  static void setLang(std::string language);

  // In the current style and language; absent for an unknown key.
  static std::optional<std::string> getIcon(std::string_view key);
  static std::optional<std::string> getWording(std::string_view key);
};

}  // namespace seedmote

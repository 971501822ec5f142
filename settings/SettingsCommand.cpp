#include "settings/SettingsCommand.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <istream>
#include <ostream>
#include <system_error>

#include "platform/core/Services.h"
#include "platform/core/UserDefaults.h"
#include "platform/core/Utf8.h"

namespace seedmote {
namespace {

constexpr std::int64_t kLongestTimeout = 2'147'483'647;  // seconds

// A rule says what is wrong with a value; empty when it is good.
using Rule = std::string (*)(std::string_view value);

template <class Number>
std::optional<Number> wholeText(std::string_view text) {
  Number number{};
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  return number;
}

bool isWholeNumber(std::string_view text, std::int64_t least, std::int64_t most) {
  const auto number = wholeText<std::int64_t>(text);
  return number && *number >= least && *number <= most && text.front() != '-';
}

bool hasControlCharacter(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

std::string checkText(std::string_view value) {
  if (!platform::isValidUtf8(value)) return "it must be UTF-8";
  return hasControlCharacter(value) ? "it must not hold control characters" : "";
}

std::string checkHost(std::string_view value) {
  if (value.empty()) return "it must be a host name or an address";
  if (value.find("://") != std::string_view::npos) return "it is given without a scheme such as http://";
  if (const std::string trouble = checkText(value); !trouble.empty()) return trouble;
  if (value.find(' ') != std::string_view::npos) return "it must not hold blanks";
  if (value.find_first_of("/?#@\\") != std::string_view::npos)
    return "it must be a host name or an address alone";
  const bool bracketed = value.front() == '[' && value.back() == ']';
  if (!bracketed && value.find_first_of(":[]") != std::string_view::npos) {
    return "the port is a setting of its own, and an IPv6 address stands in brackets";
  }
  return {};
}

std::string checkPort(std::string_view value) {
  return isWholeNumber(value, 1, 65535) ? "" : "it must be a whole number from 1 to 65535";
}

std::string checkTimeout(std::string_view value) {
  return isWholeNumber(value, 0, kLongestTimeout) ? "" : "it must be a whole number of seconds, 0 or more";
}

std::string checkTrueOrFalse(std::string_view value) {
  return value == "True" || value == "False" ? "" : "it must be True or False";
}

std::string checkYesOrNo(std::string_view value) {
  return value == "YES" || value == "NO" ? "" : "it must be YES or NO";
}

std::string checkFirstRun(std::string_view value) {
  return value == "2" || value == "3" ? "" : "it must be 2 (settings not seen yet) or 3 (seen)";
}

bool isOff(std::string_view value) {
  return value.empty() || wholeText<double>(value) == 0.0;
}

std::string checkRefresh(std::string_view value) {
  const auto seconds = wholeText<double>(value);
  const bool good = isOff(value) || (seconds && std::isfinite(*seconds) && *seconds > 0);
  return good ? "" : "it must be a number of seconds above 0, or 0 for none";
}

std::string refuse(std::string_view) {
  return "it cannot be changed";
}

struct Key {
  std::string_view name;
  Rule rule;
};

constexpr Key kKeys[] = {
    {"IP Address", checkHost},       {"Port", checkPort},          {"Username", checkText},
    {"Password", checkText},         {"UseSSL", checkTrueOrFalse}, {"Timeout", checkTimeout},
    {"ServerChanged", checkYesOrNo}, {"SavedVersion", checkText},  {"FirstRun", checkFirstRun},
    {"Refresh", checkRefresh},       {"Author", refuse},           {"Version", refuse}};

}  // namespace

SettingsCommand::SettingsCommand(RVSettingsStore& store, std::istream& input, std::ostream& errors)
    : store_(store), input_(input), errors_(errors) {}

int SettingsCommand::run(const std::vector<std::string>& assignments) {
  std::vector<Assignment> good;
  for (const std::string& assignment : assignments) {
    if (auto checked = check(assignment)) good.push_back(std::move(*checked));
  }
  if (good.size() != assignments.size()) return kWrongUse;
  platform::UserDefaults& defaults = platform::services().defaults;
  const std::string told = defaults.problem();
  if (!told.empty()) errors_ << "seedmote: " << told << '\n';
  {
    const platform::UserDefaults::Together together(defaults);
    store_.loadUserSetting();
    for (const Assignment& assignment : good) apply(assignment);
  }
  if (defaults.synchronize()) return kStored;
  if (defaults.problem() != told) errors_ << "seedmote: " << defaults.problem() << '\n';
  return kNotStored;
}

std::optional<SettingsCommand::Assignment> SettingsCommand::check(std::string_view assignment) {
  const std::size_t equals = assignment.find('=');
  if (equals == std::string_view::npos) {
    errors_ << "seedmote: --set takes KEY=VALUE\n";
    return std::nullopt;
  }
  const std::string key(assignment.substr(0, equals));
  const Key* known =
      std::find_if(std::begin(kKeys), std::end(kKeys), [&key](const Key& k) { return k.name == key; });
  if (known == std::end(kKeys)) {
    errors_ << "seedmote: there is no setting \"" << key << "\"\n";
    return std::nullopt;
  }
  std::string trouble;
  std::string value = readValue(assignment.substr(equals + 1), trouble);
  if (trouble.empty()) trouble = known->rule(value);
  if (!trouble.empty()) {
    errors_ << "seedmote: \"" << key << "\" is not stored: " << trouble << '\n';
    return std::nullopt;
  }
  return Assignment{key, std::move(value)};
}

std::string SettingsCommand::readValue(std::string_view given, std::string& trouble) {
  if (given != "-") return std::string(given);
  std::string line;
  if (!std::getline(input_, line)) trouble = "standard input holds no line for it";
  return line;
}

void SettingsCommand::apply(const Assignment& assignment) {
  const auto& [key, value] = assignment;
  const ChangedControl control{.text = value, .on = value == "True"};
  for (const SettingSection& section : store_.settingsArray()) {
    for (const SettingRow& row : section.settings) {
      if (row.settingName == key) return (store_.*row.selector)(control);
    }
  }
  if (key == "Refresh" && isOff(value)) {
    platform::services().defaults.removeObject(key);
  } else {
    platform::services().defaults.setObject(key, value);
  }
}

}  // namespace seedmote

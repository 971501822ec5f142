#include "settings/SettingControl.h"

#include <utility>

namespace seedmote {
namespace {

using Keyboard = SettingControl::Keyboard;
using Kind = SettingControl::Kind;

Kind kindOf(const std::string& valueType) {
  const std::pair<const char*, Kind> kinds[]{{"EditBox", Kind::textField},
                                             {"PasswordBox", Kind::textField},
                                             {"CheckBox", Kind::onOffSwitch},
                                             {"LinkLabel", Kind::button},
                                             {"StaticLabel", Kind::label}};
  for (const auto& [name, kind] : kinds) {
    if (valueType == name) return kind;
  }
  return Kind::none;
}

// A password has no keyboard for addresses.
Keyboard keyboardOf(const std::string& keyboardType, bool secure) {
  if (keyboardType == "NumberPad") return Keyboard::numberPad;
  return keyboardType == "URL" && !secure ? Keyboard::url : Keyboard::standard;
}

}  // namespace

SettingControl SettingControl::of(const platform::PropertyList& specifier) {
  const std::string valueType = specifier["ValueType"].asText().value_or("");
  SettingControl control;
  control.kind = kindOf(valueType);
  control.secure = valueType == "PasswordBox";
  control.keyboard = keyboardOf(specifier["KeyboardType"].asText().value_or(""), control.secure);
  control.text = specifier["Value"].asText().value_or("");
  control.on = control.text != "False";
  return control;
}

}  // namespace seedmote

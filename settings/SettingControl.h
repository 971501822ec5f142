#pragma once

#include <string>

#include "platform/core/PropertyList.h"
#include "platform/core/ScreenShapes.h"

namespace seedmote {

// The control at the right of a row of the settings screen, as the setting's preference specifier asks for
// it.
struct SettingControl {
  enum class Kind { none, textField, onOffSwitch, button, label };
  enum class Keyboard { standard, numberPad, url };

  // Of every control, in points.
  static constexpr platform::Rect kFrame{0, 0, 185, 20};

  Kind kind = Kind::none;
  Keyboard keyboard = Keyboard::standard;  // of a text field
  bool secure = false;                     // of a text field: shows bullets
  bool on = false;                         // of a switch
  std::string text;                        // of all others

  // An absent specifier has no control.
  static SettingControl of(const platform::PropertyList& specifier);
};

}  // namespace seedmote

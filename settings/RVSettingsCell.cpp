#include "settings/RVSettingsCell.h"

#include <utility>

#include "app/resources/RVResQt.h"
#include "platform/ui/LayoutEntry.h"

namespace seedmote {

using platform::enterFromLayout;
using platform::pressFromLayout;

namespace {
constexpr int kFontSize = 14;  // points
}  // namespace

void RVSettingsCell::fill(platform::IndexPath path, const std::optional<std::string>& label,
                          SettingControl control, bool editing) {
  path_ = path;
  label_ = QString::fromStdString(label.value_or(""));
  control_ = std::move(control);
  editing_ = editing;
  Q_EMIT filled();
}

void RVSettingsCell::setOn(bool on) {
  control_.on = on;
  Q_EMIT filled();
}

void RVSettingsCell::endEditingWith(const std::string& text) {
  control_.text = text;
  editing_ = false;
  Q_EMIT filled();
}

Qt::InputMethodHints RVSettingsCell::inputMethodHints() const {
  Qt::InputMethodHints hints = Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase;
  if (control_.secure) {
    hints |= Qt::ImhHiddenText | Qt::ImhSensitiveData;
  }
  switch (control_.keyboard) {
    case SettingControl::Keyboard::standard:
      break;
    case SettingControl::Keyboard::numberPad:
      hints |= Qt::ImhDigitsOnly;
      break;
    case SettingControl::Keyboard::url:
      hints |= Qt::ImhUrlCharactersOnly;
      break;
  }
  return hints;
}

// Where there is no such font, another whose letters are all of a width; never one that is a mere bitmap.
QFont RVSettingsCell::font() {
  QFont font(QStringLiteral("Courier"));
  font.setStyleHint(QFont::TypeWriter, QFont::PreferOutline);
  font.setFixedPitch(true);
  font.setPixelSize(kFontSize);
  return font;
}

QColor RVSettingsCell::backgroundColor() {
  return colorOf(32);
}

// What came past something in front is not taken: the field goes back to what it was.
template <class Step>
void RVSettingsCell::pressOrShowAgain(std::string_view where, Step step) {
  if (platform::services().main.swallowsInput()) {
    enterFromLayout(this, where, [](auto& cell) { Q_EMIT cell.filled(); });
  } else {
    enterFromLayout(this, where, std::move(step));
  }
}

void RVSettingsCell::pressField() {
  pressFromLayout(this, "text field", [path = path_](auto& cell) { Q_EMIT cell.fieldPressed(path); });
}

void RVSettingsCell::takeKeys(bool has) {
  hasKeys_ = has;
  if (has) {
    pressOrShowAgain("begin of an edit", [path = path_](auto& cell) { Q_EMIT cell.editingBegan(path); });
  } else {
    enterFromLayout(this, "end of an edit", [path = path_](auto& cell) { Q_EMIT cell.editingEnded(path); });
  }
}

// Only an assistive technology sets another text without the keys.
void RVSettingsCell::edit(const QString& text) {
  const bool isNew = text != fieldText();
  const auto step = [path = path_, text = text.toStdString(), isNew](auto& cell) {
    Q_EMIT cell.edited(path, text, isNew);
  };
  if (hasKeys_ || !isNew) {
    enterFromLayout(this, "edit", step);
  } else {
    pressOrShowAgain("edit", step);
  }
}

void RVSettingsCell::pressSwitch() {
  pressFromLayout(this, "switch",
                  [path = path_](auto& cell) { Q_EMIT cell.switchPressed(path, !cell.isOn()); });
}

void RVSettingsCell::pressButton() {
  pressFromLayout(this, "link", [title = control_.text](auto& cell) { Q_EMIT cell.buttonPressed(title); });
}

void RVSettingsCell::reveal(bool hasKeys) {
  if (hasKeys) {
    enterFromLayout(this, "control with keys",
                    [path = path_](auto& cell) { Q_EMIT cell.revealWanted(path); });
  }
}

}  // namespace seedmote

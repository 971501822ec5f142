#pragma once

#include <QColor>
#include <QFont>
#include <QSizeF>
#include <QString>
#include <QtQmlIntegration>
#include <optional>
#include <string>
#include <string_view>

#include "platform/ui/GroupedTable.h"
#include "platform/ui/TableViewCell.h"
#include "settings/SettingControl.h"

namespace seedmote {

// One row of the settings screen: its label, and the control that it has. What is done with the control it
// tells the settings controller. Main thread.
class RVSettingsCell : public platform::TableViewCell {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the settings screen.")
  Q_PROPERTY(QString label READ label NOTIFY filled)
  Q_PROPERTY(bool hasTextField READ hasTextField NOTIFY filled)
  Q_PROPERTY(bool hasSwitch READ hasSwitch NOTIFY filled)
  Q_PROPERTY(bool hasButton READ hasButton NOTIFY filled)
  Q_PROPERTY(bool hasStaticLabel READ hasStaticLabel NOTIFY filled)
  Q_PROPERTY(QString fieldText READ fieldText NOTIFY filled)
  Q_PROPERTY(QString title READ title NOTIFY filled)
  Q_PROPERTY(bool secure READ isSecure NOTIFY filled)
  Q_PROPERTY(Qt::InputMethodHints inputMethodHints READ inputMethodHints NOTIFY filled)
  Q_PROPERTY(bool on READ isOn NOTIFY filled)
  Q_PROPERTY(bool editing READ isEditing NOTIFY filled)
  Q_PROPERTY(QFont font READ font CONSTANT)
  Q_PROPERTY(QSizeF accessorySize READ accessorySize CONSTANT)
  Q_PROPERTY(QColor backgroundColor READ backgroundColor CONSTANT)

 public:
  static constexpr const char* kIdentifier = "Cell";

  RVSettingsCell() : TableViewCell(kIdentifier) {}

  // `editing`: the text is the draft of an edit that goes on.
  void fill(platform::IndexPath path, const std::optional<std::string>& label, SettingControl control,
            bool editing);
  void setOn(bool on);
  // Gives the text field the keys.
  void giveKeys() { Q_EMIT keysWanted(); }
  // An edit of the row is over, and this is its text.
  void endEditingWith(const std::string& text);

  QString label() const { return label_; }
  const SettingControl& control() const { return control_; }
  bool hasTextField() const { return control_.kind == SettingControl::Kind::textField; }
  bool hasSwitch() const { return control_.kind == SettingControl::Kind::onOffSwitch; }
  bool hasButton() const { return control_.kind == SettingControl::Kind::button; }
  bool hasStaticLabel() const { return control_.kind == SettingControl::Kind::label; }
  // Of the text field, without what was typed since the cell was filled; empty where there is none.
  QString fieldText() const { return hasTextField() ? QString::fromStdString(control_.text) : QString(); }
  // Of the button or the label; empty where there is none.
  QString title() const { return hasTextField() ? QString() : QString::fromStdString(control_.text); }
  bool isSecure() const { return control_.secure; }
  Qt::InputMethodHints inputMethodHints() const;
  bool isOn() const { return control_.on; }
  // When the cell is filled: whether its field is to have the keys.
  bool isEditing() const { return editing_; }

  // Of the label and of the control.
  static QFont font();
  static QSizeF accessorySize() { return {SettingControl::kFrame.width, SettingControl::kFrame.height}; }
  // Of the cell, all that lies in it, and the control.
  static QColor backgroundColor();

  QString accessibleName() const override { return label_; }

  // From the layout. A text field's: it was pressed, but not touched; it has the keys now, or lost them; it
  // shows `text`.
  Q_INVOKABLE void pressField();
  Q_INVOKABLE void takeKeys(bool has);
  Q_INVOKABLE void edit(const QString& text);
  Q_INVOKABLE void pressSwitch();
  Q_INVOKABLE void pressButton();
  // Another control has the keys now, or lost them.
  Q_INVOKABLE void reveal(bool hasKeys);

 Q_SIGNALS:
  // To the text field.
  void keysWanted();
  // To the controller, through the main thread's gate, with the row that the cell showed at that moment.
  void fieldPressed(seedmote::platform::IndexPath path);
  void editingBegan(seedmote::platform::IndexPath path);
  // `isNew`: the text isn't what the cell gave the field.
  void edited(seedmote::platform::IndexPath path, const std::string& text, bool isNew);
  void editingEnded(seedmote::platform::IndexPath path);
  void switchPressed(seedmote::platform::IndexPath path, bool on);
  void buttonPressed(const std::string& title);
  void revealWanted(seedmote::platform::IndexPath path);

 private:
  template <class Step>
  void pressOrShowAgain(std::string_view where, Step step);

  platform::IndexPath path_;
  QString label_;
  SettingControl control_;
  bool editing_ = false;
  bool hasKeys_ = false;
};

}  // namespace seedmote

#include "settings/RVSettingsController.h"

#include <memory>
#include <utility>

#include "client/RVUtility.h"
#include "platform/core/Log.h"
#include "platform/core/Screen.h"
#include "platform/core/Services.h"
#include "platform/core/UserDefaults.h"
#include "platform/ui/UiServices.h"
#include "platform/ui/UrlOpener.h"
#include "settings/AuthorMail.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

using platform::IndexPath;
using platform::log;
using platform::PropertyList;
using platform::services;

namespace {

constexpr double kRowHeight = 44;     // points
constexpr double kHeaderHeight = 36;  // points
constexpr double kErrorSeconds = 4;   // time enough to read an address

PropertyList::Dictionary dictionaryOf(const PropertyList& specifier) {
  return specifier.dictionary() == nullptr ? PropertyList::Dictionary() : *specifier.dictionary();
}

}  // namespace

RVSettingsController::RVSettingsController(RVSettingsStore& store, QObject* parent)
    : QObject(parent), store_(store) {
  keyboard_ = services().screen.keyboard().onNotice([this](const platform::KeyboardNotice& notice) {
    using Kind = platform::KeyboardNotice::Kind;
    if (notice.kind == Kind::didShow || notice.kind == Kind::didHide) {
      makeRoomForKeyboard();
    }
  });
}

void RVSettingsController::viewDidLoad() {
  store_.loadUserSetting();
  sections_.reload();
  makeRoomForKeyboard();
}

// The table.

const SettingSection& RVSettingsController::sectionAt(int section) const {
  return settingsArray().at(static_cast<std::size_t>(section));
}

const SettingRow& RVSettingsController::rowAt(IndexPath path) const {
  return sectionAt(path.section).settings.at(static_cast<std::size_t>(path.row));
}

int RVSettingsController::numberOfSectionsInTableView() {
  return static_cast<int>(settingsArray().size());
}

int RVSettingsController::numberOfRowsInSection(int section) {
  return static_cast<int>(sectionAt(section).settings.size());
}

std::optional<std::string> RVSettingsController::titleForHeaderInSection(int section) {
  return sectionAt(section).sectionName;
}

double RVSettingsController::heightForHeaderInSection(int /*section*/) {
  return kHeaderHeight;
}

double RVSettingsController::heightForRowAtIndexPath(IndexPath /*path*/) {
  return kRowHeight;
}

platform::TableViewCell* RVSettingsController::cellForRowAtIndexPath(IndexPath path) {
  log("Add component to setting dialog\n");
  RVSettingsCell& cell = reusableCell();
  const PropertyList specifier = services().defaults.object(rowAt(path).settingName);
  RVUtility::dumpDictionary(dictionaryOf(specifier));
  const std::optional<std::string> label = specifier["Label"].asText();
  log("txtlab = %@", label);
  SettingControl control = SettingControl::of(specifier);
  if (control.kind == SettingControl::Kind::onOffSwitch) {
    log("%d", control.on ? 1 : 0);
  }
  if (isEdited(path)) {
    control.text = edit_->draft;
  }
  cell.fill(path, label, std::move(control), isEdited(path));
  return &cell;
}

RVSettingsCell& RVSettingsController::reusableCell() {
  platform::TableView& table = sections_.table();
  if (platform::TableViewCell* known = table.dequeueReusableCell(RVSettingsCell::kIdentifier)) {
    return static_cast<RVSettingsCell&>(*known);
  }
  auto made = std::make_unique<RVSettingsCell>();
  RVSettingsCell& cell = *made;
  connect(&cell, &RVSettingsCell::fieldPressed, this, &RVSettingsController::giveKeys);
  connect(&cell, &RVSettingsCell::editingBegan, this, &RVSettingsController::beginEditing);
  connect(&cell, &RVSettingsCell::edited, this, &RVSettingsController::edit);
  connect(&cell, &RVSettingsCell::editingEnded, this, &RVSettingsController::fieldLostKeys);
  connect(&cell, &RVSettingsCell::switchPressed, this, &RVSettingsController::switchOn);
  connect(&cell, &RVSettingsCell::buttonPressed, this, &RVSettingsController::pressAuthor);
  connect(&cell, &RVSettingsCell::revealWanted, this, &RVSettingsController::reveal);
  table.addCell(std::move(made));
  return cell;
}

RVSettingsCell* RVSettingsController::visibleCell(IndexPath path) const {
  return static_cast<RVSettingsCell*>(sections_.visibleCell(path));
}

// Edits.

void RVSettingsController::giveKeys(IndexPath path) {
  RVSettingsCell* cell = visibleCell(path);
  if (cell != nullptr && !left_) {
    cell->giveKeys();
  }
}

// A field gets the keys again when its row comes back into view; then its edit goes on.
void RVSettingsController::beginEditing(IndexPath path) {
  if (left_) {
    return;
  }
  if (!isEdited(path)) {
    endEditing();
    edit_ = Edit{path, SettingControl::of(services().defaults.object(rowAt(path).settingName)).text};
  }
  reveal(path);
}

// An assistive technology sets a text without giving the field the keys: that is an edit of its own.
void RVSettingsController::edit(IndexPath path, const std::string& text, bool isNew) {
  if (isEdited(path)) {
    edit_->draft = text;
  } else if (isNew && !left_) {
    storeText(path, text);
  }
}

// The field of a row that left the screen lends its cell to another row; that ends nothing.
void RVSettingsController::fieldLostKeys(IndexPath path) {
  if (isEdited(path) && visibleCell(path) != nullptr) {
    endEditing();
  }
}

void RVSettingsController::endEditing() {
  if (const auto edit = std::exchange(edit_, std::nullopt)) {
    storeText(edit->path, edit->draft);
  }
}

void RVSettingsController::leave() {
  endEditing();
  left_ = true;
}

void RVSettingsController::storeText(IndexPath path, const std::string& text) {
  if (const SettingRow::Selector change = rowAt(path).selector) {
    (store_.*change)(ChangedControl{.text = text, .on = false});
  }
  if (RVSettingsCell* cell = visibleCell(path)) {
    cell->endEditingWith(text);
  }
}

void RVSettingsController::switchOn(IndexPath path, bool on) {
  if (left_) {
    return;
  }
  store_.usesslChanged(ChangedControl{.text = "", .on = on});
  if (RVSettingsCell* cell = visibleCell(path)) {
    cell->setOn(on);
  }
}

// The keyboard.

void RVSettingsController::makeRoomForKeyboard() {
  const std::optional<platform::Size> keyboard = services().screen.keyboard().size();
  const double covered = keyboard ? keyboard->height : 0;
  if (table()->insetBottom() == covered) {
    return;
  }
  table()->setContentInset(0, covered);
  if (edit_) {
    reveal(edit_->path);
  } else {
    table()->setContentOffset(table()->contentOffset(), true);
  }
}

// A row that can be seen whole stays where it is: the finger may be moving it.
void RVSettingsController::reveal(IndexPath path) {
  const int row = sections_.rowOf(path);
  const double top = table()->contentOffset();
  const double bottom = top + view_.frame().height() - table()->insetBottom();
  for (const platform::TableView::LiveRow& live : table()->liveRows()) {
    if (live.row == row && live.top >= top && live.top + live.height <= bottom) {
      return;
    }
  }
  table()->scrollToRow(row, true, platform::TableView::ScrollPosition::none);
}

// The author.

void RVSettingsController::pressAuthor(const std::string& title) {
  if (!left_) {
    onAuthorBtn(title);
  }
}

void RVSettingsController::onAuthorBtn(const std::string& title) {
  log("onAuthorBtn");
  if (!platform::uiServices().urlOpener.open(authorMailLink(title))) {
    OvProgressHUD::showErrorWithStatus("No program writes mail here.\n" + title, kErrorSeconds);
  }
}

}  // namespace seedmote

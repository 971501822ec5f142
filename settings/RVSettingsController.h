#pragma once

#include <QObject>
#include <QtQmlIntegration>
#include <optional>
#include <string>
#include <vector>

#include "platform/core/Listeners.h"
#include "platform/ui/GroupedTable.h"
#include "platform/ui/ViewGeometry.h"
#include "settings/RVSettingsCell.h"
#include "settings/RVSettingsStore.h"

namespace seedmote {

// The settings screen: a table of the settings' sections, in which they are edited. A text is stored when its
// edit ends, and not before. Its view ends where the root view ends, so that it knows what a keyboard covers.
// Main thread.
class RVSettingsController : public QObject, private platform::GroupedTableDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The settings screen is made by its panel.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::TableView* table READ table CONSTANT)

 public:
  // `store` outlives the controller.
  explicit RVSettingsController(RVSettingsStore& store, QObject* parent = nullptr);

  void viewDidLoad();

  platform::ViewGeometry* view() { return &view_; }
  platform::TableView* table() { return &sections_.table(); }
  const std::vector<SettingSection>& settingsArray() const { return store_.settingsArray(); }

  // Ends the edit that is under way, if there is one, and stores its text.
  void endEditing();
  bool isEditing() const { return edit_.has_value(); }
  // The screen goes: ends the edit, and takes nothing from its rows any more.
  void leave();

  // Opens a letter to the author, whose address the button shows.
  void onAuthorBtn(const std::string& title);

  // Held for those who want them; the screen itself does not.
  int rpc_version = 0;
  int rpc_version_minimum = 0;
  std::optional<std::string> version;

 private:
  struct Edit {
    platform::IndexPath path;
    std::string draft;
  };

  int numberOfSectionsInTableView() override;
  int numberOfRowsInSection(int section) override;
  std::optional<std::string> titleForHeaderInSection(int section) override;
  double heightForHeaderInSection(int section) override;
  double heightForRowAtIndexPath(platform::IndexPath path) override;
  platform::TableViewCell* cellForRowAtIndexPath(platform::IndexPath path) override;

  RVSettingsCell& reusableCell();
  RVSettingsCell* visibleCell(platform::IndexPath path) const;
  const SettingSection& sectionAt(int section) const;
  const SettingRow& rowAt(platform::IndexPath path) const;
  bool isEdited(platform::IndexPath path) const { return edit_ && edit_->path == path; }

  void giveKeys(platform::IndexPath path);
  void beginEditing(platform::IndexPath path);
  void edit(platform::IndexPath path, const std::string& text, bool isNew);
  void fieldLostKeys(platform::IndexPath path);
  void storeText(platform::IndexPath path, const std::string& text);
  void switchOn(platform::IndexPath path, bool on);
  void pressAuthor(const std::string& title);

  void makeRoomForKeyboard();
  void reveal(platform::IndexPath path);

  RVSettingsStore& store_;
  platform::ViewGeometry view_;
  platform::GroupedTable sections_{*this};
  platform::Subscription keyboard_;
  std::optional<Edit> edit_;
  bool left_ = false;
};

}  // namespace seedmote

#pragma once

#include <QObject>
#include <QtQmlIntegration>
#include <functional>
#include <memory>
#include <vector>

#include "app/RVRightBarCell.h"
#include "platform/core/Timers.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"
#include "platform/ui/ViewGeometry.h"

namespace seedmote {

class RVSettingsStore;
class RVSettingsViewController;

// The action bar: a table of buttons amid blank rows. It starts the daemon client three seconds after it is
// loaded, and opens the settings panel on the first run of a version. Main thread.
class RVRightBarController : public QObject, public platform::TableViewDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The application delegate makes it")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::TableView* table READ table CONSTANT)

 public:
  // The kinds of buttons, by the numbers of their pictures.
  enum Button { kSettings = 21, kRefresh = 22, kStart = 23, kStop = 24, kDelete = 27, kConfirmDelete = 28 };

  // Brings a panel's view into the root view, in front of all others, and takes it away again.
  struct PanelPlace {
    std::function<void(RVSettingsViewController&)> show;
    std::function<void()> drop;
  };

  // `store` outlives the bar.
  explicit RVRightBarController(RVSettingsStore& store);
  ~RVRightBarController() override;

  void setPanelPlace(PanelPlace place) { panelPlace_ = std::move(place); }
  void viewDidLoad();

  // One a row: the kind of the row's button, 0 for none.
  const std::vector<int>& rightBarID() const { return rightBarID_; }
  // Null until the panel is opened for the first time.
  RVSettingsViewController* settingsViewController() const { return settingsViewController_.get(); }

  void updateFirstTime();
  void scrollRightBarAtStartup();
  void refreshAll() { table_.reload(); }

  // As a tap on the button does, to whatever place the bar is scrolled. None where the bar has no such button
  // now.
  void press(Button button);
  bool has(Button button) const;
  bool isPanelShown() const;

  void doRefresh();
  void doStart();
  void doStop();
  // No row reaches these two; they send nothing.
  void doStartAll();
  void doStopAll();
  void doDelete(RVRightBarCell& cell);
  void doDeleteConfirm(RVRightBarCell& cell);
  void doSettings();
  void showSettingView();
  // Stands in `frame`, its buttons in the middle once they have come; an open panel follows the screen.
  void place(const QRectF& frame);
  // Stores what is being typed into the panel.
  void endEditing();

  int numberOfRowsInSection(int section) override;
  double heightForRowAtIndexPath(int row) override;
  RVRightBarCell* cellForRowAtIndexPath(int row) override;
  std::int64_t rowToken(int row) override;
  void didSelectRowAtIndexPath(int row) override;

  platform::ViewGeometry* view() { return &view_; }
  platform::TableView* table() { return &table_; }

 private:
  void initData();
  void carryOut(RVRightBarCell& cell);
  void scrollToButtons(bool animated);
  void startOrStop(bool start);
  void become(RVRightBarCell& cell, int kind);

  RVSettingsStore& store_;
  platform::TableView table_;
  platform::ViewGeometry view_;
  std::vector<int> rightBarID_;
  bool scrolled_ = false;
  std::unique_ptr<RVSettingsViewController> settingsViewController_;
  PanelPlace panelPlace_;
  platform::Timers::Handle scrollTimer_;
  platform::Timers::Handle updateTimer_;
};

}  // namespace seedmote

#pragma once

#include <QObject>
#include <QRectF>
#include <QtQmlIntegration>
#include <vector>

#include "platform/core/Listeners.h"
#include "platform/core/Timers.h"
#include "platform/ui/ViewGeometry.h"
#include "settings/RVSettingsController.h"

namespace seedmote {

// The panel that slides down over the main screen and holds the settings screen. Whoever opens it makes a new
// one each time, loads its layout, places `view` and moves it. Main thread.
class RVSettingsViewController : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Panels are made by who opens them.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* settingViewPos READ settingViewPos CONSTANT)
  Q_PROPERTY(seedmote::RVSettingsController* settingController READ settingController CONSTANT)
  Q_PROPERTY(bool closing READ isClosing NOTIFY closingChanged)

 public:
  // `store` outlives the panel.
  explicit RVSettingsViewController(RVSettingsStore& store, QObject* parent = nullptr);

  // Above the root view: where the panel comes from and goes to.
  static QRectF offScreenFrame();

  void viewDidLoad();
  void viewDidUnload();

  // In the root view's points; off the screen at first. What lies below the root view holds nothing.
  platform::ViewGeometry* view() { return &view_; }
  // In the panel; from below its title to where the root view ends.
  platform::ViewGeometry* settingViewPos() { return &settingViewPos_; }
  RVSettingsController* settingController() { return &settingController_; }

  // Whether the panel is on the screen; who opens it says when it has come.
  bool bShown() const { return bShown_; }
  void setShown(bool shown) { bShown_ = shown; }
  // True from the first onCloseBtn() on.
  bool isClosing() const { return !closing_.empty(); }

  // Stores the edit that is under way and slides the panel away, which takes nothing but the press of Close
  // meanwhile; finishClose() follows by itself.
  void onCloseBtn();
  // Ends the edit, takes the panel's view out of its parent and remembers that this version's settings were
  // seen.
  void finishClose();

  // From the layout.
  Q_INVOKABLE void pressClose();

 Q_SIGNALS:
  // To the layout, before onCloseBtn(): the keys go to the button, so that the field that is written in gets
  // what the keyboard still holds back.
  void closePressed();
  void closingChanged();
  // Told once, as the last of finishClose(): who drops the panel then does so by deleteLater().
  void closed();

 private:
  void placeSettingView();

  platform::ViewGeometry view_;
  platform::ViewGeometry settingViewPos_;
  RVSettingsController settingController_;
  platform::Subscription resize_;
  std::vector<platform::Timers::Handle> closing_;
  bool bShown_ = false;
};

}  // namespace seedmote

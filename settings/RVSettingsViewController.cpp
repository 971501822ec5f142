#include "settings/RVSettingsViewController.h"

#include <algorithm>

#include "platform/core/Device.h"
#include "platform/core/Log.h"
#include "platform/core/Screen.h"
#include "platform/core/Services.h"
#include "platform/core/UserDefaults.h"
#include "platform/ui/LayoutEntry.h"

namespace seedmote {

using platform::services;
using platform::ViewGeometry;

namespace {
constexpr double kTitleHeight = 44;  // points
constexpr double kSlideSeconds = 0.5;
constexpr double kCloseSeconds = 0.6;  // the slide is over by then
}  // namespace

RVSettingsViewController::RVSettingsViewController(RVSettingsStore& store, QObject* parent)
    : QObject(parent), view_(offScreenFrame()), settingController_(store) {
  connect(&view_, &ViewGeometry::changed, this, &RVSettingsViewController::placeSettingView);
  resize_ = services().screen.onResize([this] { placeSettingView(); });
  placeSettingView();
}

QRectF RVSettingsViewController::offScreenFrame() {
  const bool tablet = services().device.userInterfaceIdiom() == platform::Idiom::tablet;
  return tablet ? QRectF(200, -500, 566, 430) : QRectF(0, -500, 320, 430);
}

void RVSettingsViewController::viewDidLoad() {
  const QColor background = RVSettingsCell::backgroundColor();
  settingController_.table()->setBackgroundColor(background);
  view_.setBackgroundColor(background);
  settingController_.viewDidLoad();
  bShown_ = false;
  platform::log("Settings view is loaded.\n");
}

void RVSettingsViewController::viewDidUnload() {
  settingViewPos_.setInParent(false);
}

// In the midst of an animation of the panel this goes along with it.
void RVSettingsViewController::placeSettingView() {
  const QRectF panel = view_.shownFrame();
  const double bottom = services().screen.sizeAsRead().height - panel.y();
  settingViewPos_.setFrame({0, kTitleHeight, panel.width(), std::max(bottom - kTitleHeight, 0.0)});
  settingController_.view()->setFrame(QRectF(QPointF(), settingViewPos_.frame().size()));
}

void RVSettingsViewController::onCloseBtn() {
  settingController_.leave();
  ViewGeometry::animate(kSlideSeconds, [this] { view_.setFrame(offScreenFrame()); });
  closing_.push_back(services().timers.once("finishClose", kCloseSeconds, [this] { finishClose(); }));
  Q_EMIT closingChanged();
}

void RVSettingsViewController::finishClose() {
  settingController_.leave();
  const bool wasThere = view_.isInParent();
  view_.setInParent(false);
  platform::UserDefaults& defaults = services().defaults;
  defaults.setObject("SavedVersion", defaults.object("Version")["Value"]);
  defaults.setObject("FirstRun", "3");
  defaults.synchronize();
  bShown_ = false;
  if (wasThere) {
    Q_EMIT closed();
  }
}

void RVSettingsViewController::pressClose() {
  if (!services().main.swallowsInput()) {
    Q_EMIT closePressed();
    platform::enterFromLayout(this, "Close", [](auto& panel) { panel.onCloseBtn(); });
  }
}

}  // namespace seedmote

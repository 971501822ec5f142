#pragma once

#include <QQuickItem>
#include <functional>

#include "platform/core/Device.h"
#include "platform/core/Screen.h"

namespace seedmote {

// The view that holds every screen. It is measured in points, always 1024 wide on a tablet and 375 high on a
// phone, and is scaled so that it fills its frame, whose shape makes the screen's. In a frame that is held
// upright it is turned, unless the root screen accepts to be upright.
class RootView final : public QQuickItem {
  Q_OBJECT

 public:
  static constexpr double kTabletWidth = 1024;
  static constexpr double kPhoneHeight = 375;

  using Accepts = std::function<bool(platform::InterfaceOrientation)>;

  // Follows the size of `frame`, which becomes its parent, and tells `screen` its own.
  RootView(platform::Idiom idiom, platform::Screen& screen, Accepts accepts, QQuickItem* frame);

 Q_SIGNALS:
  void sizeChanged();

 private:
  void follow();

  platform::Idiom idiom_;
  platform::Screen& screen_;
  Accepts accepts_;
};

}  // namespace seedmote

#pragma once

#include <QRectF>
#include <QSizeF>

#include "platform/core/Device.h"

namespace seedmote {

// Where everything stands in the root view, in points. A plain value; make() gives what the layout files lay
// down for a root view of a size, and the launch goes on from there for the system's version.
struct ScreenPlan {
  // Regions of the main view.
  QRectF topbar;
  QRectF statusBar;  // takes the session statistics
  QRectF torrentInfo;
  QRectF rightBar;
  QRectF ad;
  // Views that the launch stacks into it.
  QRectF filterBar;
  QRectF torrentList;
  QRectF torrentDetail;  // tablet only

  static constexpr double kStatusBar = 20;  // what a system of version 7 keeps at the top
  static constexpr double kAdWidth[] = {320, 468};
  static constexpr double kAdHeight[] = {50, 60};

  static ScreenPlan make(platform::Idiom idiom, QSizeF root);

  // For a system of version 7 or above: content begins below the status bar. The root view is as high as
  // make() was told.
  void moveBelowStatusBar(platform::Idiom idiom, double rootHeight);
  // For one below.
  void useWholeHeight(platform::Idiom idiom, double rootHeight);
  // Whatever the version: the list of a tablet reaches below the screen.
  void stretchList(platform::Idiom idiom, double rootHeight);
};

}  // namespace seedmote

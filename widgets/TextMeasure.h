#pragma once

#include "widgets/OvProgressHUD.h"

namespace seedmote {

// Measures a text in the overlay's font: the system's, bold, 16 points. Needs a QGuiApplication.
OvProgressHUD::TextMeasure overlayTextMeasure();

}  // namespace seedmote

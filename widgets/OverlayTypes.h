#pragma once

#include <QtQml/qqmlregistration.h>

#include "widgets/OvProgressHUD.h"
#include "widgets/OverlayParts.h"

namespace seedmote {

// The overlay's state and its parts under their names in layouts; the state itself knows no QML.
struct OvProgressHUDForeign {
  Q_GADGET
  QML_FOREIGN(seedmote::OvProgressHUD)
  QML_NAMED_ELEMENT(OvProgressHUD)
  QML_UNCREATABLE("There is one overlay, handed to its view")
};

struct OverlayWindowForeign {
  Q_GADGET
  QML_FOREIGN(seedmote::OverlayWindow)
  QML_VALUE_TYPE(overlayWindow)
};

struct OverlayPanelForeign {
  Q_GADGET
  QML_FOREIGN(seedmote::OverlayPanel)
  QML_VALUE_TYPE(overlayPanel)
};

struct OverlayLabelForeign {
  Q_GADGET
  QML_FOREIGN(seedmote::OverlayLabel)
  QML_VALUE_TYPE(overlayLabel)
};

struct OverlayImageForeign {
  Q_GADGET
  QML_FOREIGN(seedmote::OverlayImage)
  QML_VALUE_TYPE(overlayImage)
};

struct OverlaySpinnerForeign {
  Q_GADGET
  QML_FOREIGN(seedmote::OverlaySpinner)
  QML_VALUE_TYPE(overlaySpinner)
};

struct OverlayButtonForeign {
  Q_GADGET
  QML_FOREIGN(seedmote::OverlayButton)
  QML_VALUE_TYPE(overlayButton)
};

}  // namespace seedmote

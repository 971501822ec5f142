#pragma once

#include <QtQml/qqmlregistration.h>

#include "widgets/OvProgressHUD.h"

namespace seedmote {

// The overlay's state under its name in layouts; the state itself knows no QML.
struct OvProgressHUDForeign {
  Q_GADGET
  QML_FOREIGN(seedmote::OvProgressHUD)
  QML_NAMED_ELEMENT(OvProgressHUD)
  QML_UNCREATABLE("There is one overlay, handed to its view")
};

}  // namespace seedmote

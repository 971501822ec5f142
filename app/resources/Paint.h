#pragma once

#include <string>

#include "client/RVUtility.h"

namespace seedmote {

// A colour, or the pattern of an image with the colour that comes closest to it.
struct Paint : Color {
  std::string pattern;  // the name of the image's file; empty for a plain colour

  std::string patternUrl() const { return pattern.empty() ? pattern : "qrc:/seedmote/images/" + pattern; }
};

}  // namespace seedmote

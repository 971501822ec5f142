#pragma once

#include <optional>
#include <string>

#include "client/RVUtility.h"

namespace seedmote {

// An image of the program's resources, or one filled with a single colour.
struct Image {
  std::string name;           // of the file; empty for a filled image
  std::optional<Color> fill;  // absent for an image from a file

  // For QML, which takes the drawing that suits the screen's scale; empty for a filled image.
  std::string url() const { return name.empty() ? name : "qrc:/seedmote/images/" + name; }

  bool operator==(const Image&) const = default;
};

// One point by one point.
inline Image imageWithColor(const Color& color) {
  return {.name = {}, .fill = color};
}

}  // namespace seedmote

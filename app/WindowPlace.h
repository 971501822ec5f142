#pragma once

#include <QRect>
#include <optional>
#include <string>

class QWindow;

namespace seedmote {

// Where a window stands, how large it is, and whether it fills the screen: what a program that starts itself
// anew hands over to its successor, in the environment. A plain value.
struct WindowPlace {
  static constexpr const char* kVariable = "SEEDMOTE_WINDOW";

  QRect rectangle;  // its position with the frame, its size without; where windows stand is not always told
  Qt::WindowStates fills = Qt::WindowNoState;  // maximised or full screen

  static WindowPlace of(const QWindow& window);
  void show(QWindow& window) const;

  std::string text() const;
  // Absent when the text is none of the above.
  static std::optional<WindowPlace> parse(const std::string& text);

  void handOver() const;
  // What was handed over to this program; once.
  static std::optional<WindowPlace> take();
};

}  // namespace seedmote

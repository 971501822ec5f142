#include "app/WindowPlace.h"

#include <QWindow>
#include <sstream>

#include "platform/core/Format.h"

namespace seedmote {

namespace {
constexpr Qt::WindowStates kFilling = Qt::WindowMaximized | Qt::WindowFullScreen;
}  // namespace

WindowPlace WindowPlace::of(const QWindow& window) {
  return {{window.framePosition(), window.size()}, window.windowStates() & kFilling};
}

// A window that fills the screen has no size of its own that could be handed over.
void WindowPlace::show(QWindow& window) const {
  if (fills.testFlag(Qt::WindowFullScreen)) {
    window.showFullScreen();
  } else if (fills.testFlag(Qt::WindowMaximized)) {
    window.showMaximized();
  } else {
    window.resize(rectangle.size());
    window.setFramePosition(rectangle.topLeft());
    window.show();
  }
}

std::string WindowPlace::text() const {
  return platform::format("%d %d %d %d %d", rectangle.width(), rectangle.height(), rectangle.x(),
                          rectangle.y(), static_cast<int>(fills));
}

std::optional<WindowPlace> WindowPlace::parse(const std::string& text) {
  std::istringstream parts(text);
  int width = 0;
  int height = 0;
  int x = 0;
  int y = 0;
  int states = 0;
  if (!(parts >> width >> height >> x >> y >> states) || width <= 0 || height <= 0) {
    return std::nullopt;
  }
  return WindowPlace{{x, y, width, height}, kFilling & Qt::WindowStates::fromInt(states)};
}

void WindowPlace::handOver() const {
  qputenv(kVariable, QByteArray::fromStdString(text()));
}

std::optional<WindowPlace> WindowPlace::take() {
  const QByteArray text = qgetenv(kVariable);
  qunsetenv(kVariable);
  return parse(text.toStdString());
}

}  // namespace seedmote

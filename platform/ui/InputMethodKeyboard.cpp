#include "platform/ui/InputMethodKeyboard.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QWindow>
#include <optional>

namespace seedmote::platform {

namespace {

// What the keyboard covers of the window that is written in, in points.
std::optional<Size> keyboardSize(const Screen& screen) {
  const QInputMethod* method = QGuiApplication::inputMethod();
  const QWindow* window = QGuiApplication::focusWindow();
  if (!method->isVisible() || window == nullptr || window->size().isEmpty()) {
    return std::nullopt;
  }
  const QRectF covered = method->keyboardRectangle() & QRectF(QPointF(), window->size());
  if (covered.isEmpty()) {
    return std::nullopt;
  }
  const double points = screen.sizeAsRead().width / window->width();
  return Size{covered.width() * points, covered.height() * points};
}

}  // namespace

InputMethodKeyboard::InputMethodKeyboard(Screen& screen) : screen_(screen) {
  const QInputMethod* method = QGuiApplication::inputMethod();
  connect(method, &QInputMethod::visibleChanged, this, &InputMethodKeyboard::follow);
  connect(method, &QInputMethod::keyboardRectangleChanged, this, &InputMethodKeyboard::follow);
  follow();
}

void InputMethodKeyboard::follow() {
  const std::optional<Size> size = keyboardSize(screen_);
  if (!size) {
    screen_.keyboard().hide();
  } else if (size != screen_.keyboard().size()) {
    screen_.keyboard().show(*size);
  }
}

}  // namespace seedmote::platform

#include "app/WindowFront.h"

#include <qpa/qplatformnativeinterface.h>

#include <QGuiApplication>
#include <QWindow>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace seedmote {

namespace {

// A startup id ends in "_TIME" and the time of the click that it comes from. Window managers put only a
// window in front that was clicked for later than the others were.
void tellTimeOfClick(const QWindow& window, std::string_view startupId) {
  constexpr std::string_view mark = "_TIME";
  const std::size_t at = startupId.rfind(mark);
  // Qt hands out functions without their parameters.
  const auto setTime = reinterpret_cast<void (*)(QScreen*, std::uint32_t)>(reinterpret_cast<void (*)()>(
      QGuiApplication::platformNativeInterface()->nativeResourceFunctionForScreen("setapptime")));
  std::uint32_t time = 0;
  if (at == std::string_view::npos || setTime == nullptr) {
    return;
  }
  const std::string_view digits = startupId.substr(at + mark.size());
  if (std::from_chars(digits.data(), digits.data() + digits.size(), time).ec == std::errc()) {
    setTime(window.screen(), time);
  }
}

}  // namespace

// On Wayland the token alone counts, and is taken from the environment by Qt's plugin.
void bringToFront(QWindow& window, const std::string& token) {
  const QString platform = QGuiApplication::platformName();
  if (!token.empty() && platform.startsWith(u"wayland")) {
    qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token));
  }
  if ((window.windowStates() & Qt::WindowMinimized) != 0) {
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
  }
  if (platform == u"xcb") {
    tellTimeOfClick(window, token);
    window.raise();
  }
  window.requestActivate();
}

}  // namespace seedmote

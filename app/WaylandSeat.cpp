#include "app/WaylandSeat.h"

#include <wayland-client.h>

#include <QByteArray>
#include <cstring>
#include <memory>

namespace seedmote {

namespace {

constexpr const char* kInputMethod = "QT_IM_MODULE";

void noteSeat(void* found, wl_registry*, std::uint32_t, const char* interface, std::uint32_t) {
  if (std::strcmp(interface, wl_seat_interface.name) == 0) {
    *static_cast<bool*>(found) = true;
  }
}

void ignoreRemoval(void*, wl_registry*, std::uint32_t) {}

// True as well when the session cannot be asked.
bool hasSeat() {
  const std::unique_ptr<wl_display, decltype(&wl_display_disconnect)> display(wl_display_connect(nullptr),
                                                                              wl_display_disconnect);
  if (!display) {
    return true;
  }
  const std::unique_ptr<wl_registry, decltype(&wl_registry_destroy)> registry(
      wl_display_get_registry(display.get()), wl_registry_destroy);
  static constexpr wl_registry_listener kListener{noteSeat, ignoreRemoval};
  bool found = false;
  wl_registry_add_listener(registry.get(), &kListener, &found);
  return wl_display_roundtrip(display.get()) < 0 || found;
}

bool isWayland() {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  return platform.isEmpty() ? qEnvironmentVariableIsSet("WAYLAND_DISPLAY") : platform.startsWith("wayland");
}

}  // namespace

void prepareForMissingSeat() {
  if (isWayland() && !qEnvironmentVariableIsSet(kInputMethod) && !hasSeat()) {
    qputenv(kInputMethod, "compose");
  }
}

}  // namespace seedmote

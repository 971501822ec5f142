#pragma once

#include <QObject>

#include "platform/core/Screen.h"

namespace seedmote::platform {

// Tells the screen's keyboard what Qt knows of the system's, for as long as this lives. Qt tells of it only
// where it covers the window, and once it has come or gone. Main thread, with a QGuiApplication.
class InputMethodKeyboard : public QObject {
  Q_OBJECT

 public:
  explicit InputMethodKeyboard(Screen& screen);

 private:
  void follow();

  Screen& screen_;
};

}  // namespace seedmote::platform

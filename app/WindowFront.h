#pragma once

#include <string>

class QWindow;

namespace seedmote {

// Takes a window out of the dock and asks the window system to put it in front of others, with the token that
// whoever wants it there was given (a Wayland activation token, or an X startup id; empty: none). Main
// thread.
void bringToFront(QWindow& window, const std::string& token);

}  // namespace seedmote

#pragma once

namespace seedmote::platform {

// True when a window was asked to close and has not heard of it yet. To Qt that is user input, which an event
// loop without user input holds back. Main thread.
bool isCloseHeld();

}  // namespace seedmote::platform

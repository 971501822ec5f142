#pragma once

#include <QString>
#include <string>

namespace seedmote::platform {

// A text for a label, from UTF-8. What a daemon says may be as long as it likes, and to lay out what nobody
// reads would hold the window up: of a very long one the middle is left out. Any thread.
QString shownText(const std::string& text);

}  // namespace seedmote::platform

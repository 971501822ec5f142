#pragma once

#include <QByteArray>
#include <QImage>

namespace seedmote::platform {

// The picture in a PNG file (ISO/IEC 15948); null for anything else. The program's own pictures are read this
// way: to read one, QImage loads every plugin that there is for pictures of other kinds. Any thread.
QImage pngPicture(const QByteArray& file);

}  // namespace seedmote::platform

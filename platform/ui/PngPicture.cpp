#include "platform/ui/PngPicture.h"

#include <png.h>

namespace seedmote::platform {

QImage pngPicture(const QByteArray& file) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&png, file.constData(), static_cast<std::size_t>(file.size())) == 0) {
    return {};
  }
  png.format = PNG_FORMAT_RGBA;
  QImage picture(static_cast<int>(png.width), static_cast<int>(png.height), QImage::Format_RGBA8888);
  const bool read = !picture.isNull() &&
                    png_image_finish_read(&png, nullptr, picture.bits(),
                                          static_cast<png_int_32>(picture.bytesPerLine()), nullptr) != 0;
  png_image_free(&png);
  return read ? std::move(picture).convertToFormat(QImage::Format_ARGB32_Premultiplied) : QImage();
}

}  // namespace seedmote::platform

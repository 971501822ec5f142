#include "screens/RVTorrentListPullbar.h"

#include "app/resources/RVResQt.h"
#include "platform/ui/LayoutEntry.h"

namespace seedmote {

namespace {

// As high as the pull that it asks for.
QRectF ownFrame(platform::Idiom idiom) {
  return idiom == platform::Idiom::tablet ? QRectF(0, 0, 660, 80) : QRectF(0, 0, 419, 60);
}

}  // namespace

RVTorrentListPullbar::RVTorrentListPullbar(platform::Idiom idiom) : view_(ownFrame(idiom)) {}

void RVTorrentListPullbar::show(const char* message, int image) {
  const QString wanted = QString::fromUtf8(message);
  if (message_ != wanted) {
    message_ = wanted;
    image_ = imageUrl(image);
    Q_EMIT changed();
  }
}

void RVTorrentListPullbar::press() {
  platform::pressFromLayout(this, "pull bar", [](const RVTorrentListPullbar& bar) {
    if (bar.pressed_) {
      bar.pressed_();
    }
  });
}

}  // namespace seedmote

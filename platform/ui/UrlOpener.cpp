#include "platform/ui/UrlOpener.h"

#include <QByteArray>
#include <QDesktopServices>
#include <QUrl>

namespace seedmote::platform {

bool SystemUrlOpener::open(const std::string& url) {
  return QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(url)));
}

}  // namespace seedmote::platform

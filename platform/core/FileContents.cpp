#include "platform/core/FileContents.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace seedmote::platform {

namespace {

constexpr qint64 kLargestFile = qint64{1} << 30;

QString pathOf(const std::string& file) {
  const QString text = QString::fromStdString(file);
  if (text.startsWith(QLatin1Char('/'))) {
    return text;
  }
  const QUrl url(text, QUrl::StrictMode);
  return url.isLocalFile() ? url.toLocalFile() : QString();
}

}  // namespace

std::optional<std::string> contentsOfFile(const std::string& file) {
  const QString path = pathOf(file);
  // Asked before it is opened: opening a pipe waits for somebody to write.
  if (path.isEmpty() || !QFileInfo(path).isFile() || QFileInfo(path).size() > kLargestFile) {
    return std::nullopt;
  }
  QFile opened(path);
  if (!opened.open(QIODevice::ReadOnly)) {
    return std::nullopt;
  }
  const QByteArray bytes = opened.readAll();
  return opened.error() == QFileDevice::NoError ? std::optional(bytes.toStdString()) : std::nullopt;
}

}  // namespace seedmote::platform

#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQmlIntegration>
#include <functional>

#include "platform/core/Device.h"
#include "platform/ui/ViewGeometry.h"

namespace seedmote {

// The bar above the first row of the torrent list, which a pull brings into view: what it says, and where it
// stands in the table's content. Main thread.
class RVTorrentListPullbar : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The bar belongs to the torrent list.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(QString message READ message NOTIFY changed)
  Q_PROPERTY(QUrl image READ image NOTIFY changed)

 public:
  explicit RVTorrentListPullbar(platform::Idiom idiom);

  platform::ViewGeometry* view() { return &view_; }
  QString message() const { return message_; }
  QUrl image() const { return image_; }
  // `image`: an id of RVRes.
  void show(const char* message, int image);

  // What a press of the bar does: the way of an assistive technology, which can't pull.
  void setPressed(std::function<void()> pressed) { pressed_ = std::move(pressed); }
  // From the layout.
  Q_INVOKABLE void press();

 Q_SIGNALS:
  void changed();

 private:
  platform::ViewGeometry view_;
  QString message_;
  QUrl image_;
  std::function<void()> pressed_;
};

}  // namespace seedmote

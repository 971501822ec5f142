#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <string_view>

#include "platform/core/Device.h"

class QQmlEngine;
class QQuickItem;

namespace seedmote::platform {

// The one place that joins a controller, the idiom and a layout file. Layout files stand beside their
// class, are named after it with "_iPhone" or "_iPad", and have a `required property` called
// "controller". Main thread.
class LayoutLoader final {
 public:
  explicit LayoutLoader(QQmlEngine& engine);

  // "RVTorrentListController" on a tablet is "RVTorrentListController_iPad".
  static QString layoutName(std::string_view controllerName, Idiom idiom);

  // Where the layout is; an empty URL when no such layout is built in.
  static QUrl layoutUrl(const QString& layoutName);

  // Makes the layout's item below `parent` and hands it the controller; the item belongs to `parent`, or
  // to the caller when that is null. Raises std::runtime_error, with what the layout's reader says, when
  // there is no such layout or it cannot be used.
  QQuickItem* load(const QString& layoutName, QObject& controller, QQuickItem* parent);

 private:
  QQmlEngine& engine_;
};

}  // namespace seedmote::platform

#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQmlIntegration>

#include "client/RVSessionStatus.h"
#include "platform/core/BackgroundPoll.h"
#include "platform/core/Timers.h"
#include "platform/ui/ViewGeometry.h"
#include "screens/RVSessionStatListController.h"

namespace seedmote {

// The panel of the daemon's session: the speeds of now, and a table of the rest. Timers ask the client for
// it in the background, which holds nobody up. Who makes it gives its view a frame. Main thread.
class RVSessionStatController : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The statistics are made by the program.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::ViewGeometry* sessionStatPos READ sessionStatPos CONSTANT)
  Q_PROPERTY(seedmote::RVSessionStatListController* sessionStatListController READ sessionStatListController
                 CONSTANT)
  Q_PROPERTY(QString downloadSpeed READ downloadSpeed NOTIFY speedsChanged)
  Q_PROPERTY(QString uploadSpeed READ uploadSpeed NOTIFY speedsChanged)
  Q_PROPERTY(QUrl downloadIcon READ downloadIcon CONSTANT)
  Q_PROPERTY(QUrl uploadIcon READ uploadIcon CONSTANT)

 public:
  RVSessionStatController();

  void viewDidLoad();

  // Asks the client and shows what it answers; does nothing while it is being asked.
  void updateSessionStauts() { poll_.tick(); }

  platform::ViewGeometry* view() { return &view_; }
  // The place of the table.
  platform::ViewGeometry* sessionStatPos() { return &sessionStatPos_; }
  RVSessionStatListController* sessionStatListController() { return &sessionStatListController_; }

  QString downloadSpeed() const { return downloadSpeed_; }
  QString uploadSpeed() const { return uploadSpeed_; }
  static QUrl downloadIcon();
  static QUrl uploadIcon();

 Q_SIGNALS:
  void speedsChanged();

 private:
  void placeSubviews();
  void show(const RVSessionStatus& status);

  platform::ViewGeometry view_;
  platform::ViewGeometry sessionStatPos_;
  RVSessionStatListController sessionStatListController_;
  QString downloadSpeed_ = QStringLiteral("–");
  QString uploadSpeed_ = downloadSpeed_;
  platform::BackgroundPoll poll_;
  platform::Timers::Handle firstTimer_;
  platform::Timers::Handle timer_;
};

}  // namespace seedmote

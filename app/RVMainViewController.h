#pragma once

#include <QtQml/qqmlregistration.h>
#include <QColor>
#include <QObject>

#include "widgets/OvProgressHUD.h"

namespace seedmote {

// The root screen: the bar at the top and, above all other screens, the overlay.
class RVMainViewController : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The application delegate makes it")
  Q_PROPERTY(seedmote::OvProgressHUD* overlay READ overlay CONSTANT)
  Q_PROPERTY(QColor topbarColor READ topbarColor NOTIFY topbarChanged)
  Q_PROPERTY(double topbarAlpha READ topbarAlpha NOTIFY topbarChanged)

 public:
  void viewDidLoad();

  void setTopbarColor(const QColor& color);
  void setTopbarAlpha(double alpha);

  OvProgressHUD* overlay() const { return OvProgressHUD::sharedView(); }
  QColor topbarColor() const { return topbarColor_; }
  double topbarAlpha() const { return topbarAlpha_; }

 Q_SIGNALS:
  void topbarChanged();

 private:
  QColor topbarColor_ = Qt::white;
  double topbarAlpha_ = 1;
};

}  // namespace seedmote

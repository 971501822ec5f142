#pragma once

#include <QColor>
#include <QObject>
#include <QtQmlIntegration>

namespace seedmote {

// A button of two states, told apart by its colour. Main thread.
class RVSwitchButton : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Switch buttons belong to their screens.")
  Q_PROPERTY(bool onoff READ onoff NOTIFY changed)
  Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY changed)

 public:
  bool onoff() const { return onoff_; }
  // Transparent before the first click.
  QColor backgroundColor() const { return backgroundColor_; }

  void click();
  // Green for 1, grey for any other.
  void setonoff(int onoff);

  // From the layout.
  Q_INVOKABLE void press();

 Q_SIGNALS:
  void changed();

 private:
  bool onoff_ = false;
  QColor backgroundColor_ = Qt::transparent;
};

}  // namespace seedmote

#pragma once

#include <QObject>
#include <QtQmlIntegration>

namespace seedmote::platform {

// Whether it was a mouse that came last to a window of the program, or a finger. (Left to itself, Qt takes a
// mouse to be where a finger was.) One for each engine of layouts. Main thread.
class PointerInUse : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(bool mouse READ isMouse NOTIFY changed)

 public:
  explicit PointerInUse(QObject* parent = nullptr);

  bool isMouse() const { return mouse_; }

 Q_SIGNALS:
  void changed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void use(bool mouse);

  bool mouse_ = false;
};

}  // namespace seedmote::platform

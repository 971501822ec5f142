#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQmlIntegration>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace seedmote::platform {

// Questions in front of everything, one at a time in the order in which they came: their state, to which
// AlertPanel binds. Main thread.
class Alerts : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("There is one for the program.")
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString message READ message NOTIFY changed)
  Q_PROPERTY(QStringList buttons READ buttons NOTIFY changed)

 public:
  // One button or two; the first is the one that changes nothing. `dismissed` is told the number of the
  // button that was pressed, once the alert is gone.
  struct Alert {
    std::string title;
    std::string message;
    std::vector<std::string> buttons;
    std::function<void(int)> dismissed;
  };

  void show(Alert alert);

  bool isShown() const { return !alerts_.empty(); }
  QString title() const;
  // Without the middle of a text that is too long to be read.
  QString message() const;
  QStringList buttons() const;

  // From the layout: a button of the alert that is shown now. What is no button of it is ignored.
  Q_INVOKABLE void press(int button);

 Q_SIGNALS:
  void changed();

 private:
  void dismiss(unsigned number, int button);

  std::deque<Alert> alerts_;
  unsigned number_ = 0;  // of the alert that is shown: a second press of its button is none of the next one's
};

}  // namespace seedmote::platform

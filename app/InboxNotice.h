#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>
#include <functional>

namespace seedmote {

// What the main view shows of what waits to be added: a line at its foot, and what can be done about it. Main
// thread.
class InboxNotice : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The main view has it")
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(bool canChoose READ canChoose NOTIFY changed)

 public:
  // An empty text shows nothing. `canChoose` offers the two ways out.
  void show(const QString& text, bool canChoose);
  void setChoices(std::function<void()> tryAgain, std::function<void()> drop);

  QString text() const { return text_; }
  bool canChoose() const { return canChoose_; }

  // From the layout.
  Q_INVOKABLE void tryAgain();
  Q_INVOKABLE void drop();

 Q_SIGNALS:
  void changed();

 private:
  QString text_;
  bool canChoose_ = false;
  std::function<void()> tryAgain_;
  std::function<void()> drop_;
};

}  // namespace seedmote

#pragma once

#include <QQuickItem>
#include <QString>

namespace seedmote {

// Lies around an input whose text is secret, and is what an assistive technology finds in its stead: a field
// of passwords with its name, of which no letter can be read. (Qt's own inputs hand out their text, however
// they show it.) The input itself must have nothing of Accessible. Main thread.
class SecretField : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QString label MEMBER label_ NOTIFY labelChanged)

 public:
  explicit SecretField(QQuickItem* parent = nullptr);

  const QString& label() const { return label_; }

 Q_SIGNALS:
  void labelChanged();
  // The field is to have the keys.
  void pressed();

 private:
  QString label_;
};

}  // namespace seedmote

#include "settings/SecretField.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QQuickWindow>

namespace seedmote {

namespace {

class SecretFieldInterface : public QAccessibleObject, public QAccessibleActionInterface {
 public:
  explicit SecretFieldInterface(SecretField& field) : QAccessibleObject(&field) {}

  QAccessible::Role role() const override { return QAccessible::EditableText; }

  QAccessible::State state() const override {
    QAccessible::State state;
    state.passwordEdit = true;
    state.editable = true;
    state.focusable = true;
    state.focused = field().hasActiveFocus();
    const QQuickWindow* window = field().window();
    state.invisible = !field().isVisible() || window == nullptr || !window->isVisible();
    state.offscreen = window == nullptr || !window->geometry().intersects(rect());
    return state;
  }

  QString text(QAccessible::Text text) const override {
    return text == QAccessible::Name ? field().label() : QString();
  }
  void setText(QAccessible::Text /*text*/, const QString& /*value*/) override {}

  QRect rect() const override {
    if (field().window() == nullptr) {
      return {};
    }
    const QRectF inWindow = field().mapRectToScene({0, 0, field().width(), field().height()});
    return inWindow.toAlignedRect().translated(field().window()->mapToGlobal(QPoint()));
  }
  QWindow* window() const override { return field().window(); }

  // The first of the items around that counts this among its children.
  QAccessibleInterface* parent() const override {
    for (QQuickItem* item = field().parentItem(); item != nullptr; item = item->parentItem()) {
      QAccessibleInterface* around = QAccessible::queryAccessibleInterface(item);
      if (around != nullptr && around->indexOfChild(this) >= 0) {
        return around;
      }
    }
    QObject* window = field().window();
    return window != nullptr ? QAccessible::queryAccessibleInterface(window) : nullptr;
  }
  QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
  void doAction(const QString& action) override {
    if (actionNames().contains(action)) {
      Q_EMIT field().pressed();
    }
  }
  QStringList keyBindingsForAction(const QString& /*action*/) const override { return {}; }

 private:
  SecretField& field() const { return *static_cast<SecretField*>(object()); }
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
  auto* field = className == QLatin1String(SecretField::staticMetaObject.className())
                    ? qobject_cast<SecretField*>(object)
                    : nullptr;
  return field != nullptr ? new SecretFieldInterface(*field) : nullptr;
}

}  // namespace

SecretField::SecretField(QQuickItem* parent) : QQuickItem(parent) {
  QAccessible::installFactory(makeInterface);  // no second time
  setFlag(ItemIsFocusScope);
}

}  // namespace seedmote

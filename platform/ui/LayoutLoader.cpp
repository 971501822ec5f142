#include "platform/ui/LayoutLoader.h"

#include <QDir>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <memory>
#include <stdexcept>

namespace seedmote::platform {

namespace {

// All QML modules of the program are built in below this folder.
constexpr auto kModules = ":/qt-project.org/imports/Seedmote";

std::runtime_error problem(const QString& layoutName, const QString& what) {
  return std::runtime_error(
      QStringLiteral("The layout %1 cannot be used: %2").arg(layoutName, what).toStdString());
}

}  // namespace

LayoutLoader::LayoutLoader(QQmlEngine& engine) : engine_(engine) {}

QString LayoutLoader::layoutName(std::string_view controllerName, Idiom idiom) {
  return QString::fromUtf8(controllerName.data(), static_cast<qsizetype>(controllerName.size())) +
         (idiom == Idiom::tablet ? QLatin1String("_iPad") : QLatin1String("_iPhone"));
}

QUrl LayoutLoader::layoutUrl(const QString& layoutName) {
  const QDir modules{QLatin1String(kModules)};
  for (const QString& module : modules.entryList(QDir::Dirs)) {
    const QString file = modules.filePath(module + QLatin1Char('/') + layoutName + QLatin1String(".qml"));
    if (QFile::exists(file)) {
      return QUrl(QLatin1String("qrc") + file);
    }
  }
  return {};
}

QQuickItem* LayoutLoader::load(const QString& layoutName, QObject& controller, QQuickItem* parent) {
  const QUrl url = layoutUrl(layoutName);
  if (url.isEmpty()) {
    throw problem(layoutName, QStringLiteral("there is none of this name"));
  }
  QQmlComponent component(&engine_, url, QQmlComponent::PreferSynchronous);
  QQmlEngine::setObjectOwnership(&controller, QQmlEngine::CppOwnership);
  std::unique_ptr<QObject> made(component.createWithInitialProperties(
      {{QStringLiteral("controller"), QVariant::fromValue(&controller)}}));
  auto* item = qobject_cast<QQuickItem*>(made.get());
  if (item == nullptr || component.isError()) {
    throw problem(layoutName, component.errorString());
  }
  QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
  item->setParent(parent);
  item->setParentItem(parent);
  static_cast<void>(made.release());  // the parent owns it now
  return item;
}

}  // namespace seedmote::platform

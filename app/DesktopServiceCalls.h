#pragma once

#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <exception>
#include <string>

#include "app/DesktopService.h"

namespace seedmote {

namespace platform {
class MainThread;
}

// What the bus can call, and its connection. Bus thread, but for the constructor.
class DesktopServiceCalls : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  DesktopServiceCalls(DesktopService::Callbacks callbacks, platform::MainThread& main);
  ~DesktopServiceCalls() override;

  DesktopService::Claim claim();
  void release();
  // Releases, answers what had come until then, and ends the thread.
  void finish();

 public Q_SLOTS:
  void Activate(const QVariantMap& platformData);
  void Open(const QStringList& uris, const QVariantMap& platformData);
  void ActivateAction(const QString& name, const QVariantList& parameters, const QVariantMap& platformData);

 private:
  bool connectToBus();

  const DesktopService::Callbacks callbacks_;
  platform::MainThread& main_;
  const QString connectionName_ = QStringLiteral("seedmote-%1").arg(reinterpret_cast<quintptr>(this));
  bool connected_ = false;
  bool hasName_ = false;
};

}  // namespace seedmote

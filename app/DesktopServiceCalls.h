#pragma once

#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <atomic>
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

  // These are called by their names: the thread sanitizer does not follow what a queued call would carry.
  Q_INVOKABLE void claim();
  Q_INVOKABLE void release();
  // Releases, answers what had come until then, and ends the thread.
  Q_INVOKABLE void finish();

  // What the last claim() brought. Any thread.
  DesktopService::Claim claimed() const { return claimed_; }

 public Q_SLOTS:
  void Activate(const QVariantMap& platformData);
  void Open(const QStringList& uris, const QVariantMap& platformData);
  void ActivateAction(const QString& name, const QVariantList& parameters, const QVariantMap& platformData);

 private:
  bool connectToBus();
  DesktopService::Claim askForName();

  const DesktopService::Callbacks callbacks_;
  platform::MainThread& main_;
  const QString connectionName_ = QStringLiteral("seedmote-%1").arg(reinterpret_cast<quintptr>(this));
  bool connected_ = false;
  std::atomic<DesktopService::Claim> claimed_{DesktopService::Claim::noBus};
};

}  // namespace seedmote

#pragma once

#include <gtest/gtest.h>

#include <QProcess>

namespace seedmote {

// A session bus that only this test knows, named by the environment until it stops.
struct PrivateBus final {
  PrivateBus() {
    daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                 QStringLiteral("--print-address")});
    EXPECT_TRUE(daemon.waitForReadyRead());
    qputenv("DBUS_SESSION_BUS_ADDRESS", daemon.readLine().trimmed());
  }
  ~PrivateBus() { stop(); }

  void stop() {
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    daemon.kill();
    daemon.waitForFinished();
  }

  QProcess daemon;
};

}  // namespace seedmote

#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <stdexcept>
#include <string>

namespace seedmote::bench {

// The prepared daemon in a process of its own, which goes with this object.
class PreparedDaemonProcess final {
 public:
  explicit PreparedDaemonProcess(int torrents) {
    process_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/prepared-daemon"),
                   {QString::number(torrents)});
    if (!process_.waitForReadyRead(60'000)) throw std::runtime_error("the prepared daemon does not start");
    port_ = process_.readLine().trimmed().toInt();
  }
  ~PreparedDaemonProcess() {
    process_.closeWriteChannel();
    process_.waitForFinished();
  }

  int port() const { return port_; }
  QString url() const { return QStringLiteral("http://127.0.0.1:%1/transmission/rpc").arg(port_); }

 private:
  QProcess process_;
  int port_ = 0;
};

}  // namespace seedmote::bench

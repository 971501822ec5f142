#include "tests/soak/DaemonKeeper.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <future>
#include <utility>

namespace seedmote::soak {

using support::RealDaemon;

DaemonKeeper::DaemonKeeper() : thread_([this] { keep(); }) {}

DaemonKeeper::~DaemonKeeper() {
  {
    const std::lock_guard lock(mutex_);
    over_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void DaemonKeeper::keep() try {
  RealDaemon daemon({.credentials = credentials()});
  while (true) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return over_ || !works_.empty(); });
    if (over_) {
      return;
    }
    const Work work = std::move(works_.front());
    works_.pop_front();
    lock.unlock();
    carryOut(work, daemon);
    --pending_;
  }
} catch (const std::exception& raised) {
  std::printf("FAILED: the daemon: %s\n", raised.what());
  std::fflush(stdout);
  std::abort();
}

void DaemonKeeper::carryOut(const Work& work, RealDaemon& daemon) {
  try {
    work(daemon);
  } catch (const std::exception& raised) {
    std::printf("the daemon is started anew: %s\n", raised.what());
    daemon.restart();
    work(daemon);
  }
}

void DaemonKeeper::later(Work work) {
  const std::lock_guard lock(mutex_);
  works_.push_back(std::move(work));
  ++pending_;
  changed_.notify_all();
}

void DaemonKeeper::now(const Work& work) {
  std::promise<void> done;
  later([&](RealDaemon& daemon) {
    work(daemon);
    done.set_value();
  });
  done.get_future().wait();
}

void DaemonKeeper::restart() {
  later([](RealDaemon& daemon) { daemon.restart(); });
}

void DaemonKeeper::stopFor(double seconds) {
  later([seconds](RealDaemon& daemon) {
    daemon.stop();
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    daemon.restart();
  });
}

void DaemonKeeper::changePassword() {
  later([this](RealDaemon& daemon) {
    {
      const std::lock_guard lock(mutex_);
      ++passwords_;
    }
    daemon.restart(credentials());
  });
}

void DaemonKeeper::fill(int count) {
  later([this, count](RealDaemon& daemon) {
    const int room = kMostTorrents - static_cast<int>(torrentsOf(daemon).size());
    daemon.addTorrents(std::clamp(room, 0, count), "fill " + std::to_string(++fills_));
  });
}

void DaemonKeeper::bringTo(int count) {
  now([this, count](RealDaemon& daemon) {
    const Torrents all = torrentsOf(daemon);
    std::string ids;
    int left = static_cast<int>(all.size());
    for (auto torrent = all.rbegin(); torrent != all.rend() && left > count; ++torrent, --left) {
      ids += (ids.empty() ? "" : ",") + std::to_string(torrent->first);
    }
    if (!ids.empty()) {
      daemon.rpc(R"({"method":"torrent-remove","arguments":{"ids":[)" + ids + "]}}");
    }
    daemon.addTorrents(std::max(0, count - left), "brought " + std::to_string(++fills_));
  });
}

DaemonKeeper::Torrents DaemonKeeper::torrentsOf(RealDaemon& daemon) {
  const std::string answer = daemon.rpc(R"({"method":"torrent-get","arguments":{"fields":["id","name"]}})");
  const QJsonObject whole = QJsonDocument::fromJson(QByteArray::fromStdString(answer)).object();
  Torrents torrents;
  for (const QJsonValue torrent : whole[QLatin1String("arguments")][QLatin1String("torrents")].toArray()) {
    torrents[torrent[QLatin1String("id")].toInteger()] =
        torrent[QLatin1String("name")].toString().toStdString();
  }
  return torrents;
}

DaemonKeeper::Torrents DaemonKeeper::torrents() {
  Torrents torrents;
  now([&torrents](RealDaemon& daemon) { torrents = torrentsOf(daemon); });
  return torrents;
}

std::string DaemonKeeper::port() {
  std::string port;
  now([&port](RealDaemon& daemon) { port = std::to_string(daemon.port()); });
  return port;
}

std::string DaemonKeeper::password() const {
  const std::lock_guard lock(mutex_);
  return "secret" + std::to_string(passwords_);
}

std::string DaemonKeeper::credentials() const {
  return std::string(kUser) + ":" + password();
}

}  // namespace seedmote::soak

#include "app/DesktopService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <filesystem>
#include <stdexcept>

#include "app/HandOver.h"
#include "app/SessionBus.h"
#include "app/tests/PrivateBus.h"
#include "platform/core/Shared.h"
#include "tests/support/TestServices.h"

namespace seedmote {
namespace {

using Strings = std::vector<std::string>;
using enum DesktopService::Claim;
using enum HandOver::Outcome;

QDBusMessage actOnTheBus(const char* action) {
  const QString name = QStringLiteral("test");
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.seedmote.Seedmote"), QStringLiteral("/org/seedmote/Seedmote"),
      QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
  call << QString::fromLatin1(action) << QVariantList() << QVariantMap();
  const QDBusMessage reply = QDBusConnection::connectToBus(*SessionBus::address(), name).call(call);
  QDBusConnection::disconnectFromBus(name);
  return reply;
}

// The test's own thread is the main thread: while it calls, nothing runs on it.
TEST(DesktopServiceTest, CallsAreAnsweredWhileTheMainThreadIsBusy) {
  const PrivateBus bus;
  support::TestServices services;
  platform::Shared<Strings> handedOver;
  Strings asked;
  const auto open = [&](const Strings& uris) {
    if (uris.front() == "magnet:?full") throw std::runtime_error("The disk is full.");
    handedOver.update([&](Strings& all) { all.insert(all.end(), uris.begin(), uris.end()); });
  };
  const DesktopService::Callbacks callbacks{
      open,
      [&](const std::string& token) { asked.push_back("activate " + token); },
      [&](const std::string& name, const std::string&) { asked.push_back(name); },
      {"refresh"}};

  EXPECT_EQ(HandOver::give({}).outcome, nobodyRuns);
  DesktopService first(callbacks);
  DesktopService second(callbacks);
  ASSERT_EQ(first.claim(), mine);
  EXPECT_EQ(second.claim(), elsewhere);

  qputenv("DESKTOP_STARTUP_ID", "id");
  EXPECT_EQ(HandOver::give({"magnet:?b", "file:///a%20b"}).outcome, taken);
  qputenv("XDG_ACTIVATION_TOKEN", "token");
  EXPECT_EQ(HandOver::give({}).outcome, taken);
  for (const char* name : {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"}) qunsetenv(name);
  EXPECT_EQ(handedOver.get(), (Strings{"magnet:?b", "file:///a%20b"}));
  EXPECT_EQ(HandOver::give({"magnet:?full"}).trouble, "The disk is full.");
  EXPECT_EQ(actOnTheBus("refresh").type(), QDBusMessage::ReplyMessage);
  EXPECT_EQ(actOnTheBus("explode").errorName(), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
  EXPECT_EQ(asked, Strings());
  services.settle();
  EXPECT_EQ(asked, (Strings{"activate id", "activate token", "activate ", "refresh"}));

  first.release();
  while (second.claim() == elsewhere) {
  }
}

TEST(HandOverTest, PathsAreToldFromTheRootAndLinksAsTheyAre) {
  const std::string here = "file://" + std::filesystem::current_path().string() + "/";
  const std::pair<const char*, std::string> cases[] = {
      {"a b%20#\xff.torrent", here + "a%20b%2520%23%FF.torrent"},
      {"Part 1: x.torrent", here + "Part%201%3A%20x.torrent"},
      {"/a/b", "file:///a/b"},
      {"Magnet:?xt=urn:btih:1&dn=a b", "Magnet:?xt=urn:btih:1&dn=a b"},
      {"HTTPS://host/a%20b", "HTTPS://host/a%20b"},
  };
  for (const auto& [given, uri] : cases) {
    EXPECT_EQ(HandOver::uriOf(given), uri);
  }
}

TEST(SessionBusTest, ABusThatHasStoppedIsLeftAlone) {
  const PrivateBus bus;
  EXPECT_FALSE(SessionBus::leaveWhenDeaf());
  kill(static_cast<pid_t>(bus.daemon.processId()), SIGSTOP);
  EXPECT_TRUE(SessionBus::leaveWhenDeaf(std::chrono::milliseconds(50)));
  EXPECT_EQ(SessionBus::address(), std::nullopt);
  EXPECT_EQ(HandOver::give({"magnet:?a"}).outcome, nobodyRuns);
}

}  // namespace
}  // namespace seedmote

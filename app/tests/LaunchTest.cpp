#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QImage>
#include <algorithm>
#include <array>

#include "app/tests/PrivateBus.h"
#include "platform/ui/Inbox.h"
#include "tests/support/LoopbackDaemon.h"
#include "tests/support/RealProgram.h"
#include "tests/support/Replies.h"

namespace seedmote {
namespace {

#ifdef __SANITIZE_THREAD__
constexpr int kEndsWithin = 5000;  // the sanitizer's own work at the program's end
#else
constexpr int kEndsWithin = 1000;  // milliseconds
#endif

using support::LoopbackDaemon;
using testing::HasSubstr;
using testing::Not;
namespace replies = support::replies;

constexpr const char* kTorrents =
    R"({"arguments":{"torrents":[{"id":3,"name":"one.iso","percentDone":0.5000,"totalSize":2048,"status":4,)"
    R"("rateDownload":10,"rateUpload":0,"uploadedEver":0,"isFinished":false,"leftUntilDone":1024},)"
    R"({"id":4,"name":"zwei 日本.bin","percentDone":1,"totalSize":10,"status":6}]},"result":"success"})";

class LaunchTest : public testing::Test {
 protected:
  int storeSettings(const LoopbackDaemon& daemon) {
    return program.run({"--set", "IP Address=127.0.0.1", "--set", "Port=" + std::to_string(daemon.port()),
                        "--set", "Username=al", "--set", "Password=-", "--set", "FirstRun=3", "--set",
                        std::string("SavedVersion=") + SEEDMOTE_VERSION},
                       "s3cret\n");
  }

  RealProgram program;
};

TEST_F(LaunchTest, ADaemonsTorrentsStandInTheWindowAndThePasswordNowhere) {
  LoopbackDaemon daemon;
  daemon.model().setCredentials("al:s3cret");
  daemon.model().setTorrents(kTorrents);
  ASSERT_EQ(storeSettings(daemon), 0);
  EXPECT_EQ(program.output + program.errors, "") << "storing settings prints nothing";
  const std::string picture = program.home() / "list.png";
  ASSERT_EQ(program.run({"--idiom", "phone", "--snapshot", picture}), 0) << program.errors;
  EXPECT_THAT(program.output, HasSubstr("one.iso\n    (50%)   Downloaded:1024B/2.0KB   Uploaded:0B "));
  EXPECT_THAT(program.output, HasSubstr("zwei 日本.bin"));
  EXPECT_FALSE(QImage(QString::fromStdString(picture)).isNull());
  EXPECT_THAT(program.errors, HasSubstr("Seedmote Start"));
  EXPECT_THAT(program.errors, HasSubstr("bConnected = TRUE"));
  EXPECT_THAT(program.errors, Not(HasSubstr("s3cret")));
  EXPECT_THAT(daemon.requests().size(), testing::AnyOf(5, 6)) << "with the statistics' poll or without";
}

TEST_F(LaunchTest, AWrongSettingIsNamedAndNothingStored) {
  EXPECT_EQ(program.run({"--set", "Port=9091", "--set", "Nonsense=1"}), 2);
  EXPECT_THAT(program.errors, HasSubstr("Nonsense"));
  EXPECT_FALSE(exists(program.settings()));
  EXPECT_EQ(program.run({"--what"}), 2);
  EXPECT_EQ(program.run({"--version"}), 0);
  EXPECT_THAT(program.output, testing::StartsWith("Seedmote "));
}

TEST_F(LaunchTest, TheProgramEndsAtOnceInTheMiddleOfARequest) {
  LoopbackDaemon daemon;
  daemon.setReply(replies::hang());
  ASSERT_EQ(storeSettings(daemon), 0);
  program.start({});
  ASSERT_TRUE(daemon.waitForRequests(1));
  QElapsedTimer ending;
  ending.start();
  EXPECT_EQ(program.end(), 0);
  EXPECT_LT(ending.elapsed(), kEndsWithin);
}

TEST_F(LaunchTest, WithoutAWindowSystemItSaysWhatToDo) {
  QProcessEnvironment environment = program.process.processEnvironment();
  for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
    environment.remove(QString::fromLatin1(name));
  }
  for (const char* display : {"", ":97531"}) {
    if (*display != 0) environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display));
    program.process.setProcessEnvironment(environment);
    EXPECT_EQ(program.run({}), 1);
    EXPECT_THAT(program.errors, HasSubstr("QT_QPA_PLATFORM=offscreen"));
  }
}

TEST_F(LaunchTest, OfThreeStartsAtOnceOneStaysAndTakesWhatTheOthersWereGiven) {
  PrivateBus bus;
  QProcessEnvironment environment = program.process.processEnvironment();
  environment.remove(QStringLiteral("SEEDMOTE_ALONE"));
  environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                     qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
  program.process.setProcessEnvironment(environment);
  std::array<QProcess, 3> starts;
  for (QProcess& start : starts) {
    start.setProcessEnvironment(environment);
    start.start(program.process.program(), {QStringLiteral("magnet:?%1").arg(&start - starts.data())});
  }
  const auto runs = [](const QProcess& start) { return start.state() != QProcess::NotRunning; };
  while (std::ranges::count_if(starts, runs) > 1) {
    for (QProcess& start : starts) start.waitForFinished(20);
  }
  EXPECT_EQ(program.run({"--idiom", "phone", "magnet:?3"}), 0);
  EXPECT_THAT(program.errors, HasSubstr("open already"));

  bus.stop();  // a bus that has gone ends nothing, and keeps nobody from starting
  program.start({});
  EXPECT_TRUE(program.hasSaid("Seedmote Start"));
  EXPECT_TRUE(runs(program.process));
  for (QProcess& start : starts) {
    const bool first = runs(start);
    start.terminate();
    EXPECT_TRUE(!first || start.waitForFinished());
    EXPECT_EQ(start.exitCode(), 0);
  }
  std::vector<std::string> kept;
  for (const platform::Inbox::Item& item :
       platform::Inbox((program.home() / "state/seedmote/inbox").string(), nullptr).waiting()) {
    kept.push_back(item.name);
  }
  EXPECT_THAT(kept, testing::UnorderedElementsAre("magnet:?0", "magnet:?1", "magnet:?2", "magnet:?3"));
  EXPECT_EQ(kept.back(), "magnet:?3");
}

}  // namespace
}  // namespace seedmote

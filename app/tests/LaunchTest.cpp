#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <array>

#include "app/tests/PrivateBus.h"
#include "tests/support/LoopbackDaemon.h"
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

// The program with a settings folder of its own and without a screen.
class LaunchTest : public testing::Test {
 protected:
  LaunchTest() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("SEEDMOTE_ALONE"), QStringLiteral("1"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    program.setProcessEnvironment(environment);
    program.setProgram(QStringLiteral(SEEDMOTE_PROGRAM));
  }
  ~LaunchTest() override {
    program.kill();
    program.waitForFinished();
  }

  void start(const std::vector<std::string>& arguments) {
    QStringList list;
    for (const std::string& argument : arguments) list << QString::fromStdString(argument);
    program.setArguments(list);
    program.start();
  }
  int run(const std::vector<std::string>& arguments, const char* input = "") {
    start(arguments);
    program.write(input);
    program.closeWriteChannel();
    EXPECT_TRUE(program.waitForFinished(60'000));
    output = program.readAllStandardOutput().toStdString();
    errors = program.readAllStandardError().toStdString();
    return program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
  }
  int storeSettings(const LoopbackDaemon& daemon) {
    return run({"--set", "IP Address=127.0.0.1", "--set", "Port=" + std::to_string(daemon.port()), "--set",
                "Username=al", "--set", "Password=-", "--set", "FirstRun=3", "--set",
                std::string("SavedVersion=") + SEEDMOTE_VERSION},
               "s3cret\n");
  }

  QTemporaryDir folder;
  QProcess program;
  std::string output;
  std::string errors;
};

TEST_F(LaunchTest, ADaemonsTorrentsStandInTheWindowAndThePasswordNowhere) {
  LoopbackDaemon daemon;
  daemon.model().setCredentials("al:s3cret");
  daemon.model().setTorrents(kTorrents);
  ASSERT_EQ(storeSettings(daemon), 0);
  EXPECT_EQ(output + errors, "") << "storing settings prints nothing";
  const QFile stored(folder.filePath(QStringLiteral("seedmote/defaults.plist")));
  EXPECT_TRUE(stored.exists());
  EXPECT_EQ(stored.permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);

  const QString picture = folder.filePath(QStringLiteral("list.png"));
  ASSERT_EQ(run({"--idiom", "phone", "--snapshot", picture.toStdString()}), 0) << errors;
  EXPECT_THAT(output, HasSubstr("one.iso\n    (50%)   Downloaded:1024B/2.0KB   Uploaded:0B "));
  EXPECT_THAT(output, HasSubstr("zwei 日本.bin"));
  EXPECT_FALSE(QImage(picture).isNull());
  EXPECT_THAT(errors, HasSubstr("Seedmote Start"));
  EXPECT_THAT(errors, HasSubstr("bConnected = TRUE"));
  EXPECT_THAT(errors, Not(HasSubstr("s3cret")));
  EXPECT_THAT(daemon.requests().size(), testing::AnyOf(5, 6)) << "with the statistics' poll or without";
}

TEST_F(LaunchTest, AWrongSettingIsNamedAndNothingStored) {
  EXPECT_EQ(run({"--set", "Port=9091", "--set", "Nonsense=1"}), 2);
  EXPECT_THAT(errors, HasSubstr("Nonsense"));
  EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("seedmote/defaults.plist"))));
  EXPECT_EQ(run({"--what"}), 2);
  EXPECT_EQ(run({"--version"}), 0);
  EXPECT_THAT(output, testing::StartsWith("Seedmote "));
}

TEST_F(LaunchTest, TheProgramEndsAtOnceInTheMiddleOfARequest) {
  LoopbackDaemon daemon;
  daemon.setReply(replies::hang());
  ASSERT_EQ(storeSettings(daemon), 0);
  start({});
  ASSERT_TRUE(daemon.waitForRequests(1));
  QElapsedTimer ending;
  ending.start();
  program.terminate();
  EXPECT_TRUE(program.waitForFinished(30'000));
  EXPECT_LT(ending.elapsed(), kEndsWithin);
  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program.exitCode(), 0);
}

TEST_F(LaunchTest, WithoutAWindowSystemItSaysWhatToDo) {
  QProcessEnvironment environment = program.processEnvironment();
  for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
    environment.remove(QString::fromLatin1(name));
  }
  for (const char* display : {"", ":97531"}) {
    if (*display != 0) environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display));
    program.setProcessEnvironment(environment);
    EXPECT_EQ(run({}), 1);
    EXPECT_THAT(errors, HasSubstr("QT_QPA_PLATFORM=offscreen"));
  }
}

TEST_F(LaunchTest, OfThreeStartsAtOnceOneStaysAndTakesWhatTheOthersWereGiven) {
  PrivateBus bus;
  QProcessEnvironment environment = program.processEnvironment();
  environment.remove(QStringLiteral("SEEDMOTE_ALONE"));
  environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                     qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
  program.setProcessEnvironment(environment);
  std::array<QProcess, 3> starts;
  for (QProcess& start : starts) {
    start.setProcessEnvironment(environment);
    start.start(program.program(), {QStringLiteral("magnet:?%1").arg(&start - starts.data())});
  }
  const auto runs = [](const QProcess& start) { return start.state() != QProcess::NotRunning; };
  while (std::ranges::count_if(starts, runs) > 1) {
    for (QProcess& start : starts) start.waitForFinished(20);
  }
  EXPECT_EQ(run({"--idiom", "phone", "magnet:?3"}), 0);
  EXPECT_THAT(errors, HasSubstr("open already"));

  bus.stop();  // a bus that has gone ends nothing, and keeps nobody from starting
  start({});
  program.setReadChannel(QProcess::StandardError);
  while (errors.find("Seedmote Start") == std::string::npos && program.waitForReadyRead()) {
    errors += program.readAllStandardError().toStdString();
  }
  EXPECT_TRUE(runs(program));
  for (QProcess& start : starts) {
    const bool first = runs(start);
    start.terminate();
    EXPECT_TRUE(!first || start.waitForFinished());
    EXPECT_EQ(start.exitCode(), 0);
    const std::string log = start.readAllStandardError().toStdString();
    for (const char* link : {"magnet:?0\n", "magnet:?1\n", "magnet:?2\n", "magnet:?3\n"}) {
      EXPECT_EQ(log.find(link) != std::string::npos, first) << link;
    }
  }
}

}  // namespace
}  // namespace seedmote

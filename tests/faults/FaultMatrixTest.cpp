// Every request of the client meets every fault, and a person goes on using the program meanwhile. What is
// told of each stands in the tables; docs/faults.md is printed from them.
//
//   fault-matrix-test                  the quick form: two random acts in each cell
//   fault-matrix-test --rounds=200     the long form
//     with --seed=N                    as it printed it, for the same acts again
//     with --gtest_filter='*Drips'     of one fault alone
//   fault-matrix-test --print > docs/faults.md
#include <QGuiApplication>
#include <QThreadPool>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <thread>

#include "json/Log.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "tests/faults/RandomHand.h"

namespace seedmote::faults {
namespace {

struct Asked {
  int rounds = 2;
  std::uint64_t seed = 1;
  bool print = false;
  bool isQuick() const { return rounds < 10; }
} asked;

class FaultMatrixTest : public TriedShell, public testing::WithParamInterface<std::size_t> {
 protected:
  const Fault& fault() const { return faultTable().at(GetParam()); }

  // What costs much meets one or two requests only where time is short, others with each fault.
  bool isLeftOut(std::size_t request) const {
    const bool isRefresh = requestTable().at(request).shows == Request::Shows::list;
    return fault().heavy && asked.isQuick() && !isRefresh && request != GetParam() % requestTable().size();
  }

  void meetIn(const Request& request) {
    SCOPED_TRACE(request.name);
    if (request.prepare != nullptr) request.prepare(*this);
    meet(request, fault());
    request.cause(*this);
    comeToRest();
    pass(2);  // the list looks every two seconds
    comeToRest();
    expectTold(request);
    const bool isSentOnce = !request.changes() || fault().kind == Kind::conflict || faulty.met() == 1;
    EXPECT_TRUE(isSentOnce) << faulty.met();
    hand.act(asked.rounds);
    recover();
    EXPECT_TRUE(isAllDelivered());
  }

  void expectTold(const Request& request) {
    const Told expected = told(request, fault());
    const std::vector<std::string> messages = takeMessages();
    EXPECT_TRUE(request.isRight(messages, withAddress(expected.message)))
        << "instead of: " << testing::PrintToString(expected.message)
        << "\nthere was:  " << testing::PrintToString(messages);
    const auto seen = [this](const std::string& sentence) { return hasSeen(sentence); };
    EXPECT_TRUE(expected.sentences.empty() || std::ranges::any_of(expected.sentences, seen))
        << "instead of: " << testing::PrintToString(expected.sentences)
        << "\nthere was:  " << delegate->torrentListController().emptyState().toStdString();
  }
  std::optional<std::string> withAddress(std::optional<std::string> message) const {
    const std::string mark = "{daemon}";
    const std::size_t at = message ? message->find(mark) : std::string::npos;
    if (at != std::string::npos) message->replace(at, mark.size(), "http://" + world.daemon.address());
    return message;
  }

  // Thrown in at any moment.
  void quitSomewhere() {
    const auto& request = requestTable().at(static_cast<std::size_t>(hand.any(0, 13)));
    if (request.prepare != nullptr) request.prepare(*this);
    meet(request, fault());
    const Way way = hand.any(0, 1) == 0 ? Way::signal : Way::closedWindow;
    QTimer::singleShot(hand.any(0, 40), &window(), [this, way] { quit(way); });
    request.cause(*this);
    while (!services->main.isQuitting()) hand.act(1);
  }

  static platform::Idiom idiom() {
    return GetParam() % 2 == 0 ? platform::Idiom::tablet : platform::Idiom::phone;
  }

  RandomHand hand{*this, idiom() == platform::Idiom::phone, asked.seed + GetParam()};
};

TEST_P(FaultMatrixTest, ToldAndSurvived) {
  SCOPED_TRACE(fault().name + ", --seed=" + std::to_string(asked.seed));
  start(idiom());
  for (std::size_t request = 0; request < requestTable().size(); ++request) {
    if (!isLeftOut(request)) meetIn(requestTable()[request]);
  }
  EXPECT_TRUE(isPainting());
  for (const RecordedRequest& sent : world.daemon.requests()) EXPECT_EQ(sent.header("X-Evil"), std::nullopt);
  quitSomewhere();
  EXPECT_LT(end(), 1.0);
}

std::string nameOf(const testing::TestParamInfo<std::size_t>& info) {
  std::string name = std::to_string(info.param) + "_";
  bool starts = true;
  for (const char letter : faultTable().at(info.param).name) {
    const bool fits = std::isalnum(static_cast<unsigned char>(letter)) != 0;
    if (fits) name += starts ? static_cast<char>(std::toupper(static_cast<unsigned char>(letter))) : letter;
    starts = !fits;
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Each, FaultMatrixTest, testing::Range<std::size_t>(0, faultTable().size()), nameOf);

TEST(FaultMatrix, StandsInTheDocument) {
  std::ifstream file(SEEDMOTE_FAULTS_DOCUMENT);
  std::stringstream text;
  text << file.rdbuf();
  EXPECT_TRUE(text.str() == printedMatrix()) << "fault-matrix-test --print > docs/faults.md";
}

// What a test with a shell leaves behind: the first one says how much there is for good.
class LeftBehind final : public testing::EmptyTestEventListener {
  struct Counts {
    std::ptrdiff_t files;
    std::ptrdiff_t threads;
  };
  static Counts count() {
    const auto in = [](const char* folder) {
      using Entry = std::filesystem::directory_iterator;
      return std::distance(Entry(folder), Entry());
    };
    return {in("/proc/self/fd"), in("/proc/self/task")};
  }
  bool isMore(const Counts& now) const {
    return now.files > before_->files || now.threads > before_->threads;
  }

  void OnTestEnd(const testing::TestInfo& test) override {
    if (test.value_param() == nullptr) return;
    QThreadPool::globalInstance()->waitForDone();  // of Qt's own
    Counts now = count();
    before_ = before_.value_or(now);
    constexpr int kPatience = 100;  // for a name that is still looked up
    for (int i = 0; i < kPatience && isMore(now); ++i, now = count()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_LE(now.files, before_->files) << "file descriptors";
    EXPECT_LE(now.threads, before_->threads) << "threads";
  }
  std::optional<Counts> before_;
};

void read(const std::string& argument) {
  const auto valueOf = [&](const std::string& name) {
    return argument.starts_with(name) ? std::optional(argument.substr(name.size())) : std::nullopt;
  };
  if (const auto rounds = valueOf("--rounds=")) asked.rounds = std::stoi(*rounds);
  if (const auto seed = valueOf("--seed=")) asked.seed = std::stoull(*seed);
  asked.print = asked.print || argument == "--print";
}

}  // namespace
}  // namespace seedmote::faults

int main(int argc, char** argv) {
  using namespace seedmote::faults;
  seedmote::platform::MainThread::prepareProcess();
  testing::InitGoogleTest(&argc, argv);
  for (int i = 1; i < argc; ++i) read(argv[i]);
  if (asked.print) {
    std::cout << printedMatrix();
    return 0;
  }
  std::cout << "--rounds=" << asked.rounds << " --seed=" << asked.seed << '\n';
  const QGuiApplication application(argc, argv);
  seedmote::platform::silenceLog();
  seedmote::json::setLogFunction([](std::string_view) {});
  testing::UnitTest::GetInstance()->listeners().Append(new LeftBehind);
  return RUN_ALL_TESTS();
}

// Any answer of a daemon, through the client as the screens use it. The first byte of an input says what is
// asked, the second the status; the rest is the body.
#include <QCoreApplication>
#include <algorithm>
#include <stdexcept>
#include <string>

#include "client/_RVTrans.h"
#include "fuzz/Target.h"
#include "platform/core/Log.h"
#include "tests/support/TestServices.h"

namespace seedmote::fuzz {
namespace {

using platform::HttpAnswer;
using platform::HttpRequest;

// Lives as long as the program: the event loop of the main thread needs it.
support::TestServices& services() {
  static support::TestServices* const made = [] {
    platform::silenceLog();
    platform::MainThread::prepareProcess();
    static int count = 1;
    static char name[] = "fuzz";
    static char* names[] = {name, nullptr};
    new QCoreApplication(count, names);
    auto* services = new support::TestServices;
    services->setSetting("IP Address", "10.0.0.7");
    services->setSetting("Port", "9091");
    services->setSetting("Timeout", "30");
    return services;
  }();
  return *made;
}

constexpr int kStatuses[] = {200, 409, 401, 403, 404, 421, 500, 0};

// The status and body come once; what is asked again meets a usual answer, with the body of the first.
void answerWith(int status, const std::string& body) {
  platform::ScriptedHttp& http = services().scripted;
  http.forgetRequests();
  http.enqueue(status == 0 ? platform::ScriptedHttp::failure(platform::HttpError::closed)
                           : platform::ScriptedHttp::answer(status, body));
  http.setHandler([body](const HttpRequest&) { return platform::ScriptedHttp::answer(200, body); });
}

void updateList(_RVTrans& client) {
  client.updateAllTorrents();
  check(!client.isUpdating() && client.isNewData(), "an update ends");
  const json::Value list = client.getTorrentList();
  check(list->kind() == json::Kind::array, "a list is one");
  for (const json::ValueRef row : list->elements())
    client.select(TorrentIdentity::of(row), client.torrentDeal());
  client.sessionInfo()->sessionID.set("another");
  client.fetchTorrentList();
  check(client.selectedidx() == _RVTrans::kNoSelection ||
            !torrentWithID(client.getTorrentList(), client.selectedidx()).isAbsent(),
        "what is selected is in the list");
}

void readDetails(_RVTrans& client) {
  const auto info = client.getTorrentInfo(7);
  for (const RVTorrentFile& file : info->files) file.length.ref().longLongValue();
}

void ask(_RVTrans& client, char what, const std::string& body) {
  switch (what) {
    case 's':
      return client.getSessionStats();
    case 'i':
      return client.getDaemonInfo();
    case 'l':
      return updateList(client);
    case 'd':
      return readDetails(client);
    case 'a':
      check(client.addTorrentURL(body)->kind() == json::Kind::dictionary, "an add has an outcome");
      return static_cast<void>(client.takeLatestAdd());
    case 'q':
      return static_cast<void>(client.addQuietly(body));
    case 'r':
      return client.deleteTorrent(1);
    default:
      client.connectDaemon();
  }
}

void checkHeaders() {
  for (const HttpRequest& request : services().scripted.requests()) {
    for (const platform::HttpHeader& header : request.headers) {
      check(std::none_of(header.value.begin(), header.value.end(), [](unsigned char c) { return c < 0x20; }),
            "no header is broken in two");
    }
  }
}

void exchange(std::string_view input) {
  if (input.size() < 2) return;
  const std::string body(input.substr(2));
  answerWith(kStatuses[static_cast<unsigned char>(input[1]) % std::size(kStatuses)], body);
  {
    _RVTrans client;
    client.sessionInfo()->sessionID.set("abc");
    try {
      ask(client, input[0], body);
    } catch (const std::out_of_range&) {
    } catch (const std::invalid_argument&) {
    }
    services().finishThreads();
  }
  checkHeaders();
}

}  // namespace
}  // namespace seedmote::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  seedmote::fuzz::services();
  seedmote::fuzz::exchange(seedmote::fuzz::textOf(data, size));
  return 0;
}

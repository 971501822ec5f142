// A yardstick: the least that shows a daemon's list, written the plain way, without a log. A Qt Quick window,
// one list request by libcurl, RapidJSON, Qt Quick's own list view.
//
//   bare URL   prints "shown" when the first frame with rows is on the screen
#include <curl/curl.h>
#include <rapidjson/document.h>

#include <QGuiApplication>
#include <QQuickView>
#include <iostream>
#include <stdexcept>
#include <string>
#include <thread>

#include "bench/TorrentModel.h"

namespace seedmote::bench {

namespace {

constexpr const char* kListRequest =
    R"({"method":"torrent-get","arguments":{"fields":["rateUpload","rateDownload","totalSize","percentDone",)"
    R"("name","uploadedEver","status","id","isFinished","leftUntilDone"]}})";
constexpr std::string_view kSessionHeader = "X-Transmission-Session-Id:";

std::size_t addBytes(char* bytes, std::size_t size, std::size_t count, void* to) {
  static_cast<std::string*>(to)->append(bytes, size * count);
  return size * count;
}

std::size_t findSession(char* bytes, std::size_t size, std::size_t count, void* to) {
  const std::string_view line(bytes, size * count);
  if (line.starts_with(kSessionHeader)) {
    *static_cast<std::string*>(to) = line.substr(0, line.find('\r'));
  }
  return size * count;
}

long post(CURL* curl, const std::string& session, std::string& answer, std::string& newSession) {
  answer.clear();
  curl_slist* headers = curl_slist_append(nullptr, "Content-Type: application/json");
  if (!session.empty()) headers = curl_slist_append(headers, session.c_str());
  curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
  curl_easy_setopt(curl, CURLOPT_POSTFIELDS, kListRequest);
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, addBytes);
  curl_easy_setopt(curl, CURLOPT_WRITEDATA, &answer);
  curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, findSession);
  curl_easy_setopt(curl, CURLOPT_HEADERDATA, &newSession);
  long status = 0;
  if (curl_easy_perform(curl) == CURLE_OK) curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
  curl_slist_free_all(headers);
  return status;
}

std::string fetchList(const std::string& url) {
  CURL* const curl = curl_easy_init();
  curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
  std::string answer, session;
  if (post(curl, "", answer, session) == 409) {
    post(curl, std::string(session), answer, session);
  }
  curl_easy_cleanup(curl);
  return answer;
}

const rapidjson::Value& member(const rapidjson::Value& of, const char* key) {
  const auto found = of.FindMember(key);
  if (found == of.MemberEnd()) throw std::runtime_error("the daemon's answer lacks something");
  return found->value;
}

std::vector<BareTorrent> parse(const std::string& answer) {
  rapidjson::Document document;
  document.Parse<rapidjson::kParseValidateEncodingFlag>(answer.data(), answer.size());
  if (document.HasParseError()) throw std::runtime_error("the daemon's answer is no JSON");
  const rapidjson::Value& list = member(member(document, "arguments"), "torrents");
  std::vector<BareTorrent> torrents;
  torrents.reserve(list.Size());
  for (const rapidjson::Value& torrent : list.GetArray()) {
    const rapidjson::Value& name = member(torrent, "name");
    torrents.push_back({{name.GetString(), name.GetStringLength()},
                        member(torrent, "totalSize").GetInt64(),
                        member(torrent, "leftUntilDone").GetInt64(),
                        member(torrent, "uploadedEver").GetInt64(),
                        member(torrent, "rateDownload").GetInt64(),
                        member(torrent, "rateUpload").GetInt64(),
                        member(torrent, "percentDone").GetDouble(),
                        member(torrent, "status").GetInt()});
  }
  return torrents;
}

void saySoWhenShown(QQuickView& view) {
  QObject::connect(
      &view, &QQuickWindow::frameSwapped, &view, [] { std::cout << "shown" << std::endl; },
      Qt::SingleShotConnection);
}

int run(const std::string& url) {
  TorrentModel model;
  QQuickView view;
  view.setInitialProperties({{QStringLiteral("torrents"), QVariant::fromValue(&model)}});
  view.setResizeMode(QQuickView::SizeRootObjectToView);
  view.setSource(QUrl(QStringLiteral("qrc:/qt-project.org/imports/SeedmoteBench/BareWindow/Bare.qml")));
  view.resize(1024, 768);
  view.show();
  std::thread fetch([&] {
    std::vector<BareTorrent> torrents = parse(fetchList(url));
    QMetaObject::invokeMethod(&model, [&model, &view, torrents = std::move(torrents)]() mutable {
      model.setTorrents(std::move(torrents));
      saySoWhenShown(view);
    });
  });
  const int code = QGuiApplication::exec();
  fetch.join();
  return code;
}

}  // namespace

}  // namespace seedmote::bench

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "bare URL\n";
    return 2;
  }
  const QGuiApplication application(argc, argv);
  return seedmote::bench::run(argv[1]);
}

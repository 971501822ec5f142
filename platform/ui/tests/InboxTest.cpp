#include "platform/ui/Inbox.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace seedmote::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kTorrent = "d8:announce4:none4:infod4:name1:xee";

class InboxTest : public testing::Test {
 protected:
  std::string given(const std::string& name, const std::string& contents) {
    const fs::path path = fs::path(folder.path().toStdString()) / name;
    std::ofstream(path) << contents;
    return path;
  }
  static std::vector<std::string> names(const Inbox& inbox) {
    std::vector<std::string> found;
    for (const Inbox::Item& item : inbox.waiting()) found.push_back(item.name);
    return found;
  }

  QTemporaryDir folder;
  const std::string place = folder.filePath(QStringLiteral("state/inbox")).toStdString();
  int changes = 0;
  Inbox inbox{place, [this] { ++changes; }};
};

TEST_F(InboxTest, KeepsWhatItWasGivenInOrderOverRestarts) {
  const std::string file = given("a b%41.torrent", kTorrent);
  EXPECT_TRUE(inbox
                  .take({"magnet:?xt=urn:btih:1&dn=%C3%A4",
                         "file://" + folder.path().toStdString() + "/a%20b%2541.torrent"})
                  .empty());
  fs::remove(file);
  EXPECT_TRUE(inbox.take({"MAGNET:///?xt=urn:btih:2", "https://host/x?y=1"}).empty());
  EXPECT_EQ(changes, 2);

  const Inbox again(place, nullptr);
  EXPECT_THAT(names(again), ElementsAre("magnet:?xt=urn:btih:1&dn=%C3%A4", "a b%41.torrent",
                                        "magnet:?xt=urn:btih:2", "https://host/x?y=1"));
  const Inbox::Item kept = again.waiting()[1];
  std::ifstream stream(kept.path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), kTorrent);
  struct stat info {};
  ASSERT_EQ(stat(kept.path.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, S_IRUSR | S_IWUSR);

  inbox.drop(kept);
  inbox.drop(again.waiting().front());
  EXPECT_THAT(names(again), ElementsAre("magnet:?xt=urn:btih:2", "https://host/x?y=1"));
}

TEST_F(InboxTest, SaysWhatCannotBeAddedAndWhy) {
  fs::create_directory(folder.filePath(QStringLiteral("folder")).toStdString());
  ASSERT_EQ(mkfifo(folder.filePath(QStringLiteral("pipe")).toLocal8Bit(), 0600), 0);
  const std::string large = given("large.torrent", kTorrent);
  fs::resize_file(large, std::uintmax_t{40} << 20);
  const std::string at = folder.path().toStdString() + "/";
  const std::vector<std::pair<std::string, std::string>> cases{
      {at + "folder", "folder"},
      {given("empty", ""), "empty"},
      {large, "larger than 32 MiB"},
      {given("a.png", "\x89PNG\r\n"), "no torrent"},
      {given("text", "dear all"), "no torrent"},
      {at + "missing", "no such file"},
      {at + "pipe", "can be read"},
      {"ftp://host/x.torrent", "neither"},
      {"file://elsewhere/x", "machine"},
      {"file://" + large + "%00.torrent", "machine"},
      {"x.torrent", "machine"},
      {"", "machine"},
      {"magnet:" + std::string(2 << 20, 'x'), "too long"},
      {"magnet:", "whole"},
      {"http://", "whole"},
      {"magnet:?xt=1\n2", "whole"}};
  for (const auto& [what, why] : cases) {
    const std::vector<Refusal> refusals = inbox.take({what});
    ASSERT_EQ(refusals.size(), 1U) << what.substr(0, 80);
    EXPECT_THAT(refusals[0].why, HasSubstr(why)) << what.substr(0, 80);
    EXPECT_THAT(what, HasSubstr(refusals[0].name));
  }
  EXPECT_TRUE(inbox.waiting().empty());
  EXPECT_EQ(changes, 0);
}

TEST_F(InboxTest, OneDeliversAndClearsWhatAnotherLeftHalfDone) {
  inbox.take({"magnet:?a"});
  EXPECT_TRUE(Inbox(place, [] {}).take({"magnet:?a"}).empty());
  EXPECT_THAT(names(inbox), ElementsAre("magnet:?a"));
  const std::string dead = place + "/.new-999999999-1";
  fs::create_directory(dead);
  ASSERT_TRUE(inbox.mayDeliver());
  EXPECT_FALSE(fs::exists(dead));
  Inbox other(place, nullptr);
  EXPECT_FALSE(other.mayDeliver());
  EXPECT_TRUE(inbox.mayDeliver());
}

TEST_F(InboxTest, SaysWhenNothingCanBeKept) {
  fs::create_directories(fs::path(place).parent_path());
  std::ofstream(place) << "in the way";
  const std::vector<Refusal> refusals = inbox.take({"magnet:?a"});
  ASSERT_EQ(refusals.size(), 1U);
  EXPECT_THAT(refusals[0].why, HasSubstr("cannot be kept"));
}

}  // namespace
}  // namespace seedmote::platform

#include "client/TorrentListing.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "json/JSONValue.h"

namespace seedmote {
namespace {

TEST(TorrentIdentity, AnIdIsAnIntegerOrNone) {
  const json::Value torrents = json::JSONValue(
      R"([{"id":5},{"id":-1},{"id":5.0},{"id":2.5},{"id":5e0},{"id":1e400},{"id":true},{"id":"5"},{"id":null},{}])");
  std::vector<std::int64_t> ids;
  for (const json::ValueRef torrent : torrents->elements()) ids.push_back(torrentID(torrent["id"]));
  EXPECT_THAT(ids, testing::ElementsAre(5, -1, -1, -1, -1, -1, -1, -1, -1, -1));
}

json::Value listOf(const std::string& name) {
  return json::JSONValue(R"([{"id":1,"name":"other"},{"id":2,"name":")" + name + R"(","totalSize":9}])");
}

TEST(TorrentListing, ASelectionSurvivesAnotherSessionOnlyAsTheSameTorrent) {
  struct Case {
    const char* what;
    const char* session;
    json::Value list;
    std::int64_t selected;
  };
  const Case cases[] = {
      {"same session, another name", "first", listOf("gamma"), 2},
      {"same session, gone", "first", json::Value::array({}), 2},
      {"another session, another name", "second", listOf("gamma"), -1},
      {"another session, gone", "second", json::Value::array({}), -1},
  };
  for (const Case& c : cases) {
    TorrentListing listing;
    listing.store(listOf("beta"), "first");
    listing.select(2);
    listing.replace(json::Value());  // an update that failed
    EXPECT_EQ(listing.selection().id, 2);
    listing.store(c.list, c.session);
    EXPECT_EQ(listing.selection().id, c.selected) << c.what;
  }
  TorrentListing listing;
  listing.store(listOf("beta"), "first");
  listing.select(7);
  listing.store(json::JSONValue(R"([{"id":7,"name":"seven"}])"), "second");
  EXPECT_EQ(listing.selection().id, -1) << "what was in no list means no torrent of another session";
  const json::Value twins =
      json::JSONValue(R"([{"id":1,"name":"a","totalSize":9},{"id":2,"name":"a","totalSize":9}])");
  listing.store(twins, "third");
  listing.select(1);
  listing.store(twins, "fourth");
  EXPECT_EQ(listing.selection().id, -1) << "nobody can tell which of the two is which";
  const std::uint64_t deal = listing.deal();
  EXPECT_TRUE(listing.select({1, "a", 9}, deal)) << "a row of this list";
  listing.store(twins, "fifth");
  EXPECT_FALSE(listing.select({1, "a", 9}, deal)) << "a row of the list before";
}

TEST(TorrentListing, AListThatCameLateIsNotStored) {
  TorrentListing listing;
  const std::uint64_t before = listing.version();
  listing.store(listOf("beta"), "first");
  EXPECT_FALSE(listing.store(listOf("gamma"), "zeroth", before));
  EXPECT_EQ(listing.session(), "first");
  EXPECT_TRUE(listing.store(listOf("gamma"), "second", listing.version()));
}

TEST(TorrentListing, ListSessionAndSelectionChangeTogether) {
  TorrentListing listing;
  std::atomic<bool> over{false};
  const auto write = [&](const std::string& name) {
    return std::thread([&listing, &over, name, list = listOf(name)] {
      while (!over) listing.store(list, name);
    });
  };
  std::thread first = write("first");
  std::thread second = write("second");
  for (int i = 0; i < 20000; ++i) {
    listing.select(2);
    for (const TorrentSelection& seen : {listing.find(2), listing.selection()}) {
      ASSERT_EQ(seen.known ? std::optional(seen.known->name) : std::nullopt, seen.session);
    }
  }
  over = true;
  first.join();
  second.join();
}

}  // namespace
}  // namespace seedmote

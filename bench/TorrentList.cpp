#include "bench/TorrentList.h"

#include <cstdint>
#include <cstdio>
#include <random>
#include <string_view>

namespace seedmote::bench {

namespace {

constexpr std::string_view kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

class Dice {
 public:
  explicit Dice(unsigned seed) : random_(seed) {}
  std::uint64_t upTo(std::uint64_t limit) {
    return std::uniform_int_distribution<std::uint64_t>(0, limit)(random_);
  }
  std::string number(std::uint64_t limit) { return std::to_string(upTo(limit)); }
  bool one(std::uint64_t of) { return upTo(of - 1) == 0; }
  std::string base64(std::size_t size) {
    std::string text(size, 'A');
    for (char& letter : text) letter = kBase64[random_() % kBase64.size()];
    return text;
  }

 private:
  std::mt19937 random_;
};

std::string nameOf(Dice& dice) {
  std::string name = "some-linux-distribution-";
  const std::size_t size = 34 + dice.upTo(8);
  while (name.size() < size) name += static_cast<char>('a' + dice.upTo(25));
  return name;
}

std::string partDone(Dice& dice) {
  char text[16];
  std::snprintf(text, sizeof text, "0.%04d", static_cast<int>(dice.upTo(9999)));
  return text;
}

std::string files(int count, Dice& dice) {
  std::string list = R"("files":[)";
  for (int file = 0; file < count; ++file) {
    const std::string size = dice.number(900'000'000);
    list += file > 0 ? "," : "";
    list += R"({"bytesCompleted":)" + size + R"(,"length":)" + size + R"(,"name":"some-collection/disc )" +
            std::to_string(file / 20) + R"(\/)" + nameOf(dice) + ".flac\"}";
  }
  return list + "]";
}

std::string fileStats(int count, Dice& dice) {
  std::string list = R"("fileStats":[)";
  for (int file = 0; file < count; ++file) {
    list += file > 0 ? "," : "";
    list += R"({"bytesCompleted":)" + dice.number(900'000'000) + R"(,"priority":0,"wanted":true})";
  }
  return list + "]";
}

std::string repeated(const char* key, const char* value, int count) {
  std::string list = std::string("\"") + key + "\":[";
  for (int i = 0; i < count; ++i) list += (i > 0 ? "," : "") + std::string(value);
  return list + "]";
}

}  // namespace

std::string torrentList(int count, unsigned seed) {
  Dice dice(seed);
  std::string text = R"({"arguments":{"torrents":[)";
  for (int id = 1; id <= count; ++id) {
    const bool complete = dice.one(2);
    if (id != 1) text += ',';
    text += R"({"id":)" + std::to_string(id) + R"(,"isFinished":)" + (dice.one(8) ? "true" : "false");
    text += R"(,"leftUntilDone":)" + (complete ? "0" : dice.number(4'000'000'000));
    text += R"(,"name":")" + nameOf(dice) + R"(","percentDone":)" + (complete ? "1" : partDone(dice));
    text += R"(,"rateDownload":)" + (complete ? "0" : dice.number(2'000'000));
    text += R"(,"rateUpload":)" + dice.number(500'000) + R"(,"status":)" + dice.number(6);
    text += R"(,"totalSize":)" + dice.number(40'000'000'000) + R"(,"uploadedEver":)" +
            dice.number(90'000'000'000) + "}";
  }
  return text + R"(]},"result":"success"})" + "\n";
}

std::string torrentDetail(int count) {
  Dice dice(11);
  const int pieces = count * 40;
  std::string text = R"({"arguments":{"torrents":[{"activityDate":1795236994,"addedDate":1795236990,)"
                     R"("comment":"made for the love of it","corruptEver":0,"creator":"mktorrent 1.1",)"
                     R"("dateCreated":1795236000,"desiredAvailable":0,"doneDate":1795236995,)"
                     R"("downloadDir":"\/var\/lib\/downloads","downloadedEver":)" +
                     dice.number(90'000'000'000) + R"(,"error":0,"errorString":"","eta":-1,)";
  text += fileStats(count, dice) + "," + files(count, dice);
  text += R"(,"hashString":"5d7c1a4dd4411cf49415bbb7c6271e49cb9e8d0a","haveValid":15990784,"id":5,)"
          R"("isFinished":false,"isPrivate":false,"name":"some-collection","peers":[],"percentDone":0.2498,)"
          R"("pieceCount":)" +
          std::to_string(pieces) + R"(,"pieceSize":262144,"pieces":")" +
          dice.base64(static_cast<std::size_t>(pieces) / 6) + "\",";
  text += repeated("priorities", "0", count) + "," + repeated("wanted", "1", count);
  return text +
         R"(,"rateDownload":0,"rateUpload":0,"status":4,"totalSize":64000000,"uploadRatio":0}]},)"
         R"("result":"success"})" +
         "\n";
}

std::string longText() {
  return R"({"method":"torrent-add","arguments":{"metainfo":")" + Dice(1).base64(30'000'000) + "\"}}";
}

}  // namespace seedmote::bench

#include "tests/soak/DealingDaemon.h"

#include <algorithm>

namespace seedmote::soak {

namespace {

constexpr int kPlainEvery = 3;  // of the others one has another one's name, and one its size as well

// What stands behind "ids", up to the next comma or brace that ends it; empty without the key.
std::string idsIn(const std::string& body) {
  constexpr std::string_view key = "\"ids\":";
  const std::size_t start = body.find(key);
  if (start == std::string::npos) return {};
  const std::size_t from = start + key.size();
  return body.substr(from, body.find_first_of(",}", from) - from);
}

bool isInteger(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

DealingDaemon::DealingDaemon(unsigned seed, int torrents) : random_(seed), count_(torrents) {
  replenish();
  wire_.setHandler([this](const support::RecordedRequest& request) { return reply(request); });
}

void DealingDaemon::replenish() {
  const std::lock_guard lock(mutex_);
  while (torrents_.size() < count_) add();
}

void DealingDaemon::add() {
  const int number = ++numbers_;
  Torrent torrent{number, ++ids_, "torrent " + std::to_string(number), 1000 + number};
  if (number % kPlainEvery != 0 && !torrents_.empty()) {
    torrent.name = torrents_.back().name;
    torrent.size = number % kPlainEvery == 1 ? torrents_.back().size : torrent.size;
  }
  torrents_.push_back(torrent);
}

void DealingDaemon::restart() {
  const std::lock_guard lock(mutex_);
  startAnew();
}

void DealingDaemon::startAnew() {
  ++restarts_;
  wire_.changeSessionId();
  std::shuffle(torrents_.begin(), torrents_.end(), random_);
  ids_ = 0;
  for (Torrent& torrent : torrents_) torrent.id = ++ids_;
  loading_ = std::uniform_int_distribution(0, 2)(random_);
}

void DealingDaemon::setUnrest(double chance) {
  const std::lock_guard lock(mutex_);
  unrest_ = chance;
}

bool DealingDaemon::happens(double chance) {
  return std::uniform_real_distribution(0.0, 1.0)(random_) < chance;
}

support::Reply DealingDaemon::reply(const support::RecordedRequest& request) {
  const std::lock_guard lock(mutex_);
  if (happens(unrest_)) {
    startAnew();
    if (happens(0.5)) return support::replies::reset();  // it ended before it read
  }
  support::Reply answer = wire_.model().reply(request);
  const bool isAccepted = request.header("X-Transmission-Session-Id") == wire_.sessionId();
  if (isAccepted && request.body.find("torrent-remove") != std::string::npos) {
    remove(idsIn(request.body));
  } else if (isAccepted && request.body.find("torrent-get") != std::string::npos) {
    answer = support::replies::json(listed(idsIn(request.body)));
  }
  loading_ -= isAccepted && loading_ > 0 ? 1 : 0;
  if (happens(unrest_)) {
    startAnew();
    return support::replies::nothing();
  }
  return answer;
}

// A number that is no plain integer means every torrent, and so does none.
void DealingDaemon::remove(const std::string& ids) {
  if (loading_ == 0) {
    std::erase_if(torrents_, [&ids](const Torrent& torrent) {
      return !isInteger(ids) || std::to_string(torrent.id) == ids;
    });
  }
}

std::string DealingDaemon::listed(const std::string& ids) const {
  std::vector<Torrent> torrents = loading_ > 0 ? std::vector<Torrent>() : torrents_;
  std::sort(torrents.begin(), torrents.end(), [](const auto& a, const auto& b) { return a.id < b.id; });
  std::string list;
  for (const Torrent& torrent : torrents) {
    if (ids.empty() || ids == "[" + std::to_string(torrent.id) + "]") {
      list += std::string(list.empty() ? "" : ",") + "{\"id\":" + std::to_string(torrent.id) +
              ",\"name\":\"" + torrent.name + "\",\"totalSize\":" + std::to_string(torrent.size) +
              ",\"uploadedEver\":" + std::to_string(torrent.number) + ",\"hashString\":\"" +
              std::to_string(torrent.number) + "\"}";
    }
  }
  return R"({"arguments":{"torrents":[)" + list + R"(]},"result":"success"})";
}

std::set<int> DealingDaemon::numbers() const {
  const std::lock_guard lock(mutex_);
  std::set<int> all;
  for (const Torrent& torrent : torrents_) all.insert(torrent.number);
  return all;
}

int DealingDaemon::restarts() const {
  const std::lock_guard lock(mutex_);
  return restarts_;
}

}  // namespace seedmote::soak

#include "platform/core/CurlHttp.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/core/CurlTransfer.h"
#include "platform/core/CurlUrl.h"

namespace seedmote::platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int kMostRedirects = 16;
constexpr std::size_t kMostIdle = 4;

HttpAnswer failure(HttpError error, std::string message) {
  HttpAnswer answer;
  answer.error = error;
  answer.message = std::move(message);
  return answer;
}

HttpAnswer cancelledAnswer() {
  return failure(HttpError::cancelled, "The exchange was cancelled.");
}

// The same answer, told as a failure: its status stays, its body goes.
HttpAnswer failed(const HttpAnswer& answer, HttpError error, std::string message) {
  HttpAnswer changed = failure(error, std::move(message));
  changed.status = answer.status;
  return changed;
}

bool isHeaderName(std::string_view name) {
  constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  return !name.empty() && std::all_of(name.begin(), name.end(), [&](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           kMarks.find(c) != std::string_view::npos;
  });
}

// Values may come from outside (a daemon's session id): one with a line end would be a header of its own.
bool isHeader(const HttpHeader& header) {
  return isHeaderName(header.name) &&
         header.value.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos;
}

bool isCredential(const HttpHeader& header) {
  return curl().strequal(header.name.c_str(), "Authorization") != 0;
}

bool isRedirect(int status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

// 301 and 302 turn a POST into a GET as well: what every browser does and servers count on.
// A session id goes along wherever it goes, for without it the daemon there would never do but ask for one.
HttpRequest redirectedRequest(const HttpRequest& from, int status, std::string url, bool withCredentials) {
  HttpRequest request;
  request.url = std::move(url);
  request.headers = from.headers;
  if (!withCredentials) {
    std::erase_if(request.headers, isCredential);
  }
  if (status == 307 || status == 308) {
    request.method = from.method;
    request.body = from.body;
  }
  return request;
}

milliseconds timeoutOf(const HttpRequest& request) {
  const double seconds = Http::realTimeout(request.timeoutSeconds);
  return std::max(milliseconds(1), milliseconds(std::llround(seconds * 1000)));
}

}  // namespace

// The sets of kept connections, those in use and the idle ones.
class CurlHttp::Pool {
 public:
  // Absent after cancelAll().
  std::unique_ptr<CurlConnections> take() {
    const std::lock_guard lock(mutex_);
    if (cancelled_) {
      return nullptr;
    }
    std::unique_ptr<CurlConnections> connections;
    if (idle_.empty()) {
      connections = std::make_unique<CurlConnections>();
    } else {
      connections = std::move(idle_.back());
      idle_.pop_back();
    }
    busy_.push_back(connections.get());
    return connections;
  }

  void giveBack(std::unique_ptr<CurlConnections> connections) {
    const std::lock_guard lock(mutex_);
    std::erase(busy_, connections.get());
    if (!cancelled_ && idle_.size() < kMostIdle) {
      idle_.push_back(std::move(connections));
    }
    connections.reset();
    if (busy_.empty()) {
      allBack_.notify_all();
    }
  }

  void cancelAll() {
    const std::lock_guard lock(mutex_);
    cancelled_ = true;
    for (const CurlConnections* connections : busy_) {
      connections->wake();
    }
    idle_.clear();
  }

  void waitUntilAllAreBack() {
    std::unique_lock lock(mutex_);
    allBack_.wait(lock, [this] { return busy_.empty(); });
  }

  const std::atomic<bool>& cancelled() const { return cancelled_; }

 private:
  std::mutex mutex_;
  std::condition_variable allBack_;
  std::atomic<bool> cancelled_{false};
  std::vector<std::unique_ptr<CurlConnections>> idle_;  // the latest used at the end
  std::vector<const CurlConnections*> busy_;
};

// Connections for the length of one exchange.
class CurlHttp::Lease {
 public:
  explicit Lease(Pool& pool) : pool_(pool), connections_(pool.take()) {}
  ~Lease() {
    if (connections_) {
      pool_.giveBack(std::move(connections_));
    }
  }
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;

  CurlConnections* connections() const { return connections_.get(); }

 private:
  Pool& pool_;
  std::unique_ptr<CurlConnections> connections_;
};

CurlHttp::CurlHttp(std::size_t largestAnswer)
    : largestAnswer_(largestAnswer), pool_(std::make_unique<Pool>()) {}

CurlHttp::~CurlHttp() {
  cancelAll();
  pool_->waitUntilAllAreBack();
}

HttpAnswer CurlHttp::exchange(const HttpRequest& request) {
  for (const HttpHeader& header : request.headers) {
    if (!isHeader(header)) {
      return failure(HttpError::badHeader, "A header of the request is not valid; nothing was sent.");
    }
  }
  try {
    Lease lease(*pool_);
    return lease.connections() ? follow(*lease.connections(), request) : cancelledAnswer();
  } catch (const std::exception& raised) {
    return failure(HttpError::other, raised.what());
  }
}

void CurlHttp::cancelAll() {
  pool_->cancelAll();
}

// The redirects are followed here and not by curl, to which another port is another server, and TLS as well.
HttpAnswer CurlHttp::follow(CurlConnections& connections, const HttpRequest& request) {
  const auto deadline = steady_clock::now() + timeoutOf(request);
  HttpRequest redirected;
  const HttpRequest* hop = &request;
  std::string why;
  std::optional<UrlOrigin> origin = originOf(hop->url, why);
  if (!origin) {
    return failure(HttpError::badUrl, why);
  }
  for (int redirects = 0;; ++redirects) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
    if (left.count() <= 0) {
      return failure(HttpError::timedOut, "The time was over while redirects were followed.");
    }
    CurlTransfer transfer(connections, *hop, largestAnswer_, pool_->cancelled());
    HttpAnswer answer = transfer.perform(left);
    const std::string target = isRedirect(answer.status) ? transfer.redirectUrl() : std::string();
    if (answer.error != HttpError::none || target.empty()) {
      return answer;
    }
    if (redirects == kMostRedirects) {
      return failed(answer, HttpError::tooManyRedirects, "The server redirects without end.");
    }
    const std::optional<UrlOrigin> next = originOf(target, why);
    if (!next) {
      return failed(answer, HttpError::badUrl, "The server redirects to another kind of address. " + why);
    }
    redirected = redirectedRequest(*hop, answer.status, target, credentialsMayFollow(*origin, *next));
    hop = &redirected;
    origin = next;
  }
}

}  // namespace seedmote::platform

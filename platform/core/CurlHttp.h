#pragma once

#include <cstddef>
#include <memory>

#include "platform/core/Http.h"

namespace seedmote::platform {

class CurlConnections;

// HTTP by libcurl, HTTP/1.1 only. Connections are kept alive and the latest used is used first. A GET that a
// kept connection swallowed is sent again; a POST never is, for it may have been carried out.
class CurlHttp final : public Http {
 public:
  // `largestAnswer` is the limit in bytes, after decoding.
  explicit CurlHttp(std::size_t largestAnswer = kLargestAnswer);
  // Cancels what is under way and waits for its callers to leave: a few milliseconds.
  ~CurlHttp() override;
  CurlHttp(const CurlHttp&) = delete;
  CurlHttp& operator=(const CurlHttp&) = delete;

  HttpAnswer exchange(const HttpRequest& request) override;
  void cancelAll() override;

 private:
  class Pool;
  class Lease;

  HttpAnswer follow(CurlConnections& connections, const HttpRequest& request);

  const std::size_t largestAnswer_;
  std::unique_ptr<Pool> pool_;
};

}  // namespace seedmote::platform

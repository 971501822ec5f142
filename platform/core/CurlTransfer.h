#pragma once

#include <curl/curl.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/core/Http.h"
#include "platform/core/LibCurl.h"

namespace seedmote::platform {

// Connections that are kept alive from one transfer to the next; one transfer at a time uses them. It is a
// multi handle, which unlike a lone easy handle can be woken from another thread.
class CurlConnections final {
 public:
  CurlConnections();  // raises std::runtime_error when curl has no memory or no descriptors left

  CURLM* multi() const { return multi_.get(); }

  // Ends the present or next wait of a transfer. Any thread.
  void wake() const { curl().multi_wakeup(multi_.get()); }

 private:
  std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> multi_;
};

// One request and its answer, without redirects. Used once.
class CurlTransfer final {
 public:
  // `connections` and `request` outlive this; `cancelled` ends the transfer once it is true and they
  // are woken.
  CurlTransfer(CurlConnections& connections, const HttpRequest& request, std::size_t largestAnswer,
               const std::atomic<bool>& cancelled);
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  HttpAnswer perform(std::chrono::milliseconds patience);

  // Where the answer sends the client to, as a whole URL; empty when it doesn't.
  std::string redirectUrl() const;

 private:
  using HeaderList = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

  template <class Value>
  void set(CURLoption option, Value value);
  void setRequest();
  void setHeaders();
  void setLimits(std::chrono::milliseconds patience);
  void setCallbacks();
  CURLcode drive();
  bool stopWhenCancelled();
  HttpAnswer answerOf(CURLcode code);
  bool isPlainHttp() const;
  void judgeStrangeBytes();
  bool take(const char* data, std::size_t size);
  bool takeHeadLine(std::string_view line);
  void reserveBody();

  static std::size_t onData(char* data, std::size_t one, std::size_t size, void* transfer);
  static std::size_t onHeadLine(char* line, std::size_t one, std::size_t size, void* transfer);
  static int onReadyToSend(void* transfer, char*, char*, int, int);

  CurlConnections& connections_;
  const HttpRequest& request_;
  const std::size_t largestAnswer_;
  const std::atomic<bool>& cancelled_;
  HeaderList headers_{nullptr, curl().slist_free_all};
  CURLcode setupFailure_ = CURLE_OK;
  std::string body_;
  std::string strange_;  // the first bytes of what came instead of HTTP
  std::size_t headSize_ = 0;
  bool headEnded_ = false;                // the empty line came
  HttpError ownError_ = HttpError::none;  // why a callback stopped the transfer
  std::string ownMessage_;
  char text_[CURL_ERROR_SIZE] = "";
  std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy_;  // last: it refers to the others
};

}  // namespace seedmote::platform

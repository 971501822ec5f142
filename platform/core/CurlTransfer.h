#pragma once

#include <curl/curl.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "platform/core/Http.h"

namespace seedmote::platform {

// A multi handle with its one easy handle. The multi handle keeps the connections alive between
// transfers, and unlike a lone easy handle it can be woken from another thread.
class CurlHandles final {
 public:
  CurlHandles();  // raises std::runtime_error when curl has no memory or no descriptors left

  CURL* easy() const { return easy_.get(); }
  CURLM* multi() const { return multi_.get(); }

  // Ends the present or next wait of a transfer. Any thread.
  void wake() const { curl_multi_wakeup(multi_.get()); }

 private:
  std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> multi_;
  std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy_;
};

// One request and its answer, without redirects. Used once.
class CurlTransfer final {
 public:
  // `handles` and `request` outlive this; `cancelled` ends the transfer once it is true and the handles
  // are woken.
  CurlTransfer(CurlHandles& handles, const HttpRequest& request, std::size_t largestAnswer,
               const std::atomic<bool>& cancelled);
  ~CurlTransfer();
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
  HttpAnswer answerOf(CURLcode code);
  bool take(const char* data, std::size_t size);
  void reserveBody();

  static std::size_t onData(char* data, std::size_t one, std::size_t size, void* transfer);
  static int onReadyToSend(void* transfer, char*, char*, int, int);

  CurlHandles& handles_;
  const HttpRequest& request_;
  const std::size_t largestAnswer_;
  const std::atomic<bool>& cancelled_;
  HeaderList headers_{nullptr, curl_slist_free_all};
  CURLcode setupFailure_ = CURLE_OK;
  std::string body_;
  HttpError ownError_ = HttpError::none;  // why a callback stopped the transfer
  std::string ownMessage_;
  char text_[CURL_ERROR_SIZE] = "";
};

}  // namespace seedmote::platform

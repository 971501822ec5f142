#include "platform/core/CurlTransfer.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "platform/core/CurlError.h"

namespace seedmote::platform {
namespace {

// A length that the server merely claims reserves no more than this; beyond it the body grows as it comes.
constexpr std::size_t kLargestReserve = std::size_t{8} << 20;

// So many bytes tell a TLS alert from anything else: its kind, and two of the version.
constexpr std::size_t kAlertStart = 3;

constexpr std::size_t kLargestHead = std::size_t{256} << 10;

constexpr int kLongestPoll = 60'000;  // milliseconds; curl shortens it to its own next deadline
constexpr long kReceiveBuffer = 128 << 10;

}  // namespace

CurlConnections::CurlConnections() : multi_(curl().multi_init(), curl().multi_cleanup) {
  if (!multi_) {
    throw std::runtime_error("No HTTP connection could be prepared.");
  }
}

// A new easy handle each time: what curl_easy_reset() leaves behind in a used one is more than it promises.
CurlTransfer::CurlTransfer(CurlConnections& connections, const HttpRequest& request,
                           std::size_t largestAnswer, const std::atomic<bool>& cancelled)
    : connections_(connections),
      request_(request),
      largestAnswer_(largestAnswer),
      cancelled_(cancelled),
      easy_(curl().easy_init(), curl().easy_cleanup) {
  if (!easy_) {
    throw std::runtime_error("No HTTP request could be prepared.");
  }
}

HttpAnswer CurlTransfer::perform(std::chrono::milliseconds patience) {
  setRequest();
  setHeaders();
  setLimits(patience);
  setCallbacks();
  if (setupFailure_ != CURLE_OK) {
    return answerOf(setupFailure_);
  }
  if (curl().multi_add_handle(connections_.multi(), easy_.get()) != CURLM_OK) {
    return answerOf(CURLE_FAILED_INIT);
  }
  const CURLcode code = drive();
  curl().multi_remove_handle(connections_.multi(), easy_.get());
  return answerOf(code);
}

std::string CurlTransfer::redirectUrl() const {
  char* url = nullptr;
  curl().easy_getinfo(easy_.get(), CURLINFO_REDIRECT_URL, &url);
  return url ? url : "";
}

template <class Value>
void CurlTransfer::set(CURLoption option, Value value) {
  const CURLcode code = curl().easy_setopt(easy_.get(), option, value);
  if (setupFailure_ == CURLE_OK) {
    setupFailure_ = code;
  }
}

void CurlTransfer::setRequest() {
  set(CURLOPT_URL, request_.url.c_str());
  set(CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1});
  set(CURLOPT_HTTP09_ALLOWED, 1L);   // what comes instead of HTTP is looked at in take()
  set(CURLOPT_ACCEPT_ENCODING, "");  // all that this libcurl can decode
  set(CURLOPT_PROXY, "");            // the environment names one perhaps; the daemon is at home
  set(CURLOPT_USERAGENT, "Seedmote");
  if (request_.method == "POST") {
    set(CURLOPT_POST, 1L);
    set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body.size()));
    set(CURLOPT_POSTFIELDS, request_.body.c_str());  // not copied
  }
  // The person chose the daemon; home servers have certificates that nobody signed.
  set(CURLOPT_SSL_VERIFYPEER, 0L);
  set(CURLOPT_SSL_VERIFYHOST, 0L);
}

void CurlTransfer::setHeaders() {
  const auto add = [this](const std::string& line) {
    curl_slist* longer = curl().slist_append(headers_.get(), line.c_str());
    if (!longer) {
      throw std::bad_alloc();
    }
    (void)headers_.release();
    headers_.reset(longer);
  };
  add("Expect:");  // in curl's notation: none, so no body waits for a "100 Continue"
  for (const HttpHeader& header : request_.headers) {
    const bool blank = header.value.find_first_not_of(" \t") == std::string::npos;
    // "Name:" would remove the header; "Name;" sends it with nothing behind the colon.
    add(blank ? header.name + ";" : header.name + ": " + header.value);
  }
  set(CURLOPT_HTTPHEADER, headers_.get());
}

void CurlTransfer::setLimits(std::chrono::milliseconds patience) {
  const long limit = static_cast<long>(patience.count());
  set(CURLOPT_TIMEOUT_MS, limit);
  set(CURLOPT_CONNECTTIMEOUT_MS, limit);
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_QUICK_EXIT, 1L);  // a name look-up that hangs is left behind, not waited for
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(largestAnswer_));
  set(CURLOPT_BUFFERSIZE, kReceiveBuffer);
}

void CurlTransfer::setCallbacks() {
  set(CURLOPT_ERRORBUFFER, text_);
  set(CURLOPT_WRITEFUNCTION, &CurlTransfer::onData);
  set(CURLOPT_WRITEDATA, static_cast<void*>(this));
  set(CURLOPT_HEADERFUNCTION, &CurlTransfer::onHeadLine);
  set(CURLOPT_HEADERDATA, static_cast<void*>(this));
  set(CURLOPT_PREREQFUNCTION, &CurlTransfer::onReadyToSend);
  set(CURLOPT_PREREQDATA, static_cast<void*>(this));
}

CURLcode CurlTransfer::drive() {
  int running = 0;
  do {
    if (stopWhenCancelled()) {
      return CURLE_ABORTED_BY_CALLBACK;
    }
    if (curl().multi_perform(connections_.multi(), &running) != CURLM_OK) {
      return CURLE_FAILED_INIT;
    }
    if (running && curl().multi_poll(connections_.multi(), nullptr, 0, kLongestPoll, nullptr) != CURLM_OK) {
      return CURLE_FAILED_INIT;
    }
  } while (running);
  int left = 0;
  const CURLMsg* message = curl().multi_info_read(connections_.multi(), &left);
  return message && message->msg == CURLMSG_DONE ? message->data.result : CURLE_FAILED_INIT;
}

HttpAnswer CurlTransfer::answerOf(CURLcode code) {
  HttpAnswer answer;
  long status = 0;
  curl().easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
  answer.status = static_cast<int>(status);
  if (ownError_ == HttpError::none && !strange_.empty()) {
    judgeStrangeBytes();
  } else if (code == CURLE_OK && !headEnded_) {  // curl takes half a head for an answer without body
    ownError_ = HttpError::closed;
    ownMessage_ = "The connection ended inside the head of the answer.";
  } else if (code == CURLE_OK) {
    answer.hasBody = true;
    answer.body = std::move(body_);
    return answer;
  }
  if (ownError_ != HttpError::none) {
    answer.error = ownError_;
    answer.message = ownMessage_;
    return answer;
  }
  long osError = 0;
  curl().easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &osError);
  answer.message = *text_ ? text_ : curl().easy_strerror(code);
  answer.error = httpErrorOf(code, answer.message, osError);
  if (answer.error == HttpError::closed && headSize_ == 0 && isPlainHttp()) {
    answer.error = HttpError::silent;
  } else if (code == CURLE_OUT_OF_MEMORY) {  // so curl calls a line without end
    answer.error = status == 0 ? HttpError::notHttp : HttpError::tooLarge;
    answer.message = "A line in the head of the answer has no end.";
  }
  return answer;
}

bool CurlTransfer::isPlainHttp() const {
  const char* scheme = nullptr;
  curl().easy_getinfo(easy_.get(), CURLINFO_SCHEME, &scheme);
  // There is none before a connection stands.
  return curl().strequal(scheme ? scheme : request_.url.substr(0, request_.url.find(':')).c_str(), "http");
}

// A TLS server may answer plain HTTP with an alert: record kind 21, version 3.x.
void CurlTransfer::judgeStrangeBytes() {
  const bool isAlert = strange_.size() == kAlertStart && strange_.starts_with("\x15\x03") &&
                       static_cast<unsigned char>(strange_.back()) <= 4;
  ownError_ = isAlert ? HttpError::needsTls : HttpError::notHttp;
  ownMessage_ = isAlert ? "The server answered with a TLS alert." : "The server answered, but not in HTTP.";
}

bool CurlTransfer::stopWhenCancelled() {
  if (!cancelled_) {
    return false;
  }
  ownError_ = HttpError::cancelled;
  ownMessage_ = "The exchange was cancelled.";
  return true;
}

void CurlTransfer::reserveBody() {
  curl_off_t length = -1;
  curl().easy_getinfo(easy_.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
  if (length > 0) {
    body_.reserve(std::min({static_cast<std::size_t>(length), kLargestReserve, largestAnswer_}));
  }
}

bool CurlTransfer::take(const char* data, std::size_t size) {
  if (stopWhenCancelled()) {  // curl reads on for as long as a fast server has more
    return false;
  }
  if (headSize_ == 0) {  // no status line came
    strange_.append(data, std::min(size, kAlertStart - strange_.size()));
    return strange_.size() < kAlertStart;
  }
  if (body_.empty()) {
    reserveBody();
  }
  if (size > largestAnswer_ - body_.size()) {
    ownError_ = HttpError::tooLarge;
    ownMessage_ = "The answer is larger than " + std::to_string(largestAnswer_) + " bytes.";
    return false;
  }
  body_.append(data, size);
  return true;
}

// Also called for the lines of an interim answer, and for what may follow a chunked body.
bool CurlTransfer::takeHeadLine(std::string_view line) {
  headSize_ += line.size();
  if (headSize_ > kLargestHead) {
    ownError_ = HttpError::tooLarge;
    ownMessage_ = "The head of the answer is larger than " + std::to_string(kLargestHead) + " bytes.";
    return false;
  }
  if (line.starts_with("HTTP/")) {
    headEnded_ = false;
  } else if (line == "\r\n" || line == "\n") {
    headEnded_ = true;
  }
  return true;
}

std::size_t CurlTransfer::onHeadLine(char* line, std::size_t, std::size_t size, void* transfer) {
  return static_cast<CurlTransfer*>(transfer)->takeHeadLine({line, size}) ? size : 0;
}

std::size_t CurlTransfer::onData(char* data, std::size_t, std::size_t size, void* transfer) {
  CurlTransfer& self = *static_cast<CurlTransfer*>(transfer);
  try {
    return self.take(data, size) ? size : CURL_WRITEFUNC_ERROR;
  } catch (const std::bad_alloc&) {  // must not pass through curl
    self.ownError_ = HttpError::other;
    self.ownMessage_ = "There is not enough memory for the answer.";
    return CURL_WRITEFUNC_ERROR;
  }
}

// Called before each sending of the request. When a kept connection ends without an answer, curl sends
// the request again on a new one. The server may have carried it out before it closed, and a command must
// not be carried out twice: so a POST of which something has left is given up. A connection that was dead
// beforehand is no such case; curl looks before it uses one.
int CurlTransfer::onReadyToSend(void* transfer, char*, char*, int, int) {
  CurlTransfer& self = *static_cast<CurlTransfer*>(transfer);
  long sent = 0;
  curl().easy_getinfo(self.easy_.get(), CURLINFO_REQUEST_SIZE, &sent);
  if (sent == 0 || self.request_.method != "POST") {
    return CURL_PREREQFUNC_OK;
  }
  self.ownError_ = HttpError::closed;
  self.ownMessage_ = "The connection ended before the answer came.";
  return CURL_PREREQFUNC_ABORT;
}

}  // namespace seedmote::platform

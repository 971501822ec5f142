#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "platform/core/Origin.h"

namespace seedmote::platform {

struct HttpHeader {
  std::string name;
  std::string value;  // may be empty: the header is sent with an empty value
};

struct HttpRequest {
  std::string url;
  std::string method = "GET";
  std::vector<HttpHeader> headers;
  std::string body;
  double timeoutSeconds = 0;     // of the whole exchange; see Http::realTimeout
  Origin origin = Origin::user;  // changes nothing on the wire
};

// Why an exchange brought no whole answer.
enum class HttpError {
  none,
  badUrl,     // not a URL, or neither http nor https
  badHeader,  // a name or value with CR, LF or NUL; nothing was sent
  unknownHost,
  unreachable,  // no way to the host's network
  refused,      // nobody listens there
  timedOut,
  noTls,     // https was asked of a port that speaks no TLS
  needsTls,  // http was asked of a port that speaks TLS, and said so
  tls,       // any other TLS trouble
  closed,    // any other connection that ended before the answer did
  silent,    // over http, the connection ended before the first line of an answer: often for want of TLS
  notHttp,   // something answered, but not in HTTP
  tooLarge,  // more than Http::kLargestAnswer bytes
  tooManyRedirects,
  cancelled,  // the program quits
  other
};

// One answer value per exchange. A transport failure stands apart from the HTTP status: a status line
// may have come before the connection broke, then both are set.
struct HttpAnswer {
  int status = 0;        // 0 when no HTTP answer came
  bool hasBody = false;  // false with any transport failure; true for an empty body
  std::string body;      // decoded (gzip, deflate, ...)
  HttpError error = HttpError::none;
  std::string message;  // what went wrong, for the log and for people; empty without error
};

// One synchronous exchange per call; any thread, several at once; never raises. Redirects are followed within
// http and https, credentials never to another host. Any certificate is accepted. No proxy, no cache.
class Http {
 public:
  static constexpr std::size_t kLargestAnswer = std::size_t{256} << 20;
  static constexpr double kDefaultTimeout = 60;  // seconds
  static constexpr double kLongestTimeout = 7 * 86'400;

  virtual ~Http() = default;

  virtual HttpAnswer exchange(const HttpRequest& request) = 0;

  // Ends every exchange under way, and every later one at once, as cancelled. For good: the program quits.
  virtual void cancelAll() = 0;

  // The user did something after which a refused login is worth another try, such as changing a setting. See
  // LoginGuard. Any thread.
  virtual void userActed() {}

  // The time-out that an exchange with this setting really has: 0, less, or no number means the default.
  // What lies beyond a week is as good as for ever.
  static double realTimeout(double seconds) {
    return seconds > 0 ? std::min(seconds, kLongestTimeout) : kDefaultTimeout;
  }
};

}  // namespace seedmote::platform

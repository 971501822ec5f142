#include "platform/core/CurlError.h"

#include <algorithm>
#include <cerrno>
#include <initializer_list>

namespace seedmote::platform {
namespace {

bool containsAny(std::string_view text, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(),
                     [&](std::string_view word) { return text.find(word) != std::string_view::npos; });
}

HttpError tlsErrorOf(std::string_view text) {
  // OpenSSL's words for a hello that was answered in another protocol.
  const bool noTls = containsAny(text, {"wrong version number", "packet length too long", "http request",
                                        "unknown protocol", "record layer failure"});
  return noTls ? HttpError::noTls : HttpError::tls;
}

HttpError connectErrorOf(long osError) {
  switch (osError) {
    case ECONNREFUSED:
      return HttpError::refused;
    case ETIMEDOUT:
      return HttpError::timedOut;
    case ECONNRESET:  // a server that resets whoever comes may be that quick
      return HttpError::closed;
    case EHOSTUNREACH:
    case ENETUNREACH:
    case ENETDOWN:
    case EHOSTDOWN:
      return HttpError::unreachable;
    default:
      return HttpError::other;
  }
}

// A connection that broke while it was used. With TLS 1.3 the server's objections come this late too.
HttpError brokenErrorOf(std::string_view text) {
  if (containsAny(text, {"chunked-encoding"})) {
    return HttpError::notHttp;
  }
  const bool alert = containsAny(text, {"SSL routines"}) && !containsAny(text, {"unexpected eof"});
  return alert ? HttpError::tls : HttpError::closed;
}

}  // namespace

HttpError httpErrorOf(CURLcode code, std::string_view text, long osError) {
  switch (code) {
    case CURLE_OK:
      return HttpError::none;
    case CURLE_URL_MALFORMAT:
      return HttpError::badUrl;
    case CURLE_COULDNT_RESOLVE_HOST:
      return HttpError::unknownHost;
    case CURLE_COULDNT_CONNECT:
      return connectErrorOf(osError);
    case CURLE_OPERATION_TIMEDOUT:
      return HttpError::timedOut;
    case CURLE_SSL_CONNECT_ERROR:
      return tlsErrorOf(text);
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
      return HttpError::tls;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
      return brokenErrorOf(text);
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
      return HttpError::closed;
    case CURLE_UNSUPPORTED_PROTOCOL:  // the URL's scheme was looked at before: it is the answer's
    case CURLE_WEIRD_SERVER_REPLY:
      return HttpError::notHttp;
    case CURLE_FILESIZE_EXCEEDED:
      return HttpError::tooLarge;
    default:
      return HttpError::other;
  }
}

}  // namespace seedmote::platform

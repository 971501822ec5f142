#include "platform/core/CurlUrl.h"

#include <memory>

#include "platform/core/LibCurl.h"

namespace seedmote::platform {
namespace {

using Url = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

std::string part(CURLU* url, CURLUPart what, unsigned flags = 0) {
  char* text = nullptr;
  if (curl().url_get(url, what, &text, flags) != CURLUE_OK) {
    return {};
  }
  const std::unique_ptr<char, decltype(&curl_free)> owned(text, curl().free);
  return text;
}

}  // namespace

std::optional<UrlOrigin> originOf(const std::string& url, std::string& why) {
  if (url.find('\0') != std::string::npos) {  // curl would silently stop there
    why = "The address holds a zero byte.";
    return std::nullopt;
  }
  const Url parsed(curl().url(), curl().url_cleanup);
  const CURLUcode code = curl().url_set(parsed.get(), CURLUPART_URL, url.c_str(), CURLU_NON_SUPPORT_SCHEME);
  if (code != CURLUE_OK) {
    why = std::string("The address is not a URL: ") + curl().url_strerror(code) + ".";
    return std::nullopt;
  }
  UrlOrigin origin{part(parsed.get(), CURLUPART_SCHEME), part(parsed.get(), CURLUPART_HOST),
                   part(parsed.get(), CURLUPART_PORT, CURLU_DEFAULT_PORT)};
  for (const char* scheme : {"http", "https"}) {
    if (curl().strequal(origin.scheme.c_str(), scheme)) {
      origin.scheme = scheme;
      return origin;
    }
  }
  why = "The address is neither http nor https.";
  return std::nullopt;
}

bool credentialsMayFollow(const UrlOrigin& from, const UrlOrigin& to) {
  if (!curl().strequal(from.host.c_str(), to.host.c_str())) {
    return false;
  }
  const bool sameServer = from.scheme == to.scheme && from.port == to.port;
  return sameServer || (from.scheme == "http" && to.scheme == "https");
}

}  // namespace seedmote::platform

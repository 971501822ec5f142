#pragma once

#include <optional>
#include <string>

namespace seedmote::platform {

// The server that a URL names: who may see what a request carries.
struct UrlOrigin {
  std::string scheme;  // "http" or "https"
  std::string host;
  std::string port;  // the scheme's own when the URL names none
};

// Absent when `url` is not a URL, or neither http nor https; then `why` says so in a sentence.
std::optional<UrlOrigin> originOf(const std::string& url, std::string& why);

// Whether credentials meant for `from` may go to `to`: the same server, or the same host asked to use TLS.
bool credentialsMayFollow(const UrlOrigin& from, const UrlOrigin& to);

}  // namespace seedmote::platform

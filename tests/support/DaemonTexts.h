#pragma once

#include <regex>
#include <string>
#include <string_view>

// What Debian's daemon 3.00 writes, byte by byte, as recorded from it.
namespace seedmote::support::texts {

// 581 bytes with an id of 48.
inline std::string conflictBody(std::string_view sessionId) {
  std::string body =
      "<h1>409: Conflict</h1><p>Your request had an invalid session-id header.</p><p>To fix this, follow "
      "these steps:<ol><li> When reading a response, get its X-Transmission-Session-Id header and remember "
      "it<li> Add the updated header to your outgoing requests<li> When you get this 409 error message, "
      "resend your request with the updated header</ol></p><p>This requirement has been added to help "
      "prevent <a href=\"https://en.wikipedia.org/wiki/Cross-site_request_forgery\">CSRF</a> "
      "attacks.</p><p><code>X-Transmission-Session-Id: ";
  body += sessionId;
  return body + "</code></p>";
}

// The id that stands in such a body; empty when there is none.
inline std::string sessionIdIn(const std::string& answer) {
  std::smatch id;
  std::regex_search(answer, id, std::regex("<code>X-Transmission-Session-Id: ([^<]*)"));
  return id.str(1);
}

inline std::string unauthorizedBody(int failedLogins) {
  return "<h1>401: Unauthorized</h1><p>Unauthorized User. " + std::to_string(failedLogins) +
         " unsuccessful login attempts.</p>";
}

// 403 after 100 failed logins.
inline constexpr std::string_view kLockedOutBody =
    "<h1>403: Forbidden</h1><p>Too many unsuccessful login attempts. Please restart "
    "transmission-daemon.</p>";

// 403, not on the whitelist.
inline constexpr std::string_view kAddressBody =
    "<h1>403: Forbidden</h1><p>Unauthorized IP Address.</p><p>Either disable the IP address whitelist or "
    "add your address to it.</p><p>If you're editing settings.json, see the 'rpc-whitelist' and "
    "'rpc-whitelist-enabled' entries.</p><p>If you're still using ACLs, use a whitelist instead. See the "
    "transmission-daemon manpage for details.</p>";

// 421.
inline constexpr std::string_view kMisdirectedBody =
    "<h1>421: Misdirected Request</h1><p>Transmission received your request, but the hostname was "
    "unrecognized.</p><p>To fix this, choose one of the following options:<ul><li>Enable password "
    "authentication, then any hostname is allowed.</li><li>Add the hostname you want to use to the "
    "whitelist in settings.</li></ul></p><p>If you're editing settings.json, see the 'rpc-host-whitelist' "
    "and 'rpc-host-whitelist-enabled' entries.</p><p>This requirement has been added to help prevent <a "
    "href=\"https://en.wikipedia.org/wiki/DNS_rebinding\">DNS Rebinding</a> attacks.</p>";

inline constexpr std::string_view kSuccess = "{\"arguments\":{},\"result\":\"success\"}\n";
inline constexpr std::string_view kNoMethodName = "{\"arguments\":{},\"result\":\"no method name\"}\n";

// A fresh daemon's.
inline constexpr std::string_view kStats =
    "{\"arguments\":{\"activeTorrentCount\":0,\"cumulative-stats\":{\"downloadedBytes\":0,\"filesAdded\":0,"
    "\"secondsActive\":0,\"sessionCount\":1,\"uploadedBytes\":0},\"current-stats\":{\"downloadedBytes\":0,"
    "\"filesAdded\":0,\"secondsActive\":0,\"sessionCount\":1,\"uploadedBytes\":0},\"downloadSpeed\":0,"
    "\"pausedTorrentCount\":0,\"torrentCount\":0,\"uploadSpeed\":0},\"result\":\"success\"}\n";

// Shortened.
inline constexpr std::string_view kSession =
    "{\"arguments\":{\"config-dir\":\"/var/lib/transmission-daemon\",\"download-dir\":\"/srv/downloads\","
    "\"rpc-version\":16,\"rpc-version-minimum\":1,\"version\":\"3.00 (bb6b5a062e)\"},"
    "\"result\":\"success\"}\n";

inline constexpr std::string_view kNoTorrents = "{\"arguments\":{\"torrents\":[]},\"result\":\"success\"}\n";

}  // namespace seedmote::support::texts

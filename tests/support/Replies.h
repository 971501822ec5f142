#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/HttpMessages.h"

// Ready-made replies, good and bad.
namespace seedmote::support::replies {

// Whole answers. `headers` stand before the Content-Length.
Reply answer(int status, std::string_view body, const std::vector<HttpHeader>& headers = {});
Reply html(int status, std::string_view body, const std::vector<HttpHeader>& headers = {});
Reply json(std::string_view body);
Reply gzippedJson(std::string_view body);
Reply redirect(int status, std::string_view url);

// 409 as the daemon writes it; any text passes for an id, line ends too.
Reply conflict(std::string_view sessionId);
Reply conflictWithBody(std::string_view body);
Reply unauthorized(int failedLogins = 1);  // 401
Reply lockedOut();                         // 403, too many failed logins
Reply addressRefused();                    // 403, whitelist
Reply misdirected();                       // 421

// Misbehaviour.
Reply nothing();                                              // reads the request and closes
Reply reset();                                                // reads the request and resets the connection
Reply hang();                                                 // says nothing, whatever happens
Reply raw(std::string_view bytes);                            // sends these bytes and closes
Reply truncated(std::string_view body, std::size_t claimed);  // the length claimed is never reached
Reply endless(std::string_view start);                        // these bytes, then 'x' for ever
Reply huge(std::uint64_t size, bool withLength = true);       // a body of so many bytes, streamed

// Changes of another reply.
Reply slowly(Reply reply, std::chrono::milliseconds pause = std::chrono::seconds(1),
             std::size_t pieceSize = 1);
Reply closing(Reply reply);  // closes after it

}  // namespace seedmote::support::replies

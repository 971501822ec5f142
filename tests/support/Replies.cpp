#include "tests/support/Replies.h"

#include <map>
#include <string>

#include "tests/support/DaemonTexts.h"
#include "tests/support/Encodings.h"

namespace seedmote::support::replies {
namespace {

constexpr const char* kHtml = "text/html; charset=ISO-8859-1";
constexpr const char* kJson = "application/json; charset=UTF-8";
constexpr const char* kDate = "Sat, 21 Nov 2026 05:52:00 GMT";

const std::map<int, std::string> kReasons = {
    {200, "OK"}, {401, "Unauthorized"}, {403, "Forbidden"}, {409, "Conflict"}};

Reply whole(int status, const std::vector<HttpHeader>& headers, std::string_view body) {
  const auto reason = kReasons.find(status);
  std::string text = "HTTP/1.1 " + std::to_string(status) + " " +
                     (reason == kReasons.end() ? "Something" : reason->second) + "\r\n";
  for (const HttpHeader& header : headers) {
    text += header.name + ": " + header.value + "\r\n";
  }
  return {.bytes = text + "\r\n" + std::string(body)};
}

HttpHeader length(std::size_t size) {
  return {"Content-Length", std::to_string(size)};
}

}  // namespace

Reply answer(int status, std::string_view body, const std::vector<HttpHeader>& headers) {
  std::vector<HttpHeader> all = headers;
  all.push_back(length(body.size()));
  return whole(status, all, body);
}

// The daemon writes the headers of its refusals in another order than those of its JSON.
Reply html(int status, std::string_view body, const std::vector<HttpHeader>& headers) {
  std::vector<HttpHeader> all{{"Server", "Transmission"}};
  all.insert(all.end(), headers.begin(), headers.end());
  all.push_back({"Date", kDate});
  all.push_back(length(body.size()));
  all.push_back({"Content-Type", kHtml});
  return whole(status, all, body);
}

Reply json(std::string_view body) {
  return answer(200, body, {{"Server", "Transmission"}, {"Content-Type", kJson}, {"Date", kDate}});
}

Reply gzippedJson(std::string_view body) {
  return answer(
      200, gzip(body),
      {{"Server", "Transmission"}, {"Content-Encoding", "gzip"}, {"Content-Type", kJson}, {"Date", kDate}});
}

Reply redirect(int status, std::string_view url) {
  return answer(status, "moved", {{"Location", std::string(url)}});
}

Reply conflict(std::string_view sessionId) {
  // A line end in the id would break the header; the body alone carries it then.
  const std::string_view inHeader = sessionId.substr(0, sessionId.find_first_of("\r\n"));
  return html(409, texts::conflictBody(sessionId), {{"X-Transmission-Session-Id", std::string(inHeader)}});
}

Reply conflictWithBody(std::string_view body) {
  return html(409, body);
}

Reply unauthorized(int failedLogins) {
  return html(401, texts::unauthorizedBody(failedLogins),
              {{"WWW-Authenticate", "Basic realm=\"Transmission\""}});
}

Reply lockedOut() {
  return html(403, texts::kLockedOutBody);
}
Reply addressRefused() {
  return html(403, texts::kAddressBody);
}
Reply misdirected() {
  return html(421, texts::kMisdirectedBody);
}

Reply nothing() {
  return {.end = Reply::End::close};
}

Reply reset() {
  return {.end = Reply::End::reset};
}

Reply hang() {
  return {.end = Reply::End::hang};
}

Reply raw(std::string_view bytes) {
  return {.bytes = std::string(bytes), .end = Reply::End::close};
}

Reply truncated(std::string_view body, std::size_t claimed) {
  return closing(whole(200, {length(claimed)}, body));
}

Reply endless(std::string_view start) {
  Reply reply = raw(start);
  reply.filler = UINT64_MAX;
  return reply;
}

Reply huge(std::uint64_t size, bool withLength) {
  Reply reply = whole(200, {withLength ? length(size) : HttpHeader{"Connection", "close"}}, {});
  reply.filler = size;
  return closing(reply);
}

Reply slowly(Reply reply, std::chrono::milliseconds pause, std::size_t pieceSize) {
  reply.pause = pause;
  reply.pieceSize = pieceSize;
  return reply;
}

Reply closing(Reply reply) {
  reply.end = Reply::End::close;
  return reply;
}

}  // namespace seedmote::support::replies

#include "tests/support/Replies.h"

#include <map>

#include "tests/support/DaemonTexts.h"
#include "tests/support/Encodings.h"

namespace seedmote::support::replies {
namespace {

constexpr std::string_view kHtml = "text/html; charset=ISO-8859-1";
constexpr std::string_view kJson = "application/json; charset=UTF-8";
constexpr std::string_view kDate = "Sat, 21 Nov 2026 05:52:00 GMT";

const std::map<int, std::string> kReasons = {
    {200, "OK"},        {301, "Moved Permanently"},  {401, "Unauthorized"},
    {403, "Forbidden"}, {405, "Method Not Allowed"}, {409, "Conflict"}};

std::string head(int status, const std::vector<HttpHeader>& headers) {
  const auto reason = kReasons.find(status);
  std::string text = "HTTP/1.1 " + std::to_string(status) + " " +
                     (reason == kReasons.end() ? "Something" : reason->second) + "\r\n";
  for (const HttpHeader& header : headers) {
    text += header.name + ": " + header.value + "\r\n";
  }
  return text;
}

Reply whole(int status, const std::vector<HttpHeader>& headers, std::string_view body) {
  return {.bytes = head(status, headers) + "\r\n" + std::string(body)};
}

HttpHeader length(std::size_t size) {
  return {"Content-Length", std::to_string(size)};
}

// The daemon writes its JSON headers in another order than those of its refusals.
Reply jsonAnswer(std::string_view body, bool packed) {
  std::vector<HttpHeader> headers{{"Server", "Transmission"}};
  if (packed) {
    headers.push_back({"Content-Encoding", "gzip"});
  }
  headers.push_back({"Content-Type", std::string(kJson)});
  headers.push_back({"Date", std::string(kDate)});
  headers.push_back(length(body.size()));
  return whole(200, headers, body);
}

}  // namespace

Reply answer(int status, std::string_view body, const std::vector<HttpHeader>& headers) {
  std::vector<HttpHeader> all = headers;
  all.push_back(length(body.size()));
  return whole(status, all, body);
}

Reply html(int status, std::string_view body, const std::vector<HttpHeader>& headers) {
  std::vector<HttpHeader> all{{"Server", "Transmission"}};
  all.insert(all.end(), headers.begin(), headers.end());
  all.push_back({"Date", std::string(kDate)});
  all.push_back(length(body.size()));
  all.push_back({"Content-Type", std::string(kHtml)});
  return whole(status, all, body);
}

Reply json(std::string_view body) {
  return jsonAnswer(body, false);
}

Reply gzippedJson(std::string_view body) {
  return jsonAnswer(gzip(body), true);
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

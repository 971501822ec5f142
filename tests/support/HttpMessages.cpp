#include "tests/support/HttpMessages.h"

#include <strings.h>

#include <charconv>

namespace seedmote::support {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) {
    return {};
  }
  return std::string(text.substr(first, text.find_last_not_of(" \t") - first + 1));
}

std::string_view takeLine(std::string_view& text) {
  const std::size_t end = text.find(kLineEnd);
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + kLineEnd.size());
  return line;
}

// METHOD blank PATH blank HTTP/1.x
bool parseRequestLine(std::string_view line, RecordedRequest& request) {
  const std::size_t first = line.find(' ');
  const std::size_t last = line.rfind(' ');
  if (first == std::string_view::npos || first == last || !line.substr(last + 1).starts_with("HTTP/1.")) {
    return false;
  }
  request.method = line.substr(0, first);
  request.path = line.substr(first + 1, last - first - 1);
  return true;
}

bool parseHead(std::string_view head, RecordedRequest& request) {
  if (!parseRequestLine(takeLine(head), request)) {
    return false;
  }
  while (!head.empty()) {
    const std::string_view line = takeLine(head);
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) {
      return false;
    }
    request.headers.push_back({std::string(line.substr(0, colon)), trimmed(line.substr(colon + 1))});
  }
  return true;
}

// Absent when the header is no number.
std::optional<std::size_t> bodyLength(const RecordedRequest& request) {
  const std::string text = request.header("Content-Length").value_or("0");
  std::size_t length = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), length);
  return result.ec == std::errc() ? std::optional(length) : std::nullopt;
}

}  // namespace

std::optional<std::string> RecordedRequest::header(std::string_view name) const {
  for (const HttpHeader& header : headers) {
    if (header.name.size() == name.size() && strncasecmp(header.name.data(), name.data(), name.size()) == 0) {
      return header.value;
    }
  }
  return std::nullopt;
}

std::optional<RecordedRequest> takeRequest(std::string& bytes, bool& broken) {
  if (!bytes.empty() && (bytes[0] < 'A' || bytes[0] > 'Z')) {  // a TLS hello, say
    broken = true;
    return std::nullopt;
  }
  const std::size_t headEnd = bytes.find("\r\n\r\n");
  if (headEnd == std::string::npos) {
    return std::nullopt;
  }
  RecordedRequest request;
  const std::size_t bodyStart = headEnd + 2 * kLineEnd.size();
  if (!parseHead(std::string_view(bytes).substr(0, headEnd), request)) {
    broken = true;
    return std::nullopt;
  }
  const std::optional<std::size_t> length = bodyLength(request);
  broken = !length.has_value();
  if (broken || bytes.size() - bodyStart < *length) {
    return std::nullopt;
  }
  request.raw = bytes.substr(0, bodyStart + *length);
  request.body = bytes.substr(bodyStart, *length);
  bytes.erase(0, request.raw.size());
  return request;
}

}  // namespace seedmote::support

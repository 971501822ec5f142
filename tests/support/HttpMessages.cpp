#include "tests/support/HttpMessages.h"

#include <strings.h>

#include <cstdlib>
#include <sstream>

namespace seedmote::support {

std::optional<std::string> RecordedRequest::header(std::string_view name) const {
  for (const HttpHeader& header : headers) {
    if (header.name.size() == name.size() && strncasecmp(header.name.data(), name.data(), name.size()) == 0) {
      return header.value;
    }
  }
  return std::nullopt;
}

std::optional<RecordedRequest> takeRequest(std::string& bytes) {
  const std::size_t headEnd = bytes.find("\r\n\r\n");
  if (headEnd == std::string::npos) {
    return std::nullopt;
  }
  RecordedRequest request;
  std::istringstream head(bytes.substr(0, headEnd));
  std::string line;
  head >> request.method >> request.path;
  std::getline(head, line);
  while (std::getline(head, line)) {
    const std::size_t colon = line.find(':');
    const std::size_t first = line.find_first_not_of(" \t", colon + 1);
    const std::size_t last = line.find_last_not_of(" \t\r");
    const std::string value = first > last ? "" : line.substr(first, last - first + 1);
    request.headers.push_back({line.substr(0, colon), value});
  }
  const std::size_t bodyStart = headEnd + 4;
  const std::size_t length =
      std::strtoull(request.header("Content-Length").value_or("0").c_str(), nullptr, 10);
  if (bytes.size() - bodyStart < length) {
    return std::nullopt;
  }
  request.raw = bytes.substr(0, bodyStart + length);
  request.body = bytes.substr(bodyStart, length);
  bytes.erase(0, request.raw.size());
  return request;
}

}  // namespace seedmote::support

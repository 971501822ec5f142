#include "tests/support/RawClient.h"

#include <sys/socket.h>
#include <sys/time.h>

#include <cstdlib>
#include <string_view>

#include "tests/support/ByteStream.h"

namespace seedmote::support {
namespace {

bool isWhole(const std::string& answer) {
  const std::size_t headEnd = answer.find("\r\n\r\n");
  constexpr std::string_view kLength = "Content-Length: ";
  const std::size_t length = answer.find(kLength);
  return headEnd != std::string::npos && length < headEnd &&
         answer.size() >= headEnd + 4 + std::strtoul(answer.c_str() + length + kLength.size(), nullptr, 10);
}

}  // namespace

std::string rawExchange(int port, const std::string& request) {
  FileDescriptor socket = connectToLoopback(port);
  if (socket.get() < 0) {
    return {};
  }
  const timeval patience{5, 0};
  setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  ByteStream stream(socket);
  std::string answer;
  char buffer[4096];
  if (!stream.write(request)) {
    return answer;
  }
  while (!isWhole(answer)) {
    const long size = stream.read(buffer, sizeof buffer);
    if (size <= 0) {
      break;
    }
    answer.append(buffer, static_cast<std::size_t>(size));
  }
  return answer;
}

}  // namespace seedmote::support

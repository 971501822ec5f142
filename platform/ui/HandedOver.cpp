#include "platform/ui/HandedOver.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "platform/core/FileContents.h"

namespace seedmote::platform {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kShownOfLink = 80;

// Browsers and file managers put slashes behind the colon, as if a magnet link named a host.
std::string plainMagnet(const std::string& link) {
  const std::size_t question = link.find('?');
  const std::size_t colon = link.find(':');
  if (question == std::string::npos || link.find_first_not_of('/', colon + 1) != question) {
    return link;
  }
  return "magnet:" + link.substr(question);
}

HandedOver lookAtLink(const std::string& scheme, const std::string& given) {
  const std::string shown = given.substr(0, kShownOfLink);
  if (given.size() > kLongestLink) {
    return Refusal{shown, "The link is too long."};
  }
  const bool hasControls =
      std::any_of(given.begin(), given.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; });
  const std::size_t after = given.find_first_not_of('/', scheme.size() + 1);
  if (hasControls || after == std::string::npos || given.substr(after) == "?") {
    return Refusal{shown, "It is no whole link."};
  }
  return HandedLink{scheme == "magnet" ? plainMagnet(given) : given};
}

// A torrent file (BEP 3) is a dictionary with the entry "info", which is one, too.
bool mayBeTorrent(std::string_view contents) {
  return contents.size() > 1 && contents[0] == 'd' &&
         std::isdigit(static_cast<unsigned char>(contents[1])) != 0 &&
         contents.find("4:infod") != std::string_view::npos;
}

// Empty when the file can be read. Asked before it is opened: opening a pipe waits for somebody to write.
std::string troubleWith(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) {
    return error && error != std::errc::no_such_file_or_directory
               ? "It cannot be read: " + error.message() + "."
               : "There is no such file.";
  }
  if (fs::is_directory(status)) {
    return "It is a folder, not a torrent file.";
  }
  if (!fs::is_regular_file(status)) {
    return "It is no file that can be read.";
  }
  const std::uintmax_t size = fs::file_size(path, error);
  if (size > kLargestTorrentFile) {
    return "It is larger than 32 MiB, which no torrent file is.";
  }
  return size == 0 ? "The file is empty." : "";
}

HandedOver lookAtFile(const std::string& given) {
  const fs::path path = pathOfFile(given);
  if (path.empty()) {
    return Refusal{given, "It is no file of this machine."};
  }
  const std::string name = path.filename().empty() ? path.string() : path.filename().string();
  if (std::string trouble = troubleWith(path); !trouble.empty()) {
    return Refusal{name, std::move(trouble)};
  }
  errno = 0;
  std::optional<std::string> contents = contentsOfFile(given);
  if (!contents) {
    return Refusal{name, "It cannot be read: " + std::generic_category().message(errno) + "."};
  }
  if (contents->size() > kLargestTorrentFile || !mayBeTorrent(*contents)) {
    return Refusal{name, "It is no torrent file."};
  }
  return HandedFile{name, std::move(*contents)};
}

}  // namespace

std::string schemeOf(std::string_view given) {
  const std::size_t colon = given.find(':');
  if (given.empty() || std::isalpha(static_cast<unsigned char>(given.front())) == 0) {
    return {};
  }
  std::string scheme;
  for (const char letter : given.substr(0, colon == std::string_view::npos ? 0 : colon)) {
    const auto byte = static_cast<unsigned char>(letter);
    if (std::isalnum(byte) == 0 && letter != '+' && letter != '-' && letter != '.') {
      return {};
    }
    scheme += static_cast<char>(std::tolower(byte));
  }
  return scheme;
}

HandedOver lookAtHandedOver(const std::string& given) {
  const std::string scheme = given.starts_with('/') ? "" : schemeOf(given);
  if (scheme == "magnet" || scheme == "http" || scheme == "https") {
    return lookAtLink(scheme, given);
  }
  if (scheme.empty() || scheme == "file") {
    return lookAtFile(scheme.empty() ? given : "file" + given.substr(4));
  }
  return Refusal{given.substr(0, kShownOfLink),
                 "It is neither a torrent file nor a link that begins with magnet:, http: or https:."};
}

}  // namespace seedmote::platform

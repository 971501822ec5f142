#include "platform/core/FileContents.h"

#include <QByteArray>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace seedmote::platform {

namespace {

constexpr std::uintmax_t kLargestFile = std::uintmax_t{1} << 30;

}  // namespace

std::string pathOfFile(const std::string& file) {
  constexpr std::string_view scheme = "file:";
  if (!file.starts_with(scheme)) {
    return file.starts_with('/') ? file : std::string();
  }
  std::string_view rest = std::string_view(file).substr(scheme.size());
  for (const std::string_view thisHost : {"//localhost/", "///"}) {
    if (rest.starts_with(thisHost)) {
      rest.remove_prefix(thisHost.size() - 1);
    }
  }
  if (!rest.starts_with('/') || rest.starts_with("//")) {
    return {};
  }
  std::string path =
      QByteArray::fromPercentEncoding(QByteArray(rest.data(), qsizetype(rest.size()))).toStdString();
  return path.find('\0') == std::string::npos ? path : std::string();  // the kernel would stop there
}

std::optional<std::string> contentsOfFile(const std::string& file) {
  const std::filesystem::path path = pathOfFile(file);
  std::error_code error;
  // Asked before it is opened: opening a pipe waits for somebody to write.
  if (!std::filesystem::is_regular_file(path, error)) {
    return std::nullopt;
  }
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  std::ifstream opened(path, std::ios::binary);
  if (error || size > kLargestFile || !opened) {
    return std::nullopt;
  }
  std::string bytes(size, '\0');
  opened.read(bytes.data(), static_cast<std::streamsize>(size));
  bytes.resize(static_cast<std::size_t>(opened.gcount()));
  return opened.bad() ? std::nullopt : std::optional(std::move(bytes));
}

}  // namespace seedmote::platform

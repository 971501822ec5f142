// Anything that is handed over: up to the first line feed what is named, behind it what a file of that name
// holds. Nothing is taken for a link or a torrent file that is none.
#include "platform/ui/HandedOver.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "fuzz/Target.h"
#include "platform/core/FileContents.h"

namespace seedmote::fuzz {
namespace {

namespace fs = std::filesystem;
using platform::HandedFile;
using platform::HandedLink;
using platform::HandedOver;
using platform::Refusal;

void checkScheme(const std::string& scheme) {
  check(std::all_of(scheme.begin(), scheme.end(),
                    [](char c) {
                      return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '-' ||
                             c == '.';
                    }),
        "a scheme is one");
}

// Only links: a path would be looked for on this machine.
void name(const std::string& given) {
  checkScheme(platform::schemeOf(given));
  const std::string path = platform::pathOfFile(given);
  check(path.empty() || path.front() == '/', "a path begins at the root");
  if (!path.empty() || !platform::schemeOf(given).starts_with("file")) return;
  const HandedOver looked = platform::lookAtHandedOver(given);
  const auto* link = std::get_if<HandedLink>(&looked);
  if (link == nullptr) return check(!std::get<Refusal>(looked).why.empty(), "a refusal has its reason");
  const std::string scheme = platform::schemeOf(link->link);
  check(scheme == "magnet" || scheme == "http" || scheme == "https", "a link is for the daemon");
  check(link->link.find_first_of(std::string_view("\r\n\0\t", 4)) == std::string::npos, "a link is one line");
  check(platform::lookAtHandedOver(link->link).index() == looked.index(), "a link stays one");
}

void file(const std::string& contents) {
  static const fs::path path = fs::temp_directory_path() / ("seedmote-fuzz-" + std::to_string(getpid()));
  std::ofstream(path, std::ios::binary) << contents;
  const HandedOver looked = platform::lookAtHandedOver(path.string());
  fs::remove(path);
  if (const auto* taken = std::get_if<HandedFile>(&looked)) {
    checkEqual(taken->contents, contents, "a file's bytes are kept");
    check(contents.starts_with('d') && contents.find("4:info") != std::string::npos, "a torrent file is one");
  } else {
    check(!std::get<Refusal>(looked).why.empty(), "a refusal has its reason");
  }
}

}  // namespace
}  // namespace seedmote::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(seedmote::fuzz::textOf(data, size));
  const std::size_t end = text.find('\n');
  seedmote::fuzz::name(text.substr(0, end));
  if (end != std::string::npos) seedmote::fuzz::file(text.substr(end + 1));
  return 0;
}

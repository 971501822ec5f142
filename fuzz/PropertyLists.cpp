// Any file of settings: what is read of it comes back when it is written, and a file that can't be read is
// set aside.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "fuzz/Target.h"
#include "platform/core/Log.h"
#include "platform/core/PlistUserDefaults.h"
#include "platform/core/PropertyList.h"

namespace seedmote::fuzz {
namespace {

namespace fs = std::filesystem;
using platform::PlistUserDefaults;
using platform::PropertyList;

const fs::path& folder() {
  static const fs::path made = [] {
    platform::silenceLog();
    const fs::path path = fs::temp_directory_path() / ("seedmote-fuzz-" + std::to_string(getpid()));
    fs::create_directories(path);
    return path;
  }();
  return made;
}

void parse(const std::string& text) {
  std::string error;
  const PropertyList read = PropertyList::parse(text, &error);
  if (read.isAbsent()) return check(!error.empty(), "what can't be read is said");
  const std::string written = read.toXml();
  const PropertyList again = PropertyList::parse(written);
  checkEqual(again.description(), read.description(), "what is written is read");
}

void load(const std::string& text) {
  const std::string path = folder() / "defaults.plist";
  std::ofstream(path, std::ios::binary) << text;
  {
    PlistUserDefaults defaults(path);
    check(fs::exists(path) == defaults.problem().empty(), "a broken file is set aside, and that is said");
    defaults.setObject("Port", PropertyList::Dictionary{{"Value", "9091"}});
    check(defaults.synchronize(), "settings are written");
  }
  const PlistUserDefaults again(path);
  check(again.problem().empty(), "what was written is read");
  check(again.object("Port")["Value"] == PropertyList("9091"), "a setting comes back");
  fs::remove_all(folder());
  fs::create_directories(folder());
}

}  // namespace
}  // namespace seedmote::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(seedmote::fuzz::textOf(data, size));
  seedmote::fuzz::folder();
  seedmote::fuzz::parse(text);
  if (size % 32 == 0) seedmote::fuzz::load(text);  // waits for the disk
  return 0;
}

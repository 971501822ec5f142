// Any text: read whole and in pieces it gives the same, and it is accepted when RapidJSON accepts it, with
// the differences that are wanted, and holds the same values then.
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/JsonOracle.h"
#include "fuzz/Target.h"
#include "json/tests/ReadSupport.h"

namespace seedmote::fuzz {
namespace {

// Cuts that depend on nothing but the text, so that an input stays one.
std::vector<std::string_view> pieces(std::string_view text, std::mt19937& random, std::size_t longest) {
  std::vector<std::string_view> made;
  for (std::size_t at = 0; at < text.size();) {
    made.push_back(text.substr(at, 1 + random() % longest));
    at += made.back().size();
  }
  return made;
}

void readInPieces(std::string_view text) {
  if (text.empty()) return;
  const std::string whole = json::test::readWhole(text);
  std::mt19937 random(static_cast<std::uint32_t>(std::hash<std::string_view>()(text)));
  checkEqual(json::test::readPieces(json::test::cutInto(text, 1)), whole, "read byte by byte");
  checkEqual(json::test::readPieces(pieces(text, random, 40)), whole, "read in pieces");
  checkEqual(json::test::readPieces(pieces(text, random, text.size())), whole, "read in large pieces");
}

}  // namespace
}  // namespace seedmote::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = seedmote::fuzz::textOf(data, size);
  seedmote::fuzz::readInPieces(text);
  seedmote::fuzz::compareWithOracle(text);
  return 0;
}

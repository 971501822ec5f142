#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "tests/faults/Fault.h"

namespace seedmote::faults {

class TriedShell;

// One request of the client: how a person causes it, and what the message is then.
struct Request {
  std::string name;
  bool (*is)(const std::string& body);
  void (*cause)(TriedShell&);    // the fault is there already
  void (*prepare)(TriedShell&);  // before it; may be null
  // By the Kind of the fault; null: no message. "{daemon}", "{status}" and "{result}" stand for what they
  // are.
  std::array<const char*, kKinds> messages;
  enum class Shows {
    list,
    firstList,
    listAtFirst,
    nothing
  } shows = Shows::nothing;  // what the list's place tells
  bool connects = false;     // a list that is asked for at the same time may have its message after it

  // Whether the daemon is to do something.
  bool changes() const { return is("torrent-start torrent-stop torrent-remove torrent-add"); }

  bool isRight(const std::vector<std::string>& seen, const std::optional<std::string>& expected) const {
    if (!expected || seen.empty()) return !expected && seen.empty();
    return seen.back() == *expected || (connects && std::ranges::find(seen, *expected) != seen.end());
  }
};

const std::vector<Request>& requestTable();

// What a person sees of this fault in this request.
struct Told {
  std::optional<std::string> message;  // absent: none
  std::vector<std::string> sentences;  // one of them; empty: nothing new
};
Told told(const Request& request, const Fault& fault);

// The whole of it for a reader, as Markdown.
std::string printedMatrix();

}  // namespace seedmote::faults

#include "tests/faults/Request.h"

#include <string_view>

#include "platform/core/Format.h"
#include "tests/faults/TriedShell.h"

namespace seedmote::faults {
namespace {

bool has(const std::string& body, std::string_view part) {
  return body.find(part) != std::string::npos;
}
bool isStatistics(const std::string& body) {
  return has(body, "session-stats");
}
bool isDaemonInfo(const std::string& body) {
  return has(body, "session-get");
}
bool isList(const std::string& body) {
  return has(body, "torrent-get") && !has(body, "\"ids\"");
}
bool isDetail(const std::string& body) {
  return has(body, "webseedsSendingToUs");
}
bool isQuestion(const std::string& body) {
  return has(body, "torrent-get") && has(body, "\"ids\"") && !isDetail(body);
}
bool isStart(const std::string& body) {
  return has(body, "torrent-start");
}
bool isStop(const std::string& body) {
  return has(body, "torrent-stop");
}
bool isRemoval(const std::string& body) {
  return has(body, "torrent-remove");
}
bool isAdd(const std::string& body) {
  return has(body, "torrent-add");
}

void forget(TriedShell& shell) {
  shell.forgetClient();
}
void select(TriedShell& shell) {
  shell.selectFirst();
}
void selectInAnEarlierSession(TriedShell& shell) {
  shell.selectFirst();
  shell.world.daemon.changeSessionId();
}
void refresh(TriedShell& shell) {
  shell.press(Qt::Key_F5);
}
void remove(TriedShell& shell) {
  shell.press(Qt::Key_Delete);
  shell.press(Qt::Key_Delete);
}

constexpr const char* kUnusable = "The daemon's answer could not be used.\nPlease try again.";
constexpr const char* kNotConnected = "Failed to connecting daemon!\n{daemon}\nError: Timeout";
constexpr const char* kConnected = "Daemon is connected!";
constexpr const char* kAddFailed = "ERROR\n{result}\nerror code:{status}";
constexpr const char* kNumberedAnew =
    "Not deleted!\nThe daemon has numbered its torrents anew. Please select the torrent again.";

// The same whatever came, but where the answer raises.
constexpr std::array<const char*, kKinds> unlessUnreadable(const char* message) {
  return {message, message, message, message, message == nullptr ? nullptr : kUnusable};
}

}  // namespace

const std::vector<Request>& requestTable() {
  using Shows = Request::Shows;
  static const std::vector<Request> table = {
      {"connect",
       isStatistics,
       refresh,
       forget,
       {kNotConnected, kNotConnected, kNotConnected, kConnected, kUnusable},
       Shows::listAtFirst,
       true},
      {"ask for the version",
       isDaemonInfo,
       refresh,
       forget,
       {kUnusable, kUnusable, kUnusable, kUnusable, kUnusable},
       Shows::nothing,
       true},
      {"first list", isList, refresh, forget, unlessUnreadable(kConnected), Shows::firstList, true},
      {"statistics", isStatistics, [](TriedShell& shell) { shell.pass(10); }, nullptr,
       unlessUnreadable(nullptr)},
      {"refresh", isList, refresh, nullptr, unlessUnreadable("Updated!"), Shows::list},
      {"refresh by itself", isList, [](TriedShell& shell) { shell.refreshByItself(); }, nullptr,
       unlessUnreadable(nullptr)},
      {"list of a new session", isList, [](TriedShell& shell) { shell.passIntoNewSession(); }, nullptr,
       unlessUnreadable(nullptr)},
      {"details", isDetail, select, nullptr, unlessUnreadable(nullptr)},
      {"start", isStart, [](TriedShell& shell) { shell.press(Qt::Key_S, Qt::ControlModifier); }, select,
       unlessUnreadable("Started!")},
      {"stop", isStop, [](TriedShell& shell) { shell.press(Qt::Key_P, Qt::ControlModifier); }, select,
       unlessUnreadable("Stopped!")},
      {"remove", isRemoval, remove, select, unlessUnreadable("Deleted!!")},
      {"remove in a new session",
       isQuestion,
       remove,
       selectInAnEarlierSession,
       {"Deleted!!", "Deleted!!", kNumberedAnew, "Deleted!!", kUnusable}},
      {"add a copied link",
       isAdd,
       [](TriedShell& shell) { shell.addCopied(); },
       nullptr,
       {kAddFailed, kAddFailed, "Success!", kAddFailed, kUnusable}},
      {"add a file", isAdd, [](TriedShell& shell) { shell.addFile(); }, nullptr,
       unlessUnreadable("Torrent is added!")},
  };
  return table;
}

namespace {

void replace(std::string& text, const std::string& mark, const std::string& by) {
  const std::size_t at = text.find(mark);
  if (at != std::string::npos) text.replace(at, mark.size(), by);
}

std::optional<std::string> messageOf(const Request& request, const Fault& fault) {
  const char* const pattern = request.messages.at(static_cast<std::size_t>(fault.kind));
  if (pattern == nullptr) return std::nullopt;
  std::string message = request.shows == Request::Shows::listAtFirst && fault.kind == Kind::conflict
                            ? fault.connected
                            : pattern;
  if (message == kAddFailed && fault.result == "success") return "Success!";
  replace(message, "{result}", fault.result);
  replace(message, "{status}", fault.status);
  return message;
}

std::vector<std::string> sentencesOf(const Request& request, const Fault& fault) {
  using Shows = Request::Shows;
  const bool atFirst = request.shows == Shows::listAtFirst;
  // What raises leaves the list as it was; what is sent again brings one.
  const bool keepsList = request.shows == Shows::list && fault.kind == Kind::unreadable;
  const bool getsList = atFirst && fault.kind == Kind::conflict;
  if (request.shows == Shows::nothing || keepsList || getsList) return {};
  std::vector<std::string> all{atFirst && !fault.atFirst.empty() ? fault.atFirst : fault.list};
  if (!fault.orElse.empty()) all.push_back(fault.orElse);
  return all.front().empty() ? std::vector<std::string>() : all;
}

// As it can stand in a table that anybody's editor shows.
std::string cell(const std::string& text) {
  std::string safe;
  for (const char letter : text) {
    if (letter == '\n') {
      safe += " / ";
    } else if (letter == '|' || letter == '<') {
      safe += std::string("\\") + letter;
    } else if (letter < ' ' || letter > '~') {
      safe += platform::format("\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(letter)));
    } else {
      safe += letter;
    }
  }
  return safe;
}

}  // namespace

Told told(const Request& request, const Fault& fault) {
  return {messageOf(request, fault), sentencesOf(request, fault)};
}

std::string printedMatrix() {
  std::string text =
      "# What a person is told when a daemon misbehaves\n\n"
      "Written by `fault-matrix-test --print`, and held to by it. Every request of the first table has met every "
      "fault\nof the second; whatever came, the program went on, and was as before once the daemon was.\n\n"
      "## The message, by request\n\n"
      "A fault stands in one of five columns: no JSON came; JSON came, but no torrents in it; a list came, though "
      "an odd\none; a new session was begun (409); or 409 came without a session.\n\n"
      "| request | no JSON | no torrents | odd list | 409 | 409 without session |\n|---|---|---|---|---|---|\n";
  for (const Request& request : requestTable()) {
    text += "| " + request.name;
    for (const char* message : request.messages) text += " | " + cell(message == nullptr ? "-" : message);
    text += " |\n";
  }
  text +=
      "\n## What stands in the list's place, and what adding a link tells, by fault\n\n"
      "\"Connecting\" is what stands there when the fault comes at the very first, where that is another "
      "sentence.\n\n"
      "| the daemon or the way to it | kind | list | connecting | adding a link |\n|---|---|---|---|---|\n";
  static const char* const kinds[kKinds] = {"no JSON", "no torrents", "odd list", "409",
                                            "409 without session"};
  for (const Fault& fault : faultTable()) {
    const Request& adding = requestTable().at(requestTable().size() - 2);
    text += "| " + cell(fault.name) + " | " + kinds[static_cast<int>(fault.kind)] + " | " +
            cell(fault.list.empty() ? "(its rows)" : fault.list) +
            (fault.orElse.empty() ? "" : " Or: " + cell(fault.orElse)) + " | " + cell(fault.atFirst) + " | " +
            cell(messageOf(adding, fault).value_or("-")) + " |\n";
  }
  return text;
}

}  // namespace seedmote::faults

#include "app/CommandLine.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <functional>
#include <map>
#include <system_error>

namespace seedmote {

namespace {

bool isVersion(const std::string& text) {
  if (text.empty() || std::isdigit(static_cast<unsigned char>(text.front())) == 0) {
    return false;
  }
  return text.find_first_not_of("0123456789.") == std::string::npos;
}

void takeIdiom(CommandLine& line, const std::string& value) {
  line.shapesWindow = true;
  if (value == "phone") {
    line.idiom = platform::Idiom::phone;
  } else if (value == "tablet") {
    line.idiom = platform::Idiom::tablet;
  } else {
    line.problem = "--idiom takes phone or tablet, not \"" + value + "\"";
  }
}

void takeSystemVersion(CommandLine& line, const std::string& value) {
  line.shapesWindow = true;
  if (!isVersion(value)) {
    line.problem = "--system-version takes a version such as 7.0, not \"" + value + "\"";
  }
  line.systemVersion = value;
}

void takeSnapshot(CommandLine& line, const std::string& value) {
  if (value.empty()) {
    line.problem = "--snapshot takes the name of the picture's file";
  }
  line.snapshot = value;
}

void takeRefresh(CommandLine& line, const std::string& value) {
  double seconds = 0;
  const char* end = value.data() + value.size();
  const auto [read, error] = std::from_chars(value.data(), end, seconds);
  if (error != std::errc() || read != end || !std::isfinite(seconds) || seconds <= 0) {
    line.problem = "--refresh takes a number of seconds above 0, not \"" + value + "\"";
  }
  line.shapesWindow = true;
  line.refresh = seconds;
}

void takeHandedOver(CommandLine& line, const std::string& given) {
  if (given.empty()) {
    line.problem = "the name of a file, or a link, is empty";
  }
  line.handedOver.push_back(given);
}

using Taker = std::function<void(CommandLine&, const std::string&)>;

const std::map<std::string, Taker, std::less<>>& takers() {
  static const std::map<std::string, Taker, std::less<>> table{
      {"--idiom", takeIdiom},
      {"--system-version", takeSystemVersion},
      {"--set", [](CommandLine& line, const std::string& value) { line.settings.push_back(value); }},
      {"--refresh", takeRefresh},
      {"--snapshot", takeSnapshot},
  };
  return table;
}

bool takeFlag(CommandLine& line, std::string_view argument) {
  line.help = line.help || argument == "--help" || argument == "-h";
  line.version = line.version || argument == "--version";
  return argument == "--help" || argument == "-h" || argument == "--version";
}

// How many of the arguments behind it the option took.
std::size_t takeOption(CommandLine& line, const std::string& argument, const std::string* next) {
  const std::size_t equals = argument.find('=');
  const auto taker = takers().find(std::string_view(argument).substr(0, equals));
  if (taker == takers().end()) {
    line.problem = "unknown option \"" + argument + "\"";
  } else if (equals != std::string::npos) {
    taker->second(line, argument.substr(equals + 1));
  } else if (next != nullptr) {
    taker->second(line, *next);
    return 1;
  } else {
    line.problem = argument + " wants a value";
  }
  return 0;
}

}  // namespace

CommandLine CommandLine::parse(const std::vector<std::string>& arguments) {
  CommandLine line;
  bool optionsEnded = false;
  for (std::size_t at = 0; at < arguments.size() && line.problem.empty(); ++at) {
    const std::string& argument = arguments[at];
    if (optionsEnded || !argument.starts_with('-')) {
      takeHandedOver(line, argument);
    } else if (argument == "--") {
      optionsEnded = true;
    } else if (!takeFlag(line, argument)) {
      at += takeOption(line, argument, at + 1 < arguments.size() ? &arguments[at + 1] : nullptr);
    }
  }
  const char* const ends = !line.settings.empty() ? "--set" : line.snapshot ? "--snapshot" : nullptr;
  if (line.problem.empty() && ends != nullptr && !line.handedOver.empty()) {
    line.problem = std::string(ends) + " takes no file or link such as \"" + line.handedOver.front() + "\"";
  }
  return line;
}

std::string_view CommandLine::usage() {
  return R"(Usage: seedmote [OPTION]... [--] [FILE|LINK]...

A remote control for a Transmission daemon. Torrent files and links (magnet:, http:,
https:) are added to it, by the window that is open already if there is one.

  --idiom phone|tablet   the layout; by the screen's size unless given
  --system-version V     the version of the phone platform to look like (7.0)
  --refresh SECONDS      fetch the list by itself, every so many seconds
  --set "KEY=VALUE"      store a setting and end; may be given several times;
                         a value of - is read from standard input
  --snapshot FILE        save a picture once the list stands, print its rows, and end
  --version              print the version and end
  --help                 print this text and end

The window system is chosen by QT_QPA_PLATFORM (wayland, xcb, offscreen, vnc).
The log goes to standard error; SEEDMOTE_LOG=full lifts its limits.
SEEDMOTE_ALONE=1 opens a window of its own beside one that is open.
)";
}

}  // namespace seedmote

#include "app/CommandLine.h"

#include <cctype>
#include <functional>
#include <map>

namespace seedmote {

namespace {

bool isVersion(const std::string& text) {
  if (text.empty() || std::isdigit(static_cast<unsigned char>(text.front())) == 0) {
    return false;
  }
  return text.find_first_not_of("0123456789.") == std::string::npos;
}

void takeIdiom(CommandLine& line, const std::string& value) {
  if (value == "phone") {
    line.idiom = platform::Idiom::phone;
  } else if (value == "tablet") {
    line.idiom = platform::Idiom::tablet;
  } else {
    line.problem = "--idiom takes phone or tablet, not \"" + value + "\"";
  }
}

void takeSystemVersion(CommandLine& line, const std::string& value) {
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

using Taker = std::function<void(CommandLine&, const std::string&)>;

const std::map<std::string, Taker, std::less<>>& takers() {
  static const std::map<std::string, Taker, std::less<>> table{
      {"--idiom", takeIdiom},
      {"--system-version", takeSystemVersion},
      {"--set", [](CommandLine& line, const std::string& value) { line.settings.push_back(value); }},
      {"--snapshot", takeSnapshot},
  };
  return table;
}

bool takeFlag(CommandLine& line, std::string_view argument) {
  line.help = line.help || argument == "--help" || argument == "-h";
  line.version = line.version || argument == "--version";
  return argument == "--help" || argument == "-h" || argument == "--version";
}

}  // namespace

CommandLine CommandLine::parse(const std::vector<std::string>& arguments) {
  CommandLine line;
  for (std::size_t at = 0; at < arguments.size() && line.problem.empty(); ++at) {
    const std::string& argument = arguments[at];
    if (takeFlag(line, argument)) {
      continue;
    }
    const std::size_t equals = argument.find('=');
    const auto taker = takers().find(std::string_view(argument).substr(0, equals));
    if (taker == takers().end()) {
      line.problem = "unknown option or argument \"" + argument + "\"";
    } else if (equals != std::string::npos) {
      taker->second(line, argument.substr(equals + 1));
    } else if (at + 1 < arguments.size()) {
      taker->second(line, arguments[++at]);
    } else {
      line.problem = argument + " wants a value";
    }
  }
  return line;
}

std::string_view CommandLine::usage() {
  return R"(Usage: seedmote [OPTION]...

A remote control for a Transmission daemon.

  --idiom phone|tablet   the layout; by the screen's size unless given
  --system-version V     the version of the phone platform to look like (7.0)
  --set "KEY=VALUE"      store a setting and end; may be given several times;
                         a value of - is read from standard input
  --snapshot FILE        save a picture once the list stands, print its rows, and end
  --version              print the version and end
  --help                 print this text and end

The window system is chosen by QT_QPA_PLATFORM (wayland, xcb, offscreen, vnc).
The log goes to standard error; SEEDMOTE_LOG=full lifts its limits.
)";
}

}  // namespace seedmote

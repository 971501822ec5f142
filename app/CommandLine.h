#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/Device.h"

namespace seedmote {

// What was asked of the program when it was started.
struct CommandLine {
  std::optional<platform::Idiom> idiom;  // absent: by the screen's size
  std::string systemVersion = "7.0";
  std::vector<std::string> settings;    // "KEY=VALUE" each, in order
  std::optional<std::string> snapshot;  // the picture's file
  std::optional<double> refresh;        // seconds, above 0; absent: the list is not fetched by itself
  std::vector<std::string> handedOver;  // files and links, in order, as they were given
  bool shapesWindow = false;            // an option says how the window is to be or what it does
  bool help = false;
  bool version = false;
  std::string problem;  // what could not be understood; empty when all was

  // `arguments` without the program's name.
  static CommandLine parse(const std::vector<std::string>& arguments);
  static std::string_view usage();
};

}  // namespace seedmote

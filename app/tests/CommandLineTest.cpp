#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace seedmote {
namespace {

TEST(CommandLineTest, OptionsTakeTheirValueBesideOrBehindAnEqualsSign) {
  const CommandLine line =
      CommandLine::parse({"--idiom", "phone", "--system-version=6.1", "--set", "Port=9091",
                          "--set=Password=-", "--snapshot", "a.png", "--refresh", "2.5"});
  EXPECT_EQ(line.problem, "");
  EXPECT_EQ(line.idiom, platform::Idiom::phone);
  EXPECT_EQ(line.systemVersion, "6.1");
  EXPECT_EQ(line.settings, (std::vector<std::string>{"Port=9091", "Password=-"}));
  EXPECT_EQ(line.snapshot, "a.png");
  EXPECT_EQ(line.refresh, 2.5);
  EXPECT_EQ(CommandLine::parse({}).systemVersion, "7.0");
}

TEST(CommandLineTest, FilesAndLinksStandAmongTheOptions) {
  const CommandLine line = CommandLine::parse({"b.torrent", "--idiom=phone", "magnet:?xt=a", "--", "--help"});
  EXPECT_EQ(line.problem, "");
  EXPECT_EQ(line.handedOver, (std::vector<std::string>{"b.torrent", "magnet:?xt=a", "--help"}));
  EXPECT_FALSE(line.help);
}

TEST(CommandLineTest, WhatCannotBeUnderstoodIsNamed) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"--idiom", "watch"}, "--idiom takes phone or tablet, not \"watch\""},
      {{"--idiom"}, "--idiom wants a value"},
      {{"--system-version", "seven"}, "--system-version takes a version such as 7.0, not \"seven\""},
      {{"--snapshot="}, "--snapshot takes the name of the picture's file"},
      {{"--nonsense"}, "unknown option \"--nonsense\""},
      {{"--set", "A=1", "x"}, "--set takes no file or link such as \"x\""},
      {{""}, "the name of a file, or a link, is empty"},
      {{"--refresh=0"}, "--refresh takes a number of seconds above 0, not \"0\""},
      {{"--refresh", "5s"}, "--refresh takes a number of seconds above 0, not \"5s\""},
      {{"--refresh", "nan"}, "--refresh takes a number of seconds above 0, not \"nan\""},
  };
  for (const auto& [arguments, problem] : cases) {
    EXPECT_EQ(CommandLine::parse(arguments).problem, problem);
  }
}

}  // namespace
}  // namespace seedmote

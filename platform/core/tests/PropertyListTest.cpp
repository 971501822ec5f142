#include "platform/core/PropertyList.h"

#include <gtest/gtest.h>

#include <limits>

namespace seedmote::platform {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

TEST(PropertyList, WhatIsWrittenReadsBackTheSame) {
  const Dictionary values{
      {"markup", "a&<>\"'b ]]>"},
      {"blanks & <keys>", "  kept  \t\n"},
      {"controls", "\x01\x1b"},
      {"not UTF-8", "\xff\xfe"},
      {"wide", "ünï 🎉"},
      {"", ""},
      {"smallest", PropertyList::integer(std::numeric_limits<std::int64_t>::min())},
      {"largest", PropertyList::integer(std::numeric_limits<std::int64_t>::max())},
      {"tenth", PropertyList::real(0.1)},
      {"switch", PropertyList::boolean(true)},
      {"nested", Dictionary{{"list", Array{"x", Array{}, Dictionary{}}}}},
  };
  std::string error;
  EXPECT_EQ(PropertyList::parse(PropertyList(values).toXml(), &error), PropertyList(values)) << error;
}

TEST(PropertyList, WhatIsNoPropertyListIsRefusedWithAReason) {
  std::string deep;
  for (int i = 0; i < 100'000; ++i) deep += "<array><!--</array>-->";
  std::string closed = "<plist>";
  for (int i = 0; i < 34; ++i) closed += "<array>";
  for (int i = 0; i < 34; ++i) closed += "</array>";
  const std::string cases[]{
      "",
      "port 9091",
      std::string("bplist00\xd1\x01\x02", 11),
      "<plist><dict><key>cut off</key>",
      "<plist><dict><key>when</key><date>2026-11-21T05:52:00Z</date></dict></plist>",
      "<plist>" + deep,
      std::string("<plist><string>\0</string></plist>", 33),
      "<plist><dict><key>Port</key><string>90&#x00;91</string></dict></plist>",
      closed + "</plist>",
  };
  for (const std::string& bytes : cases) {
    std::string error;
    EXPECT_TRUE(PropertyList::parse(bytes, &error).isAbsent()) << bytes.substr(0, 60);
    EXPECT_NE(error, "");
  }
}

TEST(PropertyList, DescriptionsHidePasswordsAtAnyDepth) {
  const Dictionary password{
      {"Title", "Password"}, {"ValueType", "PasswordBox"}, {"Value", "geheim"}, {"DefaultValue", "leicht"}};
  const std::string text = PropertyList(Dictionary{{"all", Array{password}}}).description();
  EXPECT_EQ(text, R"({"all" = ({"DefaultValue" = "••••••••"; "Title" = "Password"; "Value" = "••••••••"; )"
                  R"("ValueType" = "PasswordBox";});})");
}

}  // namespace
}  // namespace seedmote::platform

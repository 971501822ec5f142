#include "platform/core/Format.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

namespace seedmote::platform {
namespace {

template <class... Args>
std::string inC(const char* format, Args... args) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  std::string text(static_cast<std::size_t>(std::snprintf(nullptr, 0, format, args...)), '\0');
  std::snprintf(text.data(), text.size() + 1, format, args...);
#pragma GCC diagnostic pop
  return text;
}

TEST(Format, RealsAreThoseOfC) {
  const std::vector<double> values{0.0,        -0.0,
                                   0.05,       0.25,
                                   0.5,        1.5,
                                   2.5,        -2.5,
                                   0.1,        1e-5,
                                   9.995,      99.995,
                                   1023.95,    1e22,
                                   1e300,      -123456.789,
                                   5e-324,     0.0001,
                                   0.00001234, 100000.0,
                                   1234567.0,  std::numeric_limits<double>::max(),
                                   INFINITY,   -INFINITY};
  const std::vector<const char*> formats{"%f",    "%2.f%%", "%1.fm",   "%.1fKB",  "%7.1f|", "%-9.2f|",
                                         "%+.3f", "% .0f",  "%08.2f",  "%.17g",   "%g",     "%G",
                                         "%#g",   "%#.3g",  "%e",      "%.0e",    "%#.0e",  "%#.0f",
                                         "%E",    "%F",     "%-+12g|", "%012.4e", "%.40f"};
  for (const char* text : formats) {
    for (const double value : values) EXPECT_EQ(format(text, value), inC(text, value)) << text;
  }
}

TEST(Format, IntegersAreThoseOfC) {
  const std::vector<const char*> formats{"%ld",     "%1.lds", "%5ld|",   "%-5ld|", "%05ld",  "%+ld", "% ld",
                                         "%.3ld",   "%8.3ld", "%08.3ld", "%lu",    "%lx",    "%#lX", "%#10lx",
                                         "%#010lx", "%lo",    "%#lo",    "%#.0lo", "%#.5lo", "%.0lx"};
  for (const char* text : formats) {
    for (const long value : {0L, 7L, 8L, -1L, 60L, 123456L, std::numeric_limits<long>::min()}) {
      EXPECT_EQ(format(text, value), inC(text, value)) << text;
    }
  }
  const long long wide = 0x1234'5678'9ABC'DEF0;
  for (const char* text : {"%d", "%u", "%x", "%hd", "%hu", "%hhd", "%hhx"}) {
    EXPECT_EQ(format(text, wide), inC(text, static_cast<int>(wide))) << text;
  }
  EXPECT_EQ(format("%c%c", 'o', 107), "ok");
}

TEST(Format, ObjectsTextsAndWhatDoesNotFit) {
  EXPECT_EQ(format("%@", std::nullopt), "(null)");
  std::optional<std::string> text = "there";
  EXPECT_EQ(format("%@", text), "there");
  text.reset();
  EXPECT_EQ(format("%9@|%-9@|", std::nullopt, text), "   (null)|(null)   |");
  EXPECT_EQ(format("%6@|", "héé"), "   héé|");
  EXPECT_EQ(format("%5.2s|%-3s|", "abc", std::string("x")), "   ab|x  |");
  EXPECT_EQ(format("%@ %@ %@ %@ %@", 5, 5.0, 0.1, true, 1e22), "5 5 0.1 1 1e+22");
  EXPECT_EQ(format("%d %ld %f %s", "text", 2.5, 7, -1), "text 2.5 7 -1");
  EXPECT_EQ(format("%2.f%% %+f %05.1f %F", -NAN, -NAN, NAN, -NAN), "nan% nan   nan NAN");
  EXPECT_EQ(format("%@ %d", 1), "1 (missing)");
  EXPECT_EQ(format("100%, 5%"), "100%, 5%");
  EXPECT_EQ(format("%@", std::string("%@\0%d", 5)), std::string("%@\0%d", 5));
}

TEST(Format, SecretsHaveOneLengthInEveryFormat) {
  for (const char* text : {"%@", "%s", "%.2s", "%d", "%.1f"}) {
    EXPECT_EQ(format(text, Secret{"geheim"}), "••••••••") << text;
    EXPECT_EQ(format(text, Secret{""}), "••••••••") << text;
  }
}

TEST(Format, ALimitCutsAndStillCounts) {
  std::string out;
  const FormatArg args[]{"0123456789", 42};
  EXPECT_EQ(appendFormat(out, 8, "<%@> %d", args, 2), 15u);
  EXPECT_EQ(out, "<0123456");
}

TEST(Format, TheLocaleDoesNotMatter) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  const char* comma = nullptr;
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "nl_NL.UTF-8", "pt_BR.UTF-8"}) {
    comma = comma == nullptr ? std::setlocale(LC_ALL, name) : comma;
  }
  if (comma == nullptr) GTEST_SKIP() << "no locale with a decimal comma is installed";
  EXPECT_EQ(format("%.1fKB %g %@", 1.5, 2.5, 3.5), "1.5KB 2.5 3.5");
  std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace seedmote::platform

#pragma once

#include <cstdlib>
#include <string>

// At the start of a test that needs what is not installed everywhere: where `absence` (a text) says why it
// can't run, the test is skipped, but fails where CI is set, so that a build machine never leaves it out
// unnoticed.
#define SEEDMOTE_NEEDS(absence)                                 \
  do {                                                          \
    const std::string reason = absence;                         \
    if (!reason.empty() && std::getenv("CI")) FAIL() << reason; \
    if (!reason.empty()) GTEST_SKIP() << reason;                \
  } while (false)

// SPDX-License-Identifier: GPL-3.0-or-later
// The user's locale is set as Qt sets it in the desktop program, so that a run under a comma locale
// finds every number that follows the locale. ORVANE_EXPECT_COMMA=1 makes sure it is one.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <stdexcept>

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  try {
    std::locale::global(std::locale(""));
  } catch (const std::runtime_error&) {
    std::fputs("the locale of the environment is not installed\n", stderr);
  }
  const char* expected = std::getenv("ORVANE_EXPECT_COMMA");
  if (expected != nullptr && std::localeconv()->decimal_point[0] != ',') {
    std::fputs("this run needs a locale with a decimal comma\n", stderr);
    return 1;
  }
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

// SPDX-License-Identifier: GPL-3.0-or-later
// The user's locale is set as Qt sets it in the desktop program, so that a run under a comma locale
// finds every number that follows the locale. ORVANE_EXPECT_COMMA=1 makes sure that there is one.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <string_view>

namespace {

// For streams, without asking the system for the locale a second time.
class Comma : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
};

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  if (std::getenv("ORVANE_EXPECT_COMMA") != nullptr) {
    if (std::localeconv()->decimal_point[0] != ',') {
      std::fputs("this run needs a locale with a decimal comma\n", stderr);
      return 1;
    }
    std::locale::global(std::locale(std::locale::classic(), new Comma));
  }
  const char* expected = std::getenv("ORVANE_EXPECT_LOCALE");
  if (expected != nullptr && std::string_view(std::setlocale(LC_ALL, nullptr)) != expected) {
    std::fprintf(stderr, "this run needs the locale %s\n", expected);
    return 1;
  }
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/path_text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace orvane {
namespace {

#ifdef _WIN32

TEST(PathText, IsUtf8ThatLosesNothing) {
  const std::vector<std::pair<std::wstring, std::string>> names = {
      {L"C:\\DATA\\a.tbl", "C:\\DATA\\a.tbl"},
      {L"\x7F\x80\x7FF\x800\xFFFF", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"},
      {L"\x6E2C\x7DDA", "\xE6\xB8\xAC\xE7\xB7\x9A"},
      {L"\xD83D\xDE00\xDBFF\xDFFF", "\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF"},
      // Halves of a pair, which names may have.
      {L"a\xD83D", "a\xED\xA0\xBD"},
      {L"\xDE00\xD83D", "\xED\xB8\x80\xED\xA0\xBD"},
      {L"", ""}};
  for (const auto& [name, text] : names) {
    EXPECT_EQ(PathText(name), text);
    EXPECT_EQ(PathOf(text).native(), name) << text;
  }
}

TEST(PathText, BytesThatAreNoTextAreReplaced) {
  const std::vector<std::pair<std::string, std::wstring>> texts = {
      {"a\xFFz", L"a\xFFFDz"},
      {"\x80", L"\xFFFD"},
      {"\xC3", L"\xFFFD"},
      {"\xC3(", L"\xFFFD("},
      {"\xC0\xAF", L"\xFFFD\xFFFD"},
      {"\xE6\xB8", L"\xFFFD\xFFFD"},
      {"\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"}};
  for (const auto& [text, name] : texts) {
    EXPECT_EQ(PathOf(text).native(), name) << text;
  }
}

#else

TEST(PathText, IsTheBytes) {
  for (const std::string& name : {std::string("/a/\xFF\xFE"), std::string("\xC3\xA4"),
                                  std::string("\xED\xA0\xBD"), std::string()}) {
    EXPECT_EQ(PathText(PathOf(name)), name);
    EXPECT_EQ(PathOf(name).native(), name);
  }
}

#endif

}  // namespace
}  // namespace orvane

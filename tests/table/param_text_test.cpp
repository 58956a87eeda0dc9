// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/param_text.h"

#include <cfloat>
#include <climits>
#include <limits>

#include "base/number_text.h"
#include "support/tbl_bytes.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr auto kUnknown = static_cast<ValueType>(8);

TEST(NumberText, ExactRealsReadBack) {
  EXPECT_EQ(FormatRealExactly(0.1), "0.1");
  for (const double number :
       {1 / 3.0, 1e22, -DBL_MAX, DBL_MIN, DBL_TRUE_MIN, 123456789.123456789}) {
    EXPECT_EQ(ParseReal(FormatRealExactly(number)), number);
  }
}

TEST(ParamText, ValuesAsText) {
  const std::string full = "ABCDEFGHIJKLMNOP";
  const struct {
    ValueType type;
    std::string value, text;
    // clang-format off
  } cases[] = {
      {IntPT, IntBytes(INT_MIN), "-2147483648"}, {FltPT, RealBytes(0.1), "0.1"},
      {FltPT, RealBytes(-1 / 3.0), "-0.3333333333"}, {FltPT, RealBytes(1e9), "1000000000"},
      {FltPT, RealBytes(12345678901.0), "1.23456789e+10"}, {FltPT, RealBytes(0.0001), "0.0001"},
      {FltPT, RealBytes(0.000012345678912), "1.234567891e-05"}, {FltPT, RealBytes(-0.0), "-0"},
      {FltPT, RealBytes(1e300), "1e+300"}, {FltPT, RealBytes(-kInfinity), "-inf"},
      {StrPT, full, full.substr(0, 15)}, {PosPT, std::string("ab\0c", 4), "ab"},
      {LStPT, full, full}, {IPAPT, "\xC0\xA8\x01\xFF**", "192.168.1.255"},
      {AmxPT, "\5\4\3", "03:04:05"}, {RawPT, full, "kept"}, {kUnknown, full, ""}};
  // clang-format on
  for (const auto& c : cases) {
    std::string text = "kept";
    FormatParamValue(c.type, Value(c.value), &text);
    EXPECT_EQ(text, c.text);
  }
}

TEST(ParamText, NumbersFromTextLeniently) {
  const struct {
    const char* text;
    std::int32_t integer;
    double real;
    // clang-format off
  } cases[] = {
      {"12abc", 12, 12}, {" \t\n12", 12, 12}, {"+7", 7, 7}, {"-7", -7, -7}, {"- 7", 0, 0},
      {"+-7", 0, 0}, {"", 0, 0}, {"abc", 0, 0}, {"0x1p3", 0, 0}, {"007", 7, 7}, {"1,5", 1, 1},
      {"1e3", 1, 1000}, {"2147483648", INT_MAX, 2147483648.0}, {"-2147483649", INT_MIN, -2147483649.0},
      {"99999999999999999999999", INT_MAX, 1e23}, {".5", 0, 0.5}, {"5.", 5, 5}, {"-.5e-1", 0, -0.05},
      {"1e", 1, 1}, {"1e+", 1, 1}, {".", 0, 0}, {"e5", 0, 0}, {"nan", 0, 0}, {"-Infinity", 0, 0},
      {"1e999", 1, kInfinity}, {"-1e999", -1, -kInfinity}, {"1e-999", 1, 0}, {"0e999", 0, 0},
      {"0.0000001e-999", 0, 0}, {"1000000e99999999999", 1000000, kInfinity},
      {"5e-324", 5, DBL_TRUE_MIN}, {"1.7976931348623157e308", 1, DBL_MAX}};
  // clang-format on
  for (const auto& c : cases) {
    ParamValue value{};
    ParseParamValue(c.text, IntPT, &value);
    EXPECT_EQ(IntOf(value), c.integer) << c.text;
    ParseParamValue(c.text, FltPT, &value);
    EXPECT_EQ(RealOf(value), c.real) << c.text;
  }
}

TEST(ParamText, OtherValuesFromTextLeniently) {
  const std::string old(16, '*');
  const std::string full = "ABCDEFGHIJKLMNOPQ";
  const std::string time = std::string("\0\5\16\36\6\11\1\24", 8);
  const std::string none(16, '\0');
  const struct {
    ValueType type;
    std::string text, start;  // of the value, the rest of which is not looked at
    // clang-format off
  } cases[] = {
      {StrPT, full, full.substr(0, 15) + none.substr(15)}, {PosPT, "ab", Padded("ab", 16)},
      {LStPT, full, full.substr(0, 16)}, {LStPT, "ab", Padded("ab", 16)}, {RawPT, "1", old},
      {AmxPT, "2009/06/30 14:05:00", time}, {AmxPT, "2009/06/31 14:05:00", none.substr(8)},
      {kUnknown, "1", none}, {IPAPT, "192.168.1.255", "\xC0\xA8\x01\xFF"},
      {IPAPT, " 1. 2.3.4 x", "\1\2\3\4"}, {IPAPT, "+1.2.+3.4", "\1\2\3\4"}, {IPAPT, "192.168.1.300", none.substr(12)},
      {IPAPT, "1.2.3", none.substr(12)}, {IPAPT, "1..2.3", none.substr(12)},
      {IPAPT, "1.2.3.4294967297", none.substr(12)}, {IPAPT, "1.-2.3.4", none.substr(12)}};
  // clang-format on
  for (const auto& c : cases) {
    ParamValue value = Value(old);
    ParseParamValue(c.text, c.type, &value);
    EXPECT_EQ(ValueBytes(value).substr(0, c.start.size()), c.start) << c.text;
  }
}

TEST(ParamText, ValuesFromTextStrictly) {
  const std::string full = "ABCDEFGHIJKLMNOPQ";
  const struct {
    ValueType type;
    std::string text, value;
    // clang-format off
  } good[] = {
      {IntPT, "-2147483648", IntBytes(INT_MIN)}, {IntPT, "+007", IntBytes(7)},
      {FltPT, "+.25e1", RealBytes(2.5)}, {FltPT, "5.", RealBytes(5)}, {PosPT, "", ""},
      {StrPT, full.substr(0, 15), full.substr(0, 15)}, {LStPT, full.substr(0, 16), full},
      {IPAPT, "0.10.200.255", std::string("\0\12\xC8\xFF", 4)},
      {AmxPT, "14:05:00", std::string("\0\5\16", 3)}};
  // clang-format on
  for (const auto& c : good) {
    const auto value = ParseParamValueStrictly(c.text, c.type);
    ASSERT_EQ(value.Message(), "") << c.text;
    EXPECT_EQ(ValueBytes(*value), Padded(c.value, 16)) << c.text;
  }
  const struct {
    ValueType type;
    std::vector<std::string> texts;
    // clang-format off
  } bad[] = {
      {IntPT, {"", " 1", "1 ", "12a", "+", "-", "+-1", "--1", "1.0", "0x1", "1e3", "2147483648",
               "-2147483649"}},
      {FltPT, {"", ".", "+", "1e", "1e+", "nan", "inf", "0x1", "1e999", "-1e999", " 1", "1 ", "1,5",
               "1.5.2", "--1", "+-1", "1f"}},
      {StrPT, {full.substr(0, 16), std::string("ab\0c", 4)}}, {PosPT, {full.substr(0, 16)}},
      {LStPT, {full}}, {AmxPT, {"2009/02/29"}}, {RawPT, {"1"}}, {kUnknown, {"1"}},
      {IPAPT, {"", "1.2.3", "1.2.3.4.5", "1.2.3.256", "1.2.3.4 ", "1..2.3", "+1.2.3.4"}}};
  // clang-format on
  for (const auto& c : bad) {
    for (const std::string& text : c.texts) {
      EXPECT_FALSE(ParseParamValueStrictly(text, c.type)) << text;
    }
  }
}

}  // namespace
}  // namespace orvane

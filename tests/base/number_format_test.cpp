// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/number_format.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "support/temp_dir.h"

namespace orvane::testing {
namespace {

using Writer = char* (*)(char*, double, int, int);
struct RealFormat {
  const char* form;
  Writer write;
  int precision;
  int width;
};

// clang-format off
constexpr RealFormat kFormats[] = {
    {"%5.3f", WriteFixed, 3, 5}, {"%7.2f", WriteFixed, 2, 7}, {"%16.8f", WriteFixed, 8, 16},
    {"%.0f", WriteFixed, 0, 0}, {"%60.22f", WriteFixed, 22, 60}, {"%14.5e", WriteExponent, 5, 14},
    {"%.0e", WriteExponent, 0, 0}, {"%.12e", WriteExponent, 12, 0}, {"%11.4g", WriteGeneral, 4, 11},
    {"%.10g", WriteGeneral, 10, 0}, {"%.0g", WriteGeneral, 0, 0}, {"%.17g", WriteGeneral, 17, 0},
};
// clang-format on

// Any bits, any floats, field values, and binary fractions: these often lie exactly halfway.
std::vector<double> Values() {
  using Limits = std::numeric_limits<double>;
  std::vector<double> values = {0.0,
                                Limits::infinity(),
                                Limits::quiet_NaN(),
                                Limits::max(),
                                Limits::min(),
                                Limits::denorm_min(),
                                9007199254740992.5,
                                1e22,
                                1e23,
                                9.9999995,
                                99999.5,
                                0.5,
                                1.5,
                                2.5,
                                0.00015,
                                9.5e-5};
  std::mt19937_64 random(7);
  const auto is_told_alike = [](double value) {
    return testing::kPrintsSignOfNan || !std::isnan(value);
  };
  while (values.size() < 40000) {
    const std::uint64_t bits = random();
    values.push_back(std::bit_cast<double>(bits));
    values.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
    values.push_back(static_cast<double>(bits >> 11U) *
                     std::pow(10, static_cast<int>(bits & 15U) - 20));
    values.push_back(static_cast<double>(bits % 2000001) /
                     static_cast<double>(1U << (bits >> 60U)));
  }
  values.erase(std::partition(values.begin(), values.end(), is_told_alike), values.end());
  return values;
}

TEST(NumberFormat, RealsAreThoseOfPrintf) {
  const std::string users = std::setlocale(LC_ALL, nullptr);
  std::setlocale(LC_ALL, "C");
  const std::vector<double> values = Values();
  char expected[kMaxNumberText];
  char written[kMaxNumberText];
  for (const RealFormat& format : kFormats) {
    int differences = 0;
    for (const double size : values) {
      for (const double value : {size, -size}) {
        const auto length =
            static_cast<std::size_t>(std::snprintf(expected, sizeof expected, format.form, value));
        const std::string_view ours(written,
                                    format.write(written, value, format.precision, format.width));
        if (ours != std::string_view(expected, length) && ++differences < 4) {
          ADD_FAILURE() << format.form << " of " << expected << " is " << ours;
        }
      }
    }
    EXPECT_EQ(differences, 0) << format.form;
  }
  std::setlocale(LC_ALL, users.c_str());
}

TEST(NumberFormat, IntegersAreThoseOfPrintf) {
  char written[kMaxNumberText];
  const auto text = [&written](char* end) { return std::string(written, end); };
  EXPECT_EQ(text(WriteInt(written, -8388608, 16)), "        -8388608");
  EXPECT_EQ(text(WriteInt(written, 99999, 4)), "99999");
  EXPECT_EQ(text(WriteInt(written, -7, 4, '0')), "-007");
  EXPECT_EQ(text(WriteInt(written, 0, 1)), "0");
  EXPECT_EQ(FormatInt(std::uint64_t{0} - 1), "18446744073709551615");
  EXPECT_EQ(FormatInt(std::uint8_t{65}), "65");
  EXPECT_EQ(text(WriteInt(written, INT64_MIN)), "-9223372036854775808");
  EXPECT_EQ(text(WriteInt(written, 9999999999999999, 20, '0')), "00009999999999999999");
  EXPECT_EQ(text(WriteHex(written, 0xA, 2)), "0A");
  EXPECT_EQ(text(WriteHex(written, 0xABC, 2)), "ABC");
}

}  // namespace
}  // namespace orvane::testing

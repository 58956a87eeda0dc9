// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/channel_flags.h"

namespace orvane {
namespace {

constexpr std::uint32_t kOne = kFirstVariant;
constexpr std::uint32_t kBoth = kFirstVariant | kSecondVariant;

constexpr ChannelModelFlags kNone{};
constexpr ChannelModelFlags kZlaH{kOne, kOne, kBoth};
constexpr ChannelModelFlags kFirst{kOne};
constexpr ChannelModelFlags kThree{0, 0, kBoth};
constexpr ChannelModelFlags kFive{0, 0, kOne, kOne, kBoth};
constexpr ChannelModelFlags kSix{0, 0, 0, kOne, kOne, kBoth};

struct Rule {
  std::string_view tag;
  const ChannelModelFlags& flags;
};

// Of several tags that a text holds the first counts. kept: a digit counts wherever it is, also
// in a version number.
constexpr auto kZlaRules = std::to_array<Rule>({{"E", kNone}, {"H", kZlaH}, {"5", kFive}});
constexpr auto kOtherRules = std::to_array<Rule>(
    {{"E", kNone}, {"GV", kFirst}, {"QVN", kFirst}, {"3", kThree}, {"5", kFive}, {"6", kSix}});

template <typename Rules>
const ChannelModelFlags& FirstMatch(const Rules& rules, std::string_view hardware) {
  for (const Rule& rule : rules) {
    if (hardware.find(rule.tag) != std::string_view::npos) {
      return rule.flags;
    }
  }
  return kNone;
}

}  // namespace

ChannelModelFlags ChannelModelFlagsOf(std::string_view hardware) {
  return hardware.find("ZLA") != std::string_view::npos ? FirstMatch(kZlaRules, hardware)
                                                        : FirstMatch(kOtherRules, hardware);
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/channel_values.h"

#include <algorithm>
#include <set>

#include "base/ascii.h"
#include "base/number_text.h"

namespace orvane {
namespace {

constexpr double kHeldPerSample = 256;

struct BaseUnit {
  const char* shown;
  const char* unit;
  double factor;
};
constexpr BaseUnit kBaseUnits[] = {  // NOLINT(modernize-avoid-c-arrays)
    {" (mV)", "V", 1e3},
    {" (Micro V)", "V", 1e6},
    {" (nT)", "T", 1e9}};

bool IsLetter(char c) { return UpperCased(c) >= 'A' && UpperCased(c) <= 'Z'; }

std::string NameFrom(const std::string& definition) {
  std::string name;
  for (const char c : definition) {
    name += IsLetter(c) || IsDigit(c) ? c : '_';
  }
  return IsLetter(name.empty() ? '_' : name.front()) ? name : "channel_" + name;
}

std::string InUpperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return UpperCased(c); });
  return text;
}

std::string MadeUnique(const std::string& wanted, std::set<std::string>* taken) {
  std::string name = wanted;
  for (int number = 2; !taken->insert(InUpperCase(name)).second; ++number) {
    name = wanted;
    name.append("_").append(FormatInt(number));
  }
  return name;
}

}  // namespace

std::vector<ChannelValues> ChannelValuesOf(const TsHeader& header, const TsCompanion* companion,
                                           const std::vector<std::string>& taken) {
  std::set<std::string> names;
  for (const std::string& name : taken) {
    names.insert(InUpperCase(name));
  }
  std::vector<ChannelValues> all;
  for (const WaveformChannel& shown : WaveformChannels(header, companion)) {
    ChannelValues channel{shown.name, MadeUnique(NameFrom(shown.name), &names), "count", 1};
    for (const BaseUnit& base : kBaseUnits) {
      if (shown.unit == base.shown) {
        channel.unit = base.unit;
        channel.scale = shown.scale * kHeldPerSample / base.factor;
      }
    }
    all.push_back(std::move(channel));
  }
  return all;
}

}  // namespace orvane

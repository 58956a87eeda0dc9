// SPDX-License-Identifier: GPL-3.0-or-later
#include "meaning/label_parts.h"

#include <algorithm>
#include <array>

#include "base/ascii.h"

namespace orvane {
namespace {

struct Spelling {
  std::string_view in_label;
  std::string_view unit;
};
constexpr auto kSpellings = std::to_array<Spelling>({
    {"m", "m"},
    {"s", "s"},
    {"sec", "s"},
    {"Hz", "Hz"},
    {"A", "A"},
    {"ohm", "ohm"},
    {"nT", "nT"},
    {"mV/nT", "mV/nT"},
    {"mV/A", "mV/A"},
    {"mv", "mV"},
    {"volt", "V"},
    {"MB", "MB"},
    {"degree", "degree"},
    {"Celsius", "Celsius"},
    {"microsecond", "microsecond"},
    {"micro-sec", "microsecond"},
    {"x12 min", "12 min"},
    {"x20 min", "20 min"},
    {"x20min", "20 min"},
});

std::string_view UnitOf(std::string_view in_brackets) {
  const std::string_view text = Trimmed(in_brackets);
  const auto* found = std::find_if(kSpellings.begin(), kSpellings.end(),
                                   [text](const Spelling& one) { return one.in_label == text; });
  return found == kSpellings.end() ? std::string_view() : found->unit;
}

// Some labels have two blanks in a row.
std::string NameIn(std::string_view label) {
  std::string_view text = Trimmed(label);
  if (!text.empty() && text.back() == ':') {
    text.remove_suffix(1);
  }
  std::string name;
  for (const char c : text) {
    if (c != ' ' || !name.ends_with(' ')) {
      name += c;
    }
  }
  return name;
}

}  // namespace

LabelParts PartsOf(std::string_view label) {
  const std::string_view text = Trimmed(label);
  const std::size_t open = text.rfind('(');
  if (open != std::string_view::npos && text.back() == ')') {
    const std::string_view unit = UnitOf(text.substr(open + 1, text.size() - open - 2));
    if (!unit.empty()) {
      return {NameIn(text.substr(0, open)), unit};
    }
  }
  return {NameIn(text), {}};
}

}  // namespace orvane

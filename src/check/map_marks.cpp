// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/map_marks.h"

#include <algorithm>

#include "table/box_keys.h"

namespace orvane {
namespace {

bool IsNamed(const Finding& finding, ParamKey key) {
  return !key.IsEmpty() &&
         std::find(finding.keys.begin(), finding.keys.end(), key) != finding.keys.end();
}

// The place of an auxiliary box in the table is not known here: its name is.
bool NamesChannel(const Finding& finding, BoxKind kind, int channel) {
  const int last = kind == kAuxiliaryBox ? static_cast<int>(kAuxiliaryKeys.size()) : 0;
  for (int slot = std::min(last, 1); slot <= last; ++slot) {
    for (int column = 0; column < kChannelColumns; ++column) {
      if (IsNamed(finding,
                  ChannelKey(kind, slot, channel + 1, static_cast<ChannelColumn>(column)))) {
        return true;
      }
    }
  }
  return false;
}

bool NamesSerial(const Finding& finding) {
  return IsNamed(finding, "SNUM") || IsNamed(finding, "SNTX") || IsNamed(finding, "SNNR") ||
         std::any_of(kAuxiliaryKeys.begin(), kAuxiliaryKeys.end(),
                     [&](const AuxiliaryKeys& keys) { return IsNamed(finding, keys.serial); });
}

void AddMarks(const Finding& finding, const Spread& spread, int box, std::vector<MapMark>* marks) {
  const std::size_t before = marks->size();
  const auto kind = static_cast<BoxKind>(spread.Box(box).kind);
  for (int channel = 0; channel < spread.ChannelCount(box); ++channel) {
    if (NamesChannel(finding, kind, channel)) {
      marks->push_back({box, channel, finding.sentence});
    }
  }
  if (marks->size() == before && finding.severity == Severity::kError && NamesSerial(finding)) {
    marks->push_back({box, -1, finding.sentence});
  }
}

}  // namespace

std::vector<MapMark> MarksOf(std::span<const Finding> findings, const Spread& spread) {
  std::vector<MapMark> marks;
  for (const Finding& finding : findings) {
    for (int box = 0; finding.severity != Severity::kHint && box < spread.BoxCount(); ++box) {
      if (finding.box == spread.BoxName(box)) {
        AddMarks(finding, spread, box, &marks);
      }
    }
  }
  return marks;
}

}  // namespace orvane

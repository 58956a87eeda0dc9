// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/situation.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/number_text.h"
#include "editors/spread.h"
#include "table/box_keys.h"

namespace orvane {
namespace {

CheckedBox BoxOf(BoxKind kind, int slot, ParamKey serial_key, std::int32_t serial) {
  const std::string label(Trimmed(Spread::LabelOf(kind)));
  return {kind, slot, serial, serial_key, label + " " + FormatInt(serial), {}};
}

void ReadChannels(const ParamTable& table, std::int32_t count, CheckedBox* box) {
  const int most = std::min(count, MaxChannels(box->kind));
  for (int number = 1; number <= most; ++number) {
    CheckedChannel channel{.number = number, .definition = {}};
    const std::string text = ParamAsText(table, box->Key(channel, kDefinition));
    channel.definition = Trimmed(text);
    channel.letter = channel.IsDefined() ? UpperCased(channel.definition.front()) : '\0';
    channel.is_recorded = IntParam(table, box->Key(channel, kFlagColumn)) != 0;
    box->channels.push_back(std::move(channel));
  }
}

std::vector<CheckedBox> BoxesOf(const ParamTable& table, Tech tech) {
  std::vector<CheckedBox> boxes;
  if (const std::int32_t monitor = IntParam(table, "SNTX"); monitor != 0 && tech != kMtAmt) {
    boxes.push_back(BoxOf(kTransmitterBox, 0, "SNTX", monitor));
  }
  boxes.push_back(BoxOf(kLocalBox, 0, "SNUM", IntParam(table, "SNUM")));
  ReadChannels(table, MainBoxChannels(table), &boxes.back());
  int slot = 0;
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    ++slot;
    if (const std::int32_t serial = IntParam(table, keys.serial); serial != 0) {
      boxes.push_back(BoxOf(kAuxiliaryBox, slot, keys.serial, serial));
      ReadChannels(table, IntParam(table, keys.channels), &boxes.back());
    }
  }
  if (const std::int32_t serial = IntParam(table, "SNNR"); serial != 0 && HasReferenceBox(tech)) {
    boxes.push_back(BoxOf(kReferenceBox, 0, "SNNR", serial));
  }
  return boxes;
}

CoilUse CoilsOf(const Situation& situation) {
  CoilUse use;
  use.is_any = situation.IsMt();
  for (std::size_t axis = 0; axis < kCoilChannelKeys.size(); ++axis) {
    const std::int32_t channel = situation.Int(kCoilChannelKeys[axis]);
    use.axes[axis] = channel >= 1 && channel <= kMostBoxChannels;
    use.is_any = use.is_any || use.axes[axis];
  }
  situation.ForEachRecorded([&use](const CheckedBox& /*box*/, const CheckedChannel& channel) {
    if (channel.letter == 'H') {
      use.is_any = true;
      if (const int axis = AxisOf(channel); axis >= 0) {
        use.axes[static_cast<std::size_t>(axis)] = true;
      }
    }
  });
  return use;
}

}  // namespace

Situation::Situation(const ParamTable& checked, const ParamTime& time, const Places& where)
    : table(checked),
      now(time),
      places(where),
      tech(TechOf(checked)),
      boxes(BoxesOf(checked, tech)),
      recording(RecordingSpan(checked, now)) {
  coils = CoilsOf(*this);
}

std::string Situation::Text(ParamKey key) const {
  const std::string text = ParamAsText(table, key);
  return std::string(Trimmed(text));
}

const CheckedBox& Situation::LocalBox() const {
  return *std::find_if(boxes.begin(), boxes.end(),
                       [](const CheckedBox& box) { return box.kind == kLocalBox; });
}

std::string NamedChannels::Text() const {
  std::vector<std::string> texts;
  for (const int number : numbers) {
    texts.push_back(FormatInt(number));
  }
  return (numbers.size() == 1 ? "channel " : "channels ") + Listed(texts);
}

std::string Listed(const std::vector<std::string>& texts) {
  std::string list;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    list += i == 0 ? "" : i + 1 == texts.size() ? " and " : ", ";
    list += texts[i];
  }
  return list;
}

int AxisOf(const CheckedChannel& channel) {
  constexpr std::string_view kAxes = "XYZ";
  const auto axis = channel.definition.size() < 2 ? std::string_view::npos
                                                  : kAxes.find(UpperCased(channel.definition[1]));
  return axis == std::string_view::npos ? -1 : static_cast<int>(axis);
}

}  // namespace orvane

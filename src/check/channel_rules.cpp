// SPDX-License-Identifier: GPL-3.0-or-later
// The channels of local and auxiliary boxes.
#include <algorithm>

#include "base/ascii.h"
#include "base/latin1.h"
#include "base/number_text.h"
#include "check/rule.h"

namespace orvane {
namespace {

// Tells of the channels of each box that `is_named` picks.
template <typename IsNamed>
void TellChannels(const Situation& situation, const Teller& tell, ChannelColumn column,
                  const std::string& sentence, const IsNamed& is_named) {
  for (const CheckedBox& box : situation.boxes) {
    const NamedChannels named = ChannelsWhere(
        box, column, [&](const CheckedChannel& channel) { return is_named(box, channel); });
    if (!named.IsEmpty()) {
      tell(named.keys, sentence + ": " + named.Text(), box.name);
    }
  }
}

void ChannelUndefined(const Situation& situation, const Teller& tell) {
  TellChannels(situation, tell, kDefinition, "Recorded, but not defined",
               [](const CheckedBox& /*box*/, const CheckedChannel& channel) {
                 return channel.is_recorded && !channel.IsDefined();
               });
}

void ChannelOff(const Situation& situation, const Teller& tell) {
  TellChannels(situation, tell, kFlagColumn, "Defined, but not recorded (flag 0)",
               [](const CheckedBox& /*box*/, const CheckedChannel& channel) {
                 return channel.IsDefined() && !channel.is_recorded;
               });
}

void BoxEmpty(const Situation& situation, const Teller& tell) {
  for (const CheckedBox& box : situation.boxes) {
    const bool is_empty =
        std::none_of(box.channels.begin(), box.channels.end(),
                     [](const CheckedChannel& channel) { return channel.IsDefined(); });
    if (box.kind == kAuxiliaryBox && is_empty) {
      tell({box.Key({.number = 1, .definition = {}}, kDefinition), box.serial_key},
           "None of its channels is defined", box.name);
    }
  }
}

void ChannelTwice(const Situation& situation, const Teller& tell) {
  struct Use {
    const CheckedBox* box;
    const CheckedChannel* channel;
  };
  std::vector<Use> uses;
  std::vector<ParamKey> keys;
  std::vector<std::string> names;
  situation.ForEachRecorded([&](const CheckedBox& box, const CheckedChannel& channel) {
    const auto twin = std::find_if(uses.begin(), uses.end(), [&channel](const Use& use) {
      return channel.IsDefined() && EqualsWithoutCase(use.channel->definition, channel.definition);
    });
    if (twin != uses.end()) {
      keys.push_back(box.Key(channel, kDefinition));
      keys.push_back(twin->box->Key(*twin->channel, kDefinition));
      names.push_back(PrintableLatin1(channel.definition));
    }
    uses.push_back({&box, &channel});
  });
  if (!keys.empty()) {
    tell(std::move(keys), "On more than one recorded channel: " + Listed(names));
  }
}

void GainFactor(const Situation& situation, const Teller& tell) {
  TellChannels(situation, tell, kGainFactor, "The gain factor is 0",
               [&situation](const CheckedBox& box, const CheckedChannel& channel) {
                 return box.kind == kLocalBox && channel.is_recorded &&
                        situation.Real(box.Key(channel, kGainFactor)) == 0;
               });
}

struct Component {
  std::string_view key;
  char letter;
};
constexpr std::array<Component, 6> kComponents = {
    {{"CHHX", 'H'}, {"CHHY", 'H'}, {"CHHZ", 'H'}, {"CHEX", 'E'}, {"CHEY", 'E'}, {"CHEZ", 'E'}}};

void ComponentChannel(const Situation& situation, const Teller& tell) {
  std::vector<ParamKey> keys;
  std::vector<std::string> faults;
  for (const Component& component : kComponents) {
    const std::int32_t number = situation.Int(component.key);
    if (number < 1 || number > MaxChannels(kLocalBox)) {
      continue;
    }
    const std::string definition = situation.Text(ChannelKey(kLocalBox, 0, number, kDefinition));
    if (!definition.empty() && UpperCased(definition.front()) != component.letter) {
      keys.emplace_back(component.key);
      faults.push_back(std::string(component.key) + " names channel " + FormatInt(number) +
                       ", which is " + PrintableLatin1(definition));
    }
  }
  if (!keys.empty()) {
    tell(std::move(keys), Listed(faults), situation.LocalBox().name);
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"channel-undefined", Severity::kWarning, "A recorded channel has no definition.",
     ChannelUndefined},
    {"channel-off", Severity::kHint,
     "A channel has a definition, but its flag is 0. Of auxiliary boxes 1 to 3 flags are 0 until "
     "somebody sets them.",
     ChannelOff},
    {"box-empty", Severity::kHint, "An auxiliary box has no channel with a definition.", BoxEmpty},
    {"channel-twice", Severity::kWarning,
     "One definition is on two recorded channels of the spread.", ChannelTwice},
    {"gain-factor", Severity::kError, "A recorded channel of the local box has the gain factor 0.",
     GainFactor},
    {"component", Severity::kWarning,
     "CHHX to CHHZ name a channel whose definition begins with another letter than H, CHEX to CHEZ "
     "one with another than E. A channel without a definition is right.",
     ComponentChannel},
});

}  // namespace

std::span<const Rule> ChannelRules() { return kRules; }

}  // namespace orvane

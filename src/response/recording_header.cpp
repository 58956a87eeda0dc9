// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/recording_header.h"

#include <algorithm>
#include <cstring>

#include "base/ascii.h"
#include "base/number_text.h"
#include "table/param_text.h"

namespace orvane {
namespace {

// Of the coil connector on some boards; it lies outside the path that a calibration sweeps.
constexpr double kDampingResistor = 767;

template <typename Value>
Value FieldOr0(const RecordingHeader& header, std::string_view key, ValueType type) {
  Value value{};
  return GetTsField(&header, key, type, &value) == kOk ? value : Value{};
}

bool IsText(ValueType type) { return type == StrPT || type == PosPT; }

// "E?R" is a whole number; a real one is taken too.
double ContactResistance(const RecordingHeader& header, std::string_view key) {
  std::int32_t whole = 0;
  return GetTsField(&header, key, IntPT, &whole) == kOk ? whole : SettingReal(header, key);
}

// A whole-text comparison: a version after the board's name makes it another board.
bool HasDampedCoils(const RecordingHeader& header) {
  const std::string hardware = SettingText(header, "HW");
  return EqualsWithoutCase(hardware, "7452C0") || EqualsWithoutCase(hardware, "7452C1");
}

struct Component {
  std::string_view channel;
  std::string_view resistance;
};
constexpr auto kElectric =
    std::to_array<Component>({{"CHEX", "EXR"}, {"CHEY", "EYR"}, {"CHEZ", "EZR"}});
constexpr auto kMagnetic = std::to_array<std::string_view>({"CHHX", "CHHY", "CHHZ"});

ChannelSettings* Named(const RecordingHeader& header, std::string_view key,
                       AllChannelSettings* settings) {
  const std::int32_t channel = SettingInt(header, key);
  return channel >= 1 && channel <= kMostChannels
             ? &(*settings)[static_cast<std::size_t>(channel - 1)]
             : nullptr;
}

ChannelSettings ElectricSettings(const RecordingHeader& header, double resistance) {
  return {SettingInt(header, "EGNC"),
          SettingInt(header, "LPFR"),
          SettingInt(header, "ACDC"),
          0.5 * resistance,
          0,
          0,
          true};
}

ChannelSettings MagneticSettings(const RecordingHeader& header) {
  const bool is_damped = HasDampedCoils(header);
  return {SettingInt(header, "HGNC"),
          is_damped ? SettingInt(header, "LPFR") : 0,
          SettingInt(header, "ACDH"),
          0,
          is_damped ? kDampingResistor : 0,
          0,
          true};
}

ChannelSettings SettingsByDefinition(const RecordingHeader& header, int channel) {
  constexpr int kMostResistances = 8;
  switch (DefinitionLetter(header, channel)) {
    case 'E': {
      const std::string key = "RES" + FormatInt(channel);
      return ElectricSettings(header,
                              channel <= kMostResistances ? ContactResistance(header, key) : 0);
    }
    case 'H':
    case 'B':
      return MagneticSettings(header);
    case 'T':
      return {SettingInt(header, "HGNC"), 0, SettingInt(header, "ACDH"), 0, 0, 0, true};
    default:
      return {};
  }
}

Status RateByTable(const RecordingHeader& header, int band, double* rate) {
  constexpr auto kRates = std::to_array<int>({1440, 720, 480, 240, 180, 120, 60});
  if (band < 1 || band > 3) {
    return kBandInvalid;
  }
  std::int32_t index = 0;
  if (GetTsField(&header, "SRW" + FormatInt(band), IntPT, &index) != kOk) {
    return kBandInvalid;
  }
  if (index < 0 || index >= static_cast<std::int32_t>(kRates.size())) {
    return kRateIndexInvalid;
  }
  *rate = kRates[static_cast<std::size_t>(index)] / 60.0;
  return kOk;
}

}  // namespace

Status GetTsField(const RecordingHeader* header, std::string_view key, ValueType type, void* out) {
  if (header == nullptr) {
    return kNoRecordingHeader;
  }
  const ParamEntry* entry = header->settings.Find(key);
  if (entry == nullptr) {
    return kFieldNotFound;
  }
  const bool can_ask = type == IntPT || type == FltPT || type == AmxPT || IsText(type);
  if (entry->type != type || !can_ask) {
    return kFieldTypeMismatch;
  }
  if (IsText(type)) {
    const std::string_view text = CharactersOf(entry->value, kMaxTextLength);
    std::memcpy(out, text.data(), text.size());
    static_cast<char*>(out)[text.size()] = '\0';
  } else {
    std::memcpy(out, entry->value.data(), type == IntPT ? 4 : 8);
  }
  return kOk;
}

std::int32_t SettingInt(const RecordingHeader& header, std::string_view key) {
  return FieldOr0<Le<std::int32_t>>(header, key, IntPT);
}

double SettingReal(const RecordingHeader& header, std::string_view key) {
  return FieldOr0<Le<double>>(header, key, FltPT);
}

std::string SettingText(const RecordingHeader& header, std::string_view key) {
  return FieldOr0<std::array<char, kMaxTextLength + 1>>(header, key, StrPT).data();
}

char DefinitionLetter(const RecordingHeader& header, int channel) {
  const std::string definition = SettingText(header, "CHDEF" + FormatInt(channel));
  return definition.empty() ? '\0' : UpperCased(definition[0]);
}

char ComponentAxis(const RecordingHeader& header, int channel) {
  const std::string definition = SettingText(header, "CHDEF" + FormatInt(channel));
  const char second = definition.size() < 2 ? '\0' : UpperCased(definition[1]);
  if (second == 'X' || second == 'Y' || second == 'Z') {
    return second;
  }
  const std::string component = std::string("CH") + DefinitionLetter(header, channel);
  for (const char axis : {'X', 'Y', 'Z'}) {
    if (SettingInt(header, component + axis) == channel) {
      return axis;
    }
  }
  return '\0';
}

AllChannelSettings FillChannelSettings(const RecordingHeader& header) {
  AllChannelSettings settings{};
  for (int channel = 1; channel <= kMostChannels; ++channel) {
    settings[static_cast<std::size_t>(channel - 1)] = SettingsByDefinition(header, channel);
  }
  for (const auto& [key, resistance] : kElectric) {
    if (ChannelSettings* channel = Named(header, key, &settings); channel != nullptr) {
      *channel = ElectricSettings(header, ContactResistance(header, resistance));
    }
  }
  for (const std::string_view key : kMagnetic) {
    if (ChannelSettings* channel = Named(header, key, &settings); channel != nullptr) {
      *channel = MagneticSettings(header);
    }
  }
  return settings;
}

bool HasOwnResistance(const RecordingHeader& header, int channel) {
  const auto is_this = [&](std::string_view key) { return SettingInt(header, key) == channel; };
  return DefinitionLetter(header, channel) == 'E' &&
         std::none_of(kMagnetic.begin(), kMagnetic.end(), is_this) &&
         std::none_of(kElectric.begin(), kElectric.end(),
                      [&](const Component& component) { return is_this(component.channel); });
}

OfAuxiliaryBox IsOfAuxiliaryBox(const RecordingHeader& header, int box) {
  constexpr int kChannels = 3;
  const int serial = SettingInt(header, "SNUM");
  bool lists_boxes = false;
  bool has_definitions = false;
  for (std::size_t i = 1; i <= kAuxiliaryKeys.size(); ++i) {
    const int listed = SettingInt(header, kAuxiliaryKeys[i - 1].serial);
    if (listed != 0 && (listed == serial || listed == box)) {
      return OfAuxiliaryBox::kYes;
    }
    lists_boxes = lists_boxes || listed != 0;
    for (int channel = 1; channel <= kChannels; ++channel) {
      const std::string key = std::string("DEF").append(FormatInt(i)).append("R");
      has_definitions = has_definitions || !SettingText(header, key + FormatInt(channel)).empty();
    }
  }
  return has_definitions && !lists_boxes ? OfAuxiliaryBox::kMaybe : OfAuxiliaryBox::kNo;
}

bool HasRateTable(const RecordingHeader& header) {
  return ContainsWithoutCase(SettingText(header, "VER"), "7420");
}

Status LookupSampleRate(const RecordingHeader* header, int band, double* rate) {
  constexpr double kFullRate = 24000;
  if (header == nullptr) {
    return kNoRecordingHeader;
  }
  if (HasRateTable(*header)) {
    return RateByTable(*header, band, rate);
  }
  if (band == 0) {
    *rate = kFullRate;
    return kOk;
  }
  std::int32_t stored = 0;
  if (band < 1 || band > kLastBand ||
      GetTsField(header, "SRL" + FormatInt(band), IntPT, &stored) != kOk) {
    return kBandInvalid;
  }
  *rate = stored;
  return kOk;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/recording_header.h"

#include <algorithm>
#include <cstring>

#include "core/ascii.h"
#include "core/number_text.h"
#include "core/param_text.h"

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

// A whole-text comparison: a version behind the board's name makes it another board.
bool HasDampedCoils(const RecordingHeader& header) {
  const std::string hardware = SettingText(header, "HW");
  return EqualsWithoutCase(hardware, "7452C0") || EqualsWithoutCase(hardware, "7452C1");
}

ChannelSettings* Named(const RecordingHeader& header, std::string_view key,
                       AllChannelSettings* settings) {
  const std::int32_t channel = SettingInt(header, key);
  return channel >= 1 && channel <= kMostChannels
             ? &(*settings)[static_cast<std::size_t>(channel - 1)]
             : nullptr;
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

AllChannelSettings FillChannelSettings(const RecordingHeader& header) {
  struct Component {
    std::string_view channel;
    std::string_view resistance;
  };
  AllChannelSettings settings{};
  const int low_pass = SettingInt(header, "LPFR");
  for (const auto& [key, resistance] :
       {Component{"CHEX", "EXR"}, Component{"CHEY", "EYR"}, Component{"CHEZ", "EZR"}}) {
    if (ChannelSettings* channel = Named(header, key, &settings); channel != nullptr) {
      *channel = {SettingInt(header, "EGNC"),
                  low_pass,
                  SettingInt(header, "ACDC"),
                  0.5 * ContactResistance(header, resistance),
                  0,
                  0,
                  true};
    }
  }
  const bool is_damped = HasDampedCoils(header);
  for (const std::string_view key : {"CHHX", "CHHY", "CHHZ"}) {
    if (ChannelSettings* channel = Named(header, key, &settings); channel != nullptr) {
      *channel = {SettingInt(header, "HGNC"),
                  is_damped ? low_pass : 0,
                  SettingInt(header, "ACDH"),
                  0,
                  is_damped ? kDampingResistor : 0,
                  0,
                  true};
    }
  }
  return settings;
}

Status LookupSampleRate(const RecordingHeader* header, int band, double* rate) {
  constexpr double kFullRate = 24000;
  constexpr int kLastBand = 19;
  if (header == nullptr) {
    return kNoRecordingHeader;
  }
  if (ContainsWithoutCase(SettingText(*header, "VER"), "7420")) {
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

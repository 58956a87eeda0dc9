// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/step_presets.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include "stepping/step_table.h"
#include "table/param_access.h"

namespace orvane {
namespace {

struct StepPreset {
  Tech tech;
  std::int32_t cycle;    // "TTOT", s
  double lowest;         // "FEND", Hz
  std::int32_t seconds;  // "TPFR"
  std::int32_t cycles;   // "CPFR"
  FrequencyList frequencies;
};

// kept: thirds and ninths rounded as the boxes' tables have them; the cycles of 2700 s begin with
// 1, 2 and 4 Hz ahead of the descending run.
constexpr FrequencyList kLongList = {9600, 7680, 6400,        5120,       3840, 3200,
                                     2560, 1920, 1600,        1280,       1024, 853.3333,
                                     640,  512,  426.6666667, 341.333333, 256};
constexpr FrequencyList kLowFirstList = {1,    2,    4,           7680,       6400, 5120, 3840,
                                         3072, 2560, 1920,        1536,       1280, 1024, 853.3333,
                                         640,  512,  426.6666667, 341.333333, 256};

constexpr auto kPresets = std::to_array<StepPreset>({
    {kSip, 480, 0.0625, 60, 15, {1, 0.5, 0.125, 0.0625}},
    {kSip, 900, 0.0625, 50, 15, {128, 64}},
    {kSip, 2400, 0.03125, 50, 15, {128, 85.3333333}},
    {kSip, 3600, 0.0078125, 60, 6, {256, 170.666667}},
    {kFdem, 480, 64, 60, 60, {7680, 3840, 1920, 1024, 512}},
    {kFdem, 900, 1, 60, 60, {9600, 6400, 3840, 1920, 1024, 512}},
    {kFdem, 2400, 1, 60, 60, kLongList},
    {kFdem, 2700, 8, 80, 60, kLowFirstList},
    {kFdem,
     3600,
     0.7,
     60,
     115,
     {9600, 8533.3333333, 7680, 6400, 5120, 4266.66666667, 3840, 3200, 2560, 2133.333333, 1920,
      1536, 1280, 1066.6666667, 853.333333, 711.1111111, 568.88888889, 512}},
    {kCsamt, 1800, 1, 60, 100, {9600, 7680, 5120, 3840, 2560, 1920, 1280, 1024, 711.11111, 512}},
    {kCsamt, 2400, 1, 60, 60, kLongList},
    {kCsamt, 2700, 8, 80, 60, kLowFirstList},
    {kCsamt,
     3600,
     0.5,
     60,
     60,
     {8533.3333333, 6981.181818, 5907.69231, 5120, 4266.66666667, 3840, 3072, 2560, 2133.333333,
      1920}},
});

constexpr std::int32_t kUsualCycle = 900;
constexpr std::int32_t kUsualCsamtCycle = 2700;
constexpr int kSlowArray = 13;  // "ARRYTYP" of TDEM with a slow base frequency

const StepPreset* FindPreset(Tech tech, std::int32_t cycle) {
  const auto* found =
      std::find_if(kPresets.begin(), kPresets.end(), [tech, cycle](const StepPreset& preset) {
        return preset.tech == tech && preset.cycle == cycle;
      });
  return found == kPresets.end() ? nullptr : found;
}

void Write(ParamTable* table, const StepPreset& preset) {
  PutInt(table, "WFRM", 4);
  PutInt(table, "NUMITEM", 1);
  PutInt(table, "AUTO", 1);
  PutInt(table, "FPOC", 0);
  PutInt(table, "TTOT", preset.cycle);
  PutReal(table, "FEND", preset.lowest);
  PutInt(table, "TPFR", preset.seconds);
  PutInt(table, "CPFR", preset.cycles);
  for (std::size_t i = 0; i < kFrequencyKeys.size(); ++i) {
    PutReal(table, kFrequencyKeys[i], preset.frequencies[i]);
  }
}

}  // namespace

void ApplyDefaultStepping(ParamTable* table, Tech tech, std::int32_t cycle_seconds) {
  if (!HasCycles(tech)) {
    return;
  }
  const std::int32_t cycle = cycle_seconds != 0 ? cycle_seconds : IntParam(*table, "TTOT");
  const StepPreset* preset = FindPreset(tech, cycle);
  if (preset == nullptr) {
    preset = FindPreset(tech, tech == kCsamt ? kUsualCsamtCycle : kUsualCycle);
  }
  if (preset != nullptr) {
    Write(table, *preset);
  }
}

void ApplyDefaultWindows(ParamTable* table, Tech tech) {
  if (tech != kTdip && tech != kTdem) {
    return;
  }
  PutReal(table, "FDRIFT", 0);
  PutInt(table, "AUTO", 0);
  PutReal(table, "CREQ", 5.0);
  if (tech == kTdip) {
    PutInt(table, "WFRM", 1);
    PutInt(table, "NUMITEM", 16);
    PutReal(table, "FREQ", 0.125);
    return;
  }
  PutInt(table, "NUMITEM", 21);
  const double by_line = IntParam(*table, "LFRQ") == 50 ? 25.0 : 30.0;
  PutReal(table, "FREQ", IntParam(*table, "ARRYTYP") == kSlowArray ? 0.0625 : by_line);
}

std::array<std::int32_t, 4> CycleChoices(Tech tech) {
  return tech == kCsamt ? std::array{1800, 2400, 2700, 3600} : std::array{480, 900, 2400, 3600};
}

TransmitterLimits WithDefaults(TransmitterLimits limits, Tech tech) {
  const bool is_grounded = tech == kSip || tech == kTdip;
  if (!is_grounded && tech != kCsamt && tech != kFdem) {
    return limits;
  }
  const auto fill = [](double* limit, double usual) { *limit = *limit == 0 ? usual : *limit; };
  fill(&limits.resistance, is_grounded ? 100 : 50);
  fill(&limits.voltage, 1000);
  fill(&limits.wire_length, is_grounded ? 100 : 1000);
  return limits;
}

double CycleCurrent(Tech tech, double stored) {
  if (stored != 0) {
    return stored;
  }
  return tech == kSip ? 5.0 : 16.0;
}

double CornerFrequency(const TransmitterLimits& limits, double current) {
  constexpr double kHenryPerMetre = 3.0e-6;
  constexpr double kFallback = 1000;
  const double w = 2 * std::numbers::pi * limits.wire_length * kHenryPerMetre;
  const double q = (limits.voltage * limits.voltage / (0.5 * current * current) -
                    limits.resistance * limits.resistance) /
                   (w * w);
  const double corner = std::trunc(0.95 * std::sqrt(q));
  return q > 100 && std::isfinite(corner) ? corner : kFallback;
}

void ApplyTransmitter(ParamTable* table, Tech tech, const TransmitterLimits& limits,
                      double current) {
  if (tech == kSip) {
    PutReal(table, "CRMX", current);
    PutReal(table, "FCMX", 0);
    return;
  }
  if (const double most = limits.voltage / limits.resistance; most < current) {
    current = most;
  }
  PutReal(table, "CRMX", current);
  PutReal(table, "FCMX", CornerFrequency(limits, current));
}

}  // namespace orvane

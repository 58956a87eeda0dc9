// SPDX-License-Identifier: GPL-3.0-or-later
// How far the responses of fitted boxes lie from the truth: boxes are drawn, swept under several
// conditions, fitted, and compared with themselves.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <numbers>

#include "response/uncertainty.h"
#include "response/verdict.h"
#include "truth_faults.h"

namespace {

using namespace orvane;         // NOLINT: all that a box is made of
using namespace orvane::bench;  // NOLINT

constexpr auto kConditions = std::to_array<TruthCondition>({
    {.name = "full scale 1e-4", .full_scale = 1e-4},
    {.name = "full scale 3e-4", .full_scale = 3e-4},
    {.name = "full scale 1e-3", .full_scale = 1e-3},
    {.name = "value 1e-4", .of_value = 1e-4},
    {.name = "value 1e-3", .of_value = 1e-3},
    {.name = "12 records a pass", .of_value = 1e-4, .records = 12},
    {.name = "parts up to 2x off", .of_value = 1e-4, .farthest = 2},
    {.name = "8 Hz to 20 kHz", .of_value = 1e-4, .lowest = 8},
    {.name = "2 % wild", .of_value = 1e-4, .wild = 0.02},
    {.name = "12 % wild", .of_value = 1e-4, .wild = 0.12},
    {.name = "drift 2e-4", .of_value = 1e-4, .drift = 2e-4},
    {.name = "drive 1 %", .of_value = 1e-4, .drive = 0.01},
});

// 54 settings and 40 frequencies, 0.1 Hz to 20 kHz.
template <typename Visit>
void ForEachSetting(const Visit& visit) {
  for (const int gain : {0, 2}) {
    for (const int low_pass : {0, 16, 17, 18, 19, 20, 80, 82, 84}) {
      for (const double source : {0, 100, 1000}) {
        visit(FrontEndSetting{gain, low_pass, 0, source});
      }
    }
  }
}

std::vector<double> Frequencies() {
  std::vector<double> frequencies;
  for (int i = 0; i < 40; ++i) {
    frequencies.push_back(0.1 * std::pow(20000 / 0.1, i / 39.0));
  }
  return frequencies;
}

// What the verdicts on boxes with one fault, or none, came to.
struct Verdicts {
  int well = 0;
  int with_care = 0;
  int not_usable = 0;
  int told = 0;  // with the right pass or part
  std::string example;

  void Add(const ChannelVerdict& verdict, bool is_told) {
    well += verdict.usability == Usability::kWell ? 1 : 0;
    with_care += verdict.usability == Usability::kWithCare ? 1 : 0;
    not_usable += verdict.usability == Usability::kNotUsable ? 1 : 0;
    told += is_told ? 1 : 0;
    example = example.empty() ? verdict.Text() : example;
  }
  void Print(const char* name) const {
    std::printf("%-26s %4d %4d %4d %4d  %s\n", name, told, well, with_care, not_usable,
                example.c_str());
  }
};

// What was found over boxes, settings and frequencies of a condition.
struct Found {
  std::vector<double> errors;  // the largest of each box
  std::size_t values = 0;      // amplitudes and phases
  std::size_t in_noise = 0;    // those within the band of the scatter
  std::size_t in_wider = 0;    // within the one with drive and drift
  int unnoticed = 0;           // boxes more than 2 % off that are judged well
  Verdicts verdicts;
};

void Compare(const FrontEndParameters& truth, const CalData& cal, Found* found) {
  static const auto frequencies = Frequencies();
  constexpr double kDegrees = 180 / std::numbers::pi;
  const FrontEndParameters parts = ParametersOf(cal, 0);
  const ModelUncertainty uncertainty(cal, 0);
  double largest = 0;
  const auto count = [found](double error, double noise, double wider) {
    ++found->values;
    found->in_noise += error <= noise ? 1 : 0;
    found->in_wider += error <= wider ? 1 : 0;
  };
  ForEachSetting([&](const FrontEndSetting& setting) {
    const FrontEnd one(truth, setting);
    const FrontEnd other(parts, setting);
    for (const double frequency : frequencies) {
      const Complex ratio = other.Response(frequency) / one.Response(frequency);
      largest = std::max(largest, std::abs(ratio - 1.0));
      const ResponseBands bands = uncertainty.At(setting, frequency);
      count(std::abs(std::abs(ratio) - 1), bands.noise.amplitude, bands.wider.amplitude);
      count(std::abs(std::arg(ratio)) * kDegrees, bands.noise.phase, bands.wider.phase);
    }
  });
  found->errors.push_back(largest);
  const ChannelVerdict verdict = JudgeChannel(cal, 0);
  found->verdicts.Add(verdict, false);
  found->unnoticed += largest > 0.02 && verdict.usability == Usability::kWell ? 1 : 0;
}

void RunCondition(const TruthCondition& condition, int boxes) {
  TruthShop shop(20261123);
  Found found;
  for (int i = 0; i < boxes; ++i) {
    const TruthBox box = shop.Build(condition);
    Compare(box.parts[0], box.Fitted(), &found);
  }
  std::sort(found.errors.begin(), found.errors.end());
  const auto at = [&found](double share) {
    return found
        .errors[static_cast<std::size_t>(share * static_cast<double>(found.errors.size() - 1))];
  };
  const auto percent = [&found](std::size_t within) {
    return 100 * static_cast<double>(within) / static_cast<double>(found.values);
  };
  std::printf("%-20s %9.1e %9.1e %9.1e %6.1f %6.1f %5d %5d %5d %5d\n", condition.name, at(0.5),
              at(0.95), at(1), percent(found.in_noise), percent(found.in_wider),
              found.verdicts.well, found.verdicts.with_care, found.verdicts.not_usable,
              found.unnoticed);
}

bool Names(const ChannelVerdict& verdict, const TruthFault& fault) {
  return std::any_of(verdict.reasons.begin(), verdict.reasons.end(),
                     [&fault](const VerdictReason& reason) {
                       return (reason.pass && fault.passes.contains(*reason.pass)) ||
                              (reason.part && fault.parts.contains(*reason.part));
                     });
}

constexpr int kFaultBoxes = 12;

// Boxes of the first variants: the second has no other capacitors and no trap.
TruthBox BuildWithTrap(TruthShop* shop, const TruthCondition& condition,
                       const TruthSetting& setting) {
  for (;;) {
    TruthBox box = shop->Build(condition, 2, setting);
    if ((box.flags & kSecondVariant) == 0) {
      return box;
    }
  }
}

void RunFaults() {
  constexpr TruthCondition kNoise = {.full_scale = 1e-4};
  std::printf("%-26s %4s %4s %4s %4s  %s\n", "fault", "told", "well", "care", "not", "example");
  TruthShop shop(7);
  int told = 0;
  for (const TruthFault& fault : TruthFaults()) {
    Verdicts verdicts;
    for (int i = 0; i < kFaultBoxes; ++i) {
      TruthBox box = BuildWithTrap(&shop, kNoise, fault.setting);
      if (fault.spoil != nullptr) {
        fault.spoil(&box);
      }
      const ChannelVerdict verdict = JudgeChannel(box.Fitted(), 0);
      verdicts.Add(verdict, Names(verdict, fault));
    }
    told += verdicts.told >= 10 && (!fault.stays_right || verdicts.not_usable == 0) ? 1 : 0;
    verdicts.Print(fault.name);
  }
  for (const TruthCondition& condition : kConditions) {
    Verdicts verdicts;
    for (int i = 0; i < kFaultBoxes; ++i) {
      verdicts.Add(JudgeChannel(shop.Build(condition).Fitted(), 0), false);
    }
    verdicts.Print(condition.name);
  }
  std::printf("%d of %zu faults told\n", told, TruthFaults().size());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::string_view(argv[1]) == "--faults") {
    RunFaults();
    return 0;
  }
  const int boxes = argc > 1 ? std::atoi(argv[1]) : 0;
  if (boxes <= 0) {
    std::fputs("usage: orvane-response-truth BOXES | --faults\n", stderr);
    return 2;
  }
  std::printf("%-20s %9s %9s %9s %6s %6s %5s %5s %5s %5s\n", "condition", "median", "95 %", "worst",
              "in %", "wider", "well", "care", "not", "missed");
  for (const TruthCondition& condition : kConditions) {
    RunCondition(condition, boxes);
  }
  return 0;
}

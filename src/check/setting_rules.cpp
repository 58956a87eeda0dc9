// SPDX-License-Identifier: GPL-3.0-or-later
// Coded values that boxes do not know, or that do not go with the method.
#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "base/number_text.h"
#include "check/rule.h"

namespace orvane {
namespace {

constexpr int kFirstGain = -1;
constexpr int kLastGain = 2;

bool IsWithin(std::int32_t number, std::int32_t first, std::int32_t last) {
  return number >= first && number <= last;
}

bool IsOneOf(std::int32_t number, std::initializer_list<std::int32_t> numbers) {
  return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

// Tells of those of some keys whose numbers are wrong: "ACDC is 3 and ACDH is 4: no coupling".
template <typename IsWrong>
void TellWrong(const Situation& situation, const Teller& tell,
               std::initializer_list<std::string_view> keys, std::string_view what,
               const IsWrong& is_wrong) {
  std::vector<ParamKey> wrong;
  std::vector<std::string> texts;
  for (const std::string_view key : keys) {
    if (const std::int32_t number = situation.Int(key); is_wrong(number)) {
      wrong.emplace_back(key);
      texts.push_back(std::string(key) + " is " + FormatInt(number));
    }
  }
  if (!wrong.empty()) {
    tell(std::move(wrong), Listed(texts) + ": " + std::string(what));
  }
}

void GainCode(const Situation& situation, const Teller& tell) {
  TellWrong(situation, tell, {"EGNC", "HGNC"}, "boxes have no such gain",
            [](std::int32_t gain) { return !IsWithin(gain, kFirstGain, kLastGain); });
}

void CouplingCode(const Situation& situation, const Teller& tell) {
  const auto is_wrong = [&situation](std::int32_t coupling) {
    const bool is_left_open = situation.tech == kFdem && coupling == -1;
    return situation.IsTimeDomain() ? coupling != 0 : !IsOneOf(coupling, {0, 1}) && !is_left_open;
  };
  TellWrong(situation, tell, {"ACDC", "ACDH"},
            situation.IsTimeDomain() ? "time-domain methods need DC coupling"
                                     : "boxes have no such coupling",
            is_wrong);
}

bool IsFilter(const Situation& situation, std::int32_t filter) {
  if (situation.IsTimeDomain()) {
    return filter == 0;
  }
  const bool has_mt_rates = situation.IsMt() && !IsOneOf(situation.Int("MTSR"), {0, 2});
  return has_mt_rates ? IsWithin(filter, 160, 164)
                      : IsWithin(filter, 16, 20) || IsWithin(filter, 80, 84);
}

void FilterCode(const Situation& situation, const Teller& tell) {
  TellWrong(situation, tell, {"LPFR"}, "the method has no such low-pass filter",
            [&situation](std::int32_t filter) { return !IsFilter(situation, filter); });
}

void LineCode(const Situation& situation, const Teller& tell) {
  TellWrong(situation, tell, {"LFRQ"}, "mains have 50 or 60 Hz", [](std::int32_t line) {
    return !IsOneOf(line, {50, 60});
  });
}

void WaveformCode(const Situation& situation, const Teller& tell) {
  TellWrong(situation, tell, {"WFRM"}, "the method has no such waveform",
            [&situation](std::int32_t waveform) {
              return situation.IsTimeDomain()
                         ? !IsWithin(waveform, 1, 3) && !IsWithin(waveform, 6, 11)
                         : !IsOneOf(waveform, {4, 5});
            });
}

void WindowCount(const Situation& situation, const Teller& tell) {
  constexpr std::int32_t kFewestOfIp = 5;
  constexpr std::int32_t kMostOfTdem = 21;
  TellWrong(situation, tell, {"NUMITEM"}, "the method has another number of windows",
            [&situation](std::int32_t windows) {
              return situation.tech == kTdip   ? windows < kFewestOfIp
                     : situation.tech == kTdem ? !IsWithin(windows, 1, kMostOfTdem)
                                               : windows != 1;
            });
}

void BaseFrequency(const Situation& situation, const Teller& tell) {
  if (situation.IsTimeDomain() && !(situation.Real("FREQ") > 0)) {
    tell({"FREQ"}, "The base frequency is " + FormatReal(situation.Real("FREQ")) + " Hz");
  }
}

void MainsInStack(const Situation& situation, const Teller& tell) {
  const double frequency = situation.Real("FREQ");
  if (!situation.IsTimeDomain() || !(frequency > 0)) {
    return;
  }
  constexpr double kTolerance = 1e-6;
  const double half_ratio = situation.Int("LFRQ") / frequency / 2;
  if (!(std::abs(half_ratio - std::round(half_ratio)) <= kTolerance / 2)) {
    tell({"FREQ", "LFRQ"}, "Mains of " + FormatInt(situation.Int("LFRQ")) +
                               " Hz are no even multiple of the base frequency of " +
                               FormatReal(frequency) + " Hz: stacking does not take them away");
  }
}

void RequestCode(const Situation& situation, const Teller& tell) {
  TellWrong(situation, tell, {"RQST"}, "the method has no such request",
            [&situation](std::int32_t request) {
              const bool is_of_method =
                  situation.IsMt() ? !IsWithin(request, 11, 13) : request != 2;
              return !IsOneOf(request, {1, 2, 5, 7, 8, 11, 12, 13}) || !is_of_method;
            });
}

void ModeOfTable(const Situation& situation, const Teller& tell) {
  TellWrong(situation, tell, {"MODE"}, "the table is not one of a box in set-up",
            [](std::int32_t mode) { return mode != 1; });
}

void MethodCode(const Situation& situation, const Teller& tell) {
  TellWrong(situation, tell, {"TECH"}, "boxes know no such method",
            [](std::int32_t method) { return !IsWithin(method, kSip, kFdem); });
}

void StepCode(const Situation& situation, const Teller& tell) {
  constexpr std::int32_t kLastFile = 10;
  if (!situation.IsMt()) {
    TellWrong(situation, tell, {"AUTO"}, "there is no such choice of a schedule",
              [](std::int32_t choice) { return !IsWithin(choice, 0, kLastFile); });
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"method-code", Severity::kError,
     "TECH is not from 1 to 6. No dialog opens then: mended by choosing the method, or in Raw "
     "Parameters.",
     MethodCode},
    {"step-code", Severity::kError,
     "Other methods than MT/AMT: AUTO is neither 0, 1 nor the number of a schedule file, 2 to 10.",
     StepCode},
    {"gain-code", Severity::kError, "EGNC or HGNC is not from -1 to 2.", GainCode},
    {"coupling-code", Severity::kWarning,
     "ACDC or ACDH is not 0 or 1, with TDIP and TDEM not 0. FDEM leaves couplings open with -1.",
     CouplingCode},
    {"filter-code", Severity::kWarning,
     "LPFR is not 0 with TDIP and TDEM, not from 160 to 164 with MT/AMT at the rates of MT, and "
     "else not from 16 to 20 or from 80 to 84.",
     FilterCode},
    {"line-code", Severity::kWarning, "LFRQ is not 50 or 60.", LineCode},
    {"waveform-code", Severity::kWarning,
     "WFRM is not from 1 to 3 or from 6 to 11 with TDIP and TDEM, else not 4 or 5.", WaveformCode},
    {"window-count", Severity::kWarning,
     "NUMITEM is below 5 with TDIP, not from 1 to 21 with TDEM, else not 1.", WindowCount},
    {"base-frequency", Severity::kError, "TDIP, TDEM: FREQ is not above 0.", BaseFrequency},
    {"mains-in-stack", Severity::kWarning,
     "TDIP, TDEM: mains are no even multiple of the base frequency, so that the reversals of "
     "polarity do not take them away. 25 Hz at 50 Hz, 30 Hz at 60 Hz and 0.125 Hz are right.",
     MainsInStack},
    {"request-code", Severity::kWarning,
     "RQST is not 1, 2, 5, 7, 8, 11, 12 or 13, is from 11 to 13 with MT/AMT, or 2 with another "
     "method.",
     RequestCode},
    {"mode", Severity::kHint, "MODE is not 1.", ModeOfTable},
});

}  // namespace

std::span<const Rule> SettingRules() { return kRules; }

}  // namespace orvane

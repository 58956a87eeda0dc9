// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/verdict.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/number_text.h"
#include "response/channel_fit.h"
#include "response/fit_report.h"
#include "response/record_curve.h"
#include "response/uncertainty.h"

namespace orvane {
namespace {

constexpr double kMostPriorWidths = 3.5;
constexpr double kMostStageError = 0.03;
constexpr double kMostGainError = 0.1;
constexpr double kLeastPassError = 2e-3;
constexpr double kPassOverOthers = 8;
constexpr double kRecordError = 0.01;
constexpr double kRecordOverOthers = 20;
constexpr double kMostWild = 0.05;
constexpr double kMostDeviation = 0.02;
constexpr double kMostExpected = 0.1;
constexpr double kLowFrequencies = 50;
constexpr std::size_t kTrapPass = 11;
constexpr double kAnyFrequency = 1e300;

// Two digits, but "180 %".
std::string Percent(double share) {
  const double percent = 100 * share;
  const bool is_large = std::abs(percent) >= 100 && std::abs(percent) < 1e6;
  return (is_large ? FormatFixed(percent, 0) : FormatReal(percent, 2)) + " %";
}

std::string PassName(std::size_t pass) {
  return "pass " + FormatInt(pass + 1) + " (" + PassSettingText(pass) + ")";
}

std::string Lower(std::string text) {
  text[0] = static_cast<char>(text[0] - (text[0] >= 'A' && text[0] <= 'Z' ? 'A' - 'a' : 0));
  return text;
}

// "filters 1, 3 with VLF trap"
void AddFilters(const std::set<int>& strengths, std::string_view trap, std::string* where) {
  if (strengths.empty()) {
    return;
  }
  where->append(where->empty() ? "" : "; ").append(strengths.size() > 1 ? "filters " : "filter ");
  for (const int strength : strengths) {
    where->append(strength == *strengths.begin() ? "" : ", ").append(FormatInt(strength));
  }
  where->append(trap);
}

std::string FiltersText(const std::set<int>& codes) {
  std::set<int> plain;
  std::set<int> with_trap;
  std::set<int> both;
  for (const int code : codes) {
    const auto [strength, has_trap] = LowPassFilterOf(code);
    const bool is_both =
        strength >= 0 && codes.contains(16 + strength) && codes.contains(80 + strength);
    if (strength >= 0) {
      (is_both ? both : has_trap ? with_trap : plain).insert(strength);
    }
  }
  std::string text = codes.contains(0) ? FilterText(0) : "";
  AddFilters(plain, "", &text);
  AddFilters(with_trap, " with VLF trap", &text);
  AddFilters(both, " with and without VLF trap", &text);
  return text;
}

bool IsGainPass(std::size_t pass) { return pass >= 3 && pass <= 6; }

// One channel's records against its model.
class Judge {
 public:
  Judge(const CalData& cal, std::size_t channel)
      : cal_(cal),
        fit_(cal.model.fits[channel]),
        flags_(cal.channel_flags[channel]),
        parameters_(ParametersOf(cal, channel)),
        paper_(PaperValues(flags_, parameters_[kDelay])),
        points_(cal.model, channel, parameters_[kDrive]),
        uncertainty_(cal, channel) {}

  ChannelVerdict Run() {
    LookAtFit();
    LookForMissing();
    LookAtGains();
    LookAtParts();
    LookAtPasses();
    LookAtRecords();
    LookAtUncertainty();
    LookAtFrequencies();
    if (!verdict_.reasons.empty() && verdict_.usability == Usability::kWell) {
      verdict_.usability = Usability::kWithCare;
    }
    return std::move(verdict_);
  }

 private:
  VerdictReason& Tell(std::string text) {
    return verdict_.reasons.emplace_back(VerdictReason{std::move(text), {}, {}});
  }
  void TellOfPass(std::size_t pass, const std::string& text) {
    Tell(PassName(pass) + text).pass = pass;
    Concern(pass);
  }
  void Concern(std::size_t pass);
  void ConcernFilter(int strength) { verdict_.filters.insert({16 + strength, 80 + strength}); }
  void ConcernTrap() { verdict_.filters.insert({80, 81, 82, 83, 84}); }
  void SetNotUsable() { verdict_.usability = Usability::kNotUsable; }

  const FitSlot& SlotOf(std::size_t pass) const {
    const auto* const slot = std::find(kSlotPasses.begin(), kSlotPasses.end(), pass);
    return points_.fit_slots[static_cast<std::size_t>(slot - kSlotPasses.begin())];
  }
  // Of a pass's records, without the entry at 0 Hz.
  std::vector<double> ErrorsOf(std::size_t pass) const {
    FitSlot slot = SlotOf(pass);
    slot.points = slot.points.empty() ? slot.points : slot.points.subspan(1);
    std::vector<double> errors;
    AddErrors(slot, parameters_, kAnyFrequency, &errors);
    return errors;
  }

  void LookAtFit();
  void LookForMissing();
  void LookAtGains();
  void LookAtParts();
  void LookAtPasses();
  void LookAtRecords();
  void LookAtTrap(const std::vector<double>& errors, double limit);
  void LookAtUncertainty();
  void LookAtFrequencies();
  std::optional<double> LowGainOf(std::size_t pass) const;

  const CalData& cal_;
  const BoxModel::FitReport& fit_;
  std::uint32_t flags_;
  FrontEndParameters parameters_;
  FrontEndParameters paper_;
  FitPoints points_;
  ModelUncertainty uncertainty_;
  ChannelVerdict verdict_;
};

// What a pass alone shows: a gain, a filter, the trap, the coupling, or else the impedances.
void Judge::Concern(std::size_t pass) {
  const FrontEndSetting setting = PassSetting(pass, 0);
  const LowPassFilter filter = LowPassFilterOf(setting.low_pass);
  if (IsGainPass(pass)) {
    verdict_.gains.insert(setting.gain);
  } else if (setting.coupling == 1) {
    verdict_.is_ac = true;
  } else if (filter.has_trap) {
    ConcernTrap();
  } else if (filter.strength > 0) {
    ConcernFilter(filter.strength);
  } else {
    verdict_.is_all = true;
  }
}

void Judge::LookAtFit() {
  if (!fit_.is_kept) {
    Tell("no model fits; the parts have their nominal values");
    SetNotUsable();
  } else if (fit_.IsDoubtful()) {
    Tell("the model fits poorly, rms " + FormatReal(fit_.rms, 3));
  }
}

void Judge::LookForMissing() {
  for (std::size_t pass = 0; pass < cal_.PassCount() || pass < 15; ++pass) {
    if (IsModelPass(pass) && SlotOf(pass).points.size() <= 1) {
      TellOfPass(pass, " is missing");
      if (IsGainPass(pass)) {
        SetNotUsable();
      }
    }
  }
}

// The logarithm of a pass's gain at low frequencies, relative to its nominal one.
std::optional<double> Judge::LowGainOf(std::size_t pass) const {
  std::vector<double> gains;
  for (const FitPoint& point : SlotOf(pass).points) {
    if (point.weight > 0 && point.frequency <= kLowFrequencies) {
      gains.push_back(std::abs(point.measured));
    }
  }
  const double gain = Median(&gains);
  return gain > 0 ? std::optional(std::log(gain)) : std::nullopt;
}

// The gains of passes 4 to 7 are products of three errors: one of the four too many. If they
// disagree, that pass is off without which the errors are smallest.
void Judge::LookAtGains() {
  const auto a = LowGainOf(3);     // base, A
  const auto none = LowGainOf(4);  // base
  const auto b = LowGainOf(5);     // base, B
  const auto both = LowGainOf(6);  // base, A, B
  const double base = std::abs(1 + parameters_[kBaseGain]) - 1;
  if (std::abs(base) > kMostGainError) {
    Tell("every gain is " + Percent(base) + " off").part = kBaseGain;
    verdict_.gains.insert({-1, 0, 1, 2});
  }
  for (const std::size_t stage : {kStageA, kStageB}) {
    if (std::abs(parameters_[stage]) > kMostStageError) {
      const bool is_a = stage == kStageA;
      Tell(std::string("stage ") + (is_a ? "x4" : "x16") + " is " + Percent(parameters_[stage]) +
           " off")
          .part = stage;
      verdict_.gains.insert({is_a ? 0 : 1, 2});
    }
  }
  if (!a || !none || !b || !both) {
    return;
  }
  const double excess = *none + *both - *a - *b;
  if (std::abs(excess) <= std::max(kLeastPassError, kPassOverOthers * fit_.noise)) {
    return;
  }
  struct Guess {
    std::size_t pass;
    double base;
    double stage_a;
    double stage_b;
    double Size() const {
      return std::max({std::abs(base) / kMostGainError, std::abs(stage_a) / kMostStageError,
                       std::abs(stage_b) / kMostStageError});
    }
  };
  const auto guesses = std::to_array<Guess>({{3, *none, *both - *b, *b - *none},
                                             {4, *none - excess, *both - *b, *both - *a},
                                             {5, *none, *a - *none, *both - *a},
                                             {6, *none, *a - *none, *b - *none}});
  const auto* const best = std::min_element(
      guesses.begin(), guesses.end(),
      [](const Guess& one, const Guess& other) { return one.Size() < other.Size(); });
  TellOfPass(best->pass,
             " does not go with the other gains: " + Percent(std::abs(excess)) + " off");
}

void Judge::LookAtParts() {
  for (const std::size_t part : VisibleParts(flags_)) {
    if (part == kBaseGain || !fit_.is_kept) {
      continue;
    }
    const bool is_delay = part == kDelay;
    const double off = is_delay ? (parameters_[part] - paper_[part]) / PartSlope(part, 0)
                                : std::log(parameters_[part] / paper_[part]);
    const double reach = is_delay ? kLongestDelay / PartSlope(part, 0) : kMostPartLog;
    const bool is_at_bound = std::abs(off) > reach - 1e-6;
    if (!is_at_bound && std::abs(off) <= kMostPriorWidths * PartTolerance(part)) {
      continue;
    }
    const std::string value =
        is_delay ? FormatReal(parameters_[part], 3) + " us"
                 : FormatReal(parameters_[part] / paper_[part], 2) + " times what it should be";
    Tell(Lower(PartName(part)) + " came out as " + value +
         (is_at_bound ? ", the limit of the search" : ""))
        .part = part;
    if (part >= kLowPass && part < kChokeA) {
      ConcernFilter(static_cast<int>(part - kLowPass));
    } else if (part == kTank || part == kChokeB || part == kChokeBWire) {
      ConcernTrap();
    }
  }
}

void Judge::LookAtPasses() {
  std::vector<double> medians;
  for (std::size_t pass = 0; IsModelPass(pass) || pass < 3; ++pass) {
    auto errors = pass < 3 ? std::vector<double>() : ErrorsOf(pass);
    if (!errors.empty()) {
      medians.push_back(Median(&errors));
    }
  }
  const double limit = std::max(kPassOverOthers * Median(&medians), kLeastPassError);
  for (std::size_t pass = 3; IsModelPass(pass); ++pass) {
    auto errors = ErrorsOf(pass);
    if (const double median = Median(&errors); median > limit) {
      TellOfPass(pass, " does not fit: its records are " + Percent(median) + " off");
    }
  }
}

void Judge::LookAtRecords() {
  std::size_t records = 0;
  std::size_t wild = 0;
  const double width = WidthFor(fit_.noise);
  for (std::size_t pass = 3; IsModelPass(pass); ++pass) {
    const auto errors = ErrorsOf(pass);
    auto sorted = errors;
    const double usual = kRecordOverOthers * Median(&sorted);
    const double limit = std::max(kRecordError, usual);
    const auto pair = std::adjacent_find(
        errors.begin(), errors.end(),
        [limit](double one, double other) { return std::min(one, other) > limit; });
    if (pair != errors.end()) {
      TellOfPass(pass, " has records that are " + Percent(*pair) + " off");
    }
    if (pass == kTrapPass && pair == errors.end() && !errors.empty()) {
      LookAtTrap(errors, std::max(kLeastPassError, usual));
    }
    records += errors.size();
    wild +=
        static_cast<std::size_t>(std::count_if(errors.begin(), errors.end(), [width](double error) {
          return CauchyWeight(error * error, width) < kLeastTrust;
        }));
  }
  if (static_cast<double>(wild) > kMostWild * static_cast<double>(records)) {
    Tell(FormatInt(wild) + " of " + FormatInt(records) + " records are far off");
  }
}

// So few records show the trap that a single one can spoil it, and leave the next a little off.
void Judge::LookAtTrap(const std::vector<double>& errors, double limit) {
  constexpr double kShowsTrap = 8000;  // Hz and above
  auto error = errors.begin();
  for (const FitPoint& point : SlotOf(kTrapPass).points.subspan(1)) {
    if (point.weight > 0 && *error++ > limit && point.frequency > kShowsTrap) {
      TellOfPass(kTrapPass,
                 " has a record that is " + Percent(*(error - 1)) + " off where few show the trap");
      return;
    }
  }
}

void Judge::LookAtUncertainty() {
  constexpr double kDegrees = 180 / std::numbers::pi;
  std::set<int> gains;
  std::set<int> filters;
  double worst = 0;
  for (int gain = -1; gain <= 2; ++gain) {
    for (const int low_pass : {0, 16, 17, 18, 19, 20, 80, 81, 82, 83, 84}) {
      for (const double frequency : {0.1, 1.0, 10.0, 100.0, 1e3, 3e3, 6e3, 9e3, 12e3}) {
        const ResponseBand band = uncertainty_.At({gain, low_pass, 0, {}}, frequency).noise;
        const double expected =
            std::max(band.amplitude, band.phase / kDegrees) / ModelUncertainty::kFactor;
        if (expected > kMostDeviation) {
          gains.insert(gain);
          filters.insert(low_pass);
          worst = std::max(worst, expected);
        }
        if (expected > kMostExpected && (low_pass == 0 || low_pass == 16)) {
          SetNotUsable();
        }
      }
    }
  }
  if (!filters.empty() && fit_.is_kept) {
    Tell("the passes tell the response to " + Percent(worst) + " only: " + FiltersText(filters));
    verdict_.filters.merge(filters);
    if (gains.size() < 4) {
      verdict_.gains.merge(gains);
    }
  }
}

void Judge::LookAtFrequencies() {
  double lowest = kAnyFrequency;
  double highest = 0;
  for (const FitPoint& point : points_.points) {
    if (point.weight > 0 && point.frequency > 0) {
      lowest = std::min(lowest, point.frequency);
      highest = std::max(highest, point.frequency);
    }
  }
  if (highest > 0 && lowest > 0.1) {
    verdict_.notes.push_back("the passes begin at " + FormatReal(lowest, 3) + " Hz");
  }
  if (highest > 0 && highest < 12000) {
    verdict_.notes.push_back("the passes end at " + FormatReal(highest, 5) + " Hz");
  }
}

}  // namespace

std::string FilterText(int low_pass) {
  const LowPassFilter filter = LowPassFilterOf(low_pass);
  const std::string text =
      filter.strength < 0 ? "no filter" : "filter " + FormatInt(filter.strength);
  return filter.has_trap ? text + ", VLF trap" : text;
}

std::string PassSettingText(std::size_t pass) {
  const FrontEndSetting setting = PassSetting(pass, 0);
  std::string text = "x ";
  text.append(FormatReal(std::pow(4.0, setting.gain))).append(", ");
  text.append(FilterText(setting.low_pass)).append(setting.coupling == 1 ? ", AC" : "");
  return text;
}

namespace {

// A series of records over their frequencies, where no model judges it.
void LookAtCurve(const std::vector<CurvePoint>& points, std::vector<VerdictReason>* reasons) {
  constexpr double kMostTurn = 120;  // degrees: no curve goes between such records
  constexpr double kDegrees = 180 / std::numbers::pi;
  const auto hertz = [](double frequency) { return FormatReal(frequency, 4) + " Hz"; };
  for (std::size_t i = 1; i < points.size(); ++i) {
    const CurvePoint& low = points[i - 1];
    const CurvePoint& high = points[i];
    const std::string between =
        " between " + hertz(low.frequency) + " and " + hertz(high.frequency);
    const double turn = kDegrees * std::abs(std::arg(high.response * std::conj(low.response)));
    if (turn > kMostTurn) {
      reasons->push_back(
          {"the phase jumps by " + FormatReal(turn, 3) + " degrees" + between, {}, {}});
    }
    if (high.frequency > 10 * low.frequency) {
      reasons->push_back({"there is no record" + between, {}, {}});
    }
  }
}

}  // namespace

ChannelVerdict JudgeRecords(const CalRecords& cal, int kind, std::size_t channel,
                            const std::string& unit) {
  ChannelVerdict verdict;
  auto points = CurvePoints(RecordsOfKind(cal, kind), channel);
  std::erase_if(points, [](const CurvePoint& point) {
    return !(point.frequency > 0) || !std::isfinite(point.frequency) || !IsFinite(point.response) ||
           point.response == 0.0;
  });
  std::sort(points.begin(), points.end(),
            [](const CurvePoint& a, const CurvePoint& b) { return a.frequency < b.frequency; });
  const auto tell = [&verdict](std::string text) {
    verdict.reasons.push_back({std::move(text), {}, {}});
  };
  if (points.empty()) {
    tell("there are no records of kind " + FormatInt(kind));
  } else if (points.size() == 1) {
    tell("there is a single record, at " + FormatReal(points[0].frequency, 4) + " Hz");
  }
  LookAtCurve(points, &verdict.reasons);
  const std::int16_t told = cal.header.snum;
  if (!unit.empty() && told != 0 && told != static_cast<std::int16_t>(ParseIntPrefix(unit))) {
    tell("the header names another serial number, " + FormatInt(told));
  }
  verdict.usability = points.empty()            ? Usability::kNotUsable
                      : verdict.reasons.empty() ? Usability::kWell
                                                : Usability::kWithCare;
  return verdict;
}

ChannelVerdict JudgeChannel(const CalData& cal, std::size_t channel) {
  return Judge(cal, channel).Run();
}

bool ChannelVerdict::Concerns(int gain, int low_pass, int coupling) const {
  const auto [strength, has_trap] = LowPassFilterOf(low_pass);
  const int code = strength < 0 ? 0 : (has_trap ? 80 : 16) + strength;
  const bool is_anywhere = is_all || (filters.empty() && gains.empty() && !is_ac);
  return usability == Usability::kNotUsable ||
         (usability == Usability::kWithCare && (is_anywhere || filters.contains(code) ||
                                                gains.contains(gain) || (is_ac && coupling == 1)));
}

std::string ChannelVerdict::Summary() const {
  if (usability == Usability::kWell) {
    return "well";
  }
  std::string text = usability == Usability::kNotUsable ? "not usable" : "usable with care";
  std::string where;
  for (const int gain : gains.size() < 4 ? gains : std::set<int>()) {
    where.append(where.empty() ? "" : "; ").append("x ").append(FormatReal(std::pow(4.0, gain)));
  }
  const std::string names = FiltersText(filters);
  where.append(where.empty() || names.empty() ? "" : "; ").append(names);
  where.append(!is_ac ? "" : where.empty() ? "AC coupling" : "; AC coupling");
  if (!is_all && !where.empty()) {
    text.append(" (").append(where).append(")");
  }
  return text;
}

std::string ChannelVerdict::Text() const {
  std::string text = Summary();
  for (const VerdictReason& reason : reasons) {
    text.append(&reason == &reasons.front() ? ": " : "; ").append(reason.text);
  }
  return text;
}

}  // namespace orvane

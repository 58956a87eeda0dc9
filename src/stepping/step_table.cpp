// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/step_table.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "table/param_access.h"
#include "table/param_time.h"
#include "table/tech.h"

namespace orvane {
namespace {

constexpr int kLastRow = kMostSteps - 1;
constexpr double kQuarterStep = 0.25;  // tolerance of the comparisons between steps

int LastPositive(const FrequencyList& requested) {
  int last = static_cast<int>(requested.size()) - 1;
  while (last >= 0 && requested[static_cast<std::size_t>(last)] <= 0) {
    --last;
  }
  return last;
}

// Frequencies of a schedule being made. Numbers of rows are signed: they are subtracted.
class Ladder {
 public:
  Ladder(ScheduleTable* rows, const StepParameters& parameters, int last)
      : rows_(rows), parameters_(parameters), last_(last), i_(last), f_(At(last)) {}

  // Fills the list up to the lowest frequency; returns the last row.
  int Extend() {
    const int m = parameters_.per_octave > 0 ? AddFirstOctave() : LastOctave();
    while ((1 + kQuarterStep / m) * parameters_.lowest < f_ && i_ < kLastRow) {
      ++i_;
      Store(0.5 * At(i_ - m));
    }
    return i_;
  }

 private:
  double At(int row) const { return (*rows_)[static_cast<std::size_t>(row)].frequency; }
  void Store(double frequency) {
    f_ = frequency;
    (*rows_)[static_cast<std::size_t>(i_)].frequency = frequency;
  }

  int AddFirstOctave() {
    const int m = parameters_.per_octave;
    while (i_ < last_ + m - 1 && (1 + kQuarterStep / m) * parameters_.lowest < f_ &&
           i_ < kLastRow) {
      ++i_;
      Store(At(last_) / std::pow(2, static_cast<double>(i_ - last_) / m));
    }
    return m;
  }

  // How many frequencies the last octave of the list has.
  int LastOctave() const {
    int base = 0;
    int m = 1;
    for (int i = 1; i <= last_; ++i) {
      if (At(i) >= At(i - 1)) {
        base = i;
      }
      // kept: the tolerance is that of the octave found for the row before.
      while (base < i && (2 - kQuarterStep / m) * At(i) < At(base)) {
        ++base;
      }
      m = i - base + 1;
    }
    return m;
  }

  ScheduleTable* rows_;
  const StepParameters& parameters_;
  int last_;
  int i_;
  double f_;
};

int StepSeconds(const StepParameters& parameters, double f) {
  if (f != 0 && parameters.cycles >= parameters.seconds * f) {
    const double seconds = std::ceil(parameters.cycles / f);
    return seconds < kSecondsPerDay ? static_cast<int>(seconds) : kSecondsPerDay;
  }
  return parameters.seconds;
}

// First-order fall above the corner.
double StepCurrent(const StepParameters& parameters, double f) {
  if (f <= 0) {
    return 0;
  }
  const double corner = parameters.corner;
  if (!(corner > 0)) {
    return parameters.current;
  }
  const double squares = f * f / (corner * corner);
  const double ratio = f / corner;  // whose square exists where those of both do not
  return parameters.current / std::sqrt((std::isfinite(squares) ? squares : ratio * ratio) + 1);
}

// Gives the rows up to `last` their times and currents; returns how many the time reaches.
int AddTimes(const StepParameters& parameters, int last, ScheduleTable* rows) {
  const bool is_time_domain = parameters.tech == kTdip || parameters.tech == kTdem;
  int seconds = 0;
  int count = 0;
  while (count <= last && (parameters.total == 0 || seconds < parameters.total) &&
         seconds < kSecondsPerDay) {
    ScheduleRow& row = (*rows)[static_cast<std::size_t>(count)];
    row.waveform = is_time_domain ? kTimeDomainWaveform : kFrequencyDomainWaveform;
    seconds += StepSeconds(parameters, row.frequency);
    row.end_time = seconds;
    row.current = StepCurrent(parameters, row.frequency);
    ++count;
  }
  (*rows)[static_cast<std::size_t>(count) - 1].end_time =
      parameters.total != 0 ? parameters.total : std::min(seconds, kSecondsPerDay);
  return count;
}

bool IsAmount(double number) { return std::isfinite(number) && number >= 0; }

}  // namespace

int HiddenFrequencies(const ParamTable& table) {
  const auto stored = [&table](std::string_view key) { return RealParam(table, key) != 0; };
  const auto* zero = std::find_if_not(kFrequencyKeys.begin(), kFrequencyKeys.end(), stored);
  return static_cast<int>(std::count_if(zero, kFrequencyKeys.end(), stored));
}

FrequencyList StoredFrequencies(const ParamTable& table) {
  FrequencyList list{};
  for (std::size_t i = 0; i < list.size(); ++i) {
    const double frequency = RealParam(table, kFrequencyKeys[i]);
    if (frequency == 0) {
      break;
    }
    list[i] = frequency;
  }
  return list;
}

StepParameters StoredStepParameters(const ParamTable& table) {
  return {.tech = TechOf(table),
          .per_octave = IntParam(table, "FPOC"),
          .lowest = RealParam(table, "FEND"),
          .seconds = IntParam(table, "TPFR"),
          .cycles = IntParam(table, "CPFR"),
          .total = IntParam(table, "TTOT"),
          .current = RealParam(table, "CRMX"),
          .corner = RealParam(table, "FCMX")};
}

std::string StepFault(const StepParameters& parameters, const FrequencyList& requested) {
  for (std::size_t i = 0; i < requested.size(); ++i) {
    if (!IsAmount(requested[i])) {
      return "FREQ" + FormatInt(i + 1) + " is not a frequency";
    }
  }
  if (LastPositive(requested) < 0) {
    return "no frequency is requested";
  }
  if (parameters.per_octave < 0 || parameters.per_octave > kMostSteps) {
    return "the frequencies per octave (FPOC) are not from 0 to 200";
  }
  if (!IsAmount(parameters.lowest)) {
    return "the lowest frequency (FEND) is below 0";
  }
  if (parameters.seconds <= 0 || parameters.seconds > kSecondsPerDay) {
    return "the time per frequency (TPFR) is not from 1 to 86400 s";
  }
  if (parameters.cycles < 0) {
    return "the cycles per frequency (CPFR) are below 0";
  }
  if (parameters.total < 0 || parameters.total > kSecondsPerDay) {
    return "the total time (TTOT) is not from 0 to 86400 s";
  }
  if (!IsAmount(parameters.current)) {
    return "the maximum current (CRMX) is below 0";
  }
  if (!IsAmount(parameters.corner)) {
    return "the corner frequency (FCMX) is below 0";
  }
  return {};
}

int CalculateStepTable(const StepParameters& parameters, const FrequencyList& requested,
                       ScheduleTable* table) {
  if (!StepFault(parameters, requested).empty()) {
    return kStepsInvalid;
  }
  ScheduleTable rows{};
  for (std::size_t i = 0; i < requested.size(); ++i) {
    rows[i].frequency = requested[i];
  }
  const int last = Ladder(&rows, parameters, LastPositive(requested)).Extend();
  const int count = AddTimes(parameters, last, &rows);
  std::fill(rows.begin() + count, rows.end(), ScheduleRow{});
  *table = rows;
  return kStepsCalculated;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
// The stepping schedule: calculated from the parameters or in a file beside the table. MT/AMT
// transmits nothing and has none.
#include <algorithm>
#include <cmath>

#include "base/latin1.h"
#include "base/number_text.h"
#include "check/rule.h"
#include "check/steps.h"
#include "files/file_io.h"
#include "files/path_text.h"
#include "stepping/step_table.h"
#include "table/param_time.h"

namespace orvane {
namespace {

constexpr double kSampleRate = 24000;  // Hz, of every box
constexpr double kUsableShare = 0.4;
constexpr double kNotchShare = 0.02;  // of the line frequency, to either side
constexpr std::size_t kMostNamed = 5;

std::string FrequencyText(double frequency) { return FormatReal(frequency, 6) + " Hz"; }

// "49.23 Hz and 150 Hz": the first frequencies that a rule picks, each once; empty without any.
template <typename IsPicked>
std::string PickedFrequencies(const CheckedSteps& steps, const IsPicked& is_picked) {
  std::vector<std::string> texts;
  for (const ScheduleRow& row : steps.rows) {
    std::string text = is_picked(row.frequency) ? FrequencyText(row.frequency) : std::string();
    if (!text.empty() && std::find(texts.begin(), texts.end(), text) == texts.end()) {
      texts.push_back(std::move(text));
    }
  }
  if (texts.size() > kMostNamed) {
    texts.resize(kMostNamed);
    texts.emplace_back("others");
  }
  return Listed(texts);
}

void StepFixed(const Situation& situation, const Teller& tell) {
  if (HasFixedStep(situation) && !(situation.Real("CREQ") > 0)) {
    tell({"CREQ", "AUTO"},
         "No schedule, and the fixed frequency is " + FormatReal(situation.Real("CREQ")) + " Hz");
  }
}

void StepRefused(const Situation& situation, const Teller& tell) {
  if (HasCalculatedSteps(situation)) {
    const std::string fault =
        StepFault(StoredStepParameters(situation.table), StoredFrequencies(situation.table));
    if (!fault.empty()) {
      tell({"FRQ0", "AUTO"}, "There is no schedule: " + fault);
    }
  }
}

void StepFile(const Situation& situation, const Teller& tell) {
  if (!HasStepFile(situation) || situation.places.table.empty()) {
    return;
  }
  const ScheduleFile file = FindSchedule(situation);
  if (!file.is_there) {
    tell({"AUTO"}, "The schedule file " + PrintableUtf8(PathText(file.path.filename())) +
                       " is not beside the table");
  } else if (!file.fault.empty()) {
    tell.As(Severity::kError, {"AUTO"},
            "The schedule file " + PrintableUtf8(FileMessage(file.path.filename(), file.fault)));
  }
}

void StepLong(const Situation& situation, const Teller& tell) {
  const ParamTime start = situation.Time("STIM");
  const ParamTime end = situation.Time("ETIM");
  if (situation.steps.rows.empty() || HasNoDate(start) || HasNoDate(end)) {
    return;
  }
  const TimeSpan span = {ParamTimeToSeconds(start), ParamTimeToSeconds(end)};
  const std::int32_t seconds = situation.steps.rows.back().end_time;
  if (span.Seconds() > 0 && seconds > span.Seconds()) {
    tell({situation.steps.key == ParamKey("AUTO") ? "AUTO" : "TTOT", "ETIM", "STIM"},
         "The schedule takes " + FormatInt(seconds) + " s, the recording only " +
             FormatInt(span.Seconds()) + " s");
  }
}

void StepFrequency(const Situation& situation, const Teller& tell) {
  const std::string frequencies = PickedFrequencies(
      situation.steps, [](double frequency) { return frequency > kUsableShare * kSampleRate; });
  if (!frequencies.empty()) {
    tell({situation.steps.key},
         "Above the 9600 Hz that boxes can record at 24000 samples a second: " + frequencies);
  }
}

bool IsInNotch(double frequency, double line) {
  const double odd = std::max(2 * std::round((frequency / line - 1) / 2) + 1, 1.0);
  return std::abs(frequency - odd * line) <= kNotchShare * line;
}

void StepComb(const Situation& situation, const Teller& tell) {
  const double line = situation.Int("LFRQ");
  if (situation.Int("COMBON") != 1 || line <= 0) {
    return;
  }
  const std::string frequencies = PickedFrequencies(
      situation.steps, [line](double frequency) { return IsInNotch(frequency, line); });
  if (!frequencies.empty()) {
    tell({situation.steps.key, "COMBON"},
         "The comb filter takes these steps away with the mains: " + frequencies);
  }
}

void StepCurrent(const Situation& situation, const Teller& tell) {
  const double most = situation.Real("CRMX");
  if (HasCalculatedSteps(situation) && most == 0) {
    tell({"CRMX", "AUTO"}, "The schedule has no current: the maximum current is 0 A");
    return;
  }
  double largest = 0;
  for (const ScheduleRow& row : situation.steps.rows) {
    largest = std::max(largest, double{row.current});
  }
  if (most > 0 && largest > most) {
    tell({"CRMX", situation.steps.key}, "The schedule goes up to " + FormatReal(largest, 6) +
                                            " A, above the maximum current of " +
                                            FormatReal(most, 6) + " A");
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"step-fixed", Severity::kError, "SIP, CSAMT, FDEM: AUTO is 0 and CREQ is not above 0.",
     StepFixed},
    {"step-refused", Severity::kError,
     "AUTO is 1 and there is no schedule for the parameters; it says why.", StepRefused},
    {"step-file", Severity::kWarning,
     "AUTO is from 2 to 10 and there is no such schedule file, in any case of letters, beside the "
     "table; as an error, the file is refused, with row and reason. The steps of a file are never "
     "compared with the requested frequencies: files differ from them.",
     StepFile, Needs::kFiles, "warning or error"},
    {"step-long", Severity::kWarning,
     "The steps end later than the recording, where start and end have dates.", StepLong,
     Needs::kSteps},
    {"step-frequency", Severity::kWarning,
     "A step, or the fixed frequency, is above 9600 Hz, 0.4 of 24000 samples a second.",
     StepFrequency, Needs::kSteps},
    {"step-comb", Severity::kHint,
     "The comb filter is on, and a step or the fixed frequency is within 0.02 of the line "
     "frequency of an odd multiple "
     "of it: in the filter's notch.",
     StepComb, Needs::kSteps},
    {"step-current", Severity::kWarning,
     "A step has more than the maximum current CRMX, or AUTO is 1 and CRMX is 0. What the "
     "transmitter and its wire can take is not stored: no rule can know it.",
     StepCurrent, Needs::kSteps},
});

}  // namespace

bool HasCalculatedSteps(const Situation& situation) {
  return !situation.IsMt() && situation.Int("AUTO") == 1;
}

bool HasFixedStep(const Situation& situation) {
  const bool has_steps =
      situation.tech == kSip || situation.tech == kCsamt || situation.tech == kFdem;
  return has_steps && situation.Int("AUTO") == 0;
}

bool HasStepFile(const Situation& situation) { return ScheduleFileNumber(situation.table) != 0; }

std::span<const Rule> StepRules() { return kRules; }

}  // namespace orvane

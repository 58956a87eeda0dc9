// SPDX-License-Identifier: GPL-3.0-or-later
// When the recording begins and ends.
#include "check/rule.h"
#include "editors/schedule_cautions.h"
#include "table/param_time.h"

namespace orvane {
namespace {

std::uint32_t Now(const Situation& situation) { return ParamTimeToSeconds(situation.now.Now()); }

std::string Clocked(std::uint32_t seconds) {
  return FormatParamTime(SecondsToParamTime(seconds)) + " UTC";
}

bool AreTimesUnset(const Situation& situation) {
  return IsUnset(situation.Time("STIM")) && IsUnset(situation.Time("ETIM"));
}

void TimesUnset(const Situation& situation, const Teller& tell) {
  if (situation.IsMt() && AreTimesUnset(situation)) {
    tell({"STIM", "ETIM"}, "Start and end of the recording are not set");
  }
}

void EndBeforeStart(const Situation& situation, const Teller& tell) {
  const TimeSpan& recording = situation.recording;
  if (situation.IsMt() && !AreTimesUnset(situation) && recording.Seconds() <= 0) {
    tell({"ETIM", "STIM"}, "Nothing will be recorded: the end, " + Clocked(recording.end) +
                               ", is not after the start, " + Clocked(recording.start));
  }
}

void RecordingOver(const Situation& situation, const Teller& tell) {
  const ParamTime end = situation.Time("ETIM");
  if (situation.IsMt() && !HasNoDate(end) && ParamTimeToSeconds(end) < Now(situation)) {
    tell({"ETIM"}, "The recording is over: it ended at " + Clocked(ParamTimeToSeconds(end)));
  }
}

void StartPast(const Situation& situation, const Teller& tell) {
  const TimeSpan& recording = situation.recording;
  if (situation.IsMt() && !HasNoDate(situation.Time("STIM")) && recording.start < Now(situation) &&
      Now(situation) <= recording.end) {
    tell({"STIM"}, "The recording has begun already, at " + Clocked(recording.start));
  }
}

void TimesOtherMethod(const Situation& situation, const Teller& tell) {
  const ParamTime start = situation.Time("STIM");
  const ParamTime end = situation.Time("ETIM");
  if (!situation.IsMt() && !HasNoDate(start) && !HasNoDate(end) &&
      ParamTimeToSeconds(end) <= ParamTimeToSeconds(start)) {
    tell({"ETIM", "STIM"}, "The stored end is not after the stored start");
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"times-unset", Severity::kWarning, "MT/AMT: neither start nor end of the recording is set.",
     TimesUnset},
    {"end-before-start", Severity::kError,
     "MT/AMT: the end is not after the start, once times without a date have one, as a box gives "
     "it to them: nothing would be recorded.",
     EndBeforeStart},
    {"recording-over", Severity::kError, "MT/AMT: the end has a date and is past.", RecordingOver},
    {"start-past", Severity::kWarning,
     "MT/AMT: the start has a date and is past, the end is still to come. A start without a date "
     "is never past.",
     StartPast},
    {"times-other-method", Severity::kHint,
     "Other methods: start and end have dates and the end is not after the start. The dialogs "
     "disable both: mended in Raw Parameters.",
     TimesOtherMethod},
});

}  // namespace

std::span<const Rule> TimeRules() { return kRules; }

}  // namespace orvane

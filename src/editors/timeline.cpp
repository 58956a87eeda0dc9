// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/timeline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>

#include "base/number_text.h"
#include "editors/schedule_cautions.h"
#include "stepping/step_presets.h"
#include "stepping/step_table.h"
#include "table/param_access.h"
#include "table/param_time.h"
#include "table/recording_size.h"
#include "table/tech.h"

namespace orvane {
namespace {

constexpr double kHour = 3600;
constexpr double kDay = kSecondsPerDay;
constexpr int kMostMidnights = 60;
constexpr int kDamtSampling = 2;  // of "MTSR": one rate for all

// The two largest units: "3 d 11 h".
std::string DurationText(double seconds) {
  struct Unit {
    double seconds;
    const char* name;
  };
  constexpr std::array<Unit, 4> kUnits = {{{kDay, " d"}, {kHour, " h"}, {60, " min"}, {1, " s"}}};
  std::string text;
  int count = 0;
  double rest = std::floor(seconds);
  for (const Unit& unit : kUnits) {
    const double number = std::floor(rest / unit.seconds);
    rest -= number * unit.seconds;
    if (number > 0 && count < 2) {
      text.append(text.empty() ? "" : " ").append(FormatReal(number)).append(unit.name);
      ++count;
    } else if (count == 1) {
      break;  // "1 d 5 min" says too much
    }
  }
  return text.empty() ? "0 s" : text;
}

std::string ZoneText(int hours) {
  std::string text = "UTC";
  if (hours != 0) {
    text.append(hours > 0 ? "+" : "").append(FormatInt(hours));
  }
  return text;
}

bool HasRecord(const ParamTable& table) {
  return !IsUnset(TimeParam(table, "STIM")) && !IsUnset(TimeParam(table, "ETIM"));
}

// A lane with one part.
TimeLane WholeLane(std::string name, double start, double end) {
  return {std::move(name), start, end, 0, {{0, end - start, {}, false}}, {}};
}

void AddWords(Timeline* line, const std::string& words) {
  line->plan += (line->plan.empty() ? "" : "; ") + words;
  line->text = line->plan;
}

std::string FromTo(const Timeline& line, double start, double end) {
  return "from " + TimeTextOf(line, start) + " to " + TimeTextOf(line, end);
}

void AddNow(const Clock& now, double shift, Timeline* line) {
  const double time = ParamTimeToSeconds(now.Now()) + shift;
  line->now = time;
  const std::string when = time < line->start ? "starts in " + DurationText(line->start - time)
                           : time > line->end ? "ended " + DurationText(time - line->end) + " ago"
                                              : "ends in " + DurationText(line->end - time);
  line->text += "; now " + TimeTextOf(*line, time) + ", it " + when;
}

void AddMidnights(Timeline* line) {
  const double first = std::floor(line->start / kDay) + 1;
  const double count = std::ceil(line->end / kDay) - first;
  if (count > kMostMidnights) {
    return;
  }
  for (int i = 0; i < count; ++i) {
    line->midnights.push_back((first + i) * kDay);
  }
}

void AddRecord(const TimeSpan& recording, double shift, int hours, Timeline* line) {
  line->has_dates = true;
  line->start = recording.start + shift;
  line->end = recording.end + shift;
  line->lanes.push_back(WholeLane("Record", line->start, line->end));
  AddWords(line, "Recording " + FromTo(*line, line->start, line->end) + " (" + ZoneText(hours) +
                     "), " + DurationText(line->end - line->start));
  AddMidnights(line);
}

void AddHighRates(const ParamTable& table, const TimeSpan& recording, const Clock& now,
                  double shift, Timeline* line) {
  if (IntParam(table, "MTSR") == kDamtSampling) {
    return;
  }
  const TimeSpan window = HighRateWindow(table, recording, now).kept;
  if (window.end <= window.start) {
    AddWords(line, "no high rates: their times are outside the recording");
    return;
  }
  TimeLane lane = WholeLane("High rates", window.start + shift, window.end + shift);
  const double length = lane.end - lane.start;
  std::string slots;
  if (const std::int32_t slot = IntParam(table, "HSMP"); slot > 0) {
    lane.period = slot;
    lane.parts = {{0, lane.period, "slot of " + FormatInt(slot) + " s", false}};
    const auto count = static_cast<std::int64_t>(std::ceil(length / slot));
    slots = ", " + FormatInt(count) + (count == 1 ? " slot" : " slots") + " of " + FormatInt(slot) +
            " s";
  }
  AddWords(line, "high rates " + FromTo(*line, lane.start, lane.end) + slots);
  line->lanes.push_back(std::move(lane));
}

// The rows of a schedule as the parts of a cycle.
std::vector<LanePart> PartsOf(std::span<const ScheduleRow> rows) {
  std::vector<LanePart> parts;
  double start = 0;
  for (const ScheduleRow& row : rows) {
    const double end = row.end_time;
    if (end > start) {
      parts.push_back({start, end,
                       FormatReal(row.frequency, 6) + " Hz, " + FormatReal(row.current, 4) + " A",
                       false});
      start = end;
    }
  }
  return parts;
}

// Of the stepping parameters; none where nothing steps.
std::vector<LanePart> CalculatedParts(const ParamTable& table) {
  ScheduleTable schedule{};
  constexpr int kByParameters = 1;
  const bool is_calculated =
      HasCycles(TechOf(table)) && IntParam(table, "AUTO") == kByParameters &&
      CalculateStepTable(StoredStepParameters(table), StoredFrequencies(table), &schedule) ==
          kStepsCalculated;
  return is_calculated ? PartsOf(WrittenRows(schedule)) : std::vector<LanePart>();
}

// "4 steps in a cycle of 15 min", as a lane of its own.
void AddCycle(std::vector<LanePart> steps, const std::string& from, Timeline* line) {
  const double cycle = steps.back().end;
  if (!line->has_dates) {
    line->end = cycle;
  }
  AddWords(line, FormatInt(steps.size()) + (steps.size() == 1 ? " step" : " steps") + from +
                     " in a cycle of " + DurationText(cycle));
  line->lanes.push_back({"Steps", line->start, line->end, cycle, std::move(steps)});
}

void AddFileSteps(int number, const ScheduleFile* file, Timeline* line) {
  const std::string name = FormatInt(number) + ".TFS";
  if (file == nullptr) {
    AddWords(line, "steps as in the file " + name);
    return;
  }
  std::vector<LanePart> steps = PartsOf(file->rows);
  if (!steps.empty()) {
    AddCycle(std::move(steps), " of " + name, line);
    return;
  }
  const std::string why = !file->is_there       ? " is not beside the table"
                          : file->fault.empty() ? " has no steps"
                                                : ": " + file->fault;
  AddWords(line, "the schedule file " + name + why);
  if (line->has_dates) {
    line->lanes.push_back({"Steps", line->start, line->end, 0, {}, name + why});
  }
}

void AddSteps(const ParamTable& table, const ScheduleFile* file, Timeline* line) {
  if (const int number = ScheduleFileNumber(table); number != 0) {
    AddFileSteps(number, file, line);
  } else if (std::vector<LanePart> steps = CalculatedParts(table); !steps.empty()) {
    AddCycle(std::move(steps), "", line);
  }
}

// Adds to the last span where neither can be told apart from the other.
void Join(const LanePart& span, double least, std::vector<LanePart>* spans) {
  const bool is_narrow = span.end - span.start < least;
  if (!spans->empty()) {
    LanePart& last = spans->back();
    const bool was_narrow = last.is_band || last.end - last.start < least;
    if (is_narrow && was_narrow && span.start - last.end < least) {
      last = {last.start, span.end, {}, true};
      return;
    }
  }
  spans->push_back(span);
}

}  // namespace

Timeline TimelineOf(const ParamTable& table, const Clock& now, int hours,
                    const ScheduleFile* steps) {
  Timeline line;
  const Tech tech = TechOf(table);
  const double shift = hours * kHour;
  if (HasRecord(table)) {
    const TimeSpan recording = RecordingSpan(table, now);
    if (recording.end <= recording.start) {
      AddWords(&line, "The end is not after the start");
      return line;
    }
    AddRecord(recording, shift, hours, &line);
    if (tech == kMtAmt) {
      AddHighRates(table, recording, now, shift, &line);
    }
  } else if (tech == kMtAmt) {
    AddWords(&line, "Start or end of the recording is not set");
    return line;
  }
  if (tech != kMtAmt) {
    AddSteps(table, steps, &line);
  }
  if (line.has_dates) {
    AddNow(now, shift, &line);
  } else if (line.text.empty()) {
    AddWords(&line, "No times and no schedule are set");
  }
  return line;
}

std::vector<LanePart> SpansOf(const TimeLane& lane, double least) {
  std::vector<LanePart> spans;
  const double length = lane.end - lane.start;
  constexpr double kMostSpans = 1e4;
  least = std::max(least, length / kMostSpans);
  const bool is_repeated = lane.period > 0 && lane.period < length;
  if (is_repeated && lane.period < least) {
    spans.push_back({lane.start, lane.end, {}, true});
    return spans;
  }
  const double count = is_repeated ? std::ceil(length / lane.period) : 1;
  for (double cycle = 0; cycle < count; ++cycle) {
    const double start = lane.start + cycle * lane.period;
    for (const LanePart& part : lane.parts) {
      if (start + part.start < lane.end) {
        Join({start + part.start, std::min(start + part.end, lane.end), part.what, part.is_band},
             least, &spans);
      }
    }
  }
  return spans;
}

std::string TimeTextOf(const Timeline& line, double seconds) {
  if (!line.has_dates) {
    return FormatReal(std::floor(seconds)) + " s";
  }
  constexpr double kMost = 0xFFFFFFFFU;
  return FormatParamTime(
      SecondsToParamTime(static_cast<std::uint32_t>(std::clamp(seconds, 0.0, kMost))));
}

}  // namespace orvane

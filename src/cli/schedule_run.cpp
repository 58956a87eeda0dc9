// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/schedule_run.h"

#include <system_error>

#include "base/number_text.h"
#include "cli/interrupt_watch.h"
#include "files/file_io.h"
#include "stepping/step_presets.h"
#include "stepping/step_table.h"
#include "stepping/tfs_file.h"
#include "table/param_access.h"

namespace orvane {
namespace {

constexpr std::string_view kIsInput = "is the input file and was not written";

ExitCode WriteRows(const std::filesystem::path& to, std::span<const ScheduleRow> rows) {
  const InterruptWatch watch;
  if (const Result<> written = WriteScheduleFile(to, rows); !written) {
    PrintMessage(FileMessage(to, written.Message()));
    return kSomeFailed;
  }
  if (const std::string reason = WhyUnreadable(rows); !reason.empty()) {
    PrintMessage(FileMessage(to, "written, but cannot be read back: " + reason));
  }
  return kAllDone;
}

void TellCycle(const PresetOptions& options, std::int32_t stored, const ParamTable& table) {
  const std::int32_t asked = options.cycle != 0 ? options.cycle : stored;
  const std::int32_t used = IntParam(table, "TTOT");
  if (!HasCycles(options.tech)) {
    if (options.cycle != 0) {
      PrintMessage("--cycle: this method has no cycles");
    }
  } else if (used != asked) {
    PrintMessage("no preset for a cycle of " + FormatInt(asked) + " s; it is " + FormatInt(used) +
                 " s");
  }
}

}  // namespace

ExitCode RunSchedulePreset(const PresetOptions& options) {
  ParamTable table;
  TblReport report;
  if (IsInput(options.to, options.file, kIsInput) ||
      !LoadOntoDefaults(options.file, &table, &report)) {
    return kSomeFailed;
  }
  const Tech tech = options.tech;
  const std::int32_t stored = IntParam(table, "TTOT");
  PutInt(&table, "TECH", tech);
  if (const double current = RealParam(table, "CRMX"); HasCycles(tech) && !(current >= 0)) {
    PrintMessage(FileMessage(options.file, "the stored maximum current (CRMX) is not a current: " +
                                               FormatReal(current)));
    return kSomeFailed;
  }
  if (HasCycles(tech)) {
    ApplyTransmitter(&table, tech, WithDefaults({}, tech),
                     CycleCurrent(tech, RealParam(table, "CRMX")));
    ApplyDefaultStepping(&table, tech, options.cycle);
  } else {
    ApplyDefaultWindows(&table, tech);
  }
  const TblSaveOptions save{2, false, IntParam(table, "TBVO", 2) == 1 ? 1 : 2};
  const InterruptWatch watch;
  if (SaveParamFile(&table, options.to, save, &report) != kOk) {
    PrintMessage(report.message);
    return kSomeFailed;
  }
  TellCycle(options, stored, table);
  return kAllDone;
}

ExitCode RunScheduleMake(const std::filesystem::path& file, const std::filesystem::path& to) {
  ParamTable table;
  TblReport report;
  if (IsInput(to, file, kIsInput) || !LoadOntoDefaults(file, &table, &report)) {
    return kSomeFailed;
  }
  const StepParameters parameters = StoredStepParameters(table);
  const FrequencyList requested = StoredFrequencies(table);
  ScheduleTable schedule{};
  if (CalculateStepTable(parameters, requested, &schedule) != kStepsCalculated) {
    PrintMessage(FileMessage(file, "no schedule: " + StepFault(parameters, requested)));
    return kSomeFailed;
  }
  return WriteRows(to, WrittenRows(schedule));
}

ExitCode RunScheduleShow(const std::filesystem::path& file) {
  ScheduleTable table{};
  ScheduleReport report;
  if (!ReadScheduleFile(file, &table, &report)) {
    PrintMessage(report.message);
    return kSomeFailed;
  }
  std::string text;
  for (const ScheduleRow& row : std::span(table).first(static_cast<std::size_t>(report.rows))) {
    text += FormatInt(row.end_time) + '\t' + FormatInt(row.waveform) + '\t' +
            FormatReal(row.frequency, 17) + '\t' + FormatReal(row.current, 17) + '\n';
  }
  return PrintResult(text) ? kAllDone : kSomeFailed;
}

ExitCode RunScheduleFdem(const FdemRequest& request, const std::filesystem::path& to) {
  std::vector<ScheduleRow> rows;
  if (!BuildFdemSchedule(request, &rows)) {
    PrintMessage("the schedule lasts more seconds than 32 bits can hold; nothing was written");
    return kSomeFailed;
  }
  return WriteRows(to, rows);
}

}  // namespace orvane

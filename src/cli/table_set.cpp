// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/latin1.h"
#include "base/number_text.h"
#include "cli/assignment.h"
#include "cli/commands.h"
#include "cli/interrupt_watch.h"
#include "files/file_io.h"
#include "files/path_text.h"
#include "table/param_access.h"
#include "table/tbl_record.h"
#include "table/value_lines.h"

namespace orvane {
namespace {

std::string OfAll(std::size_t count, std::size_t all) {
  return FormatInt(count) + " of " + FormatInt(all);
}

void TellWhatChanges(const SetOptions& options, const TblReport& report, const ParamTable& table) {
  std::size_t all = 0;
  std::size_t left_out = 0;
  std::string cut;
  ParamKey key;
  TblRecordV1 record;
  for (; table.GetParamKey(static_cast<int>(all), &key) == kOk; ++all) {
    const ParamEntry* entry = table.FindParam(key);
    if (!FitsTblV1Key(*entry)) {
      ++left_out;
    } else if (MakeTblRecordV1(*entry, &record) != kOk) {
      cut += ' ';
      cut += key.Text();
    }
  }
  if (report.left_out.count > 0) {
    PrintMessage(FileMessage(options.to, "is written without " + report.left_out.CountText() +
                                             " of " + PathText(options.file) + ": " +
                                             report.left_out.Names()));
  }
  const std::string file = PathText(options.file);
  if (options.tbl_version == 1) {
    PrintMessage(OfAll(left_out, all) + " parameters do not fit a version-1 file and are left out");
    if (!cut.empty()) {
      PrintMessage("values cut to fit a version-1 file:" + cut);
    }
  } else if (report.version == 1) {
    PrintMessage(file + ": was version 1, is written as version 2");
  }
}

// Whether a line can be applied to what is to be written.
Result<> MayHold(const ValueLine& line, const SetOptions& options, const ParamTable& table) {
  if (line.IsBad()) {
    return Failure(line.reason);
  }
  ParamEntry changed = *table.FindParam(line.key);
  changed.value = line.value;
  return MayHold(changed, "the value", options.tbl_version);
}

// Names each line that cannot be applied.
bool AreWritable(const SetOptions& options, const ValueLines& read, const ParamTable& table) {
  std::size_t unnamed = read.bad;
  bool is_refused = read.bad > 0;
  for (const ValueLine& line : read.lines) {
    unnamed -= line.IsBad() ? 1 : 0;
    if (const Result<> may = MayHold(line, options, table); !may) {
      PrintMessage(
          FileMessage(options.from, "line " + FormatInt(line.number) + ": " + may.Message()));
      is_refused = true;
    }
  }
  if (unnamed > 0) {
    PrintMessage(FileMessage(options.from, FormatInt(unnamed) + " more lines are bad"));
  }
  return !is_refused;
}

bool ApplyFile(const SetOptions& options, const std::string& text, ParamTable* table) {
  const auto read = ReadValueLines(text, *table);
  if (!read) {
    PrintMessage(FileMessage(options.from, read.Message()));
  }
  if (!read || !AreWritable(options, *read, *table)) {
    return false;
  }
  ApplyValueLines(read->lines, table);
  return true;
}

bool AssignAll(const SetOptions& options, const std::string& text, ParamTable* table) {
  bool is_refused = !ApplyFile(options, text, table);
  for (const std::string& assignment : options.assignments) {
    if (const Result<> assigned = Assign(assignment, options.tbl_version, table); !assigned) {
      PrintMessage(assigned.Message());
      is_refused = true;
    }
  }
  if (is_refused) {
    PrintMessage("nothing was written");
  }
  return !is_refused;
}

// False where another program has changed the file between reading and writing: to be done again.
bool SetOnce(const SetOptions& options, const std::string& text, ExitCode* result) {
  *result = kSomeFailed;
  OutFile file;
  const auto sameness = CompareFiles(options.file, options.to);
  if (!sameness) {
    PrintMessage(FileMessage(options.to, sameness.Message()));
    return true;
  }
  const bool is_update =
      sameness == Sameness::kSame && Exists(options.file) != Existence::kNotThere;
  if (is_update) {
    // Where that fails so does writing, after what reading has to report.
    static_cast<void>(file.OpenToUpdate(options.to));
  }
  ParamTable table;
  TblReport report;
  if (!LoadTable(options.file, &table, &report) || !AssignAll(options, text, &table)) {
    return true;
  }
  const bool stays_1 = IntParam(table, "TBVO") == 1;
  const TblSaveOptions save{options.tbl_version, false, stays_1 ? 1 : 2};
  if ((is_update ? SaveParamFile(&table, options.to, &file, save, &report)
                 : SaveParamFile(&table, options.to, save, &report)) != kOk) {
    if (!file.WasOvertaken()) {
      PrintMessage(report.message);
    }
    return !file.WasOvertaken();
  }
  TellWhatChanges(options, report, table);
  *result = kAllDone;
  return true;
}

}  // namespace

ExitCode RunTableSet(const SetOptions& options) {
  for (const std::string& assignment : options.assignments) {
    if (!IsAssignment(assignment)) {
      PrintMessage(PrintableUtf8(assignment) + ": is not of the form KEY=VALUE");
      return kWrongUsage;
    }
  }
  std::string text;
  if (!options.from.empty()) {
    auto loaded = LoadValuesText(options.from);
    if (!loaded) {
      PrintMessage(loaded.Message());
      return kSomeFailed;
    }
    text = std::move(*loaded);
  }
  const InterruptWatch watch;
  ExitCode result = kAllDone;
  while (!SetOnce(options, text, &result)) {
  }
  return result;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <set>

#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/interrupt_watch.h"
#include "editors/startup_files.h"
#include "files/path_text.h"

namespace orvane {
namespace {

// Where a box's file goes: a file named by the serial number, or a folder with the fixed name.
std::filesystem::path PathFor(const StartupForm& form, const StartupOptions& options) {
  const std::filesystem::path folder(options.out);
  const std::string serial = FormatInt(form.Serial());
  return options.by_serial ? folder / PathOf(serial + ".tbl")
                           : folder / PathOf(serial) / "StartUp.tbl";
}

bool WriteBox(const StartupForm& form, const std::filesystem::path& path, std::uint32_t version) {
  if (const std::string reason = MakeFolders(path.parent_path()); !reason.empty()) {
    PrintMessage(reason);
    return false;
  }
  ParamTable derived = form.Derive();
  TblReport report;
  const TblSaveOptions save{version, false, static_cast<std::int32_t>(version)};
  const InterruptWatch watch;
  if (SaveParamFile(&derived, path, save, &report) != kOk) {
    PrintMessage(report.message);
    return false;
  }
  return true;
}

// True, with a message, where boxes would start with hardly anything but defaults: what is left of
// a damaged file, or a part of a table made for other purposes.
bool IsHardlyATable(const std::filesystem::path& path, const TblReport& report) {
  const auto serial = std::find(report.missing.begin(), report.missing.end(), ParamKey("SNUM"));
  std::string reason;
  if (report.IsMostlyMissing()) {
    reason = "has fewer than half of the " +
             FormatInt(static_cast<std::int64_t>(report.RecordsOfWhole())) +
             " records of a version-" + FormatInt(report.version) + " table";
  } else if (serial != report.missing.end()) {
    reason = "lacks the main box's serial number (SNUM)";
  }
  if (!reason.empty()) {
    PrintMessage(FileMessage(path, reason + "; no files are made (--partial makes them)"));
  }
  return !reason.empty();
}

}  // namespace

ExitCode RunTableStartup(const StartupOptions& options) {
  ParamTable table;
  TblReport report;
  if (!LoadTable(options.file, &table, &report) ||
      (!options.takes_partial && IsHardlyATable(options.file, report))) {
    return kSomeFailed;
  }
  const std::uint32_t version = StartupVersion(table, options.tbl_version == 1);
  if (version != options.tbl_version) {
    PrintMessage("\"TBVO\" is not 1: the files are written as version 2");
  }
  SetDefaultResistances(&table);
  std::vector<StartupBox> left_out;
  std::set<std::filesystem::path> paths;
  ExitCode result = kAllDone;
  std::string written;
  for (const StartupBox& box : StartupBoxes(table, &left_out)) {
    const StartupForm form(&table, box, {});
    if (box.IsTransmitter() && form.Serial() == 0) {
      PrintMessage("no file for the transmitter monitor: \"SNTX\" is 0");
      continue;
    }
    if (form.Serial() == 0) {
      PrintMessage("the main box has the serial number 0 (\"SNUM\")");
    }
    const std::filesystem::path path = PathFor(form, options);
    if (!paths.insert(path).second) {
      PrintMessage(PathText(path) + ": already written for another box, not written again");
      result = kSomeFailed;
      continue;
    }
    if (IsInput(path, options.file, "is the input file and was not written")) {
      result = kSomeFailed;
    } else if (WriteBox(form, path, version)) {
      written += PathLine(path);
    } else {
      result = kSomeFailed;
    }
    form.ApplyLasting(&table);
  }
  for (const StartupBox box : left_out) {
    PrintMessage("auxiliary box " + FormatInt(StoredSerial(table, box)) +
                 " comes after an empty place: no file");
  }
  return PrintResult(written) ? result : kSomeFailed;
}

}  // namespace orvane

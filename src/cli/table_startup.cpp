// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <vector>

#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/interrupt_watch.h"
#include "editors/startup_cautions.h"
#include "editors/startup_run.h"
#include "files/file_system.h"
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

// The only question, in which version the files are to be, has its answer in the options.
class VersionPrompts : public Prompts {
 public:
  explicit VersionPrompts(std::uint32_t version) : version_(version) {}
  Answer AskYesNo(const std::string& /*caption*/, const std::string& /*question*/) override {
    return version_ == 1 ? Answer::kYes : Answer::kNo;
  }
  Answer AskYesNoCancel(const std::string& caption, const std::string& question) override {
    return AskYesNo(caption, question);
  }
  void ShowWarning(const std::string& /*caption*/, const std::string& text) override {
    PrintMessage(text);
  }

 private:
  std::uint32_t version_;
};

// False, with a message, where the file is not to be written or has no folder.
bool MakeReady(const std::filesystem::path& path, const std::filesystem::path& input,
               std::vector<std::filesystem::path>* tried) {
  if (std::any_of(tried->begin(), tried->end(),
                  [&path](const auto& other) { return IsSameFile(path, other); })) {
    PrintMessage(PathText(path) + ": is meant for another box before it, not written again");
    return false;
  }
  tried->push_back(path);
  if (IsInput(path, input, "is the input file and was not written")) {
    return false;
  }
  const Result<> made = MakeFolders(path.parent_path());
  if (!made) {
    PrintMessage(made.Message());
  }
  return static_cast<bool>(made);
}

void TellSerial(const StartupForm& form) {
  if (!form.HasFile()) {
    PrintMessage("no file for the transmitter monitor: \"SNTX\" is 0");
  } else if (form.Serial() == 0) {
    PrintMessage("the main box has the serial number 0 (\"SNUM\")");
  }
}

// Path, version, bytes, number of values that are not those of the main table, and how it was read.
std::string VerifiedLine(const StartupOutcome& outcome) {
  std::string line = PathLine(outcome.path);
  line.pop_back();
  for (const std::string& cell :
       {FormatInt(outcome.version), FormatInt(outcome.read_back.size),
        FormatInt(outcome.differing.size()), std::string(outcome.VerifiedText())}) {
    line.append("\t").append(cell);
  }
  return line + '\n';
}

// True, with a message, where boxes would start with hardly anything but defaults: what is left of
// a damaged file, or a part of a table made for other purposes.
bool IsHardlyATable(const std::filesystem::path& path, const TblReport& report) {
  const auto serial = std::find(report.missing.begin(), report.missing.end(), ParamKey("SNUM"));
  std::string reason;
  if (report.IsMostlyMissing()) {
    reason = "has fewer than half of the " + FormatInt(report.RecordsOfWhole()) +
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
  if (Exists(options.out) == Existence::kNotThere) {
    PrintMessage("there is no folder " + PathText(options.out) + " yet: it is made");
  }
  VersionPrompts prompts(options.tbl_version);
  StartupRun run(&table, {}, &prompts);
  std::vector<std::filesystem::path> tried;
  run.SetVerifies(options.verifies);
  run.SetPlace([&options](const StartupForm& form) { return PathFor(form, options); });
  run.SetMayWrite([&](const auto& path) { return MakeReady(path, options.file, &tried); });
  run.ForEachBox([&run](StartupForm* form) {
    TellSerial(*form);
    const InterruptWatch watch;
    const StartupOutcome& outcome = run.Accept(*form);
    if (outcome.state == StartupOutcome::kFailed) {
      PrintMessage(outcome.message);
    }
    return true;
  });
  ExitCode result = kAllDone;
  std::string written;
  for (const StartupOutcome& outcome : run.Outcomes()) {
    if (outcome.state == StartupOutcome::kWritten) {
      written += options.verifies ? VerifiedLine(outcome) : PathLine(outcome.path);
    } else if (outcome.state != StartupOutcome::kNoFile) {
      result = kSomeFailed;
    } else if (outcome.box.IsAuxiliary()) {
      PrintMessage("auxiliary box " + FormatInt(outcome.serial) +
                   " comes after an empty place: no file");
      result = options.verifies ? kSomeFailed : result;
    }
  }
  return PrintResult(written) ? result : kSomeFailed;
}

}  // namespace orvane

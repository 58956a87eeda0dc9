// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "base/latin1.h"
#include "base/number_text.h"
#include "calibration/cal_curves.h"
#include "calibration/cal_text.h"
#include "cli/batch_verb.h"
#include "cli/commands.h"
#include "files/path_text.h"
#include "response/cal_file.h"
#include "table/param_text.h"

namespace orvane {
namespace {

struct CalibrationArguments {
  std::filesystem::path file;
  int kind = 0;  // 0: by the file's name and its header
};

// Whole numbers are signed although programs get them zero-extended.
std::string ValueText(const CalHeader& header, const CalFieldDef& field) {
  if (field.Key() == "SNUM" || field.Key() == "NCHN" || field.Key() == "STAT") {
    return FormatInt(RecordFrom<Le<std::int16_t>>(BytesOf(header).subspan(field.offset)));
  }
  ParamValue value{};
  std::string text;
  if (GetCalField(&header, field.Key(), field.type, value.data()) == kOk) {
    FormatParamValue(field.type, value, &text);
  }
  return PrintableLatin1(text);
}

std::string InfoText(const CalRecords& cal) {
  const ChannelModelFlags flags = ModelFlagsOf(cal);
  std::string text = "kind\t" + FormatInt(cal.header.ctyp) + "\nstatus\t0\n";
  for (const CalFieldDef& field : CalFields(cal.header.ctyp)) {
    text.append(field.Key()).append("\t").append(ValueText(cal.header, field)).append("\n");
  }
  text += "records\t" + FormatInt(cal.records.size()) + "\npasses\t" + FormatInt(cal.PassCount()) +
          "\npass\tfirst record\tlast record\n";
  for (std::size_t pass = 0; pass < cal.PassCount(); ++pass) {
    text += FormatInt(pass + 1) + '\t' + FormatInt(cal.pass_table[pass] + 1) + '\t' +
            FormatInt(cal.pass_table[pass + 1]) + '\n';
  }
  text += "channel\tflags\n";
  for (std::size_t c = 0; c < cal.Channels(); ++c) {
    text += FormatInt(c + 1) + '\t' + FormatInt(flags[c]) + '\n';
  }
  return text;
}

ExitCode RunInfo(const CalibrationArguments& arguments) {
  CalReport report;
  const auto cal = ReadCalRecordsAt(
      arguments.kind != 0 ? arguments.kind : CalKindOf(arguments.file), arguments.file, &report);
  if (cal == nullptr) {
    PrintMessage(report.message + " (" + FormatInt(report.status) + ")");
    return kSomeFailed;
  }
  return PrintResult(InfoText(*cal)) ? kAllDone : kSomeFailed;
}

ExitCode RunCurves(const CalibrationArguments& arguments) {
  constexpr int kDigits = 9;
  const auto curves = LoadCalCurves(arguments.file);
  if (!curves) {
    const std::string& message = curves.Message();
    const bool names_file = message.find(PathText(arguments.file)) != std::string::npos;
    PrintMessage(names_file ? message : FileMessage(arguments.file, message));
    return kSomeFailed;
  }
  if (!curves->note.empty()) {
    PrintMessage(FileMessage(arguments.file, curves->note));
  }
  std::string text;
  for (std::size_t c = 0; c < curves->channels.size(); ++c) {
    const CalCurve& curve = curves->channels[c];
    for (std::size_t i = 0; i < curve.frequency.size(); ++i) {
      text += FormatInt(c + 1);
      for (const double value : {curve.frequency[i], curve.amplitude[i], curve.phase[i]}) {
        text.append("\t").append(FormatReal(value, kDigits));
      }
      text += '\n';
    }
  }
  return PrintResult(text) ? kAllDone : kSomeFailed;
}

}  // namespace

void AddCalibrationCommands(CLI::App* app, ExitCode* exit_code) {
  CLI::App* calibration =
      app->add_subcommand("calibration", "Calibrations of boxes (*.CLB) and sensors (*.CLC)");
  calibration->require_subcommand(1);
  const auto arguments = std::make_shared<CalibrationArguments>();
  const auto add_reading = [=](const char* name, const char* what,
                               ExitCode (*run)(const CalibrationArguments&)) {
    CLI::App* verb = calibration->add_subcommand(name, what);
    AddPath(verb, "FILE", &arguments->file, "a calibration file")->required()->check(NotEmpty());
    verb->callback([=] { *exit_code = run(*arguments); });
    return verb;
  };
  add_reading("info", "Print the header, the passes and the channel flags", RunInfo)
      ->add_option("--kind", arguments->kind,
                   "1 box, 2 coil, 3 current sensor (default: by name and header)")
      ->check(CLI::IsMember({1, 2, 3}));
  AddBatchVerb(calibration, "text", "Write each calibration as a text (name.txt)", ExportCalToText,
               exit_code);
  add_reading("curves", "Print channel, Hz, amplitude and degrees of each point, tab-separated",
              RunCurves);
  AddResponseCommands(calibration, exit_code);
  AddCompareCommand(calibration, exit_code);
}

}  // namespace orvane

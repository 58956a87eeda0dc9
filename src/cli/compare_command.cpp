// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/validators.h"
#include "response/cal_compare.h"

namespace orvane {
namespace {

// What could not be compared is not to be taken for a box that has drifted.
constexpr ExitCode kNotCompared = kWrongUsage;

struct CompareArguments {
  std::filesystem::path one;
  std::filesystem::path other;
  std::string amplitude = "2%";
  std::string phase = "1";
};

// "2%" or "2"
std::string WithoutPercent(std::string text) {
  if (!text.empty() && text.back() == '%') {
    text.pop_back();
  }
  return text;
}

std::string Columns(const WorstDeviation& worst) {
  constexpr int kDigits = 6;
  std::string text;
  for (const double value :
       {100 * worst.amplitude, worst.amplitude_at, worst.phase, worst.phase_at}) {
    text.append("\t").append(FormatReal(value, kDigits));
  }
  return text;
}

ExitCode RunCompare(const CompareArguments& arguments) {
  const auto one = ReadComparedCal(arguments.one);
  const auto other = ReadComparedCal(arguments.other);
  for (const auto& [cal, path] :
       {std::pair(&one, &arguments.one), std::pair(&other, &arguments.other)}) {
    if (!*cal) {
      PrintMessage(FileMessage(*path, cal->Message()));
      return kNotCompared;
    }
  }
  const auto comparison = Compare(*one, *other);
  if (!comparison) {
    PrintMessage(FileMessage(arguments.one, comparison.Message()));
    return kNotCompared;
  }
  if (!comparison->note.empty()) {
    PrintMessage(FileMessage(arguments.one, comparison->note));
  }
  const CalTolerance tolerance = {ParseReal(WithoutPercent(arguments.amplitude)).value_or(0) / 100,
                                  ParseReal(arguments.phase).value_or(0)};
  std::string text;
  bool are_within = true;
  for (const CalDeviation& row : comparison->rows) {
    const bool is_within = IsWithin(row, tolerance);
    are_within = are_within && is_within;
    text.append(FormatInt(row.channel + 1)).append("\t");
    text.append(FormatInt(std::int64_t{row.sweep} + 1)).append("\t").append(row.setting);
    text.append(Columns(row.measured)).append(row.model ? Columns(*row.model) : "\t\t\t\t");
    text.append(is_within ? "\twithin\n" : "\tbeyond\n");
  }
  return !PrintResult(text) ? kNotCompared : are_within ? kAllDone : kSomeFailed;
}

}  // namespace

void AddCompareCommand(CLI::App* calibration, ExitCode* exit_code) {
  const auto arguments = std::make_shared<CompareArguments>();
  CLI::App* compare = calibration->add_subcommand(
      "compare",
      "Print by how much A differs from B at worst: channel, pass, setting, then percent, Hz, "
      "degrees, Hz as measured and of the models; exit with 1 where it is more than allowed, with "
      "2 "
      "where they cannot be compared");
  AddPath(compare, "A", &arguments->one, "a calibration file")->required()->check(NotEmpty());
  AddPath(compare, "B", &arguments->other, "an earlier one")->required()->check(NotEmpty());
  const CLI::Validator percent(
      [](const std::string& text) { return Amount()(WithoutPercent(text)); }, "", "percent");
  compare->add_option("--amplitude", arguments->amplitude, "allowed, percent (default: 2%)")
      ->check(percent);
  compare->add_option("--phase", arguments->phase, "allowed, degrees (default: 1)")
      ->check(Amount());
  compare->callback([=] { *exit_code = RunCompare(*arguments); });
}

}  // namespace orvane

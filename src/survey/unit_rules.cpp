// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <functional>
#include <map>
#include <set>

#include "base/ascii.h"
#include "base/number_text.h"
#include "survey/survey_findings.h"

namespace orvane {
namespace {

constexpr std::int64_t kMostDays = 365;

std::string OthersText(std::size_t count) {
  return count == 1
             ? std::string()
             : std::string(" (")
                   .append(FormatInt(count - 1))
                   .append(count == 2 ? " more recording needs it)" : " more recordings need it)");
}

// One finding for each calibration, of all recordings that need it.
void TellOnce(SurveyRows rows, const SurveyTeller& tell,
              const std::function<std::string(const RowCalibration&)>& judge) {
  struct Case {
    std::string sentence;
    std::vector<const SurveyRow*> rows;
  };
  std::map<std::string, Case> cases;
  for (const auto& row : rows) {
    for (const RowCalibration& one : row->calibrations) {
      if (std::string sentence = tell.IsTold(*row) ? judge(one) : ""; !sentence.empty()) {
        Case& found = cases[one.name];
        found.sentence = found.rows.empty() ? std::move(sentence) : found.sentence;
        found.rows.push_back(row.get());
      }
    }
  }
  for (const auto& [name, one] : cases) {
    tell.OfRows(one.rows, std::string(one.sentence).append(OthersText(one.rows.size())));
  }
}

void LookAtMissing(SurveyRows rows, const SurveyTeller& tell) {
  TellOnce(rows, tell, [](const RowCalibration& one) {
    return one.is_found ? std::string()
                        : std::string("The calibration ")
                              .append(one.name)
                              .append(one.fault.empty() ? " is missing" : " is of no use: ")
                              .append(one.fault);
  });
}

void LookAtOld(SurveyRows rows, const SurveyTeller& tell) {
  TellOnce(rows, tell, [](const RowCalibration& one) {
    return one.age_days.value_or(0) <= kMostDays ? std::string()
                                                 : std::string("The calibration ")
                                                       .append(one.name)
                                                       .append(" is ")
                                                       .append(FormatInt(*one.age_days))
                                                       .append(" days older than the recording");
  });
}

void LookAtSerials(SurveyRows rows, const SurveyTeller& tell) {
  TellOnce(rows, tell, [](const RowCalibration& one) {
    // The header keeps 16 bits; without a number it says nothing.
    const bool differs =
        one.is_found && one.serial != 0 &&
        static_cast<std::int16_t>(one.serial) != static_cast<std::int16_t>(one.wanted);
    return !differs ? std::string()
                    : std::string("The header of ")
                          .append(one.name)
                          .append(" names another serial number, ")
                          .append(FormatInt(one.serial));
  });
}

void LookAtClocks(SurveyRows rows, const SurveyTeller& tell) {
  constexpr std::int32_t kHeld = 3;
  constexpr std::int32_t kLocked = 4;
  for (const auto& row : rows) {
    if (row->IsRecording() && row->table != nullptr && row->table->has_status != 0 &&
        row->table->clock != kLocked) {
      tell.As(row->table->clock == kHeld ? Severity::kHint : Severity::kWarning, *row,
              std::string("The clock was not locked at the end: \"")
                  .append(ClockText(*row->table))
                  .append("\""));
    }
  }
}

void LookAtDisks(SurveyRows rows, const SurveyTeller& tell) {
  constexpr std::int32_t kLeastFree = 1 << 20;
  constexpr std::int64_t kTolerance = 60;
  for (const auto& row : rows) {
    const TableFacts* const table = row->table.get();
    if (row->IsRecording() && table != nullptr && table->has_status != 0 && table->disk >= 0 &&
        table->disk < kLeastFree && row->end > 0 && table->plan_end - row->end > kTolerance) {
      tell(*row, std::string("The disk was full: ")
                     .append(FormatInt(table->disk / 1024))
                     .append(" KB were free when the recording ended, before its plan did"));
    }
  }
}

// Without blanks around it, and in one case: "3.2b" is "3.2B".
std::string Plain(std::string_view version) {
  std::string plain;
  for (const char c : version) {
    if (c != ' ') {
      plain += UpperCased(c);
    }
  }
  return plain;
}

void LookAtVersions(SurveyRows rows, const SurveyTeller& tell) {
  std::map<std::string, std::set<std::int32_t>> boxes;
  for (const auto& row : rows) {
    if (row->IsRecording() && row->table != nullptr && tell.IsTold(*row)) {
      if (std::string version = Plain(row->table->firmware); !version.empty()) {
        boxes[std::move(version)].insert(row->box);
      }
    }
  }
  if (boxes.size() < 2) {
    return;
  }
  std::string text;
  for (const auto& [version, serials] : boxes) {
    text.append(text.empty() ? "" : "; ").append(version);
    text.append(serials.size() == 1 ? " (box" : " (boxes");
    for (const std::int32_t serial : serials) {
      text.append(" ").append(FormatInt(serial));
    }
    text.append(")");
  }
  tell.OfSurvey(std::string("Recordings are of different versions: ").append(text));
}

constexpr auto kRules = std::to_array<SurveyRule>({
    {"calibration-missing", Severity::kWarning,
     "the calibration of a recording's box, or of a coil or current sensor of a recorded channel, "
     "is neither beside it nor in the survey, or has no whole record, or is of the other kind",
     LookAtMissing},
    {"calibration-old", Severity::kWarning,
     "a calibration is more than 365 days older than the recording", LookAtOld},
    {"calibration-serial", Severity::kWarning,
     "the header of a calibration names another serial number than its file", LookAtSerials},
    {"clock-unlocked", Severity::kWarning,
     "\"CLST\" of a table that the box has written is not 4; a hint where it is 3 (\"TOTL\", "
     "\"FTIM\" or \"LFIX\" tell that the box wrote it)",
     LookAtClocks, false, "warning, hint"},
    {"disk-full", Severity::kWarning,
     "\"DISK\" of a table that the box has written is below 1 MB, and the recording ended more "
     "than a minute before its plan",
     LookAtDisks},
    {"version-mix", Severity::kWarning, "tables of recordings have different \"VER\"",
     LookAtVersions},
});

}  // namespace

std::span<const SurveyRule> UnitRules() { return kRules; }

}  // namespace orvane

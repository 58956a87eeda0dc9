// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>

#include "base/ascii.h"
#include "base/number_text.h"
#include "survey/survey_findings.h"

namespace orvane {
namespace {

// Cards count times in steps of two seconds, and copies made without times take their own order.
constexpr std::int64_t kTick = 60'000'000'000;

void LookAtFailures(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    if (!row->failure.empty()) {
      tell(*row, std::string("Cannot be read: ").append(row->failure));
    }
  }
}

void LookAtCuts(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    for (const std::string& name : row->cut) {
      tell(*row, std::string(name).append(" ends within a record"));
    }
  }
}

void LookAtEmptyFiles(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    for (const std::string& name : row->empty) {
      std::string sentence = std::string(name).append(" holds no data");
      const FileType type = FileTypeOf(name);
      if ((type == FileType::kWaveform || type == FileType::kBand) && row->table != nullptr &&
          row->table->recorded > 0) {
        sentence.append("; its table counts ").append(FormatInt(row->table->recorded));
        sentence.append(row->table->recorded == 1 ? " record" : " records");
      }
      tell(*row, std::move(sentence));
    }
  }
}

void LookAtBlanks(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    for (const auto& [name, bytes] : row->blank) {
      tell(*row, std::string(name)
                     .append(" has only 0 or FF where a record was to begin: its last ")
                     .append(FormatInt(bytes))
                     .append(" bytes are left out"));
    }
  }
}

void LookAtSerials(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    if (row->other_box != 0) {
      tell(*row, std::string("Records are of box ")
                     .append(FormatInt(row->box))
                     .append(" and of box ")
                     .append(FormatInt(row->other_box)));
    }
  }
}

void LookAtTables(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    const bool needs_one =
        std::any_of(row->files.begin(), row->files.end(),
                    [](const RowFile& file) { return file.type == FileType::kWaveform; });
    if (row->table_state == TableState::kMissing) {
      tell.As(needs_one ? Severity::kWarning : Severity::kHint, *row,
              "There is no table of the recording");
    }
  }
}

void LookAtNewerTables(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    if (row->table_state == TableState::kNewer) {
      tell(*row, "The table was changed after the recording");
    }
  }
}

void LookAtDifferences(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    if (row->IsRecording() && !row->differs.empty()) {
      tell(*row, std::string("Headers and table differ: ").append(row->differs));
    }
  }
}

void LookAtClashes(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    for (const std::string& name : row->clashes) {
      tell(*row, std::string(name).append(
                     " would be converted to a file of the same name as another of its folder"));
    }
  }
}

const RowFile* FileOf(const SurveyRow& row, FileType type) {
  const auto found = std::find_if(row.files.begin(), row.files.end(),
                                  [type](const RowFile& file) { return file.type == type; });
  return found == row.files.end() ? nullptr : &*found;
}

// The band in "name_TS3.txt" or "name_TS3_cal.txt", by the band's own name.
const RowFile* BandOf(const SurveyRow& row, std::string_view text) {
  for (const RowFile& file : row.files) {
    const std::size_t dot = file.name.rfind('.');
    if (file.type == FileType::kBand &&
        (EndsWithoutCase(text, std::string("_").append(file.name.substr(dot + 1))))) {
      return &file;
    }
  }
  return nullptr;
}

// What a text or a restack was made of; null where that is not here.
const RowFile* SourceOf(const SurveyRow& row, const RowFile& made) {
  if (made.type == FileType::kStackedWaveform) {
    return FileOf(row, FileType::kWaveform);
  }
  if (made.type != FileType::kText) {
    return nullptr;
  }
  if (EndsWithoutCase(made.name, ".csv")) {
    return FileOf(row, FileType::kStackResult);
  }
  std::string_view stem = std::string_view(made.name).substr(0, made.name.rfind('.'));
  stem.remove_suffix(EndsWithoutCase(stem, "_cal") ? 4 : 0);
  if (EndsWithoutCase(stem, "_TSK")) {
    return FileOf(row, FileType::kStackedWaveform);
  }
  if (const RowFile* band = BandOf(row, stem); band != nullptr) {
    return band;
  }
  // A plain name is that of the first kind there is; a recording's text is of its waveform.
  return row.IsRecording() ? FileOf(row, FileType::kWaveform) : &row.files.front();
}

void LookAtAges(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    for (const RowFile& made : row->files) {
      const RowFile* const source = SourceOf(*row, made);
      if (source != nullptr && source != &made &&
          source->info.written - made.info.written > kTick) {
        tell(*row, std::string(made.shown).append(" is older than ").append(source->shown));
      }
    }
  }
}

constexpr auto kRules = std::to_array<SurveyRule>({
    {"file-unreadable", Severity::kWarning, "a file cannot be read, or is none of its kind",
     LookAtFailures},
    {"file-cut", Severity::kWarning, "a file ends within a record", LookAtCuts},
    {"file-empty", Severity::kWarning,
     "a waveform, band or stack has no whole scan, or stack results or a calibration no whole "
     "record",
     LookAtEmptyFiles},
    {"file-blank", Severity::kWarning,
     "a record's header is all 0 or all FF, as of a disk that was not written to its end: from "
     "there on nothing counts",
     LookAtBlanks},
    {"boxes-mixed", Severity::kWarning, "records of one recording name different serial numbers",
     LookAtSerials},
    {"table-missing", Severity::kWarning,
     "a recording has no table beside it; a hint where it has bands only, which can be read "
     "without",
     LookAtTables, false, "warning, hint"},
    {"table-newer", Severity::kHint,
     "the table beside a recording was written more than ten minutes after it", LookAtNewerTables},
    {"table-differs", Severity::kWarning,
     "serial number or channels (\"TCHN\") of the table are not those of the records",
     LookAtDifferences},
    {"names-clash", Severity::kWarning,
     "names of two files of one folder differ in case only, or bands in their first digit: what "
     "one is converted to replaces that of the other",
     LookAtClashes},
    {"result-old", Severity::kWarning,
     "a restack, a text or a list was written more than a minute before the file that it is made "
     "of",
     LookAtAges},
});

}  // namespace

std::span<const SurveyRule> FileRules() { return kRules; }

}  // namespace orvane

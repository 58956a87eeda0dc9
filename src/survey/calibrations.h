// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_CALIBRATIONS_H_
#define ORVANE_SURVEY_CALIBRATIONS_H_

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "survey/recording.h"

namespace orvane {

/// The calibrations that the recordings of a survey find, by the names that calibrated spectra look
/// for: SERIAL.CLB of the box, SERIAL.CLC of each sensor, in any case.
class Calibrations {
 public:
  /// One that lies in the survey.
  void Add(const std::filesystem::path& folder, std::string_view name, FileFacts facts);
  /// Only those of one folder count from now on. They are read when they are needed.
  void UseFolder(const std::filesystem::path& folder, const ReadingOptions& reading);

  /// What a recording needs and whether it is there: in its own folder, else that of the survey
  /// whose date is the nearest. One that is of another kind, or has no whole record, counts only
  /// where there is no other.
  std::vector<RowCalibration> Of(const std::filesystem::path& folder, const SurveyRow& row);

 private:
  struct Known {
    std::filesystem::path folder;
    FileFacts facts;
  };
  const FileFacts* Find(const std::filesystem::path& folder, const std::string& name,
                        std::int64_t start);
  const FileFacts* FindInFolder(const std::string& name);
  RowCalibration Look(const std::filesystem::path& folder, const std::string& unit,
                      std::string_view end, std::int64_t start);

  std::map<std::string, std::vector<Known>> known_;  // by name in upper case
  std::filesystem::path only_;
  ReadingOptions reading_;
  std::map<std::string, std::optional<FileFacts>> of_folder_;
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_CALIBRATIONS_H_

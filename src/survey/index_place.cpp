// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>

#include "files/file_system.h"
#include "survey/survey_index.h"

namespace orvane {

std::filesystem::path UsualIndexFile() {
  const std::filesystem::path folder = UserCacheFolder();
  return folder.empty() ? folder : folder / "orvane" / "survey-index.db";
}

std::int64_t SurveyIndex::Today() {
  using Days = std::chrono::duration<std::int64_t, std::ratio<86400>>;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<Days>(now).count();
}

}  // namespace orvane

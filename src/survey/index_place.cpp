// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/file_system.h"
#include "survey/survey_index.h"

namespace orvane {

std::filesystem::path UsualIndexFile() {
  const std::filesystem::path folder = UserCacheFolder();
  return folder.empty() ? folder : folder / "orvane" / "survey-index.db";
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
// What the verbs of "schedule" do.
#ifndef ORVANE_CLI_SCHEDULE_RUN_H_
#define ORVANE_CLI_SCHEDULE_RUN_H_

#include <filesystem>

#include "cli/output.h"
#include "stepping/fdem_schedule.h"
#include "table/tech.h"

namespace orvane {

struct PresetOptions {
  std::filesystem::path file;
  Tech tech = kNoTech;
  std::int32_t cycle = 0;  ///< 0: the stored "TTOT" decides
  std::filesystem::path to;
};
ExitCode RunSchedulePreset(const PresetOptions& options);

ExitCode RunScheduleMake(const std::filesystem::path& file, const std::filesystem::path& to);
ExitCode RunScheduleShow(const std::filesystem::path& file);
ExitCode RunScheduleFdem(const FdemRequest& request, const std::filesystem::path& to);

}  // namespace orvane

#endif  // ORVANE_CLI_SCHEDULE_RUN_H_

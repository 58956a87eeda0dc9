// SPDX-License-Identifier: GPL-3.0-or-later
// Schedules as JSON and back; docs/formats/json.md has the format.
#ifndef ORVANE_EXPORT_SCHEDULE_JSON_H_
#define ORVANE_EXPORT_SCHEDULE_JSON_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "stepping/schedule_row.h"

namespace orvane {

std::string WriteScheduleJson(std::span<const ScheduleRow> rows);

/// The rows of a text. Fails with the step and the reason where anything is unknown or does not
/// fit, and where a schedule file of these rows would be refused.
Result<std::vector<ScheduleRow>> ReadScheduleJson(std::string_view text);

}  // namespace orvane

#endif  // ORVANE_EXPORT_SCHEDULE_JSON_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHECK_CHECK_MEMORY_H_
#define ORVANE_CHECK_CHECK_MEMORY_H_

#include <optional>
#include <vector>

#include "calibration/cal_header.h"
#include "files/seen_files.h"
#include "stepping/schedule_file.h"
#include "table/param_table.h"

namespace orvane {

/// What one look at the files hands on to the next. For one thread at a time.
struct CheckMemory {
  struct Table {
    std::optional<ParamTable> table;  ///< none where the file is no table
    std::vector<ParamKey> missing;
    int version = 0;
  };

  SeenFiles<std::optional<CalHeader>> calibrations;  ///< nothing: not to be read
  SeenFiles<Table> tables;
  ScheduleFileMemory schedules;
};

}  // namespace orvane

#endif  // ORVANE_CHECK_CHECK_MEMORY_H_

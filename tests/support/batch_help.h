// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_BATCH_HELP_H_
#define ORVANE_TESTS_SUPPORT_BATCH_HELP_H_

#include "files/batch.h"
#include "support/temp_dir.h"

namespace orvane::testing {

/// Converts one file, beside it or into a folder.
inline BatchResult RunOne(const Conversion& conversion, const std::filesystem::path& input,
                          const std::filesystem::path& out_folder = {}) {
  Batch batch({conversion, {input}, out_folder, 1});
  batch.Start();
  batch.Wait();
  return *batch.Result(0);
}

/// Does the job alone, in this thread.
inline BatchResult RunJob(const Conversion& conversion, const std::filesystem::path& input,
                          const std::filesystem::path& output) {
  std::atomic<bool> stop = false;
  std::atomic<std::uint64_t> bytes_done = 0;
  BatchTask task(input, {output}, true, &stop, &bytes_done);
  return conversion.job(task);
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_BATCH_HELP_H_

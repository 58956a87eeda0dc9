// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_BATCH_HELP_H_
#define ORVANE_TESTS_SUPPORT_BATCH_HELP_H_

#include "core/batch.h"
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

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_BATCH_HELP_H_

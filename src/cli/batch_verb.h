// SPDX-License-Identifier: GPL-3.0-or-later
// Verbs that convert many files: `FILE... [--jobs N] [--out DIR]`.
#ifndef ORVANE_CLI_BATCH_VERB_H_
#define ORVANE_CLI_BATCH_VERB_H_

#include <functional>
#include <string>

#include "cli/output.h"
#include "files/batch.h"
#include "timeseries/ts_listing.h"

namespace CLI {
class App;
}

namespace orvane {

/// Adds the verb to its noun. `conversion` is asked for once the arguments are read; the caller may
/// add options of its own to the verb that is returned. The verb prints the paths of the files
/// written, in the order of the inputs, and names on stderr what failed and what is noted.
CLI::App* AddBatchVerb(CLI::App* noun, const std::string& name, const std::string& what,
                       const std::function<Conversion()>& conversion, ExitCode* exit_code);

/// Adds a verb that lists time series files: one file to standard output, several, or one with
/// --out, each into a file whose name ends with `suffix`.
CLI::App* AddListingVerb(CLI::App* noun, const std::string& name, const std::string& what,
                         const std::string& suffix, const std::function<TsListing()>& listing,
                         ExitCode* exit_code);

/// Runs a batch to its end or until the user interrupts it.
ExitCode RunBatch(BatchPlan plan);

/// Asks a question while a batch runs, whose progress line waits. No without a terminal, for any
/// answer but y, and where the batch is stopped.
bool AskOnTerminal(const std::string& question, const BatchTask& task);

}  // namespace orvane

#endif  // ORVANE_CLI_BATCH_VERB_H_

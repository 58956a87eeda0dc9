// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include "cli/batch_verb.h"
#include "cli/commands.h"
#include "table/table_text.h"
#include "table/table_to_v1.h"

namespace orvane {

void AddTableConversions(CLI::App* table, ExitCode* exit_code) {
  AddBatchVerb(table, "text", "Write each table as a text (NAME.txt)", TableText, exit_code);
  AddBatchVerb(
      table, "to-v1",
      "Write NAME.TBL as version 1 and keep it as version 2 in NAME.TB2; what a file lacks is "
      "taken from the file before it",
      [] { return TableToV1(ParamTable()); }, exit_code);
}

}  // namespace orvane

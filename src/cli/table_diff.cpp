// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/table_diff.h"

#include <optional>

#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/table_explain.h"
#include "meaning/meanings.h"
#include "table/param_text.h"
#include "table/values_text.h"

namespace orvane {
namespace {

// Reals that differ but are the same in ten digits are printed with all their digits.
std::pair<std::string, std::string> DifferingValues(const ParamEntry& a, const ParamEntry& b) {
  std::pair<std::string, std::string> texts{PrintableValue(a), PrintableValue(b)};
  if (texts.first == texts.second && a.type == FltPT) {
    texts = {FormatRealExactly(RealOf(a.value)), FormatRealExactly(RealOf(b.value))};
  }
  return texts;
}

std::string DifferingRows(const ParamTable& a, const ParamTable& b, bool is_explained) {
  std::optional<Meanings> meanings;
  if (is_explained) {
    meanings.emplace();
  }
  std::string text;
  for (const ParamKey key : DifferingKeys(a, b)) {
    const ParamEntry& entry_a = *a.FindParam(key);
    const ParamEntry& entry_b = *b.FindParam(key);
    const auto [value_a, value_b] = DifferingValues(entry_a, entry_b);
    text.append(key.Text()).append("\t").append(value_a).append("\t").append(value_b);
    if (meanings) {
      text += ExplainingCells(*meanings, entry_a) + '\t' + meanings->ValueText(entry_b);
    }
    text += '\n';
  }
  return text;
}

// What makes B of A; what lines cannot say goes to stderr.
std::string DifferingLines(const ParamTable& a, const ParamTable& b, bool with_secrets) {
  const std::vector<ParamKey> keys = DifferingKeys(a, b);
  const ValuesText written = WriteValues(b, keys, {with_secrets, {}});
  if (!written.left_out.empty()) {
    PrintMessage("passwords and the like are left out (--with-secrets): " +
                 FormatInt(written.left_out.size()));
  }
  for (const ParamKey key : keys) {
    if (IsReadOnlyKey(key)) {
      PrintMessage(key.Text() + " differs; it is the version of the file and cannot be set");
    }
  }
  return written.text;
}

}  // namespace

ExitCode RunTableDiff(const DiffOptions& options) {
  ParamTable a;
  ParamTable b;
  TblReport report_a;
  TblReport report_b;
  if (!LoadTable(options.a, &a, &report_a) || !LoadTable(options.b, &b, &report_b)) {
    return kSomeFailed;
  }
  const bool are_others_same = report_a.left_out.HoldsTheSameAs(report_b.left_out);
  if (!are_others_same) {
    PrintMessage("the files differ in records that are left out (table show --report names them)");
  }
  const bool are_ends_same = report_a.cut == report_b.cut;
  if (!are_ends_same) {
    TellCut(options.a, report_a);
    TellCut(options.b, report_b);
  }
  const std::string text = options.as_values ? DifferingLines(a, b, options.with_secrets)
                                             : DifferingRows(a, b, options.is_explained);
  const bool is_equal = are_others_same && are_ends_same && DifferingKeys(a, b).empty();
  return PrintResult(text) && is_equal ? kAllDone : kSomeFailed;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <vector>

#include "base/latin1.h"
#include "check/check.h"
#include "support.h"
#include "table/values_text.h"

namespace orvane::fuzz {
namespace {

// The next bytes; zeros where there are no more.
template <typename Record>
Record Take(Bytes* input) {
  Record record{};
  for (std::byte& byte : std::as_writable_bytes(std::span(&record, 1))) {
    byte = static_cast<std::byte>(TakeByte(input));
  }
  return record;
}

void RequireSense(const std::vector<Finding>& findings, const ParamTable& table) {
  Require(findings.size() < 200, "findings are few");
  for (const Finding& finding : findings) {
    Require(!finding.id.empty() && !finding.keys.empty(), "a finding says where it is mended");
    Require(!finding.sentence.empty() && PrintableUtf8(finding.sentence) == finding.sentence,
            "a sentence can be printed");
    Require(std::all_of(finding.keys.begin(), finding.keys.end(),
                        [&table](ParamKey key) { return table.FindParam(key) != nullptr; }),
            "the table has the keys");
  }
}

}  // namespace

void FuzzCheck(Bytes input) {
  static const ParamTable defaults = [] {
    ParamTable table;
    Require(table.BuildParamIndex() == kOk, "the dictionary has an index");
    return table;
  }();
  static const std::vector<ParamKey> keys = AllKeys(defaults);
  ParamTable table = defaults;
  const auto now = Take<ParamTime>(&input);
  while (!input.empty()) {
    const std::size_t key = Take<Le<std::uint16_t>>(&input) % keys.size();
    Require(table.SetStoredValue(keys[key], Take<ParamValue>(&input)) == kOk, "the key is there");
  }
  const std::vector<Finding> findings = CheckTable(table, now);
  RequireSense(findings, table);
  Require(CheckTable(table, now) == findings, "equal tables have equal findings");
}

}  // namespace orvane::fuzz

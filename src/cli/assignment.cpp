// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/assignment.h"

#include "base/latin1.h"
#include "cli/output.h"
#include "table/param_text.h"
#include "table/tbl_record.h"

namespace orvane {

bool IsAssignment(std::string_view text) { return text.find('=') != std::string_view::npos; }

std::string RefusalOf(const ParamEntry& changed, std::string_view given,
                      std::uint32_t tbl_version) {
  const std::string key = ParamKey(changed.key).Text() + ": ";
  const std::int32_t number = IntOf(changed.value);
  if (ParamKey(changed.key) == "TBVO" && number != 1 && number != 2) {
    return key + std::string(given) + " is not a version: use 1 or 2";
  }
  if (tbl_version != 1) {
    return {};
  }
  if (!FitsTblV1Key(changed)) {
    return key + "a version-1 file has no keys of more than four characters";
  }
  TblRecordV1 record;
  const bool is_cut = MakeTblRecordV1(changed, &record) != kOk;
  return is_cut ? key + std::string(given) + " does not fit a version-1 file" : std::string();
}

std::string Assign(std::string_view assignment, std::uint32_t tbl_version, ParamTable* table) {
  const std::size_t equals = assignment.find('=');
  const std::string key(assignment.substr(0, equals));
  const std::string given(equals == std::string_view::npos ? std::string_view()
                                                           : assignment.substr(equals + 1));
  // A key is looked up by its first eight characters; what is longer is not a key.
  const ParamEntry* entry = key.size() <= kKeySize ? table->FindParam(key) : nullptr;
  if (entry == nullptr) {
    return PrintableUtf8(key) + ": " + std::string(StatusText(kKeyNotFound));
  }
  if (ParamKey(key) == "TBVI") {
    return key + ": is the version of the file and cannot be set";
  }
  const auto refusal = [&key, &given](std::string_view reason) {
    return key + ": \"" + PrintableUtf8(given) + "\" " + std::string(reason);
  };
  std::string text;
  if (const std::string reason = Latin1FromUtf8(given, &text); !reason.empty()) {
    return refusal(reason);
  }
  ParamEntry changed = *entry;
  const auto type = static_cast<ValueType>(entry->type);
  if (const std::string reason = ParseParamValueStrictly(text, type, &changed.value);
      !reason.empty()) {
    return refusal(reason);
  }
  if (std::string reason = RefusalOf(changed, "\"" + PrintableUtf8(given) + "\"", tbl_version);
      !reason.empty()) {
    return reason;
  }
  const Status status = table->SetParam(key, type, changed.value.data());
  return status == kOk ? std::string() : key + ": " + std::string(StatusText(status));
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/assignment.h"

#include "base/latin1.h"
#include "cli/output.h"
#include "table/param_text.h"
#include "table/tbl_record.h"

namespace orvane {

bool IsAssignment(std::string_view text) { return text.find('=') != std::string_view::npos; }

Result<> MayHold(const ParamEntry& changed, std::string_view given, std::uint32_t tbl_version) {
  const std::string key = ParamKey(changed.key).Text() + ": ";
  const std::int32_t number = IntOf(changed.value);
  if (ParamKey(changed.key) == "TBVO" && number != 1 && number != 2) {
    return Failure(key + std::string(given) + " is not a version: use 1 or 2");
  }
  if (tbl_version == 1 && !FitsTblV1Key(changed)) {
    return Failure(key + "a version-1 file has no keys of more than four characters");
  }
  TblRecordV1 record;
  if (tbl_version == 1 && MakeTblRecordV1(changed, &record) != kOk) {
    return Failure(key + std::string(given) + " does not fit a version-1 file");
  }
  return {};
}

Result<> Assign(std::string_view assignment, std::uint32_t tbl_version, ParamTable* table) {
  const std::size_t equals = assignment.find('=');
  const std::string key(assignment.substr(0, equals));
  const std::string given(equals == std::string_view::npos ? std::string_view()
                                                           : assignment.substr(equals + 1));
  // A key is looked up by its first eight characters; what is longer is not a key.
  const ParamEntry* entry = key.size() <= kKeySize ? table->FindParam(key) : nullptr;
  if (entry == nullptr) {
    return Failure(PrintableUtf8(key) + ": " + std::string(StatusText(kKeyNotFound)));
  }
  if (ParamKey(key) == "TBVI") {
    return Failure(key + ": is the version of the file and cannot be set");
  }
  const auto refusal = [&key, &given](std::string_view reason) {
    return Failure(key + ": \"" + PrintableUtf8(given) + "\" " + std::string(reason));
  };
  const auto text = Latin1FromUtf8(given);
  if (!text) {
    return refusal(text.Message());
  }
  ParamEntry changed = *entry;
  const auto type = static_cast<ValueType>(entry->type);
  const auto value = ParseParamValueStrictly(*text, type);
  if (!value) {
    return refusal(value.Message());
  }
  changed.value = *value;
  const std::string quoted = std::string(1, '"').append(PrintableUtf8(given)).append(1, '"');
  if (auto may = MayHold(changed, quoted, tbl_version); !may) {
    return may;
  }
  const Status status = table->SetParam(key, type, changed.value.data());
  return status == kOk ? Result<>() : Failure(key + ": " + std::string(StatusText(status)));
}

}  // namespace orvane

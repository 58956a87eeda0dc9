// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/commands.h"
#include "core/number_text.h"
#include "core/param_text.h"
#include "core/tbl_record.h"

namespace orvane {
namespace {

// Why an assignment is refused; empty once it is in the table.
std::string Assign(const std::string& key, const std::string& text, std::uint32_t tbl_version,
                   ParamTable* table) {
  // A key is looked up by its first eight characters; what is longer is no key.
  const ParamEntry* entry = key.size() <= kKeySize ? table->FindParam(key) : nullptr;
  if (entry == nullptr) {
    return Printable(key) + ": " + std::string(StatusText(kKeyNotFound));
  }
  if (ParamKey(key) == "TBVI") {
    return key + ": tells the version of the file and cannot be set";
  }
  ParamEntry changed = *entry;
  const auto type = static_cast<ValueType>(entry->type);
  if (const std::string reason = ParseParamValueStrictly(text, type, &changed.value);
      !reason.empty()) {
    return key + ": \"" + Printable(text) + "\" " + reason;
  }
  if (tbl_version == 1 && !FitsTblV1Key(changed)) {
    return key + ": a version-1 file has no keys of more than four characters";
  }
  TblRecordV1 record;
  if (tbl_version == 1 && MakeTblRecordV1(changed, &record) != kOk) {
    return key + ": \"" + Printable(text) + "\" does not fit a version-1 file";
  }
  const Status status = table->SetParam(key, type, changed.value.data());
  return status == kOk ? std::string() : key + ": " + std::string(StatusText(status));
}

std::string OfAll(std::size_t count, std::size_t all) {
  return FormatInt(static_cast<std::int64_t>(count)) + " of " +
         FormatInt(static_cast<std::int64_t>(all));
}

void TellWhatChanges(const SetOptions& options, const TblReport& report, const ParamTable& table) {
  std::size_t all = 0;
  std::size_t left_out = 0;
  std::string cut;
  ParamKey key;
  TblRecordV1 record;
  for (; table.GetParamKey(static_cast<int>(all), &key) == kOk; ++all) {
    const ParamEntry* entry = table.FindParam(key);
    if (!FitsTblV1Key(*entry)) {
      ++left_out;
    } else if (MakeTblRecordV1(*entry, &record) != kOk) {
      cut += ' ';
      cut += key.Text();
    }
  }
  const std::string file = options.file.string();
  if (report.loaded < all) {
    PrintMessage(file + ": holds " + OfAll(report.loaded, all) +
                 " parameters; the others have their defaults");
  }
  if (options.tbl_version == 1) {
    PrintMessage(OfAll(left_out, all) + " parameters do not fit a version-1 file and are left out");
    if (!cut.empty()) {
      PrintMessage("values cut to fit a version-1 file:" + cut);
    }
  } else if (report.version == 1) {
    PrintMessage(file + ": was version 1, is written as version 2");
  }
}

}  // namespace

ExitCode RunTableSet(const SetOptions& options) {
  for (const std::string& assignment : options.assignments) {
    if (assignment.find('=') == std::string::npos) {
      PrintMessage(Printable(assignment) + ": is not of the form KEY=VALUE");
      return kWrongUsage;
    }
  }
  ParamTable table;
  TblReport report;
  if (!LoadOntoDefaults(options.file, &table, &report)) {
    return kSomeFailed;
  }
  bool is_refused = false;
  for (const std::string& assignment : options.assignments) {
    const std::size_t equals = assignment.find('=');
    const std::string reason = Assign(assignment.substr(0, equals), assignment.substr(equals + 1),
                                      options.tbl_version, &table);
    if (!reason.empty()) {
      PrintMessage(reason);
      is_refused = true;
    }
  }
  if (is_refused) {
    PrintMessage("nothing was written");
    return kSomeFailed;
  }
  std::int32_t output_version = 2;
  const bool stays_1 = table.GetParam("TBVO", IntPT, &output_version) == kOk && output_version == 1;
  const TblSaveOptions save{options.tbl_version, false, stays_1 ? 1 : 2};
  if (SaveParamFile(&table, options.to, save, &report) != kOk) {
    PrintMessage(report.message);
    return kSomeFailed;
  }
  TellWhatChanges(options, report, table);
  return kAllDone;
}

}  // namespace orvane

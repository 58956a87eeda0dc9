// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/startup_table.h"

#include <algorithm>
#include <optional>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/path_text.h"
#include "table/param_access.h"

namespace orvane {
namespace {

bool IsClockUnit(const ParamTable& table) {
  const std::string hardware = ParamAsText(table, "HW");
  return EqualsWithoutCase(hardware, "zlaclk") || EqualsWithoutCase(hardware, "zlacl4");
}

// The file that a box starts with; empty where there is none.
std::filesystem::path StartupPath(const ParamTable& table) {
  const std::string folder = ParamAsText(table, "DPTH");
  if (const std::int32_t serial = IntParam(table, "SNUM"); serial != 0) {
    std::filesystem::path path = PathOf(folder + FormatInt(serial) + ".tbl");
    if (InFile().Open(path)) {
      return path;
    }
  }
  std::filesystem::path path = PathOf(folder + "Startup.tbl");
  if (!InFile().Open(path)) {
    path.clear();
  }
  return path;
}

void LeaveOut(const ParamEntry& entry, std::string_view reason, StartupTaken* taken) {
  if (taken->left_out_count++ < StartupTaken::kMostNamed) {
    const std::string key(entry.key.begin(), std::find(entry.key.begin(), entry.key.end(), '\0'));
    taken->left_out.push_back({key, std::string(reason)});
  }
}

// What the current mode protects keeps its value.
void Store(const ParamEntry& entry, ParamTable* table, StartupTaken* taken) {
  const ParamKey key(entry.key);
  const Status status =
      table->SetParam(key, static_cast<ValueType>(entry.type), entry.value.data(), true);
  if (status == kOk) {
    taken->keys.insert(key.Word());
  } else {
    LeaveOut(entry, StatusText(status), taken);
  }
}

void StoreRequest(const ParamEntry& entry, ParamTable* table, StartupTaken* taken) {
  if (const std::int32_t request = IntOf(entry.value); request == 0 || request == 9) {
    LeaveOut(entry, "the action " + FormatInt(request) + " is no request", taken);
  } else {
    Store(entry, table, taken);
  }
}

}  // namespace

Status LoadAsBox(ParamTable* table, const std::filesystem::path& path, TblReport* report,
                 StartupTaken* taken) {
  *taken = {};
  TblReader reader;
  if (const Status status = reader.Open(path, report); status != kOk) {
    return status;
  }
  ParamTable loaded = *table;
  std::optional<ParamEntry> request;  // the last one
  ParamEntry entry;
  while (reader.Next(&entry)) {
    ++report->records;
    if (ParamKey(entry.key) == "RQST" && entry.type == IntPT) {
      request = entry;
    } else {
      Store(entry, &loaded, taken);
    }
  }
  if (const Status status = reader.End(report); status != kOk) {
    return status;
  }
  if (request) {
    StoreRequest(*request, &loaded, taken);
  }
  PutInt(&loaded, "TBVI", report->version);
  *table = std::move(loaded);
  return kOk;
}

Status LoadStartupTable(ParamTable* table, const LogSink& log) {
  const auto say = [&log](std::string_view line) {
    if (log) {
      log(line);
    }
  };
  const std::filesystem::path path =
      IsClockUnit(*table) ? std::filesystem::path() : StartupPath(*table);
  if (path.empty()) {
    say("\nNo startup.tbl");
    return kTblUnreadable;
  }
  say("\nReading startup.tbl...");
  TblReport report;
  StartupTaken taken;
  const Status status = LoadAsBox(table, path, &report, &taken);
  if (status != kOk) {
    say("\nError loading startup.tbl");
  }
  return status;
}

}  // namespace orvane

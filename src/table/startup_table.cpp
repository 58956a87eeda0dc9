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

struct ReadRecord {
  ParamEntry entry;
  std::uint64_t offset = 0;
};

// What the current mode protects keeps its value.
void Store(const ReadRecord& record, ParamTable* table, StartupTaken* taken) {
  const ParamEntry& entry = record.entry;
  const ParamKey key(entry.key);
  const Status status =
      table->SetParam(key, static_cast<ValueType>(entry.type), entry.value.data(), true);
  if (status == kOk) {
    taken->keys.insert(key.Word());
  } else {
    taken->left_out.Add(entry, record.offset, StatusText(status));
  }
}

void StoreRequest(const ReadRecord& record, ParamTable* table, StartupTaken* taken) {
  if (const std::int32_t request = IntOf(record.entry.value); request == 0 || request == 9) {
    taken->left_out.Add(record.entry, record.offset,
                        "the action " + FormatInt(request) + " is no request");
  } else {
    Store(record, table, taken);
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
  std::optional<ReadRecord> request;  // the last one
  ReadRecord record;
  while (reader.Next(&record.entry)) {
    ++report->records;
    record.offset = reader.RecordOffset();
    if (ParamKey(record.entry.key) == "TBVI") {
      continue;  // becomes the version of the file
    }
    if (ParamKey(record.entry.key) == "RQST" && record.entry.type == IntPT) {
      request = record;
    } else {
      Store(record, &loaded, taken);
    }
  }
  if (const Status status = reader.End(report); status != kOk) {
    return status;
  }
  if (request) {
    StoreRequest(*request, &loaded, taken);
  }
  PutInt(&loaded, "TBVI", report->version);
  taken->keys.insert(ParamKey("TBVI").Word());
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

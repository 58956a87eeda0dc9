// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/startup_table.h"

#include <algorithm>
#include <optional>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/path_text.h"
#include "table/param_access.h"
#include "table/values_text.h"

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

// Gives the records of a file to a box, one by one.
class Giving {
 public:
  Giving(ParamTable* box, StartupTaken* taken) : box_(box), taken_(taken) {}

  void Give(const ReadRecord& record) {
    if (ParamKey(record.entry.key) == "TBVI") {
      return;  // becomes the version of the file
    }
    if (ParamKey(record.entry.key) == "RQST" && record.entry.type == IntPT) {
      request_ = record;
    } else {
      Store(record);
    }
  }

  void End(int version) {
    if (request_) {
      StoreRequest();
    }
    PutInt(box_, "TBVI", version);
    taken_->keys.insert(ParamKey("TBVI").Word());
  }

 private:
  // What the current mode protects keeps its value.
  void Store(const ReadRecord& record) {
    const ParamEntry& entry = record.entry;
    const ParamKey key(entry.key);
    const Status status =
        box_->SetParam(key, static_cast<ValueType>(entry.type), entry.value.data(), true);
    if (status == kOk) {
      taken_->keys.insert(key.Word());
    } else {
      taken_->left_out.Add(entry, record.offset, StatusText(status));
    }
  }

  void StoreRequest() {
    const std::int32_t request = IntOf(request_->entry.value);
    if (request == 0 || request == 9) {
      taken_->left_out.Add(request_->entry, request_->offset,
                           "the action " + FormatInt(request) + " is no request");
    } else {
      Store(*request_);
    }
  }

  ParamTable* box_;
  StartupTaken* taken_;
  std::optional<ReadRecord> request_;  // the last one
};

}  // namespace

Status LoadAsBox(ParamTable* table, const std::filesystem::path& path, TblReport* report,
                 StartupTaken* taken) {
  *taken = {};
  TblReader reader;
  if (const Status status = reader.Open(path, report); status != kOk) {
    return status;
  }
  ParamTable loaded = *table;
  Giving giving(&loaded, taken);
  ReadRecord record;
  while (reader.Next(&record.entry)) {
    ++report->records;
    record.offset = reader.RecordOffset();
    giving.Give(record);
  }
  if (const Status status = reader.End(report); status != kOk) {
    return status;
  }
  giving.End(report->version);
  *table = std::move(loaded);
  return kOk;
}

StartupTaken GiveToBox(const ParamTable& table, ParamTable* box) {
  StartupTaken taken;
  Giving giving(box, &taken);
  for (const ParamKey key : AllKeys(table)) {
    giving.Give({*table.FindParam(key), 0});
  }
  giving.End(2);
  return taken;
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

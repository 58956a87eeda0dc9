// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/cal_records.h"

#include <algorithm>
#include <new>

#include "base/ascii.h"
#include "base/number_text.h"
#include "calibration/cal_reader.h"
#include "files/path_text.h"

namespace orvane {
namespace {

bool IsKind(int kind) { return !CalFields(kind).empty(); }

// Reads one file; the first fault ends it.
class Reading {
 public:
  Reading(int kind, CalRecords* cal) : kind_(kind), cal_(*cal) {}

  Status Run(const std::filesystem::path& path) {
    if (const Result<> opened = in_.Open(path); !opened) {
      return Fail(kCalNotOpened, opened.Message());
    }
    if (const Status status = TakeHeader(); status != kOk) {
      return status;
    }
    if (const Status status = TakeRecords(); status != kOk) {
      return status;
    }
    if (!in_.Outcome()) {
      return Fail(kCalNotOpened, in_.Outcome().Message());
    }
    const std::size_t count = cal_.records.size();
    if (count < 1 || count > kMaxCalRecords) {
      return Fail(kCalRecordCount, count == 0 ? "no record" : "more than 500 records");
    }
    return kOk;
  }
  const std::string& Reason() const { return reason_; }
  bool IsCut() const { return in_.IsCut(); }

 private:
  Status Fail(Status status, std::string reason) {
    reason_ = std::move(reason);
    return status;
  }

  Status TakeHeader() {
    if (!in_.TakeHeader(&cal_.header)) {
      return Fail(kCalHeaderUnreadable, in_.Outcome()
                                            ? "the file ends within its header of 132 bytes"
                                            : in_.Outcome().Message());
    }
    CalHeader& header = cal_.header;
    if (header.ctyp != kind_) {
      return Fail(kCalKindMismatch,
                  "CTYP at offset 16 is " + FormatInt(header.ctyp) + ", not " + FormatInt(kind_));
    }
    if (header.Channels() == 0) {
      return Fail(kCalHeaderUnreadable,
                  "NCHN at offset 10 is " + FormatInt(header.nchn) + ", not 1 to 12");
    }
    const std::size_t length = CalText(header.hw).size();
    std::transform(header.hw.begin(), header.hw.begin() + static_cast<std::ptrdiff_t>(length),
                   header.hw.begin(), UpperCased);
    return kOk;
  }

  // One more record than may be, so that too many are noticed.
  Status TakeRecords() {
    CalFileRecord record;
    while (cal_.records.size() <= kMaxCalRecords) {
      const std::size_t at = cal_.records.size();
      const bool is_read = in_.TakeRecord(&record);
      if (!is_read || at == 0 || record.step <= 1) {
        if (const Status status = AddBoundary(at); status != kOk) {
          return status;
        }
      }
      if (!is_read) {
        break;
      }
      cal_.records.push_back(record);
    }
    return kOk;
  }

  // A pass begins at this record, or the file ends before it.
  Status AddBoundary(std::size_t at) {
    auto& table = cal_.pass_table;
    if (!table.empty() && at - table.back() > kMaxPassRecords) {
      return Fail(kCalPassBounds, "pass " + FormatInt(table.size()) + " from offset " +
                                      FormatInt(in_.OffsetOf(table.back())) + " has " +
                                      FormatInt(at - table.back()) + " records, more than 100");
    }
    if (table.size() > kMaxCalPasses) {
      return Fail(kCalPassBounds, "pass 31 begins at offset " +
                                      FormatInt(in_.OffsetOf(table.back())) +
                                      ", there may be at most 30");
    }
    table.push_back(static_cast<std::uint32_t>(at));
    return kOk;
  }

  int kind_;
  CalRecords& cal_;
  CalReader in_;
  std::string reason_;
};

std::unique_ptr<CalRecords> Read(int kind, const std::filesystem::path& path, CalReport* report) {
  auto cal = std::make_unique<CalRecords>();
  Reading reading(kind, cal.get());
  report->status = reading.Run(path);
  if (report->status != kOk) {
    report->message = FileMessage(path, reading.Reason());
    return nullptr;
  }
  report->is_cut = reading.IsCut();
  return cal;
}

}  // namespace

std::unique_ptr<CalRecords> ReadCalRecordsAt(int kind, const std::filesystem::path& path,
                                             CalReport* report) {
  CalReport own;
  report = report == nullptr ? &own : report;
  *report = {};
  if (!IsKind(kind)) {
    *report = {kCalKindMismatch, "there is no calibration of kind " + FormatInt(kind)};
    return nullptr;
  }
  try {
    return Read(kind, path, report);
  } catch (const std::bad_alloc&) {
    *report = NoMemoryForCal(path);
    return nullptr;
  }
}

CalReport NoMemoryForCal(const std::filesystem::path& path) {
  return {kCalNoMemory, FileMessage(path, StatusText(kCalNoMemory))};
}

std::optional<int> CalKindIn(const std::filesystem::path& path) {
  CalReader in;
  CalHeader header;
  if (!in.Open(path) || !in.TakeHeader(&header)) {
    return std::nullopt;
  }
  return header.ctyp;
}

int CalKindOf(const std::filesystem::path& path) {
  if (EndsWithoutCase(PathText(path), ".CLB")) {
    return kBoxCal;
  }
  const int in_header = CalKindIn(path).value_or(0);
  const bool is_sensor = EndsWithoutCase(PathText(path), ".CLC");
  const int usual = is_sensor ? kSensorCal : kBoxCal;
  return CalFields(in_header).empty() || (is_sensor && in_header == kBoxCal) ? usual : in_header;
}

}  // namespace orvane

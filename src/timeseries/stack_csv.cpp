// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/stack_csv.h"

#include <cstring>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/path_names.h"
#include "table/param_time.h"

namespace orvane {
namespace {

// kept: items are printed at a fixed stride although the header has their size. What they do not
// hold counts as bytes 0.
float FloatAt(std::span<const std::byte> items, std::size_t offset) {
  Le<float> value;
  if (offset + sizeof value <= items.size()) {
    std::memcpy(&value, &items[offset], sizeof value);
  } else if (offset < items.size()) {
    std::memcpy(&value, &items[offset], items.size() - offset);
  }
  return value;
}

char* PutItem(char* to, float value) {
  to = WriteExponent(to, value, 5, 14);
  *to++ = ',';
  *to++ = ' ';
  return to;
}

constexpr std::size_t ItemSize(StackDomain domain) { return domain == StackDomain::kTime ? 8 : 4; }

// How many records have the items of the other domain, which were printed as this one's.
std::string OtherDomainNote(std::uint64_t others, std::uint64_t records, StackDomain domain) {
  if (others == 0) {
    return {};
  }
  const bool is_time = domain == StackDomain::kTime;
  return FormatInt(others) + " of " + FormatInt(records) + " records have items of " +
         (is_time ? "4 bytes, as frequency-domain results have, but were converted as time domain"
                  : "8 bytes, as time-domain results have, but were converted as frequency domain");
}

// A cell that a spreadsheet would compute, or that is more than one line of it.
bool IsRiskyLabel(std::string_view label) {
  constexpr std::string_view kFormulaSigns = "=+-@";
  const std::string_view text = Trimmed(label);
  return (!text.empty() && kFormulaSigns.find(text.front()) != std::string_view::npos) ||
         label.find_first_of("\r\n") != std::string_view::npos;
}

std::string LabelNote(std::uint64_t count, std::uint64_t first) {
  if (count == 0) {
    return {};
  }
  return FormatInt(count) + (count == 1 ? " label looks" : " labels look") +
         " like a formula to a spreadsheet or has a line break, the first in record " +
         FormatInt(first);
}

void Append(const std::string& more, std::string* note) {
  note->append(note->empty() || more.empty() ? "" : ", ").append(more);
}

BatchResult ConvertFile(BatchTask& task, StackDomain domain) {
  StackReader in;
  if (const Result<> opened = in.Open(task.Input()); !opened) {
    return BatchFailed(opened.Message());
  }
  const auto& path = task.Outputs()[0];
  TextFile out;
  if (const Result<> opened = out.Open(path); !opened) {
    return BatchFailed(FileMessage(path, opened.Message()));
  }
  StackRecord record;
  std::uint64_t records = 0;
  std::uint64_t others = 0;
  std::uint64_t risky = 0;
  std::uint64_t first_risky = 0;
  const std::size_t other_size =
      ItemSize(domain == StackDomain::kTime ? StackDomain::kFrequency : StackDomain::kTime);
  while (!task.Stopped() && !out.HasFailed() && in.Next(&record)) {
    WriteStackLine(record, domain, &out);
    ++records;
    if (IsRiskyLabel(record.header.Label())) {
      first_risky = first_risky == 0 ? records : first_risky;
      ++risky;
    }
    others += record.header.item_size == other_size ? 1 : 0;
    task.Advance(record.header.RecordBytes());
  }
  if (task.Stopped()) {
    return BatchCancelled();
  }
  if (!in.Outcome()) {
    return BatchFailed(in.Outcome().Message());
  }
  if (records == 0) {
    return NoRecord(in.IsCut() ? in.Offset() : 0);
  }
  if (const Result<> committed = out.Commit(); !committed) {
    return BatchFailed(FileMessage(path, committed.Message()));
  }
  std::string note = OtherDomainNote(others, records, domain);
  Append(LabelNote(risky, first_risky), &note);
  Append(in.IsCut() ? CutRecordNote(in.Offset()) : std::string(), &note);
  return BatchDone(task.Outputs(), note);
}

}  // namespace

void WriteStackLine(const StackRecord& record, StackDomain domain, TextFile* out) {
  const StackHeader& header = record.header;
  out->TextRight(header.Label(), 8).Text(", ");
  out->TextRight(FormatParamTime(header.time), 17).Text(", ");
  out->Int(header.first, 4, '0').Text(", ").Int(header.second, 1).Text(", ");
  out->Hex(header.flags, 2).Text(", ").Fixed(header.value, 6, 12).Text(", ");
  if (domain == StackDomain::kTime) {
    out->Fixed(record.ExtensionValue(), 3, 5).Text(", ");
    for (std::size_t i = 0; i < header.item_count; ++i) {
      char* to = PutItem(out->Room(), FloatAt(record.items, 8 * i));
      to = PutItem(to, FloatAt(record.items, 8 * i + 4));
      out->Took(to - 1);  // one blank less
    }
  } else {
    out->Fixed(record.ExtensionValue(), 2, 7).Text(", ");
    for (std::size_t i = 0; i < header.item_count; ++i) {
      out->Took(PutItem(out->Room(), FloatAt(record.items, 4 * i)));
    }
  }
  out->Text("\n");
}

Conversion StackCsv(StackDomain domain) {
  Conversion conversion;
  conversion.outputs_of = [](const std::string& path) {
    return std::vector<std::string>{WithExtension(path, ".csv")};
  };
  conversion.job = [domain](BatchTask& task) { return ConvertFile(task, domain); };
  return conversion;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/cal_text.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_text.h"
#include "calibration/cal_reader.h"
#include "calibration/short_fixed.h"
#include "files/path_names.h"
#include "table/param_time.h"

namespace orvane {
namespace {

constexpr double kPi = 3.141592653589793;

// "%4s,   ,   ,  %3s,  " and the value after it.
TextFile& Begin(std::string_view key, std::string_view type, TextFile* out) {
  return out->TextRight(key, 4).Text(",   ,   ,  ").TextRight(type, 3).Text(",  ");
}
void TextLine(std::string_view key, std::string_view type, std::string_view value, TextFile* out) {
  Begin(key, type, out).Text(value).Text(",\n");
}
void IntLine(std::string_view key, std::int32_t value, TextFile* out) {
  Begin(key, "Int", out).Int(value).Text(",\n");
}
void RealLine(std::string_view key, double value, TextFile* out) {
  Begin(key, "FltPT", out).Fixed(value, 5, 9).Text(",\n");
}

// The line of one channel, whole before it goes to the file.
void WriteBlock(const CalBlock& block, TextFile* out) {
  constexpr std::string_view kIndent = "                      ";
  constexpr std::size_t kNumbers = 8;
  // Not to be zeroed: only what is written is read.
  std::array<char, kIndent.size() + kNumbers*(kMaxNumberText + 1) + 1> line;  // NOLINT
  char* to = std::copy(kIndent.begin(), kIndent.end(), line.data());
  const double real = block.real;
  const double imaginary = block.imaginary;
  const auto with_comma = [&to](char* end) {
    *end = ',';
    to = end + 1;
  };
  for (const std::size_t i : {0U, 1U, 2U}) {
    with_comma(WriteShortFixed<4, 7>(to, block.values[i]));
  }
  with_comma(WriteShortFixed<5, 9>(to, block.values[3]));
  with_comma(WriteShortFixed<4, 7>(to, real));
  with_comma(WriteShortFixed<4, 7>(to, imaginary));
  with_comma(WriteShortFixed<4, 7>(to, std::sqrt(real * real + imaginary * imaginary)));
  with_comma(WriteShortFixed<2, 7>(to, 180 * std::atan2(imaginary, real) / kPi));
  *to++ = '\n';
  out->Text({line.data(), static_cast<std::size_t>(to - line.data())});
}

// What a user should know of the end of the file.
std::string NoteOn(const CalReader& in, std::size_t records, bool is_more) {
  if (is_more) {
    return "more than 500 records; those from offset " + FormatInt(in.OffsetOf(records)) +
           " on are left out";
  }
  return in.IsCut() ? CutRecordNote(in.OffsetOf(records)) : std::string();
}

BatchResult ExportFile(BatchTask& task) {
  CalReader in;
  if (const Result<> opened = in.Open(task.Input()); !opened) {
    return BatchFailed(opened.Message(), kCalTextNoInput);
  }
  const auto& path = task.Outputs()[0];
  TextFile out;
  if (const Result<> opened = out.Open(path); !opened) {
    return BatchFailed(FileMessage(path, opened.Message()), kCalTextNoOutput);
  }
  CalHeader header;
  if (!in.TakeHeader(&header)) {
    return BatchFailed(
        in.Outcome() ? "the file ends within its header of 132 bytes" : in.Outcome().Message(),
        kCalTextNoHeader);
  }
  WriteCalHeader(header, &out);
  task.Advance(sizeof header);
  CalFileRecord record;
  std::size_t records = 0;
  bool is_more = in.TakeRecord(&record);
  for (; is_more && records < kMaxCalRecords && !task.Stopped(); is_more = in.TakeRecord(&record)) {
    WriteCalRecord(record, header.Channels(), &out);
    task.Advance(in.RecordBytes());
    ++records;
  }
  if (task.Stopped()) {
    return BatchCancelled();
  }
  if (!in.Outcome()) {
    return BatchFailed(in.Outcome().Message());
  }
  if (header.Channels() == 0) {
    return BatchFailed("no record: NCHN at offset 10 is " + FormatInt(header.nchn) +
                       ", not 1 to 12");
  }
  if (records == 0) {
    return NoRecord(in.IsCut() ? in.OffsetOf(0) : 0);
  }
  if (const Result<> committed = out.Commit(); !committed) {
    return BatchFailed(FileMessage(path, committed.Message()));
  }
  return BatchDone(task.Outputs(), NoteOn(in, records, is_more));
}

}  // namespace

void WriteCalHeader(const CalHeader& header, TextFile* out) {
  TextLine("UTC", "UTC", FormatParamTime(header.utc), out);
  IntLine("SNUM", header.snum, out);
  IntLine("NCHN", header.nchn, out);
  IntLine("STAT", header.stat, out);
  TextLine("HW", "Str", CalText(header.hw), out);
  TextLine("VER", "Str", CalText(header.ver), out);
  IntLine("TCMB", header.tcmb, out);
  IntLine("TALS", header.tals, out);
  IntLine("LFRQ", header.lfrq, out);
  IntLine("Q2SR", header.q2sr, out);
  IntLine("LPFR", header.lpfr, out);
  if (header.ctyp > kBoxCal) {
    TextLine("HSN", "StrPT", CalText(header.hsn), out);
    RealLine("HATT", header.hatt, out);
    RealLine("HNOM", header.hnom, out);
    RealLine("CPHC", header.cphc, out);
  }
}

void WriteCalRecord(const CalFileRecord& record, std::size_t channels, TextFile* out) {
  out->Int(record.kind, 4).Text(",").General(record.frequency, 4, 11).Text(",");
  out->Int(record.step, 4).Text(",\n");
  for (std::size_t c = 0; c < channels; ++c) {
    WriteBlock(record.channels[c], out);
  }
  out->Text("\n");
}

Conversion ExportCalToText() {
  Conversion conversion;
  conversion.outputs_of = [](const std::string& path) {
    return std::vector<std::string>{WithExtension(LowerCasedPath(path), ".txt")};
  };
  conversion.job = ExportFile;
  conversion.counts_every_file = true;
  conversion.same_file_code = kCalTextNoOutput;
  return conversion;
}

}  // namespace orvane

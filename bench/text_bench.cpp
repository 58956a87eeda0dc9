// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers as text, stack results as CSV and batches of files against the plain ways of doing the
// same.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>
#include <array>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "base/number_format.h"
#include "calibration/cal_reader.h"
#include "calibration/cal_text.h"
#include "files/file_io.h"
#include "ratio_report.h"
#include "table/param_time.h"
#include "table/table_text.h"
#include "table/tbl_file.h"
#include "timeseries/stack_csv.h"

namespace {

using orvane::kMaxNumberText;

constexpr std::size_t kAtATime = 1000;

// Values of field data: any sign, twelve decades.
const std::vector<double>& Values() {
  static const std::vector<double> values = [] {
    std::vector<double> made;
    std::mt19937_64 random(1);
    for (int i = 0; i < 1000000; ++i) {
      const std::uint64_t bits = random();
      const double value = std::ldexp(static_cast<double>(bits >> 11U), -53) *
                           std::pow(10, static_cast<int>(bits % 12) - 5);
      made.push_back(random() % 2 == 0 ? value : -value);
    }
    return made;
  }();
  return values;
}

struct F {
  static char* Write(char* to, double value, int precision, int width) {
    return orvane::WriteFixed(to, value, precision, width);
  }
  static constexpr char kLetter = 'f';
};
struct E {
  static char* Write(char* to, double value, int precision, int width) {
    return orvane::WriteExponent(to, value, precision, width);
  }
  static constexpr char kLetter = 'e';
};
struct G {
  static char* Write(char* to, double value, int precision, int width) {
    return orvane::WriteGeneral(to, value, precision, width);
  }
  static constexpr char kLetter = 'g';
};

std::string Form(char letter, int width, int precision) {
  std::string form = "%";
  form.append(std::to_string(width)).append(".").append(std::to_string(precision));
  return form += letter;
}

template <typename Kind, int width, int precision>
void Ours(benchmark::State& state) {
  std::array<char, kMaxNumberText> text{};
  const std::span<const double> values(Values());
  std::size_t at = 0;
  for (auto _ : state) {
    for (const double value : values.subspan(at, kAtATime)) {
      benchmark::DoNotOptimize(Kind::Write(text.data(), value, precision, width));
    }
    at = (at + kAtATime) % values.size();
  }
}

template <typename Kind, int width, int precision>
void Plain(benchmark::State& state) {
  const std::string form = Form(Kind::kLetter, width, precision);
  std::array<char, kMaxNumberText> text{};
  const std::span<const double> values(Values());
  std::size_t at = 0;
  for (auto _ : state) {
    for (const double value : values.subspan(at, kAtATime)) {
      benchmark::DoNotOptimize(std::snprintf(text.data(), text.size(), form.c_str(), value));
    }
    at = (at + kAtATime) % values.size();
  }
}

// Prints how many of a million numbers differ from printf's: field values, any bits, any floats and
// the special ones in turn.
template <typename Kind, int width, int precision>
void CountDifferences() {
  using Limits = std::numeric_limits<double>;
  constexpr auto kSpecial = std::to_array<double>(
      {0.0, -0.0, Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), Limits::max(),
       Limits::denorm_min(), 0.5, 1.5, 2.5, 0.125, 99999.5});
  const std::string form = Form(Kind::kLetter, width, precision);
  std::mt19937_64 random(2);
  std::array<char, kMaxNumberText> expected{};
  std::array<char, kMaxNumberText> text{};
  int differences = 0;
  for (std::size_t i = 0; i < Values().size(); ++i) {
    const std::uint64_t bits = random();
    const double value = i % 4 == 0   ? std::bit_cast<double>(bits)
                         : i % 4 == 1 ? std::bit_cast<float>(static_cast<std::uint32_t>(bits))
                         : i % 4 == 2 ? Values()[i]
                                      : kSpecial[bits % kSpecial.size()];
    const int length = std::snprintf(expected.data(), expected.size(), form.c_str(), value);
    const auto written = Kind::Write(text.data(), value, precision, width) - text.data();
    differences += written != length || std::memcmp(text.data(), expected.data(),
                                                    static_cast<std::size_t>(written)) != 0;
  }
  std::printf("%-7s %d of %zu numbers differ from printf's\n", form.c_str(), differences,
              Values().size());
}

std::filesystem::path Folder() {
  static const std::filesystem::path folder = [] {
    // Memory where there is some: what is measured is the work, not the disk.
    const std::filesystem::path memory = "/dev/shm";
    auto path =
        (std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path()) /
        ("orvane-bench-" + std::to_string(getpid()));
    std::filesystem::create_directories(path);
    return path;
  }();
  return folder;
}

// Time-domain results: 20,000 records of 16 windows.
const std::filesystem::path& StackFile() {
  static const std::filesystem::path path = [] {
    std::vector<std::byte> bytes;
    std::size_t at = 0;
    for (int i = 0; i < 20000; ++i) {
      orvane::StackHeader header;
      header.time = {5, 4, 3, 30, 6, 9, 1, 20};
      header.first = static_cast<std::int16_t>(i % 1000);
      header.extension_size = 20;
      header.item_size = 8;
      header.item_count = 16;
      header.value = Values()[at++];
      std::memcpy(header.label.data(), "TX-1", 4);
      const auto head = orvane::BytesOf(header);
      bytes.insert(bytes.end(), head.begin(), head.end());
      bytes.resize(bytes.size() + 16);
      for (int item = 0; item < 33; ++item) {
        const orvane::Le<float> value(static_cast<float>(Values()[at++ % Values().size()]));
        const auto value_bytes = orvane::BytesOf(value);
        bytes.insert(bytes.end(), value_bytes.begin(), value_bytes.end());
      }
    }
    auto file = Folder() / "stack.trs";
    static_cast<void>(orvane::WriteFile(file, bytes));
    return file;
  }();
  return path;
}

void RunBatch(const orvane::Conversion& conversion,
              const std::vector<std::filesystem::path>& inputs, unsigned workers) {
  orvane::Batch batch({conversion, inputs, {}, workers});
  batch.Start();
  batch.Wait();
  if (batch.CountForMessage() != inputs.size()) {
    std::abort();
  }
}

void StackCsv(benchmark::State& state) {
  const auto conversion = orvane::StackCsv(orvane::StackDomain::kTime);
  StackFile();
  for (auto _ : state) {
    RunBatch(conversion, {StackFile()}, 1);
  }
}

void StackCsvByFprintf(benchmark::State& state) {
  StackFile();
  for (auto _ : state) {
    orvane::StackReader reader;
    static_cast<void>(reader.Open(StackFile()));
    std::FILE* out = std::fopen((Folder() / "plain.csv").c_str(), "wb");
    orvane::StackRecord record;
    while (reader.Next(&record)) {
      const auto& header = record.header;
      std::fprintf(out, "%8s, %17s, %04i, %1i, %02X, %12.6f, ", header.label.data(),
                   orvane::FormatParamTime(header.time).c_str(), int{header.first}, header.second,
                   header.flags, double{header.value});
      std::fprintf(out, "%5.3f, ", static_cast<double>(record.ExtensionValue()));
      for (std::size_t i = 0; i < header.item_count; ++i) {
        std::array<float, 2> pair{};
        std::memcpy(pair.data(), &record.items[8 * i], sizeof pair);
        std::fprintf(out, "%14.5e, %14.5e,", static_cast<double>(pair[0]),
                     static_cast<double>(pair[1]));
      }
      std::fprintf(out, "\n");
    }
    std::fclose(out);
  }
}

// A calibration of 12 channels and 500 records.
const std::filesystem::path& CalibrationFile() {
  static const std::filesystem::path path = [] {
    orvane::CalHeader header;
    header.ctyp = orvane::kBoxCal;
    header.nchn = orvane::kMaxCalChannels;
    const auto head = orvane::BytesOf(header);
    std::vector<std::byte> bytes(head.begin(), head.end());
    std::size_t at = 0;
    for (int i = 0; i < 500; ++i) {
      orvane::CalFileRecord record;
      record.kind = 1;
      record.frequency = static_cast<float>(std::pow(10, 4 - i / 100.0));
      record.step = static_cast<std::int16_t>(i + 1);
      for (orvane::CalBlock& block : record.channels) {
        for (auto& value : block.values) {
          value = static_cast<float>(std::fmod(Values()[at++], 100));
        }
        block.real = static_cast<float>(std::fmod(Values()[at++], 10));
        block.imaginary = static_cast<float>(std::fmod(Values()[at++], 10));
      }
      const auto more = orvane::BytesOf(record);
      bytes.insert(bytes.end(), more.begin(), more.end());
    }
    auto file = Folder() / "box.clb";
    static_cast<void>(orvane::WriteFile(file, bytes));
    return file;
  }();
  return path;
}

// Its records, in memory.
const std::vector<orvane::CalFileRecord>& CalibrationRecords() {
  static const std::vector<orvane::CalFileRecord> records = [] {
    std::vector<orvane::CalFileRecord> read;
    orvane::CalReader reader;
    orvane::CalHeader header;
    orvane::CalFileRecord record;
    static_cast<void>(reader.Open(CalibrationFile()));
    reader.TakeHeader(&header);
    while (reader.TakeRecord(&record)) {
      read.push_back(record);
    }
    return read;
  }();
  return records;
}

void CalibrationText(benchmark::State& state) {
  const auto& records = CalibrationRecords();
  for (auto _ : state) {
    orvane::TextFile out;
    static_cast<void>(out.Open(Folder() / "box.txt"));
    for (const orvane::CalFileRecord& record : records) {
      orvane::WriteCalRecord(record, orvane::kMaxCalChannels, &out);
    }
    if (!out.Commit()) {
      std::abort();
    }
  }
}

void CalibrationTextByFprintf(benchmark::State& state) {
  const auto& records = CalibrationRecords();
  for (auto _ : state) {
    std::FILE* out = std::fopen((Folder() / "plain.txt").c_str(), "wb");
    for (const orvane::CalFileRecord& record : records) {
      std::fprintf(out, "%4i,%11.4g,%4i,\n", record.kind,
                   static_cast<double>(static_cast<float>(record.frequency)), int{record.step});
      for (const orvane::CalBlock& block : record.channels) {
        const double real = block.real;
        const double imaginary = block.imaginary;
        std::fprintf(out,
                     "                      %7.4f,%7.4f,%7.4f,%9.5f,%7.4f,%7.4f,%7.4f,%7.2f,\n",
                     double{block.values[0]}, double{block.values[1]}, double{block.values[2]},
                     double{block.values[3]}, real, imaginary,
                     std::sqrt(real * real + imaginary * imaginary),
                     180 * std::atan2(imaginary, real) / 3.141592653589793);
      }
      std::fprintf(out, "\n");
    }
    std::fclose(out);
  }
}

void WriteCsvBytes(benchmark::State& state) {
  const auto csv = Folder() / "stack.csv";
  RunBatch(orvane::StackCsv(orvane::StackDomain::kTime), {StackFile()}, 1);
  std::vector<char> bytes(std::filesystem::file_size(csv));
  orvane::InFile in;
  static_cast<void>(in.Open(csv));
  in.Read(std::as_writable_bytes(std::span(bytes)));
  for (auto _ : state) {
    const int handle =
        open((Folder() / "bytes.csv").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    for (std::size_t at = 0; at < bytes.size();) {
      const auto count =
          write(handle, &bytes[at], std::min<std::size_t>(bytes.size() - at, 131072));
      if (count <= 0) {
        std::abort();
      }
      at += static_cast<std::size_t>(count);
    }
    close(handle);
  }
}

// Small files on the disk that temporary files are on: waiting for it is part of the work.
void SmallFiles(benchmark::State& state, unsigned workers) {
  static const std::vector<std::filesystem::path> files = [] {
    const auto folder =
        std::filesystem::temp_directory_path() / ("orvane-bench-files-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    orvane::ParamTable table;
    static_cast<void>(table.BuildParamIndex());
    const auto image = orvane::TblImage(table, {});
    std::vector<std::filesystem::path> paths;
    for (int i = 0; i < 1000; ++i) {
      paths.push_back(folder / (std::to_string(i) + ".tbl"));
      std::FILE* file = std::fopen(paths.back().c_str(), "wb");
      std::fwrite(image.data(), 1, image.size(), file);
      std::fclose(file);
    }
    return paths;
  }();
  for (auto _ : state) {
    RunBatch(orvane::TableText(), files, workers);
  }
}
void OneWorker(benchmark::State& state) { SmallFiles(state, 1); }
void TwoWorkers(benchmark::State& state) { SmallFiles(state, 2); }

void RemoveFiles() {
  std::filesystem::remove_all(Folder());
  std::filesystem::remove_all(std::filesystem::temp_directory_path() /
                              ("orvane-bench-files-" + std::to_string(getpid())));
}

// Both benchmarks of a format, by the names that the ratios below use.
template <typename Kind, int width, int precision>
void AddFormat() {
  const std::string form = Form(Kind::kLetter, width, precision);
  benchmark::RegisterBenchmark(form.c_str(), Ours<Kind, width, precision>);
  benchmark::RegisterBenchmark(("snprintf" + form).c_str(), Plain<Kind, width, precision>);
  CountDifferences<Kind, width, precision>();
}

constexpr double kFormatAim = 1.0 / 9;
constexpr auto kRatios = std::to_array<orvane::bench::Ratio>({
    {"%5.3f / snprintf", "%5.3f", "snprintf%5.3f", kFormatAim},
    {"%7.2f / snprintf", "%7.2f", "snprintf%7.2f", kFormatAim},
    {"%9.5f / snprintf", "%9.5f", "snprintf%9.5f", kFormatAim},
    {"%10.4f / snprintf", "%10.4f", "snprintf%10.4f", kFormatAim},
    {"%12.6f / snprintf", "%12.6f", "snprintf%12.6f", kFormatAim},
    {"%16.8f / snprintf", "%16.8f", "snprintf%16.8f", kFormatAim},
    {"%14.5e / snprintf", "%14.5e", "snprintf%14.5e", kFormatAim},
    {"%0.10g / snprintf", "%0.10g", "snprintf%0.10g", kFormatAim},
    {"%11.4g / snprintf", "%11.4g", "snprintf%11.4g", kFormatAim},
    {"CSV of stack results / a loop of fprintf", "StackCsv", "StackCsvByFprintf", 0.125},
    {"CSV of stack results / write(2) of the same bytes", "StackCsv", "WriteCsvBytes", 7.5},
    {"text of a calibration / a loop of fprintf", "CalibrationText", "CalibrationTextByFprintf",
     kFormatAim},
    {"1,000 small files, 2 workers / 1 worker", "TwoWorkers", "OneWorker", 1 / 1.5},
});

}  // namespace

int main(int argc, char** argv) {
  AddFormat<F, 5, 3>();
  AddFormat<F, 7, 2>();
  AddFormat<F, 9, 5>();
  AddFormat<F, 10, 4>();
  AddFormat<F, 12, 6>();
  AddFormat<F, 16, 8>();
  AddFormat<E, 14, 5>();
  AddFormat<G, 0, 10>();
  AddFormat<G, 11, 4>();
  benchmark::RegisterBenchmark("StackCsv", StackCsv)->UseRealTime();
  benchmark::RegisterBenchmark("StackCsvByFprintf", StackCsvByFprintf)->UseRealTime();
  benchmark::RegisterBenchmark("WriteCsvBytes", WriteCsvBytes)->UseRealTime();
  benchmark::RegisterBenchmark("CalibrationText", CalibrationText)->UseRealTime();
  benchmark::RegisterBenchmark("CalibrationTextByFprintf", CalibrationTextByFprintf)->UseRealTime();
  benchmark::RegisterBenchmark("OneWorker", OneWorker)->UseRealTime();
  benchmark::RegisterBenchmark("TwoWorkers", TwoWorkers)->UseRealTime();
  const int exit_code = orvane::bench::RunAndReport(argc, argv, kRatios);
  RemoveFiles();
  return exit_code;
}

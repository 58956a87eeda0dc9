// SPDX-License-Identifier: GPL-3.0-or-later
// A scan of a survey of many files against a loop of the same reads, against itself with an index,
// and the memory that it takes. Prints ratios of one run.
//
//   orvane-survey-bench [FOLDER [FILES]]
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "files/file_io.h"
#include "files/random_file.h"
#include "survey/survey_report.h"
#include "survey/survey_scan.h"
#include "table/param_access.h"
#include "table/param_time.h"
#include "table/tbl_file.h"
#include "timeseries/ts_header.h"

namespace {

constexpr int kRecords = 30;
constexpr int kScans = 1200;  // apart far enough that headers are read one by one
constexpr int kChannels = 6;
constexpr int kInFolder = 100;

double SecondsOf(const auto& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

constexpr long kStep = 252 + long{kScans} * kChannels * 3;

// Headers with holes for samples, or disks would be full.
void WriteWaveform(const std::filesystem::path& path, int number) {
  const std::uint32_t start =
      orvane::ParamTimeToSeconds(orvane::ParseParamTime("2026/11/01 07:00:00"));
  std::FILE* const file = std::fopen(path.c_str(), "wb");
  for (int record = 0; record < kRecords; ++record) {
    orvane::TsHeader header;
    header.time =
        orvane::SecondsToParamTime(start + static_cast<std::uint32_t>(900 * number + 30 * record));
    header.box = static_cast<std::uint16_t>(1200 + number % 5);
    header.scans = std::uint16_t{kScans};
    header.channels = kChannels;
    header.sample_width = 3;
    header.rate = std::uint16_t{60};
    header.frequency = 4;
    std::fseek(file, kStep * record, SEEK_SET);
    std::fwrite(&header, 1, sizeof header, file);
  }
  std::fclose(file);
  std::filesystem::resize_file(path, std::uint64_t{kRecords} * kStep);
}

// Half of the files are tables.
void WriteFiles(const std::filesystem::path& root, int files) {
  orvane::ParamTable table;
  if (table.BuildParamIndex() != orvane::kOk) {
    std::abort();
  }
  for (int number = 0; number < files / 2; ++number) {
    const auto folder = root / std::to_string(number / kInFolder);
    std::filesystem::create_directories(folder);
    const std::string name = std::to_string(number);
    orvane::PutInt(&table, "SNUM", 1200 + number % 5);
    const auto image = orvane::TblImage(table, {});
    std::FILE* const file = std::fopen((folder / (name + ".TBL")).c_str(), "wb");
    std::fwrite(image.data(), 1, image.size(), file);
    std::fclose(file);
    WriteWaveform(folder / (name + ".TSS"), number);
  }
}

// What any scan must do at the least: look at every name, open every file, read it as the scan
// does.
void ReadPlainly(const std::filesystem::path& root) {
  std::vector<std::byte> bytes(65536);
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    orvane::FileInfo info;
    if (orvane::ReadLinkInfo(entry.path(), &info) && info.kind == orvane::FileKind::kRegular) {
      paths.push_back(entry.path());
    }
  }
  std::sort(paths.begin(), paths.end());
  for (const auto& path : paths) {
    orvane::RandomFile file;
    if (!file.Open(path)) {
      std::abort();
    }
    const bool is_table = path.extension() == ".TBL";
    const std::size_t size = is_table ? bytes.size() : 252;
    for (int record = 0; record < (is_table ? 1 : kRecords); ++record) {
      file.ReadAt(static_cast<std::uint64_t>(kStep * record), std::span(bytes).first(size));
    }
  }
}

std::size_t Scan(const std::filesystem::path& root, const orvane::SurveyOptions& options,
                 std::size_t* page = nullptr) {
  orvane::SurveyScan scan(root, options);
  while (!scan.IsDone()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  std::vector<orvane::SharedRow> rows;
  for (auto some = scan.Take(); !some.empty(); some = scan.Take()) {
    rows.insert(rows.end(), some.begin(), some.end());
  }
  if (page != nullptr) {
    *page = orvane::SurveyReportPage({"bench", rows, scan.Findings(), scan.Notes()}).size();
  }
  return rows.size();
}

long PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

}  // namespace

int main(int argc, char** argv) {
  const std::filesystem::path root =
      argc > 1 ? argv[1] : std::filesystem::temp_directory_path() / "orvane-survey-bench";
  const int files = argc > 2 ? std::atoi(argv[2]) : 10'000;
  const auto survey = root / ("survey-" + std::to_string(files));
  if (!std::filesystem::exists(survey)) {
    WriteFiles(survey, files);
    std::this_thread::sleep_for(std::chrono::seconds(3));  // what is fresh is not kept
  }
  orvane::SurveyOptions options;
  double plain = 1e9;
  double scan = 1e9;
  std::size_t rows = 0;
  Scan(survey, options);  // warms up
  for (int i = 0; i < 3; ++i) {
    plain = std::min(plain, SecondsOf([&] { ReadPlainly(survey); }));
    scan = std::min(scan, SecondsOf([&] { rows = Scan(survey, options); }));
  }
  options.index = root / "index.db";
  std::filesystem::remove(options.index);
  const double making = SecondsOf([&] { Scan(survey, options); });
  double again = 1e9;
  for (int i = 0; i < 3; ++i) {
    again = std::min(again, SecondsOf([&] { Scan(survey, options); }));
  }
  const long peak = PeakMegabytes();
  std::size_t page = 0;
  Scan(survey, options, &page);
  std::printf("%d files, %zu rows of %d records\n", files, rows, kRecords);
  std::printf("headers            %6.3f s\n", scan);
  std::printf("same reads         %6.3f s\n", plain);
  std::printf("headers / same reads  %.2f (aim: at most 1.5)\n", scan / plain);
  std::printf("making the index   %6.3f s\n", making);
  std::printf("again              %6.3f s (aim: at most 1, for 10000)\n", again);
  std::printf("memory             %ld MB (aim: at most 200, for 50000)\n", peak);
  std::printf("page               %.1f MB\n", static_cast<double>(page) / 1048576);
  return 0;
}

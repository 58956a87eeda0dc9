// SPDX-License-Identifier: GPL-3.0-or-later
// What every conversion promises, on the files of the example survey.

#include <functional>
#include <map>
#include <vector>

#include "calibration/cal_curves.h"
#include "calibration/cal_records.h"
#include "calibration/cal_text.h"
#include "files/batch.h"
#include "spectra/calibrated_spectra.h"
#include "spectra/decay_listing.h"
#include "spectra/spectrum_text.h"
#include "stepping/schedule_text.h"
#include "stepping/tfs_file.h"
#include "support/batch_help.h"
#include "support/example_survey.h"
#include "support/failing_disk.h"
#include "support/table_help.h"
#include "support/temp_dir.h"
#include "table/table_text.h"
#include "table/table_to_v1.h"
#include "table/tbl_file.h"
#include "timeseries/restack.h"
#include "timeseries/stack_csv.h"
#include "timeseries/stack_stats.h"
#include "timeseries/stats_listing.h"
#include "timeseries/time_series_text.h"
#include "timeseries/ts_file.h"

namespace orvane::testing {
namespace {

namespace fs = std::filesystem;
using Disk = FailingDisk;

constexpr const char* kOld = "what was there before";
constexpr std::string_view kInjected = "Input/output error";

bool TellsOfFault(const std::string& text) { return text.find(kInjected) != std::string::npos; }

class EveryConversion : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(MakeExampleSurvey(dir_ / "survey")); }
  fs::path Survey(const std::string& name) const { return dir_.Path() / "survey" / name; }

  struct Work {
    const char* name;
    Conversion conversion;
    const char* input;
  };
  std::vector<Work> AllWork() const {
    SpectraOptions options;
    options.calibration_folder = Survey("Calibration");
    return {{"table text", TableText(), "SIP/Startup.tbl"},
            {"table to version 1", TableToV1(NewTable()), "SIP/Startup.tbl"},
            {"schedule text", ScheduleText(), "FDEM/2.TFS"},
            {"waveform text", TimeSeriesText(), "SIP/2417.TSS"},
            {"restacking", Restack(), "SIP/2417.TSS"},
            {"restacking in little memory", Restack({.most_memory = 1}), "SIP/2417.TSS"},
            {"stack results, time", StackCsv(StackDomain::kTime), "TDIP/2417.trs"},
            {"stack results, frequency", StackCsv(StackDomain::kFrequency), "CSAMT/2417.trs"},
            {"calibration text", ExportCalToText(), "Calibration/2417.CLB"},
            {"spectra", CalibratedSpectra(options), "CSAMT/2417.TSS"},
            {"statistics", ListingFiles(kStatsSuffix, StatsListing()), "SIP/2417.TSS"},
            {"spectrum", ListingFiles(kSpectrumSuffix, SpectrumListing({})), "SIP/2417.TSS"},
            {"decay", ListingFiles(kDecaySuffix, DecayListing({})), "TDIP/2417.TSS"},
            {"stack statistics", ListingFiles(kStackStatsSuffix, StackStatsListing({})),
             "TDIP/2417.trs"}};
  }

  TempDir dir_;
};

TEST_F(EveryConversion, ACallThatFailsIsToldAndLeavesWholeFiles) {
  for (const Work& work : AllWork()) {
    const TempDir good;
    RunOne(work.conversion, Survey(work.input), good.Path());
    for (int call = 0; call <= Disk::kRead; ++call) {
      const auto kind = static_cast<Disk::Call>(call);
      int faults = 0;
      for (int n = 1; n > faults; ++n) {
        SCOPED_TRACE(std::string(work.name) + ", call " + std::to_string(call) + " number " +
                     std::to_string(n));
        const TempDir out;
        std::vector<fs::path> outputs;
        for (const std::string& path : work.conversion.outputs_of(Survey(work.input).string())) {
          outputs.push_back(out.Path() / fs::path(path).filename());
          WriteAll(outputs.back(), kOld);
        }
        Disk disk;
        disk.Fail(kind, EIO, n, n);
        const BatchResult result = RunOne(work.conversion, Survey(work.input), out.Path());
        if (Disk::Count(kind) < n) {
          EXPECT_TRUE(result.IsDone()) << result.text;
          break;
        }
        ++faults;
        const bool may_not_matter = kind == Disk::kLock || kind == Disk::kLook;
        EXPECT_TRUE(TellsOfFault(result.text) || (may_not_matter && result.IsDone()))
            << result.text;
        // With what was made beside the outputs, and nothing that a good run does not make.
        for (const auto& output : fs::directory_iterator(out.Path())) {
          const std::string found = ReadAll(output);
          const fs::path made = good.Path() / output.path().filename();
          const bool is_new = fs::exists(made) && found == ReadAll(made);
          EXPECT_TRUE(is_new || found == kOld) << output;
          // Read errors leave nothing new, unless only a remark could not be made.
          EXPECT_TRUE(!is_new || kind != Disk::kRead || result.IsDone()) << output;
        }
        for (const fs::path& output : outputs) {
          EXPECT_TRUE(fs::exists(output)) << output;
        }
      }
      EXPECT_TRUE(faults > 0 || kind == Disk::kResize || kind == Disk::kList)
          << "call " << call << " of " << work.name;
    }
  }
}

struct Reader {
  const char* name;
  const char* file;
  std::function<std::string(const fs::path&)> read;  // what it tells; empty: all was read
};

std::string OpenWaveform(const fs::path& path) {
  TsFile file;
  const Result<> opened = file.Open(path);
  return opened ? file.ReadError() + file.CompanionNote() : opened.Message();
}

// None of them takes a read that fails for the end of the file.
const std::vector<Reader>& Readers() {
  static const std::vector<Reader> readers = {
      {"table", "SIP/Startup.tbl",
       [](const fs::path& path) {
         ParamTable table = NewTable();
         const std::vector<std::byte> before = TblImage(table, {});
         TblReport report;
         const Status status = LoadParamFile(&table, path, &report);
         EXPECT_EQ(status, report.message.empty() ? kOk : kTblUnreadable);
         EXPECT_EQ(status == kOk, TblImage(table, {}) != before) << "a table of parts";
         return report.message;
       }},
      {"waveform with its companion", "SIP/2417.TSS", OpenWaveform},
      {"waveform whose header is known", "SIP/2417.TSS",
       [](const fs::path& path) {
         TsFile file;
         const Result<> opened = file.Open(path, {TsHeaderSize::kFull});
         return opened ? file.ReadError() + file.CompanionNote() : opened.Message();
       }},
      {"band file", "MT/2417.TS2", OpenWaveform},
      {"schedule", "FDEM/2.TFS",
       [](const fs::path& path) {
         ScheduleTable table;
         ScheduleReport report;
         const bool is_read = ReadScheduleFile(path, &table, &report);
         EXPECT_EQ(is_read, report.message.empty());
         return report.message;
       }},
      {"calibration", "Calibration/2417.CLB",
       [](const fs::path& path) {
         CalReport report;
         const auto calibration = ReadCalRecordsAt(kBoxCal, path, &report);
         EXPECT_EQ(calibration != nullptr, report.message.empty());
         return report.message;
       }},
      {"calibration curves", "Calibration/2041.CLC", [](const fs::path& path) {
         const auto curves = LoadCalCurves(path);
         return curves ? curves->note : curves.Message();
       }}};
  return readers;
}

TEST_F(EveryConversion, NoReaderTakesACallThatFailsForTheEnd) {
  for (const Reader& reader : Readers()) {
    for (const Disk::Call call : {Disk::kRead, Disk::kLook}) {
      int faults = 0;
      for (int n = 1; n > faults; ++n) {
        SCOPED_TRACE(std::string(reader.name) + ", call " + std::to_string(call) + " number " +
                     std::to_string(n));
        Disk disk;
        disk.Fail(call, EIO, n, n);
        const std::string told = reader.read(Survey(reader.file));
        if (Disk::Count(call) < n) {
          EXPECT_EQ(told, "");
          break;
        }
        ++faults;
        EXPECT_TRUE(TellsOfFault(told) || told.starts_with("Failed to ")) << told;
      }
      EXPECT_GT(faults, 0) << reader.name;
    }
  }
}

TEST_F(EveryConversion, EachRecordingHasItsCalibrations) {
  const TempDir out;
  int recordings = 0;
  for (const auto& entry : fs::recursive_directory_iterator(Survey(""))) {
    if (entry.path().extension().string().starts_with(".TS")) {
      const BatchResult result =
          RunOne(CalibratedSpectra({Survey("Calibration")}), entry.path(), out.Path());
      EXPECT_TRUE(result.IsDone()) << entry.path() << ": " << result.text;
      ++recordings;
    }
  }
  EXPECT_EQ(recordings, 11);
}

// Also the place where the thread sanitizer sees them all at work.
TEST_F(EveryConversion, ManyWorkersWriteWhatOneWrites) {
  constexpr int kFiles = 6;
  for (const Work& work : AllWork()) {
    const TempDir in;
    std::vector<fs::path> inputs;
    const fs::path model = Survey(work.input);
    for (int i = 0; i < kFiles; ++i) {
      inputs.push_back(in / (std::to_string(i) + model.extension().string()));
      fs::copy_file(model, inputs.back());
      fs::path companion = fs::path(model).replace_extension(".TBL");
      if (fs::exists(companion) && model.extension() == ".TSS") {
        fs::copy_file(companion, fs::path(inputs.back()).replace_extension(".TBL"));
      }
    }
    std::map<std::string, std::string> written[2];
    for (const unsigned workers : {1U, 4U}) {
      const TempDir out;
      Batch batch({work.conversion, inputs, out.Path(), workers});
      batch.Start();
      batch.Wait();
      for (const auto& entry : fs::directory_iterator(out.Path())) {
        written[workers / 4][entry.path().filename().string()] = ReadAll(entry.path());
      }
    }
    EXPECT_GE(written[0].size(), kFiles) << work.name;
    EXPECT_TRUE(written[0] == written[1]) << work.name;
  }
}

}  // namespace
}  // namespace orvane::testing

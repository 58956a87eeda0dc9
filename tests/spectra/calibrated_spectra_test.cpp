// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/calibrated_spectra.h"

#include <gtest/gtest.h>

#include <sstream>

#include "response/decimation_filter.h"
#include "spectra/calibrated_channel.h"
#include "spectra/harmonics.h"
#include "spectra/spectra_form.h"
#include "spectra/spectra_notes.h"
#include "support/batch_help.h"
#include "support/cal_bytes.h"
#include "support/recording_help.h"
#include "support/sweeps.h"
#include "support/ts_bytes.h"
#include "timeseries/ts_listing.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

constexpr double kPi = 3.141592653589793;

std::vector<std::size_t> BinsOf(const std::vector<Harmonic>& harmonics) {
  std::vector<std::size_t> bins;
  for (const Harmonic& harmonic : harmonics) {
    bins.push_back(harmonic.bin);
  }
  return bins;
}

TEST(Harmonics, AgreeWithTheirDefinition) {
  struct Case {
    std::size_t samples;
    double base;
    double rate;
  };
  // Whole periods; a half one; even bins; a prime number of samples; an odd period; hardly any.
  for (const Case& test : {Case{2400, 4, 2400},
                           {24000, 0.5, 24000},
                           {2400, 1.5, 2400},
                           {2399, 4, 2400},
                           {2025, 25, 2025},
                           {30, 2, 30},
                           {4, 1, 4}}) {
    std::vector<std::int32_t> samples;
    for (std::size_t j = 0; j < test.samples; ++j) {
      samples.push_back(static_cast<std::int32_t>(j * j * 2654435761U));
    }
    const auto bins = BinsOf(OddHarmonics(test.base, test.rate, test.samples, 20));
    const auto values = HarmonicPlan(test.samples, bins).Evaluate(samples);
    ASSERT_EQ(values.size(), bins.size());
    ASSERT_FALSE(bins.empty());
    for (std::size_t k = 0; k < bins.size(); ++k) {
      std::complex<long double> sum = 0;
      for (std::size_t j = 0; j < test.samples; ++j) {
        const long double angle = 2 * 3.14159265358979323846264338L *
                                  static_cast<long double>(j * bins[k] % test.samples) /
                                  static_cast<long double>(test.samples);
        sum += static_cast<long double>(samples[j]) *
               std::complex<long double>(std::cos(angle), -std::sin(angle));
      }
      const Complex expected(sum / static_cast<long double>(test.samples));
      EXPECT_LE(std::abs(values[k] - expected), 1e-13 * 2147483648.0)
          << test.samples << " " << bins[k];
    }
  }
  EXPECT_EQ(BinsOf(OddHarmonics(4, 100, 100, 64)), (std::vector<std::size_t>{4, 12, 20, 28, 36}));
  EXPECT_EQ(OddHarmonics(4, 100, 100, 2).size(), 2U);
  EXPECT_TRUE(OddHarmonics(0.001, 100, 100, 64).empty());
  EXPECT_TRUE(OddHarmonics(std::nan(""), 100, 100, 64).empty());
  EXPECT_TRUE(OddHarmonics(1, 0, 100, 64).empty());
  const auto of_short = OddHarmonics(4, 480, 48, 3);  // 0.4 of a period
  ASSERT_EQ(of_short.size(), 2U);
  EXPECT_EQ(of_short[0].number, 3);
  EXPECT_EQ(BinsOf(of_short), (std::vector<std::size_t>{1, 2}));
}

TEST(Harmonics, WhatLiesBetweenTwoBinsIsToldByHowMuch) {
  struct Case {
    double frequency;
    std::size_t bin;
    double amplitude;
    double phase;
  };
  for (const Case& test :
       {Case{4.3, 4, 0.858393713397, 53.9775}, {12.9, 13, 0.983631616, -17.9925}, {4, 4, 1, 0}}) {
    const BinError error = BinErrorOf(test.frequency, 2400, 2400, test.bin);
    EXPECT_NEAR(error.amplitude, test.amplitude, 1e-6);
    EXPECT_NEAR(error.phase, test.phase, 1e-9);
    EXPECT_EQ(error.IsWorthANote(), test.phase != 0);
  }
  EXPECT_FALSE(BinErrorOf(4.0099, 2400, 2400, 4).IsWorthANote());
}

Complex Coil(double frequency) { return Complex(0, frequency / 2) / Complex(1, frequency / 2); }

// Box 2417 of two channels with its parts as they should be, and a coil.
void WriteCalibrations(const TempDir& dir) {
  testing::Sweeps sweeps;
  sweeps.parts = NominalParameters(0);
  WriteAll(dir / "2417.CLB", testing::BoxBytes(sweeps, 2).replace(8, 2, testing::Little(2417, 2)));
  std::string coil = testing::CalHeaderBytes(2, 1)
                         .replace(8, 2, testing::Little(123, 2))
                         .replace(92, 8, testing::RealBytes(0));
  for (int i = 0; i < 40; ++i) {
    const double frequency = 0.01 * std::pow(10, i / 10.0);
    coil += testing::CalRecordBytes(2, static_cast<float>(frequency), i + 1,
                                    {1, 0, 0, 0, static_cast<float>(Coil(frequency).real()),
                                     static_cast<float>(Coil(frequency).imag())});
  }
  WriteAll(dir / "123.CLC", coil);
}

struct Signal {
  int harmonic;
  double amplitude;
  double phase;  // degrees at midnight
};

// What the box stores of a signal at one input: 10 s from 03:04:05 on, 240 Hz, base 0.3 Hz.
std::vector<int> Stored(const std::vector<Signal>& signals, double counts_per_unit,
                        const FrontEndSetting& setting, bool has_coil) {
  const FrontEndParameters parts = NominalParameters(0);
  const FrontEnd front_end(parts, setting);
  const DecimationFilter filter{240, 6, 4, 60, 0};
  std::vector<int> samples(2400);
  for (const Signal& signal : signals) {
    const double frequency = 0.3 * signal.harmonic;
    Complex h = front_end.Response(frequency) * filter.Response(frequency);
    h = has_coil ? h * Coil(frequency) : h;
    for (std::size_t j = 0; j < samples.size(); ++j) {
      const double time = 3 * 3600 + 4 * 60 + 5 + static_cast<double>(j) / 240;
      const double value =
          signal.amplitude * std::abs(h) *
          std::cos(2 * kPi * frequency * time + signal.phase * kPi / 180 + std::arg(h));
      samples[j] += static_cast<int>(std::lround(value * counts_per_unit));
    }
  }
  return samples;
}

struct Line {
  double frequency = 0;
  std::array<double, 2> amplitude{};
  std::array<double, 2> phase{};
};

std::vector<Line> LinesOf(const std::string& text) {
  std::vector<Line> lines;
  std::istringstream in(text);
  for (std::string row; std::getline(in, row);) {
    std::istringstream words(row);
    words.imbue(std::locale::classic());
    int harmonic = 0;
    Line line;
    if (words >> harmonic >> line.frequency >> line.amplitude[0] >> line.phase[0] >>
        line.amplitude[1] >> line.phase[1]) {
      lines.push_back(line);
    }
  }
  return lines;
}

class SpectraTest : public ::testing::Test {
 protected:
  SpectraTest() {
    WriteCalibrations(dir_);
    const double counts = 8388607.0 / 5;  // of a volt at gain 1; a held value is 256 times that
    const auto electric = Stored(electric_, counts * 4, {1, 18, 1, 100}, false);
    const auto magnetic = Stored(magnetic_, counts * 1234.25e6, {0, 0, 0, 0}, true);
    record_ = TsBytes{.frequency = 0.3, .channels = 2, .rate = 24, .unit = -1};
    for (std::size_t j = 0; j < electric.size(); ++j) {
      record_.samples.insert(record_.samples.end(), {electric[j], magnetic[j]});
    }
  }

  void Write(const std::string& name, const std::string& more_settings = "") {
    WriteAll(dir_ / (name + ".TBL"),
             testing::HeaderV2() + Text("CHDEF1", "Ex") + Text("CHDEF2", "hx") + Whole("CHEX", 1) +
                 Whole("EXR", 200) + Whole("CHHX", 2) + Text("HXSN", "COIL0123") +
                 Whole("EGNC", 1) + Whole("HGNC", 0) + Whole("LPFR", 18) + Whole("ACDC", 1) +
                 Whole("ACDH", 0) + Real("FSCV", 5) + Real("HNOM", 1234.25) + Whole("SRL3", 240) +
                 more_settings);
    TsBytes bad = record_;
    bad.status = 6;
    WriteAll(dir_ / (name + ".TSS"), bad.Bytes() + record_.Bytes());
  }
  BatchResult Convert(const std::string& name, SpectraOptions options = {}) {
    return RunOne(CalibratedSpectra(std::move(options)), dir_ / name);
  }
  std::string Written(const std::string& name) { return ReadAll(dir_ / name); }
  void ExpectTold(const BatchResult& result, const std::string& name, const std::string& note) {
    EXPECT_NE(result.text.find(note), std::string::npos) << note << " is not in " << result.text;
    EXPECT_NE(Written(name).find(" " + note), std::string::npos) << note;
  }

  const std::vector<Signal> electric_ = {{1, 0.02, 30}, {3, 0.004, -120}};
  const std::vector<Signal> magnetic_ = {{1, 3e-10, 75}, {5, 1e-10, 170}};
  TempDir dir_;
  TsBytes record_;
};

void ExpectSignals(const std::vector<Line>& lines, std::size_t channel,
                   const std::vector<Signal>& signals, double turn) {
  for (const Signal& signal : signals) {
    const auto k = static_cast<std::size_t>(signal.harmonic / 2);
    ASSERT_GT(lines.size(), k);
    EXPECT_NEAR(lines[k].frequency, 0.3 * signal.harmonic, 1e-6);
    // Half, because the coefficient of the negative frequency has the other half.
    EXPECT_NEAR(lines[k].amplitude[channel], signal.amplitude / 2, signal.amplitude * 1e-4);
    EXPECT_NEAR(std::remainder(lines[k].phase[channel] - signal.phase - turn, 360), 0, 0.02);
  }
}

TEST_F(SpectraTest, FilesWithoutARecordToConvertFailAndKeepWhatWasThere) {
  Write("a");
  TsBytes bad = record_;
  bad.status = 6;
  for (const std::string& bytes : {bad.Bytes(), record_.Bytes().substr(0, 500)}) {
    WriteAll(dir_ / "a.TSS", bytes);
    WriteAll(dir_ / "a_cal.txt", "old");
    EXPECT_EQ(Convert("a.TSS").status, BatchStatus::kFailed);
    EXPECT_EQ(Written("a_cal.txt"), "old");
  }
}

TEST_F(SpectraTest, GiveBackWhatWasAtTheInputs) {
  Write("a");
  const BatchResult result = Convert("a.TSS");
  EXPECT_EQ(result.status, BatchStatus::kDoneWithNote);
  EXPECT_TRUE(result.text.starts_with(
      "1 bad record is left out; the box's response: amplitude known to 0."))
      << result.text;
  const std::string text = Written("a_cal.txt");
  const auto lines = LinesOf(text);
  EXPECT_EQ(lines.size(), 64U);
  ExpectSignals(lines, 0, electric_, 0);
  ExpectSignals(lines, 1, magnetic_, 0);
  const std::string path = (dir_ / "a.TSS").string();
  const std::string base = (dir_ / "2417").string();
  EXPECT_EQ(
      text.substr(0, text.find(" Harm.")),
      " Calibrated spectra of " + path + "\n Box calibration:     " + base +
          ".CLB\n Channels:            2       \n"
          " Channel  1:          Ex       V        gain x4      none\n"
          " Channel  2:          hx       T        gain x1      123.CLC\n"
          " Record:              2       \n Time:                2009/06/30 03:04:05        \n"
          " Base frequency (Hz): 0.300000        \n Sample rate (Hz):    240.00      \n"
          " Number of Scans:     2400    \n");
  EXPECT_NE(text.find(" Harm.  Frequency (Hz)   Amplitude Ch1     Phase Ch1    Amplitude Ch2 "
                      "    Phase Ch2 \n     1         0.300000    "),
            std::string::npos);
}

TEST_F(SpectraTest, CombZerosReversedChannelsAndOtherRates) {
  // At 60 Hz the comb lets nothing through; that line has no meaning.
  record_.frequency = 20;
  record_.samples[0] += 1000;
  Write("comb");
  EXPECT_TRUE(Convert("comb.TSS").IsDone());
  const auto lines = LinesOf(Written("comb_cal.txt"));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[1].amplitude[0], 0);
  EXPECT_EQ(lines[1].phase[0], 0);
  EXPECT_GT(lines[0].amplitude[0], 0);
  record_.frequency = 0.3;
  record_.samples[0] -= 1000;
  Write("b", Whole("SRL3", 30));
  const BatchResult result = Convert("b.TSS", {.most_harmonics = 3, .reversed = {2}});
  ExpectTold(result, "b_cal.txt", "Decimation filter: at the record's own rate, 240 Hz");
  const auto turned = LinesOf(Written("b_cal.txt"));
  EXPECT_EQ(turned.size(), 3U);
  ExpectSignals(turned, 0, electric_, 0);
  ExpectSignals(turned, 1, {magnetic_[0]}, 180);
}

// As the auxiliary box 2417 would write them.
TEST_F(SpectraTest, ChannelsThatNoComponentNamesAreCorrectedTheSame) {
  Write("a", Whole("CHEX", 0) + Whole("CHHX", 0) + Whole("EXR", 9000) + Real("RES1", 200) +
                 Whole("SN02", 2417));
  ExpectTold(Convert("a.TSS"), "a_cal.txt", "are those of the main box's dipoles");
  ExpectSignals(LinesOf(Written("a_cal.txt")), 0, electric_, 0);
  ExpectSignals(LinesOf(Written("a_cal.txt")), 1, magnetic_, 0);
  Write("b", Whole("CHEX", 0) + Text("DEF2R1", "Ex") + Whole("SN02", 99));
  EXPECT_EQ(Convert("b.TSS").text.find("dipoles"), std::string::npos) << "the main box";
}

TEST_F(SpectraTest, SayWhatTheyRestOn) {
  WriteAll(dir_ / "99.CLB", ReadAll(dir_ / "2417.CLB"));
  struct Case {
    double base;
    std::string settings;
    const char* note;
  };
  for (const Case& test :
       {Case{0.3, Real("FSCV", 0), "FSCV is 0: all columns are 0"},
        {0.3, Text("CHDEF1", "Bz"), "channel 1: SENSIZ1 is 0: its columns are 0"},
        {0.3, Whole("SNUM", 99), "the header of 99.CLB names another serial number, 2417"},
        {0.3, Whole("SNUM", 99), "box 2417 made the records, but the table names box 99"},
        {0.3, Real("HNOM", 0), "HNOM of the table is 0: "},
        {30, "", "channel 2: 1 lines lie beyond the records of 123.CLC (0.01 to 79.4328 Hz)"},
        {0.33, "",
         "the base frequency is off its bin: harmonic 1 by 0.3 (amplitude x 0.86, phase moved by "
         "54 degrees), farthest harmonic "}}) {
    record_.frequency = test.base;
    Write("a", test.settings);
    ExpectTold(Convert("a.TSS"), "a_cal.txt", test.note);
  }
}

TEST(SpectraNotes, NameEightRates) {
  EXPECT_TRUE(OwnRateNote({1, 2, 3, 4, 5, 6, 7, 8}).ends_with(", 7 Hz, 8 Hz"));
  EXPECT_TRUE(OwnRateNote({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}).ends_with(", 8 Hz, and 2 more"));
}

TEST(CalibratedChannels, EachKindHasItsUnitSensorAndScale) {
  const RecordingHeader header = testing::Recording(
      Text("CHDEF1", "Ex") + Text("CHDEF2", "Bz") + Text("CHDEF3", "Tx") + Text("CHDEF4", "H1") +
          Text("CHDEF5", "H2") + Whole("EGNC", 1) + Whole("HGNC", -1) + Real("SENSIZ2", 200) +
          Text("CSSN", "CS0012") + Whole("CHHY", 4) + Text("HYSN", "77") + Real("FSCV", 5),
      5);
  const auto sensor = std::make_shared<CalData>();
  sensor->header.hnom = 250;
  struct Channel {
    int kind;  // of the sensor
    const char* sensor;
    const char* unit;
    double volts;  // at the input for a full scale of one unit, times the gain
  };
  constexpr auto kChannels = std::to_array<Channel>({{0, "", "V", 5.0 / 4},
                                                     {0, "", "V/m^2", 5.0 * 4 / 200},
                                                     {kCurrentSensorCal, "12", "A", 5.0 * 4 / 0.25},
                                                     {kSensorCal, "77", "T", 5.0 * 4 / 250e6},
                                                     {kSensorCal, "", "T", 5.0 * 4 / 250e6}});
  int number = 0;
  for (const Channel& expected : kChannels) {
    SCOPED_TRACE(++number);
    const SensorNeed need = SensorNeedOf(header, number);
    EXPECT_EQ(need.kind, expected.kind);
    EXPECT_EQ(need.unit, expected.sensor);
    EXPECT_EQ(need.has_number, *expected.sensor != '\0');
    CalibratedChannel channel;
    // The sensor has no records, which the scale does not need.
    static_cast<void>(MakeCalibratedChannel(
        header, FillChannelSettings(header)[static_cast<std::size_t>(number - 1)], number, sensor,
        &channel));
    EXPECT_EQ(channel.Unit(), expected.unit);
    EXPECT_NEAR(channel.scale * 2147483392.0, expected.volts, 1e-12 * expected.volts);
  }
}

TEST_F(SpectraTest, AskAboutMissingSensorsAndTellOfMissingBoxes) {
  Write("a", Text("HXSN", "COIL77"));
  std::string question;
  SpectraOptions options;
  int asked = 0;
  Answer answer = Answer::kNo;
  options.ask = [&](const std::string& text, const BatchTask&) {
    question = text;
    ++asked;
    return answer;
  };
  EXPECT_EQ(Convert("a.TSS", options).status, BatchStatus::kLeftAlone);
  EXPECT_EQ(question, "Failed to open coil calibration file of " + (dir_ / "77").string() +
                          ".CLC for channel 2, Do you want to continue wothout it?");
  EXPECT_EQ(Convert("a.TSS").status, BatchStatus::kLeftAlone);
  Write("c", Text("HXSN", "COIL"));
  WriteAll(dir_ / "COIL.CLC", ReadAll(dir_ / "123.CLC"));
  EXPECT_EQ(Convert("c.TSS", options).status, BatchStatus::kLeftAlone) << "no number, no file";
  EXPECT_EQ(question, "Failed to open coil calibration file of " + (dir_ / "COIL").string() +
                          ".CLC for channel 2, Do you want to continue wothout it?");
  answer = Answer::kYes;
  ExpectTold(Convert("a.TSS", options), "a_cal.txt",
             "channel 2: the calibration of its sensor is missing: its columns are 0");
  const auto lines = LinesOf(Written("a_cal.txt"));
  ExpectSignals(lines, 0, electric_, 0);
  EXPECT_EQ(lines[0].amplitude[1], 0);
  for (const Line& line : lines) {
    EXPECT_EQ(line.phase[1], 0);
  }

  EXPECT_EQ(Convert("a.TSS", options).box_caption, "File Open Error");
  Write("b", Whole("SNUM", 99));
  EXPECT_EQ(Convert("b.TSS").box_caption, "Warning");
  EXPECT_EQ(Convert("b.TSS").box, " Failed to open box calibration file of " +
                                      (dir_ / "99").string() + ".CLB,  " +
                                      (dir_ / "b.TSS").string() + " cannot be converted");
  std::filesystem::remove(dir_ / "b.TBL");
  EXPECT_EQ(Convert("b.TSS").box, "Failed to open file " + (dir_ / "b.TBL").string() + "!");
  EXPECT_TRUE(Convert("b.TSS").text.starts_with("Failed to open file "));
  Write("c", Text("VER", "7420"));
  EXPECT_EQ(Convert("c.TSS").code, 1223);
  EXPECT_FALSE(std::filesystem::exists(dir_ / "c_cal.txt"));
}

// Of four files two need coil 77 and two coil 78.
TEST_F(SpectraTest, AskOnceForEachMissingCalibrationAndCancelEndsTheBatch) {
  std::vector<std::filesystem::path> files;
  for (const char* name : {"a", "b", "c", "d"}) {
    Write(name, Text("HXSN", files.size() < 2 ? "COIL77" : "COIL78"));
    files.push_back(dir_ / (std::string(name) + ".TSS"));
  }
  for (const Answer answer : {Answer::kYes, Answer::kNo, Answer::kCancel}) {
    std::vector<std::string> questions;
    SpectraOptions options;
    options.ask = [&](const std::string& text, const BatchTask&) {
      questions.push_back(text);
      return answer;
    };
    Batch batch({CalibratedSpectra(options), files, {}, 2});
    batch.Start();
    batch.Wait();
    EXPECT_EQ(questions.size(), answer == Answer::kCancel ? 1U : 2U);
    EXPECT_TRUE(questions.front().ends_with("wothout it? (for all 4 files)")) << questions.front();
    constexpr std::array kExpected = {BatchStatus::kDoneWithNote, BatchStatus::kLeftAlone,
                                      BatchStatus::kCancelled};
    for (std::size_t i = 0; i < files.size(); ++i) {
      EXPECT_EQ(batch.Result(i)->status, kExpected[static_cast<std::size_t>(answer)]) << i;
    }
  }
  std::filesystem::remove(dir_ / "2417.CLB");
  Batch batch({CalibratedSpectra({}), files, {}, 2});
  batch.Start();
  batch.Wait();
  std::size_t boxes = 0;
  for (std::size_t i = 0; i < files.size(); ++i) {
    EXPECT_NE(batch.Result(i)->text.find("Failed to open box calibration file"), std::string::npos);
    boxes += batch.Result(i)->box.empty() ? 0 : 1;
  }
  EXPECT_EQ(boxes, 1U) << "told once, listed for each";
}

TEST(CalibratedChannels, HaveTheirPhasesAbove180Degrees) {
  for (const auto& [value, phase] :
       {std::pair(Complex(-1, -0.0), 180.0), {Complex(-1, 0), 180.0}, {Complex(0, -1), -90.0}}) {
    EXPECT_EQ(CalibrateHarmonic(value, 1, 1, 1, 4, 0).phase, phase) << value;
  }
}

TEST(SpectraForm, TakesReversedChannels) {
  SpectraForm form("");
  form.Model().SetText(SpectraForm::kReversed, "1,12");
  EXPECT_FALSE(form.Fault());
  EXPECT_EQ(form.Options().reversed, (std::set<int>{1, 12}));
  for (const char* text : {"0", "13", "3;5", "3,,5", "x"}) {
    form.Model().SetText(SpectraForm::kReversed, text);
    EXPECT_EQ(form.Fault().value_or(FormModel::Fault{}).control, SpectraForm::kReversed) << text;
  }
}

TEST_F(SpectraTest, BandFilesTakeTheirRateByTheirNumber) {
  Write("s", Whole("SRL12", 240));
  record_.header_size = 32;
  WriteAll(dir_ / "s.TS12", record_.Bytes());
  EXPECT_EQ(Convert("s.TS12").status, BatchStatus::kFailed);  // no base frequency
  EXPECT_TRUE(Convert("s.TS12", {.base_frequency = 0.3}).IsDone());
  const std::string text = Written("s_TS12_cal.txt");
  EXPECT_EQ(text.find("own rate"), std::string::npos);
  ExpectSignals(LinesOf(text), 0, electric_, 0);
  EXPECT_EQ(TsResultName("/d.TS3/SITE.TSK", SpectraOptions().suffix), "/d.TS3/SITE_TSK_cal.txt");
  for (const char* name : {"a.TS20", "a.TS0", "a.TS", "a.TS00", "a.TSS", "a.TS1x", "TS1"}) {
    EXPECT_EQ(SpectraBand(name), 0) << name;
  }
}

}  // namespace
}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
// Spectra of signals whose spectra are known in closed form.
#include "spectra/spectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <random>
#include <sstream>

#include "base/number_text.h"
#include "spectra/calibrated_spectra.h"
#include "spectra/file_spectrum.h"
#include "spectra/harmonic_table.h"
#include "spectra/spectrum_text.h"
#include "support/batch_help.h"
#include "support/example_survey.h"
#include "support/recording_help.h"
#include "support/temp_dir.h"
#include "support/ts_bytes.h"

namespace orvane::testing {
namespace {

constexpr double kPi = std::numbers::pi;

std::vector<double> Sine(std::size_t scans, double bins, double amplitude, double phase) {
  std::vector<double> values(scans);
  for (std::size_t n = 0; n < scans; ++n) {
    values[n] =
        amplitude *
        std::sin(2 * kPi * bins * static_cast<double>(n) / static_cast<double>(scans) + phase);
  }
  return values;
}

double Decibels(double ratio) { return 10 * std::log10(ratio); }

TEST(Fft, AgreesWithItsDefinition) {
  for (const std::size_t length : {1U, 2U, 5U, 12U, 97U, 240U}) {
    RealFft fft(length);
    for (std::size_t n = 0; n < length; ++n) {
      fft.Input()[n] = static_cast<double>(n * n % 31);
    }
    const auto bins = fft.Transform();
    ASSERT_EQ(bins.size(), length / 2 + 1);
    for (std::size_t k = 0; k < bins.size(); ++k) {
      Complex sum = 0;
      for (std::size_t n = 0; n < length; ++n) {
        sum += static_cast<double>(n * n % 31) *
               UnitAt(-2 * kPi * static_cast<double>(n * k % length) / static_cast<double>(length));
      }
      EXPECT_LT(std::abs(bins[k] - sum), 1e-9) << length << " " << k;
    }
  }
  EXPECT_EQ(QuickLength(65535), 64800U);  // 2^5 3^4 5^2
  EXPECT_EQ(QuickLength(24000), 24000U);
  EXPECT_EQ(QuickLength(7), 6U);
  EXPECT_EQ(QuickLength(1) + QuickLength(0), 1U);
}

// Between two bins the window lets through 8 / (3 pi) of a sine's amplitude; the power of the bins
// about it is that of the sine wherever it lies.
TEST(Spectrum, OfASineAtABinAndOffIt) {
  struct Case {
    double bins;
    double share;
  };
  for (const auto& [bins, share] : {Case{40, 1}, Case{40.5, 8 / (3 * kPi)}}) {
    const auto spectrum = SpectrumOfValues(Sine(1000, bins, 7, 0.3), 1, 250);
    ASSERT_TRUE(spectrum);
    EXPECT_EQ(spectrum->Bins(), 501U);
    EXPECT_EQ(spectrum->Frequency(40), 10);
    EXPECT_NEAR(spectrum->Amplitude(0, 40), 7 * share, 1e-3);
    double power = 0;
    for (std::size_t k = 36; k <= 45; ++k) {
      power += spectrum->Density(0, k) * spectrum->BinWidth();
    }
    EXPECT_NEAR(Decibels(power / 24.5), 0, 0.01);
  }
  // A constant and what alternates are no sines: not doubled.
  std::vector<double> values(64);
  for (std::size_t n = 0; n < 64; ++n) {
    values[n] = n % 2 == 0 ? 5 : 1;
  }
  const auto both = SpectrumOfValues(values, 1, 10);
  EXPECT_NEAR(both->Amplitude(0, 0), 3, 1e-12);
  EXPECT_NEAR(both->Amplitude(0, 32), 2, 1e-12);
  EXPECT_FALSE(SpectrumOfValues(values, 1, 0));
  EXPECT_FALSE(SpectrumOfValues(std::span(values).first(3), 1, 10));
}

// The harmonics of a square wave of P samples are 4 / (P sin(pi n / P)).
TEST(Spectrum, OfASquareWaveInEachChannel) {
  std::vector<std::int32_t> held;
  for (int n = 0; n < 1000; ++n) {
    held.push_back(n % 100 < 50 ? 256 : -256);
    held.push_back(n % 100 < 50 ? -768 : 768);
  }
  auto spectrum = SpectrumOfScans(held, 2, 1000);
  ASSERT_TRUE(spectrum);
  TakeUnits({{"Ex", " (mV)", 1.0 / 256}, {"Ch 2", "", 1.0 / 256}}, &*spectrum);
  EXPECT_EQ(SpectrumLabel(spectrum->channels[0], true), "Ex (mV/√Hz)");
  EXPECT_EQ(SpectrumLabel(spectrum->channels[1], false), "Ch 2 (counts)");
  const auto rows = HarmonicTable(*spectrum, 1, {.fundamental = 10});
  ASSERT_EQ(rows.size(), 25U);  // the 51st needs a bin beyond the last
  for (const HarmonicRow& row : rows) {
    const double one = 4 / (100 * std::sin(kPi * row.number / 100));
    const auto bin = static_cast<std::size_t>(10 * row.number);
    EXPECT_NEAR(spectrum->Amplitude(0, bin), one, 1e-9) << row.number;
    EXPECT_NEAR(Decibels(row.amplitude / (3 * one)), 0, 1e-6) << row.number;
  }
}

// Uniform between -2^22 and 2^22: variance 2^44 / 3, one-sided density twice that over the rate. A
// sine between two bins stands in it, and 50 Hz, which is no noise.
TEST(Spectrum, OfNoiseOfKnownDensity) {
  constexpr double kRate = 1000;
  constexpr std::size_t kScans = 1 << 20;
  constexpr double kVariance = 17592186044416.0 / 3;
  std::mt19937 random(5);
  std::vector<double> noise(kScans);
  for (double& value : noise) {
    value = static_cast<double>(random() >> 9U) - 4194303.5;
  }
  const auto density = SpectrumOfValues(noise, 1, kRate, 2500);
  ASSERT_EQ(density->length, 2500U);
  ASSERT_EQ(density->segments, 837U);  // half of each shared with the next
  double mean = 0;
  for (std::size_t k = 2; k < 1248; ++k) {
    mean += density->Density(0, k) / 1246;
  }
  EXPECT_NEAR(mean / (2 * kVariance / kRate), 1, 0.01);

  const double fundamental = 7.1;  // bin 17.75
  const double amplitude = 3e6;
  for (std::size_t n = 0; n < kScans; ++n) {
    const double turn = 2 * kPi * static_cast<double>(n) / kRate;
    noise[n] += amplitude * std::sin(turn * fundamental) + 4e6 * std::sin(turn * 50);
  }
  const auto rows = HarmonicTable(*SpectrumOfValues(noise, 1, kRate, 2500), 0,
                                  {.fundamental = fundamental, .most = 4});
  ASSERT_EQ(rows.size(), 4U);
  for (const HarmonicRow& row : rows) {
    ASSERT_TRUE(row.floor);
    EXPECT_NEAR(Decibels(*row.floor * *row.floor / (2 * kVariance / kRate)), 0, 0.1) << row.number;
  }
  EXPECT_NEAR(2 * Decibels(rows[0].amplitude / amplitude), 0, 0.1);
  // A^2 / 2 over the density times 1.5 bins of 0.4 Hz.
  EXPECT_NEAR(*rows[0].signal_to_noise,
              Decibels(amplitude * amplitude / 2 / (2 * kVariance / kRate * 0.6)), 0.1);
  EXPECT_LT(rows[1].signal_to_noise.value_or(-99), 0) << "nothing but noise";
  EXPECT_TRUE(HarmonicTable(*density, 0, {.fundamental = 1.59}).empty()) << "not four periods";
  // Lines of 50 and 60 Hz every third bin leave no floor.
  const auto coarse =
      HarmonicTable(*SpectrumOfValues(noise, 1, kRate, 60), 0, {.fundamental = 100, .mains = {50}});
  ASSERT_FALSE(coarse.empty());
  EXPECT_FALSE(coarse[0].floor.has_value());
}

// Records of a sine of amplitude `amplitude`, as they lie in a file.
std::string RecordOfSine(double amplitude, std::size_t scans, int status = 0) {
  TsBytes record{.status = status, .rate = 1, .unit = -2};
  for (const double value : Sine(scans, 10, amplitude, 0)) {
    record.samples.push_back(static_cast<int>(std::lround(value)));
  }
  return record.Bytes();
}

// Powers are averaged: of amplitudes a and b comes sqrt((a^2 + b^2) / 2).
TEST(FileSpectrum, AveragesRecordsLikeTheFirst) {
  const TempDir dir;
  WriteAll(dir / "A.TSS", RecordOfSine(900000, 200) + RecordOfSine(3000000, 200) +
                              RecordOfSine(1200000, 200, 6) + RecordOfSine(1, 100) +
                              RecordOfSine(1, 200).substr(0, 500));
  TsFile file;
  ASSERT_TRUE(file.Open(dir / "A.TSS", {TsHeaderSize::kFull}));
  FileSpectrumOptions options;
  options.leave_out.numbers.Add(2);
  std::vector<double> powers;
  for (const unsigned threads : {1U, 3U}) {
    options.pass.threads = threads;
    const auto found = SpectrumOfFile(file, options);
    ASSERT_TRUE(found) << found.Message();
    EXPECT_EQ(found->records, 2U);
    // To half a count, and what rounding adds.
    EXPECT_NEAR(found->spectrum.Amplitude(0, 10) / 256,
                std::sqrt((900000.0 * 900000 + 1200000.0 * 1200000) / 2), 1);
    EXPECT_EQ(found->Note(options.leave_out),
              "1 record left out; marked bad and averaged: record 3; left out, of another length, "
              "rate or count of channels than the first: record 4; left out, the file ends within "
              "it: record 5");
    EXPECT_TRUE(powers.empty() || powers == found->spectrum.channels[0].powers);
    powers = found->spectrum.channels[0].powers;
  }
  options.record = 4;
  EXPECT_EQ(SpectrumOfFile(file, options)->spectrum.length, 100U);
  options.record = 2;
  EXPECT_EQ(SpectrumOfFile(file, options).Message(), "record 2 is left out");
  options.record = 6;
  EXPECT_FALSE(SpectrumOfFile(file, options));
  options.record = 0;
  options.segment = 70;  // 64: segments at 0, 32, 64, 96 and 128
  EXPECT_EQ(SpectrumOfFile(file, options)->spectrum.segments, 10U);
}

// What the harmonics' own transform gives, which is half of a sine's amplitude.
TEST(FileSpectrum, IsCorrectedAsHarmonicsAre) {
  const TempDir dir;
  ASSERT_TRUE(MakeExampleSurvey(dir / "s"));
  const auto input = dir / "s/TDIP/2417.TSS";
  ASSERT_TRUE(RunJob(CalibratedSpectra({.calibration_folder = dir / "s/Calibration"}), input,
                     dir / "cal.txt")
                  .IsDone());
  SpectrumOptions options;
  options.is_density = false;
  options.record = 1;
  options.calibration_folder = dir / "s/Calibration";
  ASSERT_TRUE(RunJob(ListingFiles(kSpectrumSuffix, SpectrumListing(options)), input, dir / "s.tsv")
                  .IsDone());
  std::istringstream harmonics(ReadAll(dir / "cal.txt"));
  harmonics.imbue(std::locale::classic());
  std::string line;
  while (std::getline(harmonics, line) && line.find(" Harm. ") == std::string::npos) {
  }
  const std::string spectrum = ReadAll(dir / "s.tsv");
  EXPECT_EQ(spectrum.substr(0, spectrum.find('\t', 16)), "frequency (Hz)\tEx1 (V)");
  for (int count = 0; count < 20; ++count) {
    double number = 0;
    double frequency = 0;
    double amplitude = 0;
    ASSERT_TRUE(harmonics >> number >> frequency >> amplitude && std::getline(harmonics, line));
    std::ostringstream key;
    key.imbue(std::locale::classic());
    key << "\n" << frequency << "\t";
    const std::size_t at = spectrum.find(key.str());
    ASSERT_NE(at, std::string::npos) << key.str();
    const double found = ParseRealPrefix(std::string_view(spectrum).substr(at + key.str().size()));
    EXPECT_NEAR(found / (2 * amplitude), 1, 0.001) << frequency;
  }
}

}  // namespace
}  // namespace orvane::testing

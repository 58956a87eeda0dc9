// SPDX-License-Identifier: GPL-3.0-or-later
// The fit of a box of 12 channels, its response at a frequency, and 20 odd harmonics of a record
// against a loop with a cosine and a sine for each sample.
#include <benchmark/benchmark.h>

#include <numbers>
#include <numeric>

#include "ratio_report.h"
#include "response/box_response.h"
#include "response/verdict.h"
#include "spectra/harmonics.h"

namespace {

using orvane::CalData;
using orvane::Complex;

constexpr int kSweepLength = 33;
constexpr std::size_t kChannels = 12;
constexpr std::size_t kPasses = 15;

// Parts a little off what they should be, 0.05 Hz to 20 kHz in each pass, noise of 1e-4; one record
// of so many is wild, 0: none.
CalData MakeBox(int wild_of = 0) {
  CalData cal;
  cal.header.nchn = std::int16_t{kChannels};
  std::uint32_t random = 1;
  const auto noise = [&random] {
    random = random * 1664525U + 1013904223U;
    return (random / 4294967296.0 - 0.5) * 3.5e-4;
  };
  for (std::size_t pass = 0; pass < kPasses; ++pass) {
    cal.pass_table.push_back(static_cast<std::uint32_t>(cal.records.size()));
    const orvane::FrontEndSetting setting =
        orvane::IsModelPass(pass) ? orvane::PassSetting(pass, 600) : orvane::FrontEndSetting();
    for (int i = 0; i < kSweepLength; ++i) {
      orvane::CalFileRecord record;
      const double frequency = 0.05 * std::pow(20000 / 0.05, i / (kSweepLength - 1.0));
      record.frequency = static_cast<float>(frequency);
      for (std::size_t c = 0; c < kChannels; ++c) {
        orvane::FrontEndParameters parts = orvane::NominalParameters(0);
        for (std::size_t part = 3; part < orvane::kDelay; ++part) {
          parts[part] *= 1 + 0.01 * static_cast<double>((part * 7 + c * 3) % 17) - 0.08;
        }
        const bool is_wild = wild_of > 0 && (noise() / 3.5e-4 + 0.5) * wild_of < 1;
        const Complex h = orvane::FrontEnd(parts, setting).Response(frequency) *
                          (1.0 + Complex(noise(), noise()) * (is_wild ? 1e3 : 1.0));
        record.channels[c].values[3] = pass == 0 ? 2.0F : 600.0F;
        record.channels[c].real = static_cast<float>(h.real());
        record.channels[c].imaginary = static_cast<float>(h.imag());
      }
      cal.records.push_back(record);
    }
  }
  cal.pass_table.push_back(static_cast<std::uint32_t>(cal.records.size()));
  return cal;
}

void FitOf12Channels(benchmark::State& state, int wild_of) {
  CalData cal = MakeBox(wild_of);
  for (auto _ : state) {
    cal.model = orvane::FitBoxModel(cal, cal.channel_flags);
  }
  for (std::size_t c = 0; c < kChannels; ++c) {
    if (cal.model.fits[c].IsDoubtful()) {
      state.SkipWithError("a channel does not fit");
    }
  }
}

void VerdictOf12Channels(benchmark::State& state) {
  CalData cal = MakeBox();
  cal.model = orvane::FitBoxModel(cal, cal.channel_flags);
  for (auto _ : state) {
    for (std::size_t c = 0; c < kChannels; ++c) {
      benchmark::DoNotOptimize(orvane::JudgeChannel(cal, c));
    }
  }
}

void ResponseOf12Channels(benchmark::State& state) {
  CalData cal = MakeBox();
  cal.model = orvane::FitBoxModel(cal, cal.channel_flags);
  orvane::RecordingHeader header;
  header.channels = kChannels;
  orvane::BoxResponse box;
  if (box.Prepare(&cal, &header, 0) != orvane::kOk) {
    state.SkipWithError("no response");
    return;
  }
  std::array<Complex, kChannels> responses;
  std::array<double, kChannels> validities{};
  double frequency = 1;
  for (auto _ : state) {
    frequency = frequency < 5000 ? frequency * 1.01 : 1;
    benchmark::DoNotOptimize(box.At(frequency, responses, validities));
  }
}

constexpr std::size_t kSamples = 24000;
constexpr int kHarmonics = 20;

std::vector<std::int32_t> Record() {
  std::vector<std::int32_t> samples(kSamples);
  std::uint32_t random = 1;
  for (std::int32_t& sample : samples) {
    random = random * 1664525U + 1013904223U;
    sample = static_cast<std::int32_t>(random);
  }
  return samples;
}

// Periods in the record times ten.
std::vector<std::size_t> Bins(std::int64_t tenths) {
  std::vector<std::size_t> bins;
  for (const orvane::Harmonic& harmonic :
       orvane::OddHarmonics(static_cast<double>(tenths) / 10, kSamples, kSamples, kHarmonics)) {
    bins.push_back(harmonic.bin);
  }
  return bins;
}

void Harmonics(benchmark::State& state, std::int64_t tenths) {
  const auto samples = Record();
  const orvane::HarmonicPlan plan(kSamples, Bins(tenths));
  for (auto _ : state) {
    benchmark::DoNotOptimize(plan.Evaluate(samples));
  }
}

// With the work that records of one length and frequency have in common.
void HarmonicsWithPlan(benchmark::State& state, std::int64_t tenths) {
  const auto samples = Record();
  const auto bins = Bins(tenths);
  for (auto _ : state) {
    benchmark::DoNotOptimize(orvane::HarmonicPlan(kSamples, bins).Evaluate(samples));
  }
}

void HarmonicsPlain(benchmark::State& state, std::int64_t tenths) {
  const auto samples = Record();
  const auto bins = Bins(tenths);
  for (auto _ : state) {
    for (const std::size_t bin : bins) {
      double real = 0;
      double imaginary = 0;
      for (std::size_t j = 0; j < kSamples; ++j) {
        const double angle =
            2 * std::numbers::pi * static_cast<double>(j * bin) / static_cast<double>(kSamples);
        real += samples[j] * std::cos(angle);
        imaginary -= samples[j] * std::sin(angle);
      }
      benchmark::DoNotOptimize(real);
      benchmark::DoNotOptimize(imaginary);
    }
  }
}

constexpr auto kRatios = std::to_array<orvane::bench::Ratio>({
    {"harmonics, half a period", "HarmonicsHalf", "HarmonicsPlainHalf", 0},
    {"harmonics, one period", "HarmonicsOne", "HarmonicsPlainOne", 1.0 / 50},
    {"harmonics, one period, with the plan", "HarmonicsWithPlanOne", "HarmonicsPlainOne", 0},
    {"harmonics, four periods", "HarmonicsFour", "HarmonicsPlainFour", 1.0 / 150},
    {"harmonics, sixteen periods", "HarmonicsSixteen", "HarmonicsPlainSixteen", 1.0 / 150},
});

}  // namespace

int main(int argc, char** argv) {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark("FitOf12Channels", FitOf12Channels, 0)->Unit(benchmark::kMillisecond);
  RegisterBenchmark("FitOf12ChannelsWild", FitOf12Channels, 4)->Unit(benchmark::kMillisecond);
  RegisterBenchmark("VerdictOf12Channels", VerdictOf12Channels)->Unit(benchmark::kMillisecond);
  RegisterBenchmark("ResponseOf12Channels", ResponseOf12Channels);
  for (const auto& [name, tenths] : {std::pair<std::string, std::int64_t>("Half", 5),
                                     {"One", 10},
                                     {"Four", 40},
                                     {"Sixteen", 160}}) {
    RegisterBenchmark(("Harmonics" + name).c_str(), Harmonics, tenths);
    RegisterBenchmark(("HarmonicsPlain" + name).c_str(), HarmonicsPlain, tenths);
  }
  RegisterBenchmark("HarmonicsWithPlanOne", HarmonicsWithPlan, 10);
  return orvane::bench::RunAndReport(argc, argv, kRatios);
}

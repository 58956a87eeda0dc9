// SPDX-License-Identifier: GPL-3.0-or-later
// Against values that were worked out independently of this program.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

#include "response/box_response.h"
#include "response/sensor_response.h"
#include "spectra/calibrated_channel.h"
#include "spectra/harmonics.h"
#include "support/recording_help.h"
#include "support/sweeps.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// The words of a row behind its kind.
class Row {
 public:
  explicit Row(const std::string& text) : in_(text), text_(text) {
    in_.imbue(std::locale::classic());
  }
  std::string Word() {
    std::string word;
    in_ >> word;
    return word;
  }
  int Int() { return static_cast<int>(Double()); }
  double Double() {
    double number = 0;
    EXPECT_TRUE(in_ >> number) << text_;
    return number;
  }
  Complex Pair() {
    const double real = Double();
    return {real, Double()};
  }
  FrontEndParameters Parts() {
    FrontEndParameters parts{};
    for (double& part : parts) {
      part = Double();
    }
    return parts;
  }
  const std::string& All() const { return text_; }

 private:
  std::istringstream in_;
  std::string text_;
};

std::vector<Row> Rows(const std::string& kind) {
  std::ifstream file(ORVANE_TEST_DATA "/response_reference.txt");
  std::vector<Row> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with(kind + " ")) {
      rows.emplace_back(line.substr(kind.size() + 1));
    }
  }
  EXPECT_FALSE(rows.empty()) << kind;
  return rows;
}

std::map<std::string, FrontEndParameters> Sets() {
  std::map<std::string, FrontEndParameters> sets;
  for (Row& row : Rows("set")) {
    const std::string name = row.Word();
    sets[name] = row.Parts();
  }
  return sets;
}

void ExpectNear(const Complex& is, const Complex& expected, double relative, const Row& row,
                double absolute = 0) {
  EXPECT_LE(std::abs(is - expected), relative * std::abs(expected) + absolute)
      << row.All() << " is " << is;
}

CalData SensorOf(const std::vector<CurvePoint>& points, double corner, const char* version) {
  CalData cal;
  cal.header.ctyp = 2;
  cal.header.nchn = std::int16_t{1};
  cal.header.cphc = corner;
  std::copy_n(version, std::string_view(version).size(), cal.header.ver.begin());
  for (const CurvePoint& point : points) {
    testing::AddRecord(2, point.frequency, {point.response}, 0, &cal);
  }
  return cal;
}

TEST(ResponseReference, FrontEndAndLowPassCodes) {
  for (Row& row : Rows("low-pass")) {
    const LowPassFilter filter = LowPassFilterOf(row.Int());
    const int part = row.Int();
    EXPECT_EQ(filter.strength, part < 0 ? -1 : part - 3) << row.All();
    EXPECT_EQ(filter.has_trap, row.Int() != 0) << row.All();
  }
  const auto sets = Sets();
  EXPECT_EQ(NominalParameters(0), sets.at("E"));
  EXPECT_EQ(NominalParameters(1), sets.at("M"));
  EXPECT_EQ(NominalParameters(3), sets.at("Z"));
  for (Row& row : Rows("front-end")) {
    const FrontEndParameters& parts = sets.at(row.Word());
    const int gain = row.Int();
    const int low_pass = row.Int();
    const int coupling = row.Int();
    const FrontEnd front_end(parts, {gain, low_pass, coupling, row.Pair()});
    const Complex is = front_end.Response(row.Double());
    ExpectNear(is, row.Pair(), 1e-10, row);
  }
  const FrontEnd coupled(sets.at("E"), {0, 16, 1, 100});
  EXPECT_EQ(coupled.Response(0), 0.0);
}

TEST(ResponseReference, DecimationFilter) {
  for (Row& row : Rows("decimation")) {
    const double frequency = row.Double();
    const double rate = row.Double();
    const int stages = row.Int();
    const int sharpness = row.Int();
    const int line = row.Int();
    const DecimationFilter filter{rate, stages, sharpness, line, row.Int()};
    ExpectNear(filter.Response(frequency), row.Pair(), 1e-10, row, 1e-12);
  }
}

TEST(ResponseReference, Sensors) {
  const RecordingHeader header = Recording("", 1);
  const auto response = [&header](const CalData& cal, double frequency) {
    Complex value;
    EXPECT_EQ(ComputeSensorResponse(&cal, &header, frequency, &value), kOk);
    return value;
  };
  std::vector<CurvePoint> points;
  std::vector<CurvePoint> reversed;
  for (Row& row : Rows("sensor-record")) {
    const double frequency = row.Double();
    points.push_back({frequency, row.Pair()});
    reversed.push_back({frequency, -points.back().response});
  }
  const double corner = 0.00159;
  const std::array<SensorResponse, 4> sensors = {
      SensorResponse(points, corner, true, 1), SensorResponse(points, corner, false, 1),
      SensorResponse(points, 0, true, 1), SensorResponse(reversed, 0, true, 1)};
  const std::array<CalData, 2> cals = {SensorOf(points, corner, "K3"),
                                       SensorOf(points, corner, "k3 7452cx")};
  for (Row& row : Rows("sensor")) {
    const double frequency = row.Double();
    for (std::size_t i = 0; i < sensors.size(); ++i) {
      const Complex expected = row.Pair();
      ExpectNear(sensors[i].At(frequency), expected, 1e-9, row);
      if (i < cals.size()) {  // whose records hold 0.1 Hz and 0.2 Hz as singles only
        ExpectNear(response(cals[i], frequency), expected, 2e-8, row);
      }
    }
  }
  for (Row& row : Rows("sensor-single")) {
    const CalData cal = SensorOf({points[static_cast<std::size_t>(7)]}, 0, "K3");
    EXPECT_EQ(row.Double(), points[7].frequency);
    const double frequency = row.Double();
    ExpectNear(response(cal, frequency), row.Pair(), 1e-9, row);
  }
  for (Row& row : Rows("high-pass")) {
    const double frequency = row.Double();
    const CalData cal = SensorOf({{1, 1}}, row.Double(), "7452DX");
    ExpectNear(response(cal, frequency), row.Pair(), 1e-12, row);
  }
}

TEST(ResponseReference, OlderFamily) {
  const FrontEndParameters parts = Sets().at("T");
  CalData cal;
  cal.header.nchn = std::int16_t{1};
  const FrontEnd swept(parts, {0, 18, 0, 0});
  for (int i = 0; i < testing::kSweepLength; ++i) {
    testing::AddRecord(18, SweepFrequency(i), {swept.Response(SweepFrequency(i))}, 0, &cal);
  }
  for (Row& row : Rows("older")) {
    std::string settings = Text("HW", "ZLbZLA4") + Whole("CHEX", 1) + Whole("TALS", 0);
    settings += Whole("TCMB", 0);
    for (const char* key : {"EGNC", "LPFR", "ACDC"}) {
      settings += Whole(key, row.Int());
    }
    settings += Whole("EXR", static_cast<int>(2 * row.Pair().real()));
    const RecordingHeader header = Recording(settings, 1);
    Complex value;
    double validity = 1;
    EXPECT_EQ(ComputeBoxResponse(&cal, &header, 0, row.Double(), {&value, 1}, {&validity, 1}), kOk);
    EXPECT_EQ(validity, 0);
    ExpectNear(value, row.Pair(), 1e-9, row);
  }
}

TEST(ResponseReference, DefinitionsTellWhatNoComponentNames) {
  const RecordingHeader header =
      Recording(Text("CHDEF1", "Ex") + Text("CHDEF2", "Hy") + Text("CHDEF3", "tx") +
                    Text("CHDEF4", "e4") + Text("CHDEF6", "Bz") + Text("CHDEF9", "E9") +
                    Text("CHDEF7", "Ez") + Whole("CHEX", 1) + Whole("EXR", 200) + Real("RES1", 9) +
                    Whole("CHHZ", 7) + Real("RES4", 200) + Real("RES9", 500) + Whole("EGNC", 1) +
                    Whole("HGNC", 2) + Whole("LPFR", 20) + Whole("ACDC", 0) + Whole("ACDH", 1) +
                    Whole("TALS", 0) + Whole("TCMB", 0) + Text("HW", "7452c0"),
                9);
  struct Expected {
    int gain;
    int low_pass;
    int coupling;
    double source;
    bool is_mapped;
  };
  constexpr Expected kElectric = {1, 20, 0, 100, true};
  constexpr Expected kMagnetic = {2, 20, 1, 767, true};
  constexpr Expected kNothing = {0, 0, 0, 0, false};
  const AllChannelSettings all = FillChannelSettings(header);
  std::size_t c = 0;
  for (const Expected& expected :
       {kElectric, kMagnetic, Expected{2, 0, 1, 0, true}, kElectric, kNothing, kMagnetic, kMagnetic,
        kNothing, Expected{1, 20, 0, 0, true}}) {
    SCOPED_TRACE(c + 1);
    EXPECT_EQ(all[c].gain, expected.gain);
    EXPECT_EQ(all[c].low_pass, expected.low_pass);
    EXPECT_EQ(all[c].coupling, expected.coupling);
    EXPECT_EQ(all[c].Source(), expected.source);
    EXPECT_EQ(all[c++].is_mapped, expected.is_mapped);
  }
  CalData cal;
  cal.header.nchn = std::int16_t{9};
  cal.pass_table = {0};
  cal.model = FitBoxModel(cal, cal.channel_flags);
  std::array<Complex, 9> values;
  std::array<double, 9> validities{};
  ASSERT_EQ(ComputeBoxResponse(&cal, &header, 0, 1000, values, validities), kOk);
  // Parts on paper, 330 nF, 100 ohms of the dipole: 39 % and 54 degrees from all-zero settings.
  EXPECT_LE(std::abs(values[3] - Complex(0.352331259777, -0.496365177033)), 1e-10) << values[3];
}

TEST(ResponseReference, SampleRates) {
  for (Row& row : Rows("rate")) {
    std::string settings = Text("VER", row.Word());
    const int band = row.Int();
    const int status = row.Int();
    const double expected = row.Double();
    for (int keys = row.Int(); keys > 0; --keys) {
      const std::string key = row.Word();
      settings += Whole(key, row.Int());
    }
    const RecordingHeader header = Recording(settings, 1);
    double rate = -1;
    EXPECT_EQ(LookupSampleRate(&header, band, &rate), status) << row.All();
    EXPECT_EQ(rate, expected) << row.All();
  }
}

TEST(ResponseReference, Harmonics) {
  constexpr double kPi = 3.141592653589793;
  std::vector<std::int32_t> samples;
  for (int j = 0; j < 2400; ++j) {
    const double sample = 1e6 * std::sin(2 * kPi * 4 * j / 2400 + 0.3) +
                          3e5 * std::sin(2 * kPi * 12 * j / 2400 - 0.7);
    samples.push_back(static_cast<std::int32_t>(sample) * 256);
  }
  CalData cal;
  cal.header.nchn = std::int16_t{1};
  cal.pass_table = {0};
  cal.model = FitBoxModel(cal, cal.channel_flags);  // to nothing: the nominal parts stay
  const RecordingHeader header =
      Recording(Text("CHDEF1", "EX") + Whole("CHEX", 1) + Whole("EGNC", 1) + Whole("LPFR", 18) +
                    Whole("ACDC", 0) + Whole("EXR", 200) + Whole("SRL1", 2400) + Real("FSCV", 5),
                1);
  CalibratedChannel channel;
  ASSERT_EQ(MakeCalibratedChannel(header, FillChannelSettings(header)[0], 1, nullptr, &channel),
            kOk);
  std::vector<std::size_t> bins;
  for (const Harmonic& harmonic : OddHarmonics(4, 2400, samples.size(), 20)) {
    bins.push_back(harmonic.bin);
  }
  EXPECT_EQ(bins.back(), 156U);
  const auto values = HarmonicPlan(samples.size(), bins).Evaluate(samples);
  for (Row& row : Rows("harmonic")) {
    const int n = row.Int();
    const double sign = row.Int() != 0 ? -1 : 1;
    Complex box;
    double validity = 0;
    ASSERT_EQ(ComputeBoxResponse(&cal, &header, 1, 4 * n, {&box, 1}, {&validity, 1}), kOk);
    const SpectralLine line = CalibrateHarmonic(values[static_cast<std::size_t>(n / 2)],
                                                channel.scale, sign * box, 1, 4 * n, 0.0625);
    const double amplitude = row.Double();
    EXPECT_NEAR(line.amplitude, amplitude, 1e-9 * amplitude + (n == 5 ? 1e-9 : 0)) << row.All();
    if (n != 5) {  // which is nothing but rounding
      EXPECT_NEAR(line.phase, row.Double(), 1e-6) << row.All();
    }
  }
}

double ToleranceOf(std::size_t part, double expected) {
  switch (part) {
    case 0:
    case 1:
    case 2:
      return 1e-6;
    case 13:
    case 19:
      return 1e-3 * expected;
    case 17:
      return 1e-3;
    default:
      return 1e-4 * expected;
  }
}

TEST(ResponseReference, Fits) {
  for (Row& row : Rows("fit")) {
    SCOPED_TRACE(row.Word());
    testing::Sweeps sweeps;
    sweeps.flags = static_cast<std::uint32_t>(row.Int());
    static_cast<void>(row.Int());  // reversed, which the true parameters tell too
    sweeps.noise = row.Double();
    sweeps.drive = row.Double();
    sweeps.parts = row.Parts();
    const FrontEndParameters expected = row.Parts();
    const double rms = row.Double();
    const int points = row.Int();
    const int entries = row.Int();
    std::array<double, 4> errors{};
    for (double& error : errors) {
      error = row.Double();
    }
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < kSlotPasses.size(); ++i) {
      starts.push_back(static_cast<std::size_t>(row.Int()));
    }
    for (int count = row.Int(); count > 0; --count) {
      sweeps.passes.push_back(static_cast<std::size_t>(row.Int()));
    }
    const auto cal = sweeps.Fitted();
    const BoxModel::FitReport& report = cal.model.fits[0];
    EXPECT_EQ(cal.model.slot_starts, starts);
    EXPECT_EQ(cal.model.entries, static_cast<std::size_t>(entries));
    EXPECT_EQ(report.points, static_cast<std::size_t>(points));
    EXPECT_EQ(report.rejected, 0U);
    EXPECT_EQ(report.is_kept, points > 0);
    EXPECT_NEAR(report.rms, rms, 1e-3 * rms);
    const FrontEndParameters parts = ParametersOf(cal, 0);
    for (std::size_t part = 0; part < parts.size(); ++part) {
      EXPECT_NEAR(parts[part], expected[part], ToleranceOf(part, expected[part])) << part;
    }
    for (std::size_t i = 0; i < errors.size(); ++i) {
      const bool is_low = i % 2 != 0;
      const double error = testing::LargestError(sweeps.parts, parts, i >= 2, is_low ? 1e-3 : 0.1,
                                                 is_low ? 0.1 : 20000);
      EXPECT_LE(error, 1.5 * errors[i] + 2e-5) << i;
    }
  }
}

}  // namespace
}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
// Decays and points of recordings that are known in closed form.
#include "timeseries/decay.h"

#include <numbers>
#include <sstream>

#include "base/number_text.h"
#include "spectra/decay_listing.h"
#include "spectra/decay_plan.h"
#include "spectra/frequency_points.h"
#include "support/decay_bytes.h"
#include "support/temp_dir.h"

namespace orvane::testing {
namespace {

constexpr double kMilli = 1000;

// Whatever the locale.
double Parsed(const std::string& cell) { return ParseReal(cell).value_or(std::nan("")); }

// The volts of a channel as the display has them, in mV.
std::vector<double> Trace(const DecayBytes& bytes, double volts) {
  std::vector<double> values;
  for (int scan = 0; scan < bytes.scans; ++scan) {
    const double seconds = static_cast<double>(scan) / bytes.rate;
    values.push_back(kMilli * (bytes.At(volts, seconds) + bytes.drift * seconds));
  }
  return values;
}

// Wherever the record begins, whatever the duty, polarity and drift, and where a period is no whole
// number of scans: then edges lie up to a scan off, which is worth 1 / (rate tau) at most.
TEST(Decay, IsThatOfTheClosedForm) {
  struct Case {
    double off_share;
    double frequency;
    double starts_at;
    double volts;
    double tolerance;
  };
  for (const Case& c : {Case{0.25, 0.5, 0, 0.02, 2e-4}, Case{0.25, 0.5, 0.375, -0.02, 2e-4},
                        Case{0.25, 0.5, 0.8125, 0.02, 2e-4}, Case{3.0 / 8, 0.5, 0.25, 0.02, 2e-4},
                        Case{1.0 / 3, 0.5, 0.3, 0.02, 7e-3}, Case{0.25, 0.53, 0.1, 0.02, 7e-3}}) {
    DecayBytes bytes{.frequency = c.frequency, .off_share = c.off_share};
    bytes.starts_at = c.starts_at;
    bytes.drift = 0.003;
    const std::vector<double> values = Trace(bytes, c.volts);
    const DecayTiming timing{512, c.frequency, c.off_share};
    const auto edges = FindEdgesIn(values, timing);
    ASSERT_TRUE(edges && edges->AreClear()) << c.starts_at;
    const std::vector<DecayWindow> windows = {
        {c.tolerance > 1e-3 ? 0.01 : 0, 0.05}, {0.05, 0.2}, {0.2, 0.24 / c.frequency}};
    const auto decay = DecayOf(values, timing, *edges, windows);
    ASSERT_TRUE(decay) << decay.Message();
    EXPECT_NEAR(decay->on.value, std::abs(kMilli * c.volts), 0.01);
    double area = 0;
    double time = 0;
    for (std::size_t k = 0; k < windows.size(); ++k) {
      const double mean = kMilli * bytes.Mean(std::abs(c.volts), windows[k].start, windows[k].end);
      EXPECT_NEAR(decay->windows[k].value / mean, 1, c.tolerance) << k << " " << c.off_share;
      area += mean * windows[k].Width();
      time += windows[k].Width();
    }
    const double expected = kMilli * area / (kMilli * std::abs(c.volts) * time);
    EXPECT_NEAR(decay->chargeability->value / expected, 1, c.tolerance);
    EXPECT_LT(decay->chargeability->spread, 0.05 * expected);
  }
}

// A coil sees a pulse at each edge, which decays while the current flows as well.
TEST(Decay, FindsTheEdgesOfPulsesToo) {
  std::vector<double> folded;
  for (int i = 0; i < 240; ++i) {
    const int since = (i + 240 - 50) % 240;  // on at 50, off at 170
    const double pulse = std::exp(-(since % 120) / 9.0);
    folded.push_back((since < 120 ? pulse : -pulse) * (i < 50 ? -1 : 1));
  }
  const auto edges = FindEdges(folded, 0.25);
  ASSERT_TRUE(edges && edges->AreClear());
  EXPECT_EQ(edges->on, 50U);
  EXPECT_EQ(edges->on_places, 120U);
  EXPECT_EQ(edges->sign, 1);
}

TEST(Decay, WindowsAndRecordsThatItRefuses) {
  const DecayBytes bytes;
  const std::vector<double> values = Trace(bytes, 0.02);
  const DecayTiming timing{512, 0.5, 0.25};
  const auto edges = FindEdgesIn(values, timing);
  EXPECT_EQ(DecayOf(values, timing, *edges, {{0.4, 0.6}}).Message(),
            "the window from 400 to 600 ms is not within the time without current, 500 ms");
  std::mt19937 random(5);
  std::normal_distribution<double> normal;
  std::vector<double> noise(4096);
  std::generate(noise.begin(), noise.end(), [&] { return normal(random); });
  EXPECT_FALSE(FindEdgesIn(noise, timing)->AreClear());
  EXPECT_FALSE(FindEdgesIn(std::vector<double>(4096, 7.0), timing)->AreClear());
  EXPECT_FALSE(FindEdgesIn(values, {512, 100, 0.25})) << "too few scans";
  EXPECT_EQ(DecayWindowsOf("40-80,80-160.5")->at(1), (DecayWindow{0.08, 0.1605}));
  for (const char* text : {"", "40", "80-40", "-1-5", "40-80,", "1-inf", "a-b"}) {
    EXPECT_FALSE(DecayWindowsOf(text)) << text;
  }
}

struct Listed {
  Result<std::string> note = Failure("not run");
  std::string text;
  std::vector<std::vector<std::string>> rows;  // without the titles
};

Listed List(const std::string& table, const std::string& records,
            const DecayListingOptions& options, unsigned threads = 1) {
  const TempDir dir;
  if (!table.empty()) {
    WriteAll(dir / "A.TBL", table);
  }
  WriteAll(dir / "A.TSS", records);
  Listed listed;
  ListingWork work;
  work.pass.threads = threads;
  work.put = [&listed](std::string_view piece) { listed.text += piece; };
  listed.note = DecayListing(options)(dir / "A.TSS", work);
  std::istringstream lines(listed.text);
  for (std::string line; std::getline(lines, line);) {
    std::vector<std::string> cells(1);
    for (const char c : line) {
      c == '\t' ? cells.emplace_back() : cells.back() += c;
    }
    listed.rows.push_back(cells);
  }
  return listed;
}

// Six records of two channels, noisy and drifting, one of them of another voltage, one bad.
std::string SixRecords() {
  std::string records;
  for (unsigned i = 1; i <= 6; ++i) {
    DecayBytes record{.volts = {0.02, -0.005}, .starts_at = 0.125 * i, .drift = 1e-4};
    record.noise = 1e-6;
    record.volts[0] = i == 4 ? 0.023 : 0.02;
    record.status = i == 2 ? 6 : 0;
    records += record.Bytes(i);
  }
  return records;
}

TEST(DecayListing, HasKnownChargeabilitiesAndMarksOutliers) {
  DecayListingOptions options;
  options.windows = *DecayWindowsOf("20-60,60-140,140-300,300-500");
  options.leave_out = *LeaveOutChoiceOf("bad");
  const Listed listed = List(DecayBytes::Table(), SixRecords(), options);
  ASSERT_TRUE(listed.note) << listed.note.Message();
  EXPECT_EQ(*listed.note, "1 record left out");
  ASSERT_EQ(listed.rows.size(), 1 + 6U * 2 * 6);  // five records and all, two channels, six rows
  const double expected = kMilli * DecayBytes().Mean(1, 0.02, 0.5);
  int found = 0;
  for (const auto& row : listed.rows) {
    if (row[2] == "chargeability (mV/V)") {
      ++found;
      // The second channel goes the other way, and the edges are those of the first.
      EXPECT_NEAR(Parsed(row[5]) / expected, 1, 0.005) << row[0] << row[1];
    }
    const bool is_other = row[0] == "4" && row[1] == "Ex1 (mV)";
    if (is_other && row[2] == "on") {
      EXPECT_EQ(row[7], "outlier");
    }
    if (row[0] == "all" && row[2] == "on") {
      EXPECT_NEAR(Parsed(row[5]), row[1] == "Ex1 (mV)" ? 20 : -5, 0.001);
    }
  }
  EXPECT_EQ(found, 12);
  EXPECT_EQ(List(DecayBytes::Table(), SixRecords(), options, 3).text, listed.text);
  options.record = 3;
  options.reference = 2;
  const Listed one = List(DecayBytes::Table(), SixRecords(), options);
  EXPECT_EQ(one.rows.size(), 1 + 2U * 6);
  EXPECT_NEAR(Parsed(one.rows[7][5]), 5, 0.001) << "its edges decide the sign";
}

TEST(DecayListing, TakesTheWindowsOfTheRule) {
  const Listed tdip = List(DecayBytes::Table(), DecayBytes().Bytes(), {});
  ASSERT_EQ(tdip.rows.size(), 1 + 2U * 10) << tdip.note.Message();
  EXPECT_EQ(tdip.rows[3][3] + " " + tdip.rows[3][4], "62.5 125");  // 500 ms / 8
  const Listed tdem = List(DecayBytes::Table(3, 1, 21), DecayBytes().Bytes(), {});
  ASSERT_EQ(tdem.rows.size(), 1 + 2U * 22) << "no chargeability";
}

TEST(DecayListing, SaysWhatIsNotKnown) {
  const std::string record = DecayBytes().Bytes();
  const std::string table = DecayBytes::Table();
  const std::string no_volts = table + RecordV2("FSCV", kMaskAnyMode, FltPT, RealBytes(0));
  std::string flat = DecayBytes{.volts = {0}}.Bytes();
  struct Case {
    std::string table;
    std::string record;
    const char* reason;
  };
  for (const Case& c :
       {Case{"", record, "without the table"}, Case{DecayBytes::Table(5), record, "TECH"},
        Case{DecayBytes::Table(2, 4), record, "is FD, not TD50"},
        Case{DecayBytes::Table(2, 6), record, "is TD50P, not TD50"},
        Case{DecayBytes::Table(2, 1, 0), record, "NUMITEM 0"},
        Case{no_volts, record, "the unit of no channel is known"},
        Case{table, DecayBytes{.frequency = 0}.Bytes(), "no frequency above 0"},
        Case{table, DecayBytes{.scans = 2000}.Bytes(), "no two whole periods"},
        Case{table, flat, "clear edges"}}) {
    const Listed listed = List(c.table, c.record, {});
    EXPECT_FALSE(listed.note) << c.reason;
    EXPECT_NE(listed.note.Message().find(c.reason), std::string::npos) << listed.note.Message();
  }
}

// Sines whose period is 40.1 scans, behind a drift of ten amplitudes; phases around half a turn.
// The last repeat has another phase and a triple third harmonic.
TEST(DecayListing, HasAmplitudesAndPhasesOfFrequencies) {
  constexpr double kPi = std::numbers::pi;
  std::string records;
  for (int i = 0; i < 6; ++i) {
    TsBytes record{.frequency = 1000 / 40.1, .channels = 2, .rate = 1000, .unit = 0};
    for (int n = 0; n < 4000; ++n) {
      const double turn = 2 * kPi * n / 40.1 + 0.7 * i;
      const double phase = (i == 5 ? 170.0 : 179.9 + 0.1 * i) * kPi / 180;
      const double first = 1e5 * std::cos(turn) + 2e4 * std::cos(3 * turn) + 200.0 * n;
      record.samples.push_back(static_cast<int>(std::lround(first)));
      record.samples.push_back(static_cast<int>(std::lround(5e4 * std::cos(turn + phase))));
    }
    records += record.Bytes();
  }
  DecayListingOptions options;
  options.reference = 1;
  options.most_harmonics = 2;
  const Listed listed = List(DecayBytes::Table(1, 4), records, options);
  ASSERT_TRUE(listed.note) << listed.note.Message();
  ASSERT_EQ(listed.rows.size(), 1 + 7U * 4);
  const double unit = kMilli * DecayBytes::kFullScale / 8388607;  // mV of a count
  EXPECT_NEAR(Parsed(listed.rows[1][4]), 1e5 * unit, 3e-4 * 1e5 * unit);
  EXPECT_NEAR(Parsed(listed.rows[2][4]), 5e4 * unit, 1e-4 * 5e4 * unit);
  EXPECT_NEAR(Parsed(listed.rows[3][4]), 2e4 * unit, 1e-3 * 2e4 * unit);
  EXPECT_NEAR(Parsed(listed.rows[2][5]), 179.9, 0.02);
  EXPECT_NEAR(Parsed(listed.rows[10][5]), -179.9, 0.02);
  EXPECT_EQ(listed.rows[22][8], "outlier");
  EXPECT_EQ(listed.rows[6][8], "");
  EXPECT_EQ(listed.rows[26][0], "all");
  EXPECT_NEAR(std::abs(Parsed(listed.rows[26][5])), 180, 0.1);
  EXPECT_LT(Parsed(listed.rows[26][7]), 1) << "about half a turn nothing jumps";
  options.reference = 0;
  const Listed without = List(DecayBytes::Table(1, 4), records, options);
  EXPECT_NE(without.note->find("no phases"), std::string::npos);
  EXPECT_EQ(without.rows[1][5], "");
}

}  // namespace
}  // namespace orvane::testing

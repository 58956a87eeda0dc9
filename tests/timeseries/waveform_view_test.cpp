// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/waveform_view.h"

#include <algorithm>
#include <cmath>

#include "support/table_help.h"
#include "support/temp_dir.h"
#include "support/ts_bytes.h"
#include "timeseries/clock_time.h"
#include "timeseries/trace_arrangement.h"
#include "timeseries/waveform_form.h"
#include "timeseries/waveform_gain_form.h"
#include "timeseries/waveform_text.h"

namespace orvane::testing {
namespace {

class WaveformViews : public ::testing::Test {
 protected:
  Result<> Open(const std::string& bytes, const std::string& parameters) {
    WriteAll(dir_ / "A.TBL", HeaderV2() + RecordV2("TECH", 0, IntPT, "") + parameters);
    WriteAll(dir_ / "A.TSS", bytes);
    return view_.Open(dir_ / "A.TSS");
  }
  static std::string Channel(int number, const char* name) {
    return RecordV2("CHDEF" + std::to_string(number), 0, StrPT, name);
  }
  static std::string Real(const char* key, double value) {
    return RecordV2(key, 0, FltPT, RealBytes(value));
  }
  TempDir dir_;
  WaveformView view_;
};

TEST_F(WaveformViews, NamesUnitsAndScales) {
  const std::string gains = Channel(1, "Ex1") + Channel(2, "hy") + Channel(3, "Bz") +
                            Channel(4, "Temp") + RecordV2("EGNC", 0, IntPT, IntBytes(-1)) +
                            RecordV2("HGNC", 0, IntPT, IntBytes(2));
  const std::string bytes = TsBytes{.channels = 5, .samples = {1, 1, 1, 1, 1}}.Bytes();
  // One count is 256 / 2147483392 of "FSCV": a volt where that is 8388607.
  struct Case {
    double full_scale;
    double nominal;
    bool small;
    std::vector<std::string> labels;
    std::vector<double> shown;
  };
  for (const auto& [full_scale, nominal, small, labels, shown] :
       {Case{8388607,
             2,
             false,
             {"Ex1 (mV)", "hy (nT)", "Bz (Micro V)", "Temp", "Ch 5"},
             {4e3, 1e9 / 16 / 2e6, 1e6 / 16, 1.0 / 16, 1.0 / 16}},
        Case{8388607,
             0,
             true,
             {"Ex1 (Micro V)", "hy", "Bz (Micro V)", "Temp", "Ch 5"},
             {4e6, 1, 1e6 / 16, 1.0 / 16, 1.0 / 16}},
        Case{0, 2, false, {"Ex1", "hy", "Bz", "Temp", "Ch 5"}, {1, 1, 1, 1, 1}},
        Case{INFINITY, 2, false, {"Ex1", "hy", "Bz", "Temp", "Ch 5"}, {1, 1, 1, 1, 1}}}) {
    ASSERT_TRUE(Open(bytes, gains + Real("FSCV", full_scale) + Real("HNOM", nominal)));
    view_.SetSmallUnit(small);
    ASSERT_EQ(view_.TraceCount(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
      EXPECT_EQ(view_.Channel(i).Label(), labels[i]);
      EXPECT_DOUBLE_EQ(view_.Channel(i).scale * 256, shown[i]) << labels[i];
    }
  }
  // Gains of a record go before the table's, those of single ones before those of all.
  ASSERT_TRUE(Open(bytes + bytes, gains + Real("FSCV", 8388607)));
  const auto show = [this](const char* electric, const char* other, bool for_all) {
    WaveformGainForm form(view_);
    form.Model().SetText(WaveformGainForm::kElectric, electric);
    form.Model().SetText(WaveformGainForm::kOther, other);
    form.Model().SetIndex(WaveformGainForm::kForAll, for_all ? 1 : 0);
    form.Commit(&view_);
    EXPECT_EQ(form.Hint(), "The parameter table: E x 0.25, others x 16");
  };
  const auto shown_by = [this](std::uint64_t record, double electric, double other) {
    EXPECT_TRUE(view_.GoTo(record));
    EXPECT_DOUBLE_EQ(view_.Channel(0).scale * 256 * electric, 1e3) << record;
    EXPECT_DOUBLE_EQ(view_.Channel(2).scale * 256 * other, 1e6) << record;
  };
  show("8", "2", false);
  EXPECT_EQ(view_.NoteText(), "gains as entered: E x 8, others x 2");
  shown_by(2, 0.25, 16);
  EXPECT_EQ(view_.NoteText(), "");
  shown_by(1, 8, 2);
  show("0.5", "4", true);
  shown_by(2, 0.5, 4);
  show("0.25", "16", false);
  shown_by(2, 0.25, 16);
  shown_by(1, 0.5, 4);
  // Read again the file has another first record.
  EXPECT_TRUE(view_.GoTo(1));
  show("8", "2", false);
  WriteAll(dir_ / "A.TSS", bytes + bytes + bytes);
  ASSERT_TRUE(view_.Reload());
  shown_by(1, 8, 2);
  TsBytes another{.channels = 5, .samples = {1, 1, 1, 1, 1}};
  another.frequency = 2;
  WriteAll(dir_ / "A.TSS", another.Bytes() + bytes);
  ASSERT_TRUE(view_.Reload());
  shown_by(1, 0.5, 4);
  ASSERT_TRUE(Open(bytes, gains + Real("FSCV", 8388607)));
  shown_by(1, 0.25, 16);
  // A band has them from the table beside it; without one there are numbers and counts.
  WriteAll(dir_ / "A.TS1", TsBytes{.samples = {1}, .header_size = 32}.Bytes());
  ASSERT_TRUE(Open(bytes, gains + Real("FSCV", 8388607)) && view_.Open(dir_ / "A.TS1"));
  EXPECT_EQ(view_.Channel(0).Label(), "Ex1 (mV)");
  EXPECT_DOUBLE_EQ(view_.Channel(0).scale * 256, 4e3);
  std::filesystem::remove(dir_ / "A.TBL");
  ASSERT_TRUE(view_.Open(dir_ / "A.TS1"));
  EXPECT_EQ(view_.Channel(0).Label(), "Ch 1");
  EXPECT_EQ(view_.Channel(0).scale * 256, 1);
  EXPECT_EQ(view_.StatusBarText(), "1 / 1, raw counts, no table A.TBL");
  EXPECT_EQ(view_.WhyNoGains(), "Without its parameter table a waveform is shown in counts");
}

TEST_F(WaveformViews, TextsAndPaging) {
  const TsBytes good{.frequency = 0.125, .samples = {-3, 4}};
  const TsBytes bad{.samples = {9, 9}, .status = 6};
  ASSERT_TRUE(Open(good.Bytes() + bad.Bytes() + good.Bytes() + bad.Bytes(), ""));
  EXPECT_EQ(view_.TitleText(),
            "Freq(Hz):    0.1250, Sample Rate:  2400.0,  Scans: 2,  Time: 2009/06/30 03:04:05,  "
            "(1 / 4 )");
  EXPECT_EQ(view_.StatusText(0), "\n ( 7.00      )");
  EXPECT_EQ(view_.StatusBarText(), "1 / 4, first bad at 2");
  EXPECT_TRUE(view_.NextBad());
  EXPECT_EQ(view_.StatusText(0), "\n (Sta: 6 )");
  EXPECT_TRUE(view_.NextBad());
  EXPECT_EQ(view_.Number(), 4U);
  EXPECT_FALSE(view_.Next());
  EXPECT_FALSE(view_.NextBad());
  EXPECT_FALSE(view_.GoTo(0));
  EXPECT_TRUE(view_.First());
  EXPECT_FALSE(view_.Previous());

  WaveformForm form(view_);
  form.Model().SetText(WaveformForm::kSegment, "5");
  form.Model().SetText(WaveformForm::kZoom, "2.5");
  EXPECT_EQ(form.Validate()->control, WaveformForm::kSegment);
  form.Commit(&view_);
  EXPECT_EQ(view_.Number(), 1U);
  form.Model().SetText(WaveformForm::kSegment, "3");
  form.Model().SetIndex(WaveformForm::kAutoScale, 0);
  EXPECT_FALSE(form.Validate());
  form.Commit(&view_);
  EXPECT_EQ(view_.Number(), 3U);
  EXPECT_EQ(view_.Settings().zoom, 2.5);
  EXPECT_FALSE(view_.Settings().auto_scale);
}

TEST_F(WaveformViews, AOneScanSpikeShowsAtEveryWidth) {
  TsBytes record{.channels = 2, .samples = std::vector<int>(2000, 1), .rate = 10, .unit = 0};
  for (const std::size_t spike : {0U, 1U, 499U, 500U, 998U, 999U}) {
    record.samples[2 * spike + 1] = 5000;
    ASSERT_TRUE(Open(record.Bytes(), ""));
    record.samples[2 * spike + 1] = 1;
    for (const int pixels : {1, 2, 3, 7, 100, 333, 999, 1000, 5000}) {
      const WaveformTrace trace = view_.Traces(pixels)[1];
      ASSERT_LE(trace.times.size(), 2U * static_cast<unsigned>(pixels));
      const auto at = std::max_element(trace.values.begin(), trace.values.end());
      EXPECT_EQ(*at, 5000) << spike << " " << pixels;
      EXPECT_DOUBLE_EQ(trace.times[static_cast<std::size_t>(at - trace.values.begin())],
                       static_cast<double>(spike) / 10);
      EXPECT_TRUE(std::is_sorted(trace.times.begin(), trace.times.end()));
      EXPECT_EQ(view_.Traces(pixels)[0].values[0], 1);
    }
  }
}

TEST_F(WaveformViews, TimesScalesCursorsAndCopying) {
  const TsBytes record{.samples = {0, 10, 20, 30, 40}, .rate = 10, .unit = 0};
  const TsBytes larger{.samples = {0, 100, 200, 300, 400}, .rate = 10, .unit = 0};
  ASSERT_TRUE(Open(record.Bytes() + larger.Bytes(), ""));
  EXPECT_DOUBLE_EQ(view_.VisibleTimes().high, 0.4);
  EXPECT_NEAR(view_.ValuesOf(0).high, 42, 1e-9);
  view_.ZoomTimes(2, 0.2);
  EXPECT_NEAR(view_.VisibleTimes().low, 0.1, 1e-12);
  EXPECT_NEAR(view_.ValuesOf(0).high, 31, 1e-9);
  EXPECT_EQ(VisibleText(view_), "Time (s)\tCh 1\n0.1\t10\n0.2\t20\n0.3\t30\n");
  EXPECT_EQ(view_.Traces(100)[0].values.size(), 5U);  // one scan beyond each edge
  view_.PanTimes(7);
  EXPECT_NEAR(view_.VisibleTimes().low, 0.2, 1e-12);

  WaveformSettings settings = view_.Settings();
  settings.auto_scale = false;
  settings.zoom = 2;
  view_.SetSettings(settings);
  EXPECT_TRUE(view_.Next());  // neither times nor scales move
  EXPECT_NEAR(view_.VisibleTimes().low, 0.2, 1e-12);
  EXPECT_NEAR(view_.ValuesOf(0).low, 24.5, 1e-9);
  EXPECT_NEAR(view_.ValuesOf(0).high, 35.5, 1e-9);

  // Channels of one unit then have one scale.
  const TsBytes two{.channels = 2, .samples = {0, 0, 10, 100}, .rate = 10, .unit = 0};
  WaveformView both;
  WriteAll(dir_ / "B.TBL", HeaderV2() + RecordV2("TECH", 0, IntPT, ""));
  WriteAll(dir_ / "B.TSS", two.Bytes());
  auto file = std::make_unique<TsFile>();
  ASSERT_TRUE(file->Open(dir_ / "B.TSS", {}));
  both.Take(std::move(file), {});
  EXPECT_EQ(both.Number(), 1U);
  EXPECT_NEAR(both.ValuesOf(0).high, 10.5, 1e-9);
  for (const auto& [zoom, kept] : {std::pair(1e7, 1e6), {1e6, 1e6}, {0.0, 0.01}, {2.0, 2.0}}) {
    both.SetSettings({.zoom = zoom});
    EXPECT_EQ(both.Settings().zoom, kept);
  }
  both.SetSettings({.auto_scale = false});
  EXPECT_NEAR(both.ValuesOf(0).high - both.ValuesOf(0).low, 110, 1e-9);

  EXPECT_EQ(CursorText(view_), "");
  view_.SetCursor(WaveformView::kFirstCursor, 0.11);
  view_.SetCursor(WaveformView::kSecondCursor, 99);
  EXPECT_EQ(CursorText(view_), "Time (s)\t0.1\t0.4\t0.3\nCh 1\t100\t400\t300\n");
}

TEST_F(WaveformViews, NearFullScaleIsShownWithItsLimit) {
  struct Case {
    std::vector<int> samples;
    std::vector<double> lines;
    double top;  // of the value axis: 5 % above the line, or above the trace
  };
  for (const auto& [samples, lines, top] :
       {Case{{0, 8388607}, {8388607}, 8388607 * 1.05},
        Case{{0, 8220835}, {8388607}, 8388607 * 1.05}, Case{{0, 8220834}, {}, 8220834 * 1.05},
        Case{{-8388608, 0}, {-8388607}, 8388608 * 0.05},
        Case{{-8300000, 8300000}, {-8388607, 8388607}, 8388607 * 1.1}}) {
    ASSERT_TRUE(Open(TsBytes{.samples = samples}.Bytes(), ""));
    EXPECT_EQ(view_.FullScaleLines(0), lines) << samples[0] << " " << samples[1];
    EXPECT_NEAR(view_.ValuesOf(0).high, top, 1);
  }
}

TEST_F(WaveformViews, PansAndResets) {
  ASSERT_TRUE(Open(TsBytes{.samples = {0, 10, 20, 30, 40}, .rate = 10, .unit = 0}.Bytes(), ""));
  view_.PanValues(0.5);  // 44 are visible
  EXPECT_NEAR(view_.ValuesOf(0).low, 20, 1e-9);
  view_.ZoomValues(2);
  view_.PanValues(-0.5);
  EXPECT_NEAR(view_.ValuesOf(0).low, 20, 1e-9) << "half of 22 down from 31";
  view_.PanValues(99);
  EXPECT_NEAR(view_.ValuesOf(0).high, 75, 1e-9);
  view_.ZoomTimes(2, 0.2);
  view_.ResetViews();
  EXPECT_NEAR(view_.ValuesOf(0).low, -2, 1e-9);
  EXPECT_NEAR(view_.ValuesOf(0).high, 42, 1e-9);
  EXPECT_DOUBLE_EQ(view_.VisibleTimes().high, 0.4);
  EXPECT_TRUE(view_.HasDots(30));
  EXPECT_FALSE(view_.HasDots(29));
}

TEST_F(WaveformViews, SaysWhatIsNotDrawn) {
  const TsBytes one{.channels = 14, .samples = std::vector<int>(14, 7), .rate = 10, .unit = 0};
  const TsBytes none{.samples = {}, .status = 6};
  ASSERT_TRUE(Open(one.Bytes() + none.Bytes(), Channel(2, "Ey")));
  EXPECT_EQ(view_.NoteText(), "");
  EXPECT_EQ(view_.Traces(100)[1].times, (std::vector<double>{0, 0.1})) << "a scan lasts";
  EXPECT_EQ(TraceArrangement().NotDrawnText(view_, 12), "No room for Ch 13, Ch 14");
  EXPECT_EQ(TraceArrangement().NotDrawnText(view_, 1),
            "No room for Ey, Ch 3, Ch 4, Ch 5, Ch 6, Ch 7, Ch 8, Ch 9, Ch 10, Ch 11, Ch 12, Ch 13"
            " and 1 more");
  ASSERT_TRUE(view_.Next());
  EXPECT_EQ(view_.NoteText(), "bad record, no scans");
  EXPECT_EQ(TraceArrangement().NotDrawnText(view_, 1), "");
  ASSERT_TRUE(Open("", ""));
  EXPECT_EQ(view_.EmptyText(), "A.TSS has no segments");
  EXPECT_EQ(view_.WhyNoGains(), "A.TSS has no segments");
}

TEST_F(WaveformViews, ReloadKeepsWhatStillExists) {
  const TsBytes record{.samples = {0, 10, 20, 30, 40}, .rate = 10, .unit = 0};
  const TsBytes shorter{.samples = {5, 6, 7}, .rate = 10, .unit = 0};
  ASSERT_TRUE(Open(record.Bytes() + record.Bytes(), ""));
  ASSERT_TRUE(view_.Next());
  view_.SetCursor(WaveformView::kFirstCursor, 0.1);
  view_.SetCursor(WaveformView::kSecondCursor, 0.3);
  std::filesystem::rename(dir_ / "A.TSS", dir_ / "gone");
  EXPECT_FALSE(view_.Reload());
  EXPECT_EQ(view_.Number(), 2U);
  WriteAll(dir_ / "A.TSS", shorter.Bytes() + shorter.Bytes() + shorter.Bytes());
  ASSERT_TRUE(view_.Reload());
  EXPECT_EQ(view_.Number(), 2U);
  EXPECT_EQ(view_.Count(), 3U);
  EXPECT_EQ(CursorText(view_), "Time (s)\t0.1\nCh 1\t6\n") << "the second is behind the end";
  WriteAll(dir_ / "A.TSS", record.Bytes());
  ASSERT_TRUE(view_.Reload());
  EXPECT_EQ(view_.Number(), 1U);
  EXPECT_DOUBLE_EQ(view_.VisibleTimes().high, 0.4);
  WriteAll(dir_ / "A.TSS", "");
  ASSERT_TRUE(view_.Reload());
  EXPECT_EQ(view_.Number(), 0U);
  WriteAll(dir_ / "A.TSS", record.Bytes());
  ASSERT_TRUE(view_.Reload());
  EXPECT_EQ(view_.Number(), 1U);
}

// The records begin at 03:04:05.
TEST_F(WaveformViews, ClockCountsAndCsv) {
  const TsBytes record{
      .frequency = 1, .channels = 2, .samples = {1, 2, 3, 4, 5, 6, 7, 8}, .rate = 4, .unit = 0};
  ASSERT_TRUE(Open(record.Bytes(), Channel(1, "Ex, 1") + Channel(2, "hy") + Real("FSCV", 8388607)));
  view_.ShowTimes(0.25, 0.5);
  EXPECT_EQ(VisibleCsv(view_, {1}),
            "# A.TSS, record 1 of 1, began 2009/06/30 03:04:05\nTime (s),hy\n0.25,4\n0.5,6\n");
  WaveformSettings settings = view_.Settings();
  settings.has_clock = true;
  settings.has_counts = true;
  view_.SetSettings(settings);
  view_.SetShape({.filter = {.low_pass = 99}});
  EXPECT_EQ(VisibleCsv(view_, {0, 1}),
            "# A.TSS, record 1 of 1, began 2009/06/30 03:04:05\n"
            "# not filtered: low pass 99 Hz is not between 0 and 2 Hz, half the sample rate\n"
            "Time of day,\"Ex, 1 (counts)\",hy (counts)\n"
            "03:04:05.25,3,4\n03:04:05.50,5,6\n");
  view_.SetCursor(WaveformView::kFirstCursor, 0.75);
  EXPECT_EQ(CursorText(view_), "Time of day\t03:04:05.75\nEx, 1 (counts)\t7\nhy (counts)\t8\n");
  for (const char* input : {"A.TSS", "A.TBL"}) {
    EXPECT_FALSE(SaveVisibleCsv(view_, {0}, dir_ / input)) << input;
  }
  EXPECT_TRUE(SaveVisibleCsv(view_, {0}, dir_ / "a.csv"));
  EXPECT_EQ(ReadAll(dir_ / "a.csv"), VisibleCsv(view_, {0}));
  EXPECT_EQ(ReadAll(dir_ / "A.TSS"), record.Bytes());
  // A fold has no time of day.
  const TsBytes two{.frequency = 1, .samples = {3, 1, -5, -1, 3, 1, -5, -1}, .rate = 4, .unit = 0};
  ASSERT_TRUE(Open(two.Bytes(), ""));
  view_.SetShape({.folds = true, .halves = true});
  EXPECT_EQ(view_.TimeLabel(), "Time (s)");
  EXPECT_EQ(view_.Values(0), (std::vector<double>{4, 1}));
  EXPECT_EQ(view_.NoteText(), "mean of 2 periods, second halves reversed");
}

TEST(ClockTimes, TextsAndRoundTicks) {
  const ParamTime start{.second = 50, .minute = 59, .hour = 23};
  EXPECT_EQ(ClockText(start, 0, 0), "23:59:50");
  EXPECT_EQ(ClockText(start, 10.0625, 4), "00:00:00.0625");
  EXPECT_EQ(ClockText(start, -86400.5, 1), "23:59:49.5");
  EXPECT_EQ(ClockDecimals(1.0 / 2400), 5);
  EXPECT_EQ(ClockDecimals(60), 0);
  struct Case {
    double low;
    double high;
    double step;
    std::vector<double> values;
  };
  for (const auto& [low, high, step, values] :
       {Case{0, 0.35, 0.1, {0, 0.1, 0.2, 0.3}}, Case{0, 50, 15, {10, 25, 40}},
        Case{0, 7200, 1800, {10, 1810, 3610, 5410}}, Case{0, 400000, 172800, {86410, 259210}}}) {
    const AxisTicks ticks = ClockTicks(start, low, high, 4);
    EXPECT_DOUBLE_EQ(ticks.step, step) << high;
    ASSERT_EQ(ticks.values.size(), values.size()) << high;
    for (std::size_t i = 0; i < values.size(); ++i) {
      EXPECT_NEAR(ticks.values[i], values[i], 1e-9) << high;
    }
  }
}

TEST_F(WaveformViews, ArrangesTraces) {
  TraceArrangement traces;
  EXPECT_EQ(traces.Shown(3), (std::vector<std::size_t>{0, 1, 2}));
  traces.Enlarge(1);
  traces.SetHidden(1, true);
  EXPECT_EQ(traces.Enlarged(), std::nullopt);
  traces.SelectBeside(1, 3);
  EXPECT_EQ(traces.Selected(), 2U) << "past the hidden one";
  traces.SelectBeside(1, 3);
  EXPECT_EQ(traces.Selected(), 0U);
  traces.SelectBeside(-1, 3);
  EXPECT_EQ(traces.Selected(), 2U);
  traces.SetHidden(2, true);
  EXPECT_TRUE(traces.IsLastShown(0, 3));
  ASSERT_TRUE(Open(TsBytes{.channels = 3, .samples = {1, 2, 3}}.Bytes(), ""));
  EXPECT_EQ(traces.NotDrawnText(view_, 1), "Hidden: Ch 2, Ch 3");
  traces.SetHidden(1, false);
  EXPECT_EQ(traces.NotDrawnText(view_, 1), "Hidden: Ch 3; No room for Ch 2");

  const auto range = [&](double low, double high) {
    const ValueRange values = traces.Values(0, {-10, 30});
    EXPECT_NEAR(values.low, low, 1e-9);
    EXPECT_NEAR(values.high, high, 1e-9);
  };
  traces.Zoom(0, 2);
  range(0, 20);
  traces.Pan(0, 0.5);  // up by half of what is seen
  range(-10, 10);
  traces.ShowValues(0, {-10, 30}, 12, 22);
  range(12, 22);
  traces.Pan(0, -99);
  range(45, 55);
  traces.ResetValues();
  range(-10, 30);
}

// What grows is taken over in whole records only, also where the first look found half of one.
TEST_F(WaveformViews, GrowsByWholeRecords) {
  const TsBytes one{.samples = {1, 2, 3, 4}, .rate = 10, .unit = 0};
  const std::string bytes = one.Bytes();
  const TsBytes bad{.samples = {5, 6}, .status = 6, .trailing = 1};
  const std::string all = bytes + bytes + bad.Bytes() + bytes;
  ASSERT_TRUE(Open(all.substr(0, bytes.size() + 260), ""));
  ASSERT_TRUE(view_.Last());
  view_.ShowTimes(0.1, 0.2);
  EXPECT_EQ(view_.Problem(), "the file ends within this record: 2 of 4 scans");
  struct Case {
    std::size_t size;
    std::uint64_t more;
    bool is_last_whole_now;
  };
  const std::size_t third = 2 * bytes.size() + bad.Bytes().size();
  for (const auto& [size, more, is_last_whole_now] :
       {Case{2 * bytes.size() - 1, 0, false}, Case{2 * bytes.size() + 100, 0, true},
        Case{third - 4, 0, false}, Case{third - 1, 1, false}, Case{third + 255, 0, false},
        Case{all.size(), 1, false}}) {
    WriteAll(dir_ / "A.TSS", all.substr(0, size));  // the same file, which stays open
    const TsIndex::Growth growth = view_.Extend(99);
    EXPECT_EQ(growth.more, more) << size;
    EXPECT_EQ(growth.is_last_whole_now, is_last_whole_now) << size;
  }
  EXPECT_EQ(view_.Count(), 4U);
  EXPECT_EQ(view_.Number(), 2U);
  EXPECT_EQ(view_.Problem(), "");
  EXPECT_EQ(view_.File().FirstBad(), 3U);
  EXPECT_EQ(view_.File().End(), all.size());
  EXPECT_TRUE(view_.Last());
  EXPECT_EQ(view_.Values(0), (std::vector<double>{1, 2, 3, 4}));
}

TEST(WaveformTitles, BreakBehindCommas) {
  const auto broken = [](std::size_t most) {
    return BrokenTitle("Freq: 1, Rate:  2,  Time: 3,  (1 / 2 )",
                       [most](std::string_view line) { return line.size() <= most; });
  };
  EXPECT_EQ(broken(38), "Freq: 1, Rate:  2,  Time: 3,  (1 / 2 )");
  EXPECT_EQ(broken(37), "Freq: 1, Rate:  2,  Time: 3,\n(1 / 2 )");
  EXPECT_EQ(broken(20), "Freq: 1, Rate:  2,\nTime: 3,  (1 / 2 )");
  EXPECT_EQ(broken(3), "Freq: 1,\nRate:  2,\nTime: 3,\n(1 / 2 )");
}

// A number that is 10 pixels high stays in its strip and clear of its neighbours.
TEST(AxisTicks, OfStripsStandApart) {
  struct Case {
    double low;
    double high;
    double pixels;
    std::vector<double> values;
  };
  for (const auto& [low, high, pixels, values] :
       {Case{-11, 11, 100, {-5, 0, 5}}, Case{-11, 11, 52, {-5, 0, 5}}, Case{-11, 11, 50, {0}},
        Case{2, 16, 20, {10}}, Case{0, 44, 8, {}}, Case{3, 3, 50, {}}}) {
    EXPECT_EQ(StripTicks(low, high, pixels, 10).values, values) << low << " " << pixels;
  }
}

TEST(AxisTicks, RoundValuesWithinTheRange) {
  struct Case {
    double low;
    double high;
    std::vector<std::string> texts;
  };
  for (const auto& [low, high, texts] :
       {Case{-1.1, 1.1, {"-1    ", "0     ", "1     "}},
        Case{0, 0.35, {"0.0   ", "0.1   ", "0.2   ", "0.3   "}},
        Case{999000, 1001000, {"999000", "999500", "1000000", "1000500", "1001000"}},
        Case{3, 3, {}}, Case{0, INFINITY, {}}}) {
    const AxisTicks ticks = TicksBetween(low, high, 4);
    std::vector<std::string> shown;
    for (const double value : ticks.values) {
      shown.push_back(TickText(value, ticks.precision));
    }
    EXPECT_EQ(shown, texts) << low << " " << high;
  }
}

}  // namespace
}  // namespace orvane::testing

// SPDX-License-Identifier: GPL-3.0-or-later
// Where rules begin to speak, and the texts made of rows.
#include <gtest/gtest.h>

#include <functional>

#include "base/number_text.h"
#include "support/temp_dir.h"
#include "survey/calibrations.h"
#include "survey/coverage.h"
#include "survey/findings_list.h"
#include "survey/sha256.h"
#include "survey/site_map.h"
#include "survey/survey_findings.h"
#include "survey/survey_report.h"

namespace orvane::testing {
namespace {

constexpr std::int64_t kStart = 1'795'244'400;  // 2026-11-21 07:00

SurveyRow Row(std::int64_t start, std::int64_t length) {
  TableFacts table;
  table.version = 2;
  table.plan_start = kStart;
  table.plan_end = kStart + 7200;
  SurveyRow row;
  row.name = "a/1.TSS";
  row.box = 1203;
  row.start = kStart + start;
  row.end = row.start + length;
  row.records = 100;
  row.table_state = TableState::kThere;
  row.table = std::make_shared<const TableFacts>(table);
  row.files = {{FileType::kWaveform, "1.TSS", "a/1.TSS", {}, {}}};
  return row;
}

SurveyRow OfBox(std::int32_t box, SurveyRow row) {
  row.box = box;
  return row;
}

std::string Found(const std::vector<SurveyRow>& rows) {
  std::vector<std::shared_ptr<const SurveyRow>> shared;
  for (const SurveyRow& row : rows) {
    shared.push_back(std::make_shared<const SurveyRow>(row));
  }
  std::string ids;
  for (const SurveyFinding& finding : FindInSurvey(shared)) {
    ids.append(ids.empty() ? "" : " ").append(finding.id);
    ids.append(finding.severity == Severity::kHint ? "?" : "");
  }
  return ids;
}

SurveyRow With(const std::function<void(SurveyRow*, TableFacts*)>& change) {
  SurveyRow row = Row(0, 600);
  TableFacts table = *row.table;
  change(&row, &table);
  row.table = std::make_shared<const TableFacts>(table);
  row.stretches = {{row.start, row.end}};
  return row;
}

SurveyRow WithoutPlan(SurveyRow row, const char* site) {
  TableFacts table = *row.table;
  table.plan_start = table.plan_end = 0;
  table.site = site;
  row.table = std::make_shared<const TableFacts>(table);
  return row;
}

SurveyRow WithBoxes(SurveyRow row, const std::vector<std::int32_t>& boxes) {
  TableFacts table = *row.table;
  for (const std::int32_t box : boxes) {
    table.boxes.push_back({box, 1});
  }
  row.table = std::make_shared<const TableFacts>(table);
  return row;
}

TEST(SurveyRulesTest, SpeakFromTheirLimitsOn) {
  using Change = std::function<void(SurveyRow*, TableFacts*)>;
  const auto calibration = [](std::int64_t days, int serial) -> Change {
    return [=](SurveyRow* row, TableFacts*) {
      row->calibrations = {{"1203.CLB", true, 1, serial, 1203, days}};
    };
  };
  const auto samples = [](std::vector<ChannelFacts> facts) -> Change {
    return [=](SurveyRow* row, TableFacts*) { row->samples = facts; };
  };
  const auto status = [](int clock, int disk) -> Change {
    return [=](SurveyRow*, TableFacts* table) {
      table->has_status = 1;
      table->clock = clock;
      table->disk = disk;
    };
  };
  struct Case {
    std::string ids;
    Change change;
  };
  const std::vector<Case> kCases = {
      {"", [](SurveyRow*, TableFacts*) {}},
      {"", [](SurveyRow* row, TableFacts*) { row->bad = 5; }},
      {"records-bad", [](SurveyRow* row, TableFacts*) { row->bad = 6; }},
      {"", samples({{1000, 1, 0, 8388607, 1}})},
      {"samples-saturated", samples({{1000, 2, 0, 8388607, 1}})},
      {"channel-dead", samples({{1000, 0, 5, 5, 1}, {1000, 0, 5, 5, 1}})},
      {"channels-equal", samples({{1000, 0, 4, 5, 1}, {1000, 0, 4, 5, 1}})},
      {"", samples({{1000, 0, 4, 5, 1}, {1000, 0, 4, 5, 2}})},
      {"", calibration(365, 1203)},
      {"", calibration(365, 0)},
      {"calibration-old", calibration(366, 1203)},
      {"calibration-serial", calibration(1, 1204)},
      {"",
       [](SurveyRow* row, TableFacts*) {
         row->calibrations = {{"70000.CLB", true, 1, 70000 - 65536, 70000, {}}};
       }},
      {"", status(4, 1 << 20)},
      {"clock-unlocked?", status(3, 1 << 20)},
      {"clock-unlocked", status(0, 1 << 20)},
      {"disk-full", status(4, (1 << 20) - 1)},
      {"", status(4, -5)},
      {"",
       [](SurveyRow* row, TableFacts* table) {
         table->has_status = 1;
         table->clock = 4;
         row->end = table->plan_end - 60;
       }},
      {"start-late", [](SurveyRow* row, TableFacts*) { row->start += 61; }},
      {"", [](SurveyRow* row, TableFacts*) { row->start += 60; }},
      {"table-missing",
       [](SurveyRow* row, TableFacts*) { row->table_state = TableState::kMissing; }},
      {"table-missing?",
       [](SurveyRow* row, TableFacts*) {
         row->table_state = TableState::kMissing;
         row->files[0].type = FileType::kBand;
       }},
      {"calibration-missing",
       [](SurveyRow* row, TableFacts*) {
         row->calibrations = {{"1203.CLB", false, 0, 0, 1203, {}, "it is of a sensor"}};
       }},
      {"file-empty", [](SurveyRow* row, TableFacts*) { row->empty = {"1.TSS"}; }},
      {"file-blank",
       [](SurveyRow* row, TableFacts*) {
         row->blank = {{"1.TSS", 100}};
       }},
      {"boxes-mixed", [](SurveyRow* row, TableFacts*) { row->other_box = 1300; }},
      {"date-odd", [](SurveyRow* row, TableFacts*) { row->odd_dates = 1; }},
      // The records that are missing at the start may be those with odd dates.
      {"date-odd",
       [](SurveyRow* row, TableFacts*) {
         row->odd_dates = 2;
         row->start += 120;
       }},
      {"table-newer?", [](SurveyRow* row, TableFacts*) { row->table_state = TableState::kNewer; }},
      {"box-silent",
       [](SurveyRow*, TableFacts* table) {
         table->boxes = {{1203, 3}, {1207, 1}};
       }},
  };
  for (std::size_t i = 0; i < kCases.size(); ++i) {
    EXPECT_EQ(Found({With(kCases[i].change)}), kCases[i].ids) << i;
  }
  EXPECT_EQ(Found({Row(0, 600), Row(660, 600)}), "");
  EXPECT_EQ(Found({Row(0, 600), Row(661, 600)}), "recording-gap");
  EXPECT_EQ(Found({Row(0, 600), WithoutPlan(Row(661, 600), "")}), "recording-gap");
  EXPECT_EQ(Found({Row(0, 600), WithoutPlan(Row(661, 600), "S2")}), "") << "carried elsewhere";
  SurveyRow odd = Row(0, 600);
  odd.odd_dates = 1;
  EXPECT_EQ(Found({odd, Row(661, 600)}), "date-odd");
  EXPECT_EQ(Found({Row(0, 600), Row(7300, 600)}), "") << "beyond the plan";
  constexpr std::int64_t kRound = std::int64_t{1024} * 7 * 86400;
  EXPECT_EQ(Found({OfBox(1204, Row(-kRound, 600)), Row(0, 600)}), "date-odd") << "the earlier";
  const std::vector<SurveyRow> wrong = {OfBox(1204, Row(-kRound, 600)),
                                        OfBox(1205, Row(-kRound, 600))};
  EXPECT_EQ(Found({wrong[0], wrong[1], Row(0, 600)}), "") << "in its plan";
  EXPECT_EQ(Found({wrong[0], wrong[1], WithoutPlan(Row(0, 600), "")}), "date-odd") << "the fewer";
  EXPECT_EQ(Found({Row(598, 600), Row(0, 600)}), "") << "lengths are rounded";
  EXPECT_EQ(Found({Row(597, 600), Row(0, 600)}), "recording-overlap");
  EXPECT_EQ(Found({Row(0, 3000), Row(10, 20), Row(2900, 50)}),
            "recording-overlap recording-overlap");
}

TEST(SurveyRulesTest, PlansAreHeldAgainstWhatWasRecorded) {
  const auto table_alone = [](const std::function<void(TableFacts*)>& change) {
    SurveyRow row = With([&](SurveyRow*, TableFacts* table) {
      table->channels = 3;
      change(table);
    });
    row.kind = RowKind::kTable;
    row.name = "a/2.TBL";
    row.box = 1211;
    row.start = row.end = 0;
    row.records = 0;
    row.files[0].type = FileType::kTable;
    return row;
  };
  const SurveyRow main = Row(0, 3600);  // half of the plan
  const auto recorded_alone = [&](std::int64_t fix, std::int64_t first) {
    return table_alone([&](TableFacts* table) {
      table->recorded = 9;
      table->fix = fix;
      table->first = first;
    });
  };
  const auto clock_lost = [&](std::int32_t box) {
    SurveyRow row = OfBox(box, Row(10, 600));
    row.has_wrong_clock = true;
    return row;
  };
  struct Case {
    std::string ids;
    std::vector<SurveyRow> rows;
  };
  const std::vector<Case> kCases = {
      {"box-silent", {main, table_alone([](TableFacts*) {})}},
      {"", {table_alone([](TableFacts*) {})}},
      {"", {main, table_alone([](TableFacts* table) { table->channels = 0; })}},
      {"", {Row(0, 3599), table_alone([](TableFacts*) {})}},
      // What a start-up file kept of an earlier day says nothing of this one.
      {"", {table_alone([](TableFacts* table) { table->recorded = 9; })}},
      {"box-silent", {main, recorded_alone(kStart - 61, 0)}},
      {"recording-missing", {main, recorded_alone(kStart - 60, 0)}},
      {"recording-missing", {recorded_alone(kStart + 7200 + 3600, 0)}},
      {"", {recorded_alone(kStart + 7200 + 3601, 0)}},
      {"box-silent", {main, recorded_alone(kStart + 100, kStart - 90000)}},
      {"recording-missing", {main, recorded_alone(0, kStart + 100)}},
      {"recording-missing", {main, recorded_alone(kStart, 0), recorded_alone(kStart, 0)}},
      // It was begun anew: the record before it had ended.
      {"recording-missing", {OfBox(1211, Row(0, 3600)), recorded_alone(0, kStart + 3600)}},
      {"", {OfBox(1211, Row(0, 3600)), recorded_alone(0, kStart + 3599)}},
      // A table of last year, made again each morning.
      {"", {Row(86400 * 14 + 7200, 600), table_alone([](TableFacts* table) {
              table->recorded = 9;
              table->fix = kStart + 7199;
            })}},
      {"",
       {main, table_alone([](TableFacts* table) {
          table->plan_start = table->plan_end = 0;
          table->recorded = 9;
          table->fix = kStart;
        }),
        OfBox(1211, Row(0, 600))}},
      // A test by hand before the others begin, and a plan of the day before.
      {"box-silent", {WithBoxes(Row(-600, 120), {1203, 1207})}},
      {"", {WithBoxes(Row(-600, 120), {1203, 1207}), OfBox(1207, Row(0, 600))}},
      {"box-silent", {WithBoxes(Row(86400, 600), {1203, 1207}), OfBox(1207, Row(0, 600))}},
      // A clock that was wrong has recorded all the same, and nobody knows when.
      {"date-odd", {main, clock_lost(1203)}},
      {"date-odd", {main, clock_lost(1211), table_alone([](TableFacts*) {})}},
      {"box-silent", {With([](SurveyRow*, TableFacts* table) {
         table->boxes = {{3105, 1, BoxRole::kTransmitter}};
       })}},
  };
  for (std::size_t i = 0; i < kCases.size(); ++i) {
    EXPECT_EQ(Found(kCases[i].rows), kCases[i].ids) << i;
  }
}

TEST(SurveyRulesTest, WhatWasLostBeforeIsNotOfThisEvening) {
  SurveyRow row = With([](SurveyRow*, TableFacts* table) {
    table->recorded = 9;
    table->fix = kStart + 600;
  });
  row.kind = RowKind::kTable;
  row.start = row.end = 0;
  const std::vector<std::shared_ptr<const SurveyRow>> rows = {
      std::make_shared<const SurveyRow>(row)};
  EXPECT_EQ(FindInSurvey(rows, kStart + 7200).size(), 1U) << "planned to then";
  EXPECT_TRUE(FindInSurvey(rows, kStart + 7201).empty());
}

TEST(SurveyRulesTest, TheNearestUsefulCalibrationCounts) {
  constexpr std::int64_t kDay = 86400;
  const auto facts = [](std::int64_t days_before, std::uint64_t records, int kind) {
    FileFacts made;
    made.start = days_before < 0 ? 0 : kStart - days_before * kDay;
    made.records = records;
    made.kind = kind;
    return made;
  };
  struct Case {
    std::vector<std::pair<std::string, FileFacts>> files;  // folder
    std::string text;
  };
  const std::vector<Case> kCases = {
      {{}, "1203.CLB missing"},
      {{{"a", facts(700, 1, 1)}, {"b", facts(10, 1, 1)}}, "1203.CLB (10 days)"},
      {{{"own", facts(700, 1, 1)}, {"b", facts(10, 1, 1)}}, "1203.CLB (700 days)"},
      {{{"own", facts(5, 0, 1)}, {"b", facts(10, 1, 1)}}, "1203.CLB (10 days)"},
      {{{"own", facts(5, 0, 1)}}, "1203.CLB of no use"},
      {{{"own", facts(5, 1, 2)}}, "1203.CLB of no use"},
      {{{"a", facts(-1, 1, 1)}, {"b", facts(800, 1, 1)}}, "1203.CLB (800 days)"}};
  for (std::size_t i = 0; i < kCases.size(); ++i) {
    Calibrations calibrations;
    for (const auto& [folder, one] : kCases[i].files) {
      calibrations.Add(folder, "1203.clb", one);
    }
    SurveyRow row = Row(0, 600);
    row.calibrations = calibrations.Of("own", row);
    EXPECT_EQ(CalibrationText(row), kCases[i].text) << i;
  }
}

TEST(SurveyRulesTest, ResultsAreOlderThanWhatTheyAreMadeOf) {
  struct Case {
    FileType type;
    std::string name;
    std::string source;  // empty: none
  };
  const std::vector<Case> kCases = {{FileType::kStackedWaveform, "1.TSK", "1.TSS"},
                                    {FileType::kText, "1.txt", "1.TSS"},
                                    {FileType::kText, "1_cal.txt", "1.TSS"},
                                    {FileType::kText, "1_TS3.txt", "1.TS3"},
                                    {FileType::kText, "1_ts3_cal.txt", "1.TS3"},
                                    {FileType::kText, "1_TSK_cal.txt", "1.TSK"},
                                    {FileType::kText, "1.csv", "1.trs"}};
  constexpr std::int64_t kSecond = 30'000'000'000;
  for (const Case& one : kCases) {
    for (const std::string newer : {"1.TSS", "1.TS3", "1.TSK", "1.trs"}) {
      SurveyRow row = Row(0, 600);
      row.files.clear();
      for (const auto& [type, name] :
           {std::pair(FileType::kWaveform, "1.TSS"), std::pair(FileType::kBand, "1.TS3"),
            std::pair(FileType::kStackedWaveform, "1.TSK"),
            std::pair(FileType::kStackResult, "1.trs")}) {
        FileInfo info;
        // Of the file judged itself the newest is no fault; the stack is not to be judged beside.
        info.written = name == newer ? 13 * kSecond : name == one.name ? 10 * kSecond : 0;
        info.written = std::string(name) == "1.TSK" && name != newer && name != one.name
                           ? 20 * kSecond
                           : info.written;
        row.files.push_back({type, name, name, info, {}});
      }
      if (one.type == FileType::kText) {
        FileInfo info;
        info.written = one.source == "1.TSK" && newer != "1.TSK" ? 20 * kSecond : 10 * kSecond;
        row.files.push_back({one.type, one.name, one.name, info, {}});
      }
      EXPECT_EQ(Found({row}), newer == one.source ? "result-old" : "") << one.name << " " << newer;
    }
  }
}

TEST(SurveyRulesTest, SitesStandWhereTheirTablesSay) {
  const auto site = [](const std::string& name, std::optional<MapPoint> place,
                       std::optional<GeoPlace> geo) {
    return std::make_shared<const SurveyRow>(With([&](SurveyRow*, TableFacts* table) {
      table->site = name;
      table->place = place;
      table->geo = geo;
    }));
  };
  const auto text = [](const SiteMap& sites) {
    std::string all;
    for (std::size_t i = 0; i < sites.map.items.size(); ++i) {
      all.append(Describe(sites.map.items[i])).append(" rows");
      for (const std::size_t row : sites.rows[i]) {
        all.append(" ").append(std::to_string(row));
      }
      all.append("; ");
    }
    for (const auto& unplaced : sites.unplaced) {
      all.append(unplaced.text).append("; ");
    }
    return all;
  };
  using Rows = std::vector<std::shared_ptr<const SurveyRow>>;
  const GeoPlace here{60, 179.9995};
  Rows rows = {site("B", MapPoint{10, 20}, {}), site("A", {}, {}),
               site("B", MapPoint{10.5, 20}, {}), site("B", MapPoint{10, 30}, {}),
               site("C", {}, here)};
  const SiteMap on_grid = SitesOf(rows);
  EXPECT_EQ(text(on_grid),
            "B, box 1203, 3 recordings: 10 E, 20 N (m) and 1 other place rows 0 2 3; "
            "A: 1 recording, no position; C: 1 recording, by latitude and longitude only; ");
  EXPECT_EQ(on_grid.ItemOf(3), 0U);
  EXPECT_EQ(on_grid.ItemOf(1), std::nullopt);
  // Over the date line: 0.002 degrees at 60 degrees north are 111 m, 0.001 of latitude as many.
  rows = {site("A", {}, here), site("B", {}, GeoPlace{60.001, -179.9985}),
          site("C", MapPoint{1, 2}, {})};
  EXPECT_EQ(text(SitesOf(rows)),
            "A, box 1203, 1 recording: -56 E, -56 N (m) rows 0; B, box 1203, 1 recording: 56 E, "
            "56 N (m) rows 1; C: 1 recording, on a grid of its own only; ");
  ParamTable table;
  ASSERT_EQ(table.BuildParamIndex(), kOk);
  struct Case {
    std::string latitude;
    std::string longitude;
    std::string degrees;
  };
  for (const Case& one : std::vector<Case>{{"4530.600,N", "01131.200,e", "45.51 11.52"},
                                           {"4530.600,S", "17959.400,W", "-45.51 -179.99"},
                                           {"9000.100,N", "01131.000,E", ""},
                                           {"45:30.6,N", "011:31.0,E", ""},
                                           {"4530.600", "01131.000,E", ""},
                                           {"0000.000,N", "00000.000,E", ""}}) {
    const auto set = [&table](ParamKey key, std::string value) {
      value.resize(sizeof(ParamValue));
      ASSERT_EQ(table.SetParam(key, PosPT, value.data()), kOk);
    };
    set("LATG", one.latitude);
    set("LNGG", one.longitude);
    const auto geo = GeoPlaceOf(table);
    EXPECT_EQ(geo ? FormatReal(geo->latitude, 6) + " " + FormatReal(geo->longitude, 6) : "",
              one.degrees)
        << one.latitude;
  }
}

TEST(SurveyRulesTest, FindingsAreSortedAndFiltered) {
  const std::vector<SurveyFinding> findings = {{"one", Severity::kHint, "late", "1207", "b.TSS"},
                                               {"two", Severity::kWarning, "Early", "", "a.TSS"},
                                               {"three", Severity::kWarning, "gone", "999", ""}};
  const std::vector<ScanNote> notes = {{"c", "no rights"}};
  FindingsList list;
  list.Set(std::make_shared<const std::vector<SurveyFinding>>(findings), notes);
  const auto shown = [&list](std::optional<FindingColumn> column, bool is_descending) {
    list.SetOrder(column, is_descending);
    return list.Shown();
  };
  using Order = std::vector<std::size_t>;
  EXPECT_EQ(shown({}, false), Order({0, 1, 2, 3}));
  EXPECT_EQ(shown(FindingColumn::kSeverity, false), Order({1, 2, 3, 0}));
  EXPECT_EQ(shown(FindingColumn::kBox, false), Order({2, 0, 1, 3}));
  EXPECT_EQ(shown(FindingColumn::kBox, true), Order({0, 2, 1, 3}));
  EXPECT_EQ(shown(FindingColumn::kFile, true), Order({3, 0, 1, 2}));
  list.SetFilter(" TSS  early", {});
  EXPECT_EQ(list.Shown(), Order({1}));
  list.SetFilter("", Severity::kHint);
  EXPECT_EQ(list.Shown(), Order({0}));
  list.SetFilter("rights not-read", Severity::kWarning);
  EXPECT_EQ(list.Shown(), Order({3}));
}

TEST(SurveyRulesTest, ListIsTheOneOfTheDocument) {
  EXPECT_EQ(ReadAll(ORVANE_SOURCES "/../docs/survey-checks.md"), SurveyRulesMarkdown())
      << "make it anew: orvane-cli survey scan --rules >docs/survey-checks.md";
}

TEST(SurveyRulesTest, PageIsWholeSmallAndSafe) {
  std::vector<std::shared_ptr<const SurveyRow>> rows;
  for (int i = 0; i < 10'000; ++i) {
    SurveyRow row = Row(10 * i, 9);
    row.name = "<b>&\"" + std::to_string(i) + ".TSS";
    row.bad = static_cast<std::uint64_t>(i % 7);
    row.box = 1200 + i % 40;
    row.files[0].sha256 = std::string(64, 'a');
    rows.push_back(std::make_shared<const SurveyRow>(row));
  }
  const auto findings = FindInSurvey(rows);
  const std::string page = SurveyReportPage({"<i>", rows, findings, {}});
  EXPECT_LT(page.size(), 20U << 20U);
  for (const char* none : {"<b>", "<i>", "<script", "http", "url("}) {
    EXPECT_EQ(page.find(none), std::string::npos) << none;
  }
  EXPECT_NE(page.find("&lt;b&gt;&amp;&quot;9999.TSS"), std::string::npos);
  EXPECT_EQ(CoveragePicture({}), "");
}

// Two mornings, two hours planned in each: the night has no room, a silent box has a lane.
TEST(SurveyRulesTest, CoverageLeavesOutTheNight) {
  constexpr std::int64_t kDay = 86400;
  const auto shared = [](SurveyRow row) { return std::make_shared<const SurveyRow>(row); };
  const std::vector<std::shared_ptr<const SurveyRow>> rows = {
      shared(With([](SurveyRow* row, TableFacts* table) {
        table->boxes = {{1211, 3}};
        row->bad = 25;
      })),
      shared(With([](SurveyRow* row, TableFacts* table) {
        row->start += kDay;
        row->end += kDay;
        table->plan_start += kDay;
        table->plan_end = kStart + 400 * kDay;  // somebody's wrong year
      })),
      shared(With([](SurveyRow* row, TableFacts*) { row->box = 1300; }))};
  const Coverage coverage = CoverageOf(rows);
  ASSERT_EQ(coverage.lanes.size(), 3U);
  EXPECT_EQ(coverage.lanes[1].Name(), "1211");
  EXPECT_TRUE(coverage.lanes[1].recorded.empty());
  EXPECT_EQ(coverage.lanes[1].planned.size(), 1U);
  EXPECT_EQ(coverage.lanes[0].recorded[0].bad_share, 0.25);
  ASSERT_EQ(coverage.stretches.size(), 2U);
  EXPECT_EQ(coverage.stretches[0].end - coverage.stretches[0].start, 7200);
  EXPECT_EQ(coverage.stretches[1].end, kStart + 2 * kDay + 600) << "a day after the last record";
  const CoverageAxis axis(coverage, 100, 1014);
  EXPECT_EQ(axis.At(kStart), 100);
  EXPECT_NEAR(axis.At(kStart + kDay) - axis.At(kStart + 7200), 14, 1e-9);
  EXPECT_NEAR(axis.At(coverage.stretches[1].end), 1114, 1e-9);
  const auto ticks = axis.Ticks(100);
  ASSERT_EQ(ticks.size(), 3U) << "two beginnings, a midnight";
  EXPECT_EQ(ticks[0].text, "2026/11/21 07:00");
  EXPECT_EQ(ticks[1].text, "") << "no room beside the first";
  EXPECT_EQ(Neighbour(coverage, {}, 1, false), 0U);
  EXPECT_EQ(Neighbour(coverage, 0, 1, false), 1U);
  EXPECT_EQ(Neighbour(coverage, 1, 1, false), std::nullopt);
  EXPECT_EQ(Neighbour(coverage, 0, 1, true), 2U) << "past the silent box";
}

TEST(SurveyRulesTest, ChecksumsAreThoseOfTheStandard) {
  const std::vector<std::pair<std::string, std::string>> kCases = {
      {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
      {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
      {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
       "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
      {std::string(1'000'000, 'a'),
       "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}};
  for (const auto& [text, sum] : kCases) {
    for (const std::size_t piece : {std::size_t{1'000'000}, std::size_t{63}, std::size_t{64}}) {
      Sha256 made;
      for (std::size_t at = 0; at < text.size(); at += piece) {
        made.Add(
            std::as_bytes(std::span(text)).subspan(at).first(std::min(piece, text.size() - at)));
      }
      EXPECT_EQ(made.Finish(), sum) << text.size() << " in pieces of " << piece;
    }
  }
}

}  // namespace
}  // namespace orvane::testing

// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/stack_view.h"

#include <cmath>

#include "support/batch_help.h"
#include "support/stack_bytes.h"
#include "timeseries/stack_stats.h"

namespace orvane::testing {
namespace {

// A time-domain item is its first value and that negated, a record's items are v, 10 v, 100 v.
std::string TimeRecord(const char* label, float v, double value26, int items = 3) {
  std::string bytes;
  for (int i = 0; i < items; ++i, v *= 10) {
    bytes += FloatBytes(v) + FloatBytes(-v);
  }
  return StackBytes(label, Extension(static_cast<float>(value26) + 1), 8,
                    static_cast<std::size_t>(items), bytes, value26);
}

std::string File() {
  return TimeRecord("B", 4, 0.5) + TimeRecord("A", 1, 1) + TimeRecord("B", 7, 2) +
         TimeRecord("B", 5, 3, 1) + TimeRecord("B", std::nanf(""), 4);
}

TEST(StackView, GroupsByLabelWithMedianAndSpread) {
  const TempDir dir;
  WriteAll(dir / "a.TRS", File() + "cut");
  StackView view;
  ASSERT_TRUE(view.Open(dir / "a.TRS"));
  EXPECT_EQ(view.CutAt(), File().size());
  ASSERT_EQ(view.Groups().size(), 2U);
  const StackView::Group& group = view.Groups()[0];
  EXPECT_EQ(group.label, "B") << "first in the file";
  EXPECT_EQ(group.records, (std::vector<std::size_t>{0, 2, 3, 4}));
  EXPECT_EQ(view.Guess(), StackDomain::kTime);
  const auto summary = view.Summary(group);
  ASSERT_EQ(summary.size(), 3U);
  EXPECT_EQ(summary[0].count, 3U) << "what is no number does not count";
  EXPECT_EQ(summary[0].median, 5);
  EXPECT_DOUBLE_EQ(summary[0].spread, 1.48);  // 1 0 2
  EXPECT_EQ(summary[1].median, 55) << "two records have it: 40 and 70";
  EXPECT_TRUE(std::isnan(view.Value(3, 1)));
  view.SetPart(1);
  EXPECT_EQ(view.Value(0, 1), -40);
  EXPECT_TRUE(LogValueOf(-40).is_hollow && LogValueOf(-40).magnitude == 40);
  const auto points = view.Points(group, 0, StackView::Against::kExtension);
  ASSERT_EQ(points.size(), 3U);
  EXPECT_EQ(points[1].x, 3);
  EXPECT_EQ(points[1].y, -7);
  EXPECT_EQ(view.Points(group, 1, StackView::Against::kValue26)[1].x, 2);
  // Taken as the other domain, as its text would be: an item every 4 bytes.
  view.SetDomain(StackDomain::kFrequency);
  EXPECT_EQ(view.Value(0, 1), -4);
  EXPECT_EQ(view.OtherSizes(), 5U);
  EXPECT_EQ(view.ItemPlace(1), 2);
  view.SetWindowCentres({0.5, 7});
  EXPECT_EQ(view.ItemPlace(1), 7);
  EXPECT_TRUE(std::isnan(view.ItemPlace(2)));
  EXPECT_EQ(view.AxisText(), "Time (ms): windows by Orvane's rule, not the box's");
}

TEST(StackView, StatisticsAsText) {
  const TempDir dir;
  WriteAll(dir / "a.TRS", File());
  std::string text;
  ListingWork work;
  work.put = [&text](std::string_view piece) { text += piece; };
  const auto note = StackStatsListing({{}, true})(dir / "a.TRS", work);
  ASSERT_TRUE(note);
  EXPECT_EQ(*note, "taken as time domain by the size of the items");
  EXPECT_EQ(text,
            "label\titem\trecords\tmedian\tspread\nB\t1\t3\t-5\t1.48\nB\t2\t2\t-55\t22.2\n"
            "B\t3\t2\t-550\t222\nA\t1\t1\t-1\t0\nA\t2\t1\t-10\t0\nA\t3\t1\t-100\t0\n");
  WriteAll(dir / "b.TRS", "");
  EXPECT_EQ(StackStatsListing({})(dir / "b.TRS", work).Message(), "no record");
}

}  // namespace
}  // namespace orvane::testing

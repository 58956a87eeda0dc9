// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "support.h"
#include "timeseries/stack_csv.h"
#include "timeseries/stack_stats.h"
#include "timeseries/stack_view.h"

namespace orvane::fuzz {

void FuzzStack(Bytes input) {
  const auto path = PutFile("a.trs", input);
  StackReader reader;
  Require(static_cast<bool>(reader.Open(path)), "a file that is there can be opened");
  StackRecord record;
  std::string again;
  while (reader.Next(&record)) {
    again.append(TextOf(BytesOf(record.header))).append(TextOf(record.extension));
    again.append(TextOf(record.items));
    static_cast<void>(record.ExtensionValue());
    Require(again.size() == reader.Offset(), "the offset is that of the next record");
  }
  Require(again == TextOf(input).substr(0, again.size()), "records are the bytes of the file");
  Require(reader.IsCut() == (again.size() < input.size()), "what is left is a cut record");
  for (const StackDomain domain : {StackDomain::kTime, StackDomain::kFrequency}) {
    const BatchResult result = Convert(StackCsv(domain), path, PathOf("a.csv"));
    Require(result.IsDone() || !result.text.empty(), "a failure has a reason");
  }
}

namespace {

void LookAt(const StackView& view, const StackView::Group& group) {
  const auto summary = view.Summary(group);
  Require(summary.size() == view.ItemsOfGroup(group), "a summary of each item");
  for (std::size_t item = 0; item < summary.size(); ++item) {
    Require(summary[item].count <= group.records.size(), "a record counts once");
    Require(summary[item].spread >= 0, "a spread is not negative");
    for (const auto against : {StackView::Against::kValue26, StackView::Against::kExtension}) {
      for (const StackView::Point& point : view.Points(group, item, against)) {
        Require(std::isfinite(point.x) && std::isfinite(point.y), "points can be drawn");
      }
    }
  }
}

}  // namespace

void FuzzStackView(Bytes input) {
  const auto path = PutFile("a.trs", input);
  StackView view;
  const Result<> opened = view.Open(path);
  Require(opened || !opened.Message().empty(), "a failure has a reason");
  for (const StackDomain domain : {StackDomain::kTime, StackDomain::kFrequency}) {
    view.SetDomain(domain);
    std::size_t records = 0;
    for (const StackView::Group& group : view.Groups()) {
      records += group.records.size();
      LookAt(view, group);
    }
    Require(records == view.Count(), "each record has one label");
    std::string text;
    ListingWork work;
    work.put = [&text](std::string_view piece) { text += piece; };
    const auto note = StackStatsListing({domain, true})(path, work);
    Require(static_cast<bool>(note) == static_cast<bool>(opened), "what opens is listed");
  }
}

}  // namespace orvane::fuzz

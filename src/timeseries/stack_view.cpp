// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/stack_view.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "base/latin1.h"
#include "base/number_text.h"

namespace orvane {
namespace {

constexpr std::size_t kTimeItem = 8;  // bytes
constexpr std::size_t kFrequencyItem = 4;
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

std::vector<StackView::Group> GroupsIn(std::map<std::string, std::vector<std::size_t>> by_label) {
  std::vector<StackView::Group> groups;
  for (auto& [label, records] : by_label) {
    groups.push_back({label, std::move(records)});
  }
  std::sort(groups.begin(), groups.end(),
            [](const auto& a, const auto& b) { return a.records.front() < b.records.front(); });
  return groups;
}

}  // namespace

Result<> StackView::Open(const std::filesystem::path& path) {
  *this = StackView();
  StackReader reader;
  if (const Result<> opened = reader.Open(path); !opened) {
    return opened;
  }
  std::map<std::string, std::vector<std::size_t>> by_label;
  StackRecord record;
  while (reader.Next(&record)) {
    by_label[PrintableLatin1(record.header.Label())].push_back(records_.size());
    Read(record);
  }
  if (!reader.Outcome()) {
    return reader.Outcome();
  }
  cut_at_ = reader.IsCut() ? reader.Offset() : 0;
  if (records_.empty()) {
    return Failure("no record");
  }
  groups_ = GroupsIn(std::move(by_label));
  const auto of_size = [this](std::size_t size) {
    return std::count_if(records_.begin(), records_.end(),
                         [size](const Record& r) { return r.item_size == size; });
  };
  guess_ =
      of_size(kTimeItem) > of_size(kFrequencyItem) ? StackDomain::kTime : StackDomain::kFrequency;
  domain_ = guess_;
  return {};
}

void StackView::Read(const StackRecord& record) {
  Record read{record.header.time,
              record.header.value,
              record.ExtensionValue(),
              record.header.item_size,
              record.header.item_count,
              floats_.size(),
              record.items.size() / sizeof(float)};
  for (std::size_t i = 0; i < read.floats; ++i) {
    floats_.push_back(RecordFrom<Le<float>>(record.items.subspan(i * sizeof(float))));
  }
  records_.push_back(read);
}

std::size_t StackView::OtherSizes() const {
  const std::size_t size = ItemFloats() * sizeof(float);
  return static_cast<std::size_t>(
      std::count_if(records_.begin(), records_.end(),
                    [size](const Record& r) { return r.item_count > 0 && r.item_size != size; }));
}

std::size_t StackView::Items(std::size_t record) const {
  const Record& at = records_[record];
  return std::min<std::size_t>(at.item_count, at.floats / ItemFloats());
}

std::size_t StackView::ItemsOfGroup(const Group& group) const {
  std::size_t most = 0;
  for (const std::size_t record : group.records) {
    most = std::max(most, Items(record));
  }
  return most;
}

double StackView::Value(std::size_t record, std::size_t item) const {
  return item < Items(record)
             ? static_cast<double>(floats_[records_[record].first + item * ItemFloats() + Part()])
             : kNone;
}

std::vector<RobustStats> StackView::Summary(const Group& group) const {
  std::vector<RobustStats> summary;
  const std::size_t items = ItemsOfGroup(group);
  for (std::size_t item = 0; item < items; ++item) {
    std::vector<double> values;
    for (const std::size_t record : group.records) {
      values.push_back(Value(record, item));
    }
    summary.push_back(RobustStatsOf(std::move(values)));
  }
  return summary;
}

std::vector<StackView::Point> StackView::Points(const Group& group, std::size_t item,
                                                Against against) const {
  std::vector<Point> points;
  for (const std::size_t record : group.records) {
    const Record& at = records_[record];
    const double x =
        against == Against::kValue26 ? at.value26 : static_cast<double>(at.extension_value);
    const double y = Value(record, item);
    if (std::isfinite(x) && std::isfinite(y)) {
      points.push_back({x, y, record});
    }
  }
  return points;
}

double StackView::ItemPlace(std::size_t item) const {
  if (centres_.empty()) {
    return static_cast<double>(item + 1);
  }
  return item < centres_.size() ? centres_[item] : kNone;
}

std::string StackView::AxisText() const {
  return centres_.empty() ? "Item" : "Time (ms): windows by Orvane's rule, not the box's";
}

}  // namespace orvane

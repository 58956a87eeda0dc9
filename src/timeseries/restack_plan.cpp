// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/restack_plan.h"

#include <algorithm>
#include <cmath>

#include "core/number_text.h"

namespace orvane {
namespace {

constexpr std::size_t kMostNamed = 20;

std::string Number(std::uint64_t number) { return FormatInt(static_cast<std::int64_t>(number)); }

void AppendNote(const std::string& note, std::string* notes) {
  notes->append(notes->empty() ? "" : "; ").append(note);
}

}  // namespace

RestackPlan::RestackPlan(TsWalker walker) {
  TsPlace place;
  double first_met = 0;
  double last_new = 0;
  while (walker.Next(&place)) {
    if (place.is_cut) {
      cut_record_ = place.number;
      break;
    }
    ++records_;
    const double frequency = place.header.frequency;
    if (std::isnan(frequency)) {
      ++without_frequency_;
      continue;
    }
    const auto [found, is_new] = groups_.try_emplace(frequency);
    RestackGroup& group = found->second;
    if (is_new) {
      first_met = groups_.size() == 1 ? frequency : first_met;
      last_new = frequency;
      group.first_record = place.number;
      group.header = place.header;
    }
    if (group.Takes(place.header)) {
      ++group.count;
    } else if (++too_small_ <= kMostNamed) {
      first_too_small_.push_back(place.number);
    }
  }
  is_ascending_ = first_met <= last_new;
  error_ = walker.Error();
}

std::vector<RestackGroup*> RestackPlan::InOrder() {
  std::vector<RestackGroup*> groups;
  for (auto& [frequency, group] : groups_) {
    groups.push_back(&group);
  }
  if (!is_ascending_) {
    std::reverse(groups.begin(), groups.end());
  }
  return groups;
}

RestackGroup* RestackPlan::GroupOf(const TsHeader& header) {
  const auto found = std::isnan(header.frequency) ? groups_.end() : groups_.find(header.frequency);
  return found == groups_.end() ? nullptr : &found->second;
}

std::string RestackPlan::Note() const {
  std::string notes;
  if (records_ == 0) {
    AppendNote("no whole record", &notes);
  }
  if (too_small_ > 0) {
    std::string note = "left out, smaller than the first of their frequency: record";
    for (const std::uint64_t number : first_too_small_) {
      note.append(" ").append(Number(number));
    }
    if (too_small_ > first_too_small_.size()) {
      note.append(" and ").append(Number(too_small_ - first_too_small_.size())).append(" more");
    }
    AppendNote(note, &notes);
  }
  if (without_frequency_ > 0) {
    AppendNote("records whose frequency is no number: " + Number(without_frequency_), &notes);
  }
  if (cut_record_ > 0) {
    AppendNote("dropped, the file ends within it: record " + Number(cut_record_), &notes);
  }
  return notes;
}

}  // namespace orvane

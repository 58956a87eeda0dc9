// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/restack_plan.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "base/number_text.h"

namespace orvane {
namespace {

void AppendNote(const std::string& note, std::string* notes) {
  notes->append(notes->empty() || note.empty() ? "" : "; ").append(note);
}

}  // namespace

void NamedFew::Add(const std::string& name) {
  if (++count_ <= kMostNamed) {
    names_.append(names_.empty() ? "" : ", ").append(name);
  }
}

std::string NamedFew::Text() const {
  return count_ <= kMostNamed ? names_
                              : names_ + " and " + FormatInt(count_ - kMostNamed) + " more";
}

RestackPlan::RestackPlan(TsWalker walker, const LeaveOut& leave_out) : leave_out_(leave_out) {
  TsPlace place;
  std::set<double> left_out;
  while (walker.Next(&place)) {
    if (place.is_cut) {
      cut_record_ = place.number;
      break;
    }
    ++records_;
    if (std::isnan(place.header.frequency)) {
      ++without_frequency_;
    } else if (leave_out_.Has(place)) {
      if (leave_out_.numbers.Has(place.number)) {
        ++chosen_;
      } else {
        bad_.Add(FormatInt(place.number));
      }
      left_out.insert(place.header.frequency);
    } else {
      Take(place);
    }
  }
  for (const double frequency : left_out) {
    if (!groups_.contains(frequency)) {
      without_stack_.Add(FormatReal(frequency));
    }
  }
  outcome_ = walker.Outcome();
}

void RestackPlan::Take(const TsPlace& place) {
  const double frequency = place.header.frequency;
  const auto [found, is_new] = groups_.try_emplace(frequency);
  RestackGroup& group = found->second;
  if (is_new) {
    first_met_ = groups_.size() == 1 ? frequency : first_met_;
    last_new_ = frequency;
    group.first_record = place.number;
    group.header = place.header;
  }
  if (!group.Takes(place.header)) {
    too_small_.Add(FormatInt(place.number));
    return;
  }
  ++group.count;
  if (place.header.IsBad()) {
    bad_.Add(FormatInt(place.number));
  }
}

std::vector<RestackGroup*> RestackPlan::InOrder() {
  std::vector<RestackGroup*> groups;
  for (auto& [frequency, group] : groups_) {
    groups.push_back(&group);
  }
  if (first_met_ > last_new_) {
    std::reverse(groups.begin(), groups.end());
  }
  return groups;
}

RestackGroup* RestackPlan::GroupOf(const TsPlace& place) {
  if (std::isnan(place.header.frequency) || leave_out_.Has(place)) {
    return nullptr;
  }
  const auto found = groups_.find(place.header.frequency);
  return found != groups_.end() && found->second.Takes(place.header) ? &found->second : nullptr;
}

std::string RestackPlan::BadNote() const {
  if (bad_.Count() == 0) {
    return {};
  }
  const bool is_one = bad_.Count() == 1;
  return std::string(is_one ? "record " : "records ") + bad_.Text() +
         (is_one ? " is marked bad and was " : " are marked bad and were ") +
         (leave_out_.bad ? "left out" : "added");
}

std::string RestackPlan::WithoutStackNote() const {
  const char* reason = leave_out_.numbers.IsEmpty() ? "marked bad" : "left out";
  return without_stack_.Count() == 0
             ? std::string()
             : "no stack at " + without_stack_.Text() + " Hz, where every record is " + reason;
}

std::string RestackPlan::Note() const {
  std::string notes;
  if (records_ == 0) {
    AppendNote("no record", &notes);
  }
  AppendNote(LeaveOutNote(leave_out_, chosen_), &notes);
  AppendNote(BadNote(), &notes);
  AppendNote(WithoutStackNote(), &notes);
  if (too_small_.Count() > 0) {
    AppendNote("left out, smaller than the first of their frequency: record " + too_small_.Text(),
               &notes);
  }
  if (without_frequency_ > 0) {
    AppendNote("records whose frequency is not a number: " + FormatInt(without_frequency_), &notes);
  }
  if (cut_record_ > 0) {
    AppendNote("dropped, the file ends within it: record " + FormatInt(cut_record_), &notes);
  }
  return notes;
}

}  // namespace orvane

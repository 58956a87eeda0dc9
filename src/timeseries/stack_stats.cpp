// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/stack_stats.h"

#include "base/number_text.h"

namespace orvane {
namespace {

constexpr int kDigits = 7;  // of a 32-bit float

std::string GroupLines(const StackView& view, const StackView::Group& group) {
  std::string lines;
  std::size_t item = 0;
  for (const RobustStats& stats : view.Summary(group)) {
    lines += group.label + "\t" + FormatInt(++item) + "\t" + FormatInt(stats.count) + "\t";
    if (stats.count > 0) {
      lines += FormatReal(stats.median, kDigits) + "\t" + FormatReal(stats.spread, kDigits);
    } else {
      lines += "\t";
    }
    lines += "\n";
  }
  return lines;
}

std::string NoteOn(const StackView& view, const StackStatsOptions& options) {
  std::string note;
  const bool is_time = view.Domain() == StackDomain::kTime;
  if (!options.domain) {
    note = std::string("taken as ") + (is_time ? "time" : "frequency") +
           " domain by the size of the items";
  }
  if (options.is_second && !is_time) {
    AddNote("items of the frequency domain have no second value: the first is listed", &note);
  }
  if (const std::size_t others = view.OtherSizes(); others > 0) {
    AddNote(FormatInt(others) + " of " + FormatInt(view.Count()) +
                " records have items of another size",
            &note);
  }
  if (view.CutAt() > 0) {
    AddNote(CutRecordNote(view.CutAt()), &note);
  }
  return note;
}

Result<std::string> ListStats(const std::filesystem::path& path, const StackStatsOptions& options,
                              const ListingWork& work) {
  StackView view;
  if (const Result<> opened = view.Open(path); !opened) {
    return Failure(opened.Message());
  }
  view.SetDomain(options.domain.value_or(view.Guess()));
  view.SetPart(options.is_second ? 1 : 0);
  work.put("label\titem\trecords\tmedian\tspread\n");
  for (const StackView::Group& group : view.Groups()) {
    if (work.pass.stopped && work.pass.stopped()) {
      break;
    }
    work.put(GroupLines(view, group));
  }
  return NoteOn(view, options);
}

}  // namespace

TsListing StackStatsListing(StackStatsOptions options) {
  return [options](const std::filesystem::path& path, const ListingWork& work) {
    return ListStats(path, options, work);
  };
}

}  // namespace orvane

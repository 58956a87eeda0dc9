// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>

#include "support.h"
#include "timeseries/leave_out.h"
#include "timeseries/leave_out_file.h"
#include "timeseries/restack.h"
#include "timeseries/time_series_text.h"
#include "timeseries/waveform_text.h"
#include "timeseries/waveform_view.h"

namespace orvane::fuzz {
namespace {

constexpr std::uint64_t kMostShown = 2;  // records

// The samples of a record, put together here in the plainest way.
void RequireSamples(const CTsRec& record, Bytes file) {
  Require(record.Scans() == record.Place().scans_held,
          "the file holds the scans that it is said to");
  const std::size_t width = record.Header().sample_width;
  std::size_t at = record.Place().data;
  for (std::size_t scan = 0; scan < record.Scans(); ++scan) {
    const CTsRecRow row = record.Row(scan);
    for (std::size_t channel = 0; channel < row.Channels(); ++channel, at += width) {
      std::uint32_t held = 0;
      for (std::size_t i = 0; i < std::min<std::size_t>(width, 4); ++i) {
        held |= std::to_integer<std::uint32_t>(file[at + i]) << (8 * i);
      }
      Require(row.Held(channel) == static_cast<std::int32_t>(held << 8U),
              "a held value is the sample in the file");
    }
  }
}

void Look(WaveformView* view) {
  for (std::size_t trace = 0; trace < view->TraceCount(); ++trace) {
    static_cast<void>(view->StatusText(trace));
    static_cast<void>(view->ValuesOf(trace));
  }
  for (const WaveformTrace& trace : view->Traces(50)) {
    Require(trace.times.size() == trace.values.size() && trace.times.size() <= 104,
            "a line has two points for a pixel at most");
  }
  static_cast<void>(CursorText(*view));
  static_cast<void>(view->TitleText() + view->StatusBarText());
}

void Show(WaveformView* view, Bytes file) {
  for (std::uint64_t number = 1; number <= std::min(view->Count(), kMostShown); ++number) {
    Require(view->GoTo(number), "a record that is counted can be shown");
    RequireSamples(view->Record(), file);
    Look(view);
  }
  view->SetCursor(WaveformView::kFirstCursor, 0.25 * view->EndTime());
  view->SetCursor(WaveformView::kSecondCursor, 1e300);
  view->ZoomTimes(1000, view->EndTime() / 3);
  view->SetSettings({2, HUGE_VAL, false, false});
  view->SetSmallUnit(true);
  view->PanTimes(-1e9);
  Look(view);
  static_cast<void>(VisibleText(*view));
  static_cast<void>(view->NextBad());
  static_cast<void>(view->Last());
  Look(view);
}

}  // namespace

void FuzzTimeSeries(Bytes input) {
  constexpr std::array kNames = {"A.TSS", "A.TSK", "A.TS3", "A.TS0"};
  constexpr std::array<std::optional<TsHeaderSize>, 4> kHeaders = {
      std::nullopt, TsHeaderSize::kFull, TsHeaderSize::kOld, std::nullopt};
  const std::size_t choice = TakeByte(&input);
  const std::size_t low = TakeByte(&input);
  const std::size_t size = std::min(low + 256 * TakeByte(&input), input.size());
  PutFile("A.TBL", input.first(size));
  const Bytes file = input.subspan(size);
  const auto path = PutFile(kNames[choice % 4], file);
  WaveformView view;
  if (view.Open(path, {kHeaders[choice / 4 % 4]})) {
    Show(&view, file);
  } else {
    Require(!view.File().FailureText().empty(), "a failure has a text for the user");
  }
}

void FuzzTimeSeriesText(Bytes input) {
  const std::size_t choice = TakeByte(&input);
  const auto path = PutFile(choice % 4 == 3 ? "B.TS3" : "B.TSS", input);
  const Conversion text =
      TimeSeriesText(choice % 4 == 1 ? TsHeaderSize::kOld : TsHeaderSize::kFull);
  const BatchResult result = Convert(text, path, PathOf("b.txt"));
  Require(result.IsDone() || result.text.starts_with("no record"), "any record becomes text");
}

void FuzzRestack(Bytes input) {
  const std::uint64_t memory = TakeByte(&input) % 2 == 0 ? 1 << 20 : 1;
  const auto stack = PathOf("B.TSK");
  const BatchResult result =
      Convert(Restack({.most_memory = memory}), PutFile("B.TSS", input), stack);
  if (!result.IsDone()) {
    Require(result.text.starts_with("nothing is left to stack"), "any record is restacked");
    return;
  }
  TsFile stacked;
  Require(static_cast<bool>(stacked.Open(stack, {TsHeaderSize::kFull})), "a stack can be opened");
  const auto size = stacked.Bytes().Size();
  TsWalker walker = stacked.Walk();
  TsPlace place;
  std::uint64_t end = 0;
  while (walker.Next(&place)) {
    Require(!place.is_cut && place.header.sample_width == 3, "a stack has whole records");
    end = place.next;
  }
  Require(end == size, "a stack has nothing but records");
}

void FuzzLeaveOut(Bytes input) {
  const auto choice = LeaveOutChoiceOf(TextOf(input));
  Require(choice || !choice.Message().empty(), "any text is a choice or says why it is none");
  const auto list = ReadLeaveOutText(TextOf(input));
  if (!list) {
    Require(list.Message().starts_with("line ") || list.Message().starts_with("has no line"),
            "a list that is refused says where it is wrong");
    return;
  }
  Require(list->numbers.Count() <= input.size() && !list->numbers.Has(0),
          "a list has the numbers of its lines");
  const auto again = ReadLeaveOutText(LeaveOutText(*list));
  Require(again && *again == *list, "a list is read as it was written");
}

}  // namespace orvane::fuzz

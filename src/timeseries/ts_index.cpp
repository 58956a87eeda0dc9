// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_index.h"

#include <algorithm>

namespace orvane {

int TsProgress::Percent() const {
  constexpr int kWhole = 100;
  const double share = total == 0 ? 0 : static_cast<double>(done) / static_cast<double>(total);
  return std::min(kWhole, static_cast<int>(kWhole * share));
}

// Keeps every second note.
void TsIndex::Thin() {
  for (std::size_t i = 0; 2 * i + 1 < notes_.size(); ++i) {
    notes_[i] = {notes_[2 * i].offset, notes_[2 * i].has_bad || notes_[2 * i + 1].has_bad};
  }
  notes_.resize(notes_.size() / 2);
  stride_ *= 2;
}

Result<> TsIndex::Build(const RandomFile& file, TsHeaderSize header_size, TsProgress* progress) {
  *this = {};
  header_size_ = header_size;
  TsWalker walker(&file, header_size);
  TsPlace place;
  while (walker.Next(&place)) {
    Add(place);
    NoteEnd(place, walker.End());
    if (progress != nullptr && !progress->Note(place.next)) {
      return Failure("stopped");
    }
  }
  return walker.Outcome();
}

void TsIndex::Add(const TsPlace& place) {
  if (count_ % stride_ == 0) {
    if (notes_.size() == kMaxNotes) {
      Thin();  // an even number of notes, so this record begins one
    }
    notes_.push_back({place.offset, false});
  }
  ++count_;
  if (header_size_ != TsHeaderSize::kBand && place.header.IsBad()) {
    notes_.back().has_bad = true;
    first_bad_ = first_bad_ == 0 ? place.number : first_bad_;
    ++bad_count_;
  }
}

void TsIndex::NoteEnd(const TsPlace& place, std::uint64_t file_end) {
  end_ = place.is_cut ? file_end : place.next;
  next_ =
      place.is_cut ? TsStart{place.offset, place.number} : TsStart{place.next, place.number + 1};
}

TsIndex::Growth TsIndex::Extend(const RandomFile& file, std::uint64_t most) {
  Growth growth;
  TsWalker walker(&file, header_size_, next_);
  TsPlace place;
  while (growth.more < most && walker.Next(&place) && !place.is_cut) {
    if (place.number <= count_) {
      growth.is_last_whole_now = true;
    } else {
      Add(place);
      ++growth.more;
    }
    NoteEnd(place, walker.End());
  }
  return growth;
}

TsWalker TsIndex::WalkFrom(const RandomFile& file, std::uint64_t number) const {
  if (count_ == 0) {
    return {&file, header_size_, std::uint64_t{0}};
  }
  const std::size_t note = NoteOf(number);
  return {&file, header_size_, TsStart{notes_[note].offset, note * stride_ + 1}};
}

Result<TsPlace> TsIndex::Find(const RandomFile& file, std::uint64_t number) const {
  const Failure gone("no longer in the file, which became shorter");
  if (number == 0 || number > count_) {
    return gone;
  }
  TsWalker walker = WalkFrom(file, number);
  TsPlace place;
  while (walker.Next(&place)) {
    if (place.number == number) {
      return place;
    }
  }
  return walker.Outcome() ? gone : Failure(walker.Outcome().Message());
}

std::uint64_t TsIndex::NextBad(const RandomFile& file, std::uint64_t number) const {
  if (number >= count_) {
    return 0;
  }
  for (std::size_t note = NoteOf(number + 1); note < notes_.size(); ++note) {
    if (!notes_[note].has_bad) {
      continue;
    }
    const std::uint64_t first = note * stride_ + 1;
    TsWalker walker = WalkFrom(file, first);
    TsPlace place;
    while (walker.Next(&place) && place.number < first + stride_) {
      if (place.number > number && place.header.IsBad()) {
        return place.number;
      }
    }
  }
  return 0;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_walker.h"

#include <algorithm>
#include <cstring>

namespace orvane {
namespace {

constexpr std::size_t kWindow = std::size_t{128} * 1024;
constexpr std::uint64_t kCloseTogether = 16384;

}  // namespace

bool TsWalker::ReadHeader(TsHeader* header) {
  const std::size_t size = BytesIn(header_size_);
  if (offset_ > end_ || end_ - offset_ < size) {
    return false;
  }
  if (offset_ < window_offset_ || offset_ + size > window_offset_ + window_.size()) {
    const bool are_close = number_ > 1 && last_step_ > 0 && last_step_ < kCloseTogether;
    window_.resize(static_cast<std::size_t>(
        std::min<std::uint64_t>(are_close ? kWindow : size, end_ - offset_)));
    window_offset_ = offset_;
    const BytesRead read = file_->ReadAt(offset_, window_);
    outcome_ = read.outcome ? outcome_ : read.outcome;
    window_.resize(read.count);
    if (window_.size() < size) {
      return false;
    }
  }
  *header = {};
  std::memcpy(header, window_.data() + (offset_ - window_offset_), size);
  if (header_size_ != TsHeaderSize::kFull) {
    header->frequency = {};  // only full headers have one; what is there means something else
  }
  return true;
}

bool TsWalker::Next(TsPlace* place) {
  if (is_at_end_ || !ReadHeader(&place->header)) {
    is_at_end_ = true;
    return false;
  }
  const TsHeader& header = place->header;
  place->number = number_++;
  place->offset = offset_;
  place->data = offset_ + BytesIn(header_size_);
  const bool has_trailing = header_size_ != TsHeaderSize::kBand;
  place->next =
      place->data + DataBytes(header) + (has_trailing ? TrailingBytes(header) : std::uint64_t{0});
  const bool has_samples = header.scans > 0 && header.channels > 0;
  const std::uint64_t scan = ScanBytes(header);
  if (has_samples && scan == 0) {
    place->scans_held = 0;
  } else {
    const std::uint64_t left = end_ - place->data;
    place->scans_held =
        scan == 0 ? std::uint32_t{header.scans}
                  : static_cast<std::uint32_t>(std::min<std::uint64_t>(header.scans, left / scan));
  }
  place->is_cut = place->scans_held < header.scans;
  is_at_end_ = place->is_cut;
  last_step_ = place->next - offset_;
  offset_ = place->next;
  return true;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/sample_text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <exception>

#include "base/wire.h"
#include "timeseries/sample_decoder.h"

namespace orvane {
namespace {

constexpr std::size_t kPiece = std::size_t{128} * 1024;
constexpr std::size_t kField = 18;  // " %16d "
constexpr std::size_t kDigitsAt = 9;

// "0000" to "9999", the first character in the lowest byte.
constexpr auto kGroups = [] {
  std::array<std::uint32_t, 10000> groups{};
  for (std::uint32_t i = 0; i < groups.size(); ++i) {
    groups[i] =
        0x30303030U + i / 1000 + (i / 100 % 10 << 8U) + (i / 10 % 10 << 16U) + (i % 10 << 24U);
  }
  return groups;
}();

}  // namespace

void PutSample(std::int32_t sample, char* to) {
  constexpr std::uint64_t kZeros = 0x3030303030303030U;
  constexpr std::uint64_t kZeroToBlank = 0x1010101010101010U;
  const std::uint32_t size =
      sample < 0 ? 0U - static_cast<std::uint32_t>(sample) : static_cast<std::uint32_t>(sample);
  const std::uint32_t high = size / 10000;
  std::uint64_t text = kGroups[high] | std::uint64_t{kGroups[size - high * 10000]} << 32U;
  // Leading zeros, but not the last digit, become blanks; before the first digit is the sign. A
  // sample has at most seven digits, so there is room for it.
  const int leading = std::countr_zero((text ^ kZeros) | std::uint64_t{1} << 56U) & ~7;
  text ^= kZeroToBlank & ((std::uint64_t{1} << static_cast<unsigned>(leading)) - 1);
  const std::uint64_t sign = sample < 0 ? '-' ^ ' ' : 0;
  text ^= sign << static_cast<unsigned>(leading - 8);
  const Le<std::uint64_t> bytes = text;
  std::memcpy(to, &bytes, sizeof bytes);
}

SampleText::SampleText(OutFile* out, bool has_thread) : out_(out), piece_(pieces_.data()) {
  piece_->bytes.resize(kPiece);
  free_.reserve(pieces_.size());
  full_.reserve(pieces_.size());
  if (has_thread) {
    for (Piece* piece = piece_ + 1; piece != pieces_.data() + pieces_.size(); ++piece) {
      piece->bytes.resize(kPiece);
      free_.push_back(piece);
    }
    try {
      writer_ = std::jthread([this] { WritePieces(); });
    } catch (const std::exception&) {
      // The system has no more threads or memory to give: this one writes.
    }
  }
}

SampleText::~SampleText() { EndWriter(); }

bool SampleText::HasFailed() const {
  const std::lock_guard lock(mutex_);
  return !outcome_;
}

void SampleText::Note(const Result<>& written) {
  const std::lock_guard lock(mutex_);
  outcome_ = outcome_ ? written : outcome_;
}

void SampleText::WritePieces() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return !full_.empty() || is_at_end_; });
    if (full_.empty()) {
      return;
    }
    Piece* piece = full_.front();
    full_.erase(full_.begin());
    const bool has_failed = !outcome_;
    lock.unlock();
    Result<> written;
    try {
      written = has_failed ? written
                           : out_->Write(std::as_bytes(std::span(piece->bytes).first(piece->used)));
    } catch (const std::exception&) {  // no memory: none is asked for here
      written = std::move(no_memory_);
    }
    lock.lock();
    if (outcome_) {
      outcome_ = std::move(written);
    }
    free_.push_back(piece);
    changed_.notify_all();
  }
}

void SampleText::Flush() {
  if (piece_->used == 0) {
    return;
  }
  if (!writer_.joinable()) {
    if (!HasFailed()) {
      Note(out_->Write(std::as_bytes(std::span(piece_->bytes).first(piece_->used))));
    }
  } else {
    std::unique_lock lock(mutex_);
    full_.push_back(piece_);
    changed_.notify_all();
    changed_.wait(lock, [this] { return !free_.empty(); });
    piece_ = free_.back();
    free_.pop_back();
  }
  piece_->used = 0;
}

Result<> SampleText::Finish() {
  Flush();
  EndWriter();
  return outcome_;
}

void SampleText::EndWriter() {
  if (writer_.joinable()) {
    {
      const std::lock_guard lock(mutex_);
      is_at_end_ = true;
    }
    changed_.notify_all();
    writer_.join();
  }
}

void SampleText::Text(std::string_view text) {
  while (!text.empty()) {
    if (piece_->used == kPiece) {
      Flush();
    }
    const std::size_t count = std::min(text.size(), kPiece - piece_->used);
    std::copy_n(text.begin(), count,
                piece_->bytes.begin() + static_cast<std::ptrdiff_t>(piece_->used));
    piece_->lines = 0;  // may be where lines were laid out
    piece_->used += count;
    text.remove_prefix(count);
  }
}

// Makes sure that blanks and line ends for `scans` lines are where the piece goes on.
void SampleText::LayOut(std::size_t channels, std::size_t scans) {
  const std::size_t line = channels * kField + 1;
  Piece& piece = *piece_;
  const bool goes_on = piece.lines > 0 && piece.channels == channels &&
                       piece.used >= piece.lines_at && (piece.used - piece.lines_at) % line == 0 &&
                       piece.used <= piece.lines_at + piece.lines * line;
  if (!goes_on) {
    piece.lines_at = piece.used;
    piece.lines = 0;
    piece.channels = channels;
  }
  const std::size_t end = (piece.used - piece.lines_at) / line + scans;
  for (; piece.lines < end; ++piece.lines) {
    char* at = piece.bytes.data() + piece.lines_at + piece.lines * line;
    std::memset(at, ' ', line - 1);
    at[line - 1] = '\n';
  }
}

void SampleText::Scans(const std::byte* from, int width, std::size_t channels, std::size_t scans) {
  const std::size_t line = channels * kField + 1;
  while (scans > 0) {
    std::size_t room = (kPiece - piece_->used) / line;
    if (room == 0 || (scans > room && piece_->used > 0 && piece_->lines == 0)) {
      Flush();
      room = kPiece / line;
    }
    const std::size_t count = std::min(scans, room);
    LayOut(channels, count);
    held_.resize(count * channels);
    BestDecoder().put(from, width, held_);
    char* at = piece_->bytes.data() + piece_->used + kDigitsAt;
    const std::int32_t* held = held_.data();
    for (std::size_t scan = 0; scan < count; ++scan, ++at) {
      for (std::size_t channel = 0; channel < channels; ++channel, at += kField) {
        PutSample(SampleOf(*held++), at);
      }
    }
    piece_->used += count * line;
    from += count * channels * static_cast<std::size_t>(width);
    scans -= count;
  }
}

}  // namespace orvane

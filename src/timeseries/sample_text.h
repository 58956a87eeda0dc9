// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_SAMPLE_TEXT_H_
#define ORVANE_TIMESERIES_SAMPLE_TEXT_H_

#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "files/file_io.h"

namespace orvane {

/// Texts and scans on their way into a file, in pieces; scans as lines of " %16d " for each sample.
/// A sample fits 24 bits, so its text has 18 characters of which at most 8 are not blank: the
/// blanks and line ends of a piece are laid out once and only those 8 are written for each sample.
/// With a writing thread one piece is written while the next is made.
class SampleText {
 public:
  SampleText(OutFile* out, bool has_thread);
  SampleText(const SampleText&) = delete;
  SampleText& operator=(const SampleText&) = delete;
  ~SampleText();

  void Text(std::string_view text);
  /// `scans` lines out of samples of `width` bytes each. After them `kDecoderSlack` bytes must be
  /// readable.
  void Scans(const std::byte* from, int width, std::size_t channels, std::size_t scans);
  /// Writes what is left. Fails with what failed first.
  Result<> Finish();
  bool HasFailed() const;

 private:
  struct Piece {
    std::vector<char> bytes;
    std::size_t used = 0;
    // Lines laid out: where, how many, of how many samples.
    std::size_t lines_at = 0;
    std::size_t lines = 0;
    std::size_t channels = 0;
  };

  void LayOut(std::size_t channels, std::size_t scans);
  void Flush();
  void WritePieces();
  void EndWriter();
  void Note(const Result<>& written);

  OutFile* out_;
  std::array<Piece, 3> pieces_;
  Piece* piece_;  // being filled
  std::vector<std::int32_t> held_;

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Piece*> free_;  // with room for all pieces, so that the threads need no memory
  std::vector<Piece*> full_;  // in order
  Result<> outcome_;
  Result<> no_memory_ = Failure(ReasonOf(std::bad_alloc()));
  bool is_at_end_ = false;
  std::jthread writer_;  // last: ends before what it works on
};

/// Writes a sample right-aligned into 8 characters.
void PutSample(std::int32_t sample, char* to);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_SAMPLE_TEXT_H_

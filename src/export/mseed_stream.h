// SPDX-License-Identifier: GPL-3.0-or-later
// One channel as MiniSEED by libmseed: samples go in, whole records come out.
#ifndef ORVANE_EXPORT_MSEED_STREAM_H_
#define ORVANE_EXPORT_MSEED_STREAM_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

struct MSRecord_s;
struct MSTrace_s;

namespace orvane {

struct MseedName {
  std::string network;
  std::string station;
  std::string location;
  std::string channel;
};

/// `std::bad_alloc` where the library has no memory.
class MseedStream {
 public:
  using Sink = std::function<void(std::span<std::byte> record)>;

  /// Records of `record_length` bytes, a power of two from 256 on, of a rate above 0.
  MseedStream(const MseedName& name, double rate, int record_length);

  /// The next sample is of this time, in microseconds since 1970. What came before must be flushed.
  void Start(std::int64_t time);
  /// Appends samples, and hands over the records that are full.
  void Add(std::span<const std::int32_t> samples, const Sink& sink);
  /// Hands over what is left as a record that is not full.
  void Flush(const Sink& sink);
  /// Time of the sample that would be next, in microseconds since 1970.
  std::int64_t Next() const;

 private:
  struct FreeTrace {
    void operator()(MSTrace_s* trace) const;
  };
  struct FreeRecord {
    void operator()(MSRecord_s* record) const;
  };
  void Pack(bool is_last, const Sink& sink);
  std::int64_t TimeOf(std::uint64_t sample) const;

  double rate_;
  int record_length_;
  std::int64_t start_ = 0;
  std::uint64_t packed_ = 0;  // samples since the start
  std::unique_ptr<MSTrace_s, FreeTrace> trace_;
  std::unique_ptr<MSRecord_s, FreeRecord> form_;  // what every record has in common
};

}  // namespace orvane

#endif  // ORVANE_EXPORT_MSEED_STREAM_H_

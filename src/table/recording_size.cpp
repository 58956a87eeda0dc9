// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/recording_size.h"

#include <algorithm>
#include <cstdint>

#include "table/param_access.h"
#include "table/param_time.h"

namespace orvane {
namespace {

constexpr double kMegabyte = 1048576.0;

struct Scheme {
  std::uint32_t low_rate;  // samples per second
  std::uint32_t rate_2;
  std::uint32_t rate_3;
  const char* amount_2;
  const char* amount_3;
};
constexpr Scheme kAmt = {150, 2400, 2400, "L2NS", "L3NS"};  // band 2 keeps a tenth of 24000
constexpr Scheme kMt = {15, 2400, 150, "L3NS", "L4NS"};
constexpr std::uint32_t kDamtRate = 2400;

bool EqualButForWeekday(ParamTime a, ParamTime b) {
  a.weekday = b.weekday;
  return a == b;
}

// Seconds from `start` to `end`, signed in 32 bits.
std::int32_t SecondsBetween(std::uint32_t start, std::uint32_t end) {
  return static_cast<std::int32_t>(end - start);
}

// Seconds recorded in a band of which `amount` seconds, at most a whole slot, belong to each slot.
std::uint32_t BandSeconds(std::int32_t amount, std::int32_t slot, std::uint32_t window) {
  if (slot <= 0) {
    return 0;
  }
  const std::int32_t capped = std::clamp(amount, 0, slot);
  // NOLINTNEXTLINE(bugprone-incorrect-roundings): the boxes round so
  return static_cast<std::uint32_t>(capped * 0.5 * window / slot + 0.5);
}

// `Bytes` is the unsigned number that the bytes are counted in.
template <typename Bytes>
double Megabytes(const Scheme& scheme, Bytes channels, Bytes seconds, Bytes seconds_2,
                 Bytes seconds_3) {
  const auto record = [channels](Bytes rate) { return channels * rate * 3 + 32; };
  const Bytes bytes = seconds_2 * record(scheme.rate_2) + seconds_3 * record(scheme.rate_3) +
                      seconds * record(scheme.low_rate);
  return static_cast<double>(bytes) / kMegabyte;
}

}  // namespace

RecordingSpan RecordingOf(const ParamTable& table, const Clock& now) {
  ParamTime start = TimeParam(table, "STIM");
  ParamTime end = TimeParam(table, "ETIM");
  CompleteDateFromToday(&start, now);
  CompleteEndDate(start, &end);
  return {ParamTimeToSeconds(start), ParamTimeToSeconds(end)};
}

RecordingSpan HighRateWindow(const ParamTable& table, const RecordingSpan& recording,
                             const Clock& now) {
  ParamTime start = TimeParam(table, "HTIM");
  ParamTime end = TimeParam(table, "ETMH");
  if (EqualButForWeekday(start, end)) {
    return recording;
  }
  CompleteDateFromToday(&start, now);
  CompleteEndDate(start, &end);
  return {std::max(ParamTimeToSeconds(start), recording.start),
          std::min(ParamTimeToSeconds(end), recording.end)};
}

RecordingSize EstimateRecordingSize(const ParamTable& table, int channels, const Clock& now) {
  const RecordingSpan recording = RecordingOf(table, now);
  const std::int32_t duration = SecondsBetween(recording.start, recording.end);
  if (duration <= 0) {
    return {};
  }
  const std::int32_t sampling = IntParam(table, "MTSR");
  Scheme scheme = sampling == 0 ? kAmt : kMt;
  std::uint32_t seconds_2 = 0;
  std::uint32_t seconds_3 = 0;
  if (sampling == 2) {
    scheme.low_rate = kDamtRate;
  } else {
    const RecordingSpan window = HighRateWindow(table, recording, now);
    if (window.end < window.start) {
      return {};  // kept: the low rate would record all the same
    }
    const std::int32_t slot = IntParam(table, "HSMP");
    const std::uint32_t length = window.end - window.start;
    seconds_2 = BandSeconds(IntParam(table, scheme.amount_2), slot, length);
    seconds_3 = BandSeconds(IntParam(table, scheme.amount_3), slot, length);
  }
  const auto count = static_cast<std::uint32_t>(channels);
  const auto seconds = static_cast<std::uint32_t>(duration);
  return {Megabytes<std::uint32_t>(scheme, count, seconds, seconds_2, seconds_3),
          Megabytes<std::uint64_t>(scheme, count, seconds, seconds_2, seconds_3)};
}

}  // namespace orvane

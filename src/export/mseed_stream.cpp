// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/mseed_stream.h"

#include <libmseed.h>

#include <cmath>
#include <cstring>

namespace orvane {
namespace {

constexpr double kMicroseconds = 1e6;

// The library's own settings are of the whole program, so they are set once.
void PrepareLibrary() {
  static const bool is_done = [] {
    const auto nothing = [](char* /*text*/) {};
    ms_loginit(nothing, nullptr, nothing, nullptr);
    // As each call asks for, big-endian, whatever the environment says.
    MS_PACKHEADERBYTEORDER(-1);
    MS_PACKDATABYTEORDER(-1);
    return true;
  }();
  static_cast<void>(is_done);
}

template <std::size_t size>
void Copy(const std::string& from, char (&to)[size]) {  // NOLINT(modernize-avoid-c-arrays)
  const std::size_t length = std::min(from.size(), size - 1);
  std::memcpy(to, from.data(), length);
  to[length] = '\0';
}

template <typename Named>
void CopyName(const MseedName& name, Named* to) {
  Copy(name.network, to->network);
  Copy(name.station, to->station);
  Copy(name.location, to->location);
  Copy(name.channel, to->channel);
  to->dataquality = 'D';
}

void HandOver(char* record, int length, void* sink) {
  (*static_cast<const MseedStream::Sink*>(sink))(
      std::as_writable_bytes(std::span(record, static_cast<std::size_t>(length))));
}

}  // namespace

void MseedStream::FreeTrace::operator()(MSTrace_s* trace) const { mst_free(&trace); }
void MseedStream::FreeRecord::operator()(MSRecord_s* record) const { msr_free(&record); }

MseedStream::MseedStream(const MseedName& name, double rate, int record_length)
    : rate_(rate),
      record_length_(record_length),
      trace_((PrepareLibrary(), mst_init(nullptr))),
      form_(msr_init(nullptr)) {
  CopyName(name, trace_.get());
  CopyName(name, form_.get());
  trace_->samprate = rate;
  trace_->sampletype = 'i';
  // Times to the microsecond: without it they end at a ten-thousandth of a second.
  blkt_1001_s fine{};
  msr_addblockette(form_.get(), reinterpret_cast<char*>(&fine), sizeof fine, 1001, 0);
}

std::int64_t MseedStream::TimeOf(std::uint64_t sample) const {
  return start_ + std::llround(static_cast<double>(sample) * kMicroseconds / rate_);
}

std::int64_t MseedStream::Next() const {
  return TimeOf(packed_ + static_cast<std::uint64_t>(trace_->numsamples));
}

void MseedStream::Start(std::int64_t time) {
  start_ = time;
  packed_ = 0;
}

Result<> MseedStream::Add(std::span<const std::int32_t> samples, const Sink& sink) {
  if (samples.empty()) {
    return {};
  }
  const auto count = static_cast<std::int64_t>(samples.size());
  if (mst_addspan(trace_.get(), 0, 0, const_cast<std::int32_t*>(samples.data()), count, 'i', 1) !=
      0) {
    return Failure("out of memory");
  }
  return Pack(false, sink);
}

Result<> MseedStream::Flush(const Sink& sink) {
  const Result<> done = trace_->numsamples > 0 ? Pack(true, sink) : Result<>();
  if (trace_->ststate != nullptr) {
    trace_->ststate->comphistory = 0;  // the next record is compared with no sample before it
  }
  return done;
}

Result<> MseedStream::Pack(bool is_last, const Sink& sink) {
  trace_->starttime = TimeOf(packed_);
  trace_->endtime = trace_->starttime;
  trace_->samplecnt = trace_->numsamples;
  std::int64_t packed = 0;
  const auto* handed = static_cast<const void*>(&sink);
  const int records = mst_pack(trace_.get(), HandOver, const_cast<void*>(handed), record_length_,
                               DE_STEIM2, 1, &packed, is_last ? 1 : 0, 0, form_.get());
  if (records < 0) {
    return Failure("libmseed could not pack its samples");
  }
  packed_ += static_cast<std::uint64_t>(packed);
  return {};
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/mseed_stream.h"

#include <libmseed.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

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

// No exception may pass through the library.
struct Handing {
  const MseedStream::Sink& sink;
  std::exception_ptr failure = {};
};

void HandOver(char* record, int length, void* to) {
  auto* handing = static_cast<Handing*>(to);
  if (handing->failure != nullptr) {
    return;
  }
  try {
    handing->sink(std::as_writable_bytes(std::span(record, static_cast<std::size_t>(length))));
  } catch (...) {
    handing->failure = std::current_exception();
  }
}

// Of whole numbers the library packs any; it fails for want of memory alone.
void NeedMemory(bool has_memory) {
  if (!has_memory) {
    throw std::bad_alloc();
  }
}

// Behind the one that is there, as the library would for the first record; but it would not look
// whether there is memory for a second one.
void AddBlockette1000(MSRecord* form) {
  auto* link = static_cast<BlktLink*>(std::calloc(1, sizeof(BlktLink)));
  auto* content = static_cast<blkt_1000_s*>(std::calloc(1, sizeof(blkt_1000_s)));
  if (link == nullptr || content == nullptr) {
    std::free(link);
    std::free(content);
    throw std::bad_alloc();
  }
  link->blkt_type = 1000;
  link->blktdata = content;
  link->blktdatalen = sizeof(blkt_1000_s);
  form->blkts->next = link;  // freed with the form
  form->Blkt1000 = content;
}

}  // namespace

void MseedStream::FreeTrace::operator()(MSTrace_s* trace) const { mst_free(&trace); }
void MseedStream::FreeRecord::operator()(MSRecord_s* record) const { msr_free(&record); }

MseedStream::MseedStream(const MseedName& name, double rate, int record_length)
    : rate_(rate),
      record_length_(record_length),
      trace_((PrepareLibrary(), mst_init(nullptr))),
      form_(msr_init(nullptr)) {
  NeedMemory(trace_ != nullptr && form_ != nullptr);
  CopyName(name, trace_.get());
  CopyName(name, form_.get());
  trace_->samprate = rate;
  trace_->sampletype = 'i';
  // Times to the microsecond: without it they end at a ten-thousandth of a second.
  blkt_1001_s fine{};
  NeedMemory(msr_addblockette(form_.get(), reinterpret_cast<char*>(&fine), sizeof fine, 1001, 0) !=
             nullptr);
  AddBlockette1000(form_.get());
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

void MseedStream::Add(std::span<const std::int32_t> samples, const Sink& sink) {
  if (samples.empty()) {
    return;
  }
  const auto count = static_cast<std::int64_t>(samples.size());
  NeedMemory(mst_addspan(trace_.get(), 0, 0, const_cast<std::int32_t*>(samples.data()), count, 'i',
                         1) == 0);
  Pack(false, sink);
}

void MseedStream::Flush(const Sink& sink) {
  if (trace_->numsamples > 0) {
    Pack(true, sink);
  }
  if (trace_->ststate != nullptr) {
    trace_->ststate->comphistory = 0;  // the next record is compared with no sample before it
  }
}

void MseedStream::Pack(bool is_last, const Sink& sink) {
  trace_->starttime = TimeOf(packed_);
  trace_->endtime = trace_->starttime;
  trace_->samplecnt = trace_->numsamples;
  std::int64_t packed = 0;
  Handing handing{sink};
  const int records = mst_pack(trace_.get(), HandOver, &handing, record_length_, DE_STEIM2, 1,
                               &packed, is_last ? 1 : 0, 0, form_.get());
  if (handing.failure != nullptr) {
    std::rethrow_exception(handing.failure);
  }
  NeedMemory(records >= 0);
  packed_ += static_cast<std::uint64_t>(packed);
}

}  // namespace orvane

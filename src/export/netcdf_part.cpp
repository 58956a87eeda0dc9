// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/netcdf_part.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/latin1.h"
#include "export/record_time.h"

namespace orvane {
namespace {

constexpr int kFill = std::numeric_limits<int>::min();
constexpr std::size_t kBlockSamples = 65536;  // of a channel that are written at once
constexpr std::size_t kTile = 512;            // scans that stay in the cache while they are sorted

std::vector<std::string> OwnNames() {
  return {"record",    "scan",   "time",      "scan_time", "record_number", "sample_rate",
          "frequency", "status", "parameter", "table_key", "table_value",   "table_meaning"};
}

}  // namespace

bool NetcdfPart::Takes(const TsHeader& header) const {
  return header.scans == first_.scans && header.channels == first_.channels &&
         header.rate == first_.rate && header.rate_unit == first_.rate_unit;
}

void NetcdfPart::Define(NcFile* file, int group, const TsCompanion* companion, int deflate,
                        std::size_t most_samples) {
  const std::size_t scans = first_.scans;
  block_ = std::min({records_, kBlockSamples / scans, most_samples / Samples()});
  block_ = std::max<std::size_t>(block_, 1);
  group_ = group;
  const int record = file->AddDim(group, "record", records_);
  const int scan = file->AddDim(group, "scan", scans);
  DefineRecords(file, record);
  if (SampleRate(first_) > 0) {
    scan_time_ = file->AddVar(group, "scan_time", NC_DOUBLE, {scan});
    file->AddText(group, scan_time_, "long_name", "time of the scan from that of its record");
    file->AddText(group, scan_time_, "units", "s");
  }
  DefineChannels(file, companion, {record, scan}, deflate);
}

void NetcdfPart::DefineRecords(NcFile* file, int record_dim) {
  const auto add = [&](const char* name, nc_type type, const char* what, const char* units) {
    const int var = file->AddVar(group_, name, type, {record_dim});
    file->AddText(group_, var, "long_name", what);
    if (units != nullptr) {
      file->AddText(group_, var, "units", units);
    }
    return var;
  };
  vars_.time =
      add("time", NC_DOUBLE, "time of the record, UTC", "seconds since 1970-01-01 00:00:00");
  file->AddText(group_, vars_.time, "standard_name", "time");
  file->AddText(group_, vars_.time, "calendar", "standard");
  file->AddReal(group_, vars_.time, "_FillValue", std::numeric_limits<double>::quiet_NaN());
  vars_.number =
      add("record_number", NC_INT64, "number of the record in the recording, from 1", nullptr);
  vars_.rate = add("sample_rate", NC_DOUBLE, "scans per second", "Hz");
  if (header_size_ == TsHeaderSize::kFull) {
    vars_.frequency = add("frequency", NC_DOUBLE, "frequency of the transmitter", "Hz");
  }
  if (header_size_ != TsHeaderSize::kBand) {
    vars_.status = add("status", NC_BYTE, "what the box says of the record", nullptr);
    file->AddByte(group_, vars_.status, "flag_values", TsHeader::kBadStatus);
    file->AddText(group_, vars_.status, "flag_meanings", "bad");
  }
}

void NetcdfPart::DefineChannels(NcFile* file, const TsCompanion* companion,
                                const std::vector<int>& dims, int deflate) {
  for (const ChannelValues& channel : ChannelValuesOf(first_, companion, OwnNames())) {
    const int var = file->AddVar(group_, channel.name, NC_INT, dims);
    if (deflate > 0) {
      file->Deflate(group_, var, {block_, first_.scans}, deflate);
    }
    file->AddInt(group_, var, "_FillValue", kFill);
    file->AddText(group_, var, "long_name", PrintableLatin1(channel.definition));
    file->AddText(group_, var, "units", channel.unit);
    if (channel.unit != "count") {
      file->AddReal(group_, var, "scale_factor", channel.scale);
    }
    file->AddText(group_, var, "coordinates", scan_time_ >= 0 ? "time scan_time" : "time");
    channels_.push_back(var);
  }
}

void NetcdfPart::PutScanTimes(NcFile* file) const {
  if (scan_time_ < 0) {
    return;
  }
  std::vector<double> times(first_.scans);
  for (std::size_t i = 0; i < times.size(); ++i) {
    times[i] = static_cast<double>(i) / SampleRate(first_);
  }
  file->Put(group_, scan_time_, {0}, {times.size()}, times.data());
}

void NetcdfPart::AddRow(const CTsRec& record) {
  const std::size_t scans = first_.scans;
  const std::size_t channels = channels_.size();
  const std::size_t held_scans = std::min(record.Scans(), scans);
  const auto held = record.Held();
  samples_.resize(channels);
  for (auto& channel : samples_) {
    channel.resize(block_ * scans);
  }
  for (std::size_t tile = 0; tile < held_scans; tile += kTile) {
    const std::size_t end = std::min(tile + kTile, held_scans);
    for (std::size_t c = 0; c < channels; ++c) {
      int* to = samples_[c].data() + rows_ * scans;
      for (std::size_t s = tile; s < end; ++s) {
        to[s] = SampleOf(held[s * channels + c]);
      }
    }
  }
  for (auto& channel : samples_) {
    const auto row = channel.begin() + static_cast<std::ptrdiff_t>(rows_ * scans);
    std::fill(row + static_cast<std::ptrdiff_t>(held_scans),
              row + static_cast<std::ptrdiff_t>(scans), kFill);
  }
}

void NetcdfPart::Put(NcFile* file, const CTsRec& record) {
  const TsHeader& header = record.Header();
  AddRow(record);
  times_.push_back(SecondsOf(header.time).value_or(std::numeric_limits<double>::quiet_NaN()));
  rates_.push_back(SampleRate(header));
  frequencies_.push_back(header.frequency);
  numbers_.push_back(static_cast<long long>(record.Place().number));
  statuses_.push_back(static_cast<signed char>(header.status));
  if (++rows_ == block_) {
    Flush(file);
  }
}

void NetcdfPart::Flush(NcFile* file) {
  if (rows_ == 0) {
    return;
  }
  const auto put = [&](int var, const auto& values) {
    if (var >= 0) {
      file->Put(group_, var, {written_}, {rows_}, values.data());
    }
  };
  put(vars_.time, times_);
  put(vars_.rate, rates_);
  put(vars_.frequency, frequencies_);
  put(vars_.number, numbers_);
  put(vars_.status, statuses_);
  for (std::size_t c = 0; c < channels_.size(); ++c) {
    file->Put(group_, channels_[c], {written_, 0}, {rows_, first_.scans}, samples_[c].data());
  }
  written_ += std::exchange(rows_, 0);
  times_.clear();
  rates_.clear();
  frequencies_.clear();
  numbers_.clear();
  statuses_.clear();
  if (block_ == 1) {
    samples_.clear();  // large records of many kinds do not wait together
  }
}

}  // namespace orvane

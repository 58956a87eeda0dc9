// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>
#include <optional>

#include "bind.h"
#include "export/channel_values.h"
#include "files/path_text.h"
#include "timeseries/leave_out.h"
#include "timeseries/record_stats.h"
#include "timeseries/stack_result.h"
#include "timeseries/ts_file.h"
#include "timeseries/ts_rec.h"
#include "waveform.h"

namespace orvane::python {
namespace {

std::unique_ptr<TsFile> OpenSeries(const std::string& name, int header_size, bool needs_table) {
  const auto path = PathOf(name);
  auto file = std::make_unique<TsFile>();
  TsFile::Options options{.header_size = {}, .needs_companion = needs_table};
  if (header_size != 0) {
    options.header_size = static_cast<TsHeaderSize>(header_size);
  }
  Result<> opened;
  {
    const py::gil_scoped_release free;
    opened = file->Open(path, options);
  }
  Check(opened, path);
  return file;
}

TsPlace PlaceOf(const TsFile& self, std::uint64_t number) {
  Result<TsPlace> place = Failure("none");
  {
    const py::gil_scoped_release free;
    place = self.Find(number);
  }
  if (!place) {
    Fail(self.Path(), place.Message(), "record " + std::to_string(number));
  }
  return *place;
}

py::dict FromHeader(const TsFile& self, const TsPlace& place) {
  const TsHeader& header = place.header;
  const bool is_band = self.IsBandFile();
  py::dict told;
  told["number"] = place.number;
  told["time"] = FromTime(header.time);
  told["box"] = int(header.box);
  told["scans"] = place.scans_held;
  told["channels"] = int(header.channels);
  told["status"] = is_band ? 0 : int(header.status);
  told["rate"] = SampleRate(header);
  told["frequency"] = self.HeaderSize() == TsHeaderSize::kFull ? double(header.frequency) : 0.0;
  told["is_cut"] = place.is_cut;
  return told;
}

// Scans x channels, in an array of its own that outlives the file.
py::array_t<std::int32_t> Counts(const TsFile& self, std::uint64_t number) {
  const TsPlace place = PlaceOf(self, number);
  const std::size_t channels = place.header.channels;
  auto counts = NewArray<std::int32_t>({place.scans_held, channels});
  const std::span<std::int32_t> room(counts.mutable_data(), place.scans_held * channels);
  std::size_t scans = 0;
  Result<> read;
  {
    const py::gil_scoped_release free;
    read = ReadSamples(self.Bytes(), place, room, &scans);
  }
  if (!read || (scans < place.scans_held && channels > 0)) {
    Fail(self.Path(), read ? "the file has become shorter" : read.Message(),
         "record " + std::to_string(number));
  }
  return counts;
}

// (definition, unit, units per count, name for other programs) of each channel of a record.
py::list Channels(const TsFile& self, std::uint64_t number) {
  const TsPlace place = PlaceOf(self, number);
  const TsCompanion* companion = self.Companion().IsLoaded() ? &self.Companion() : nullptr;
  py::list channels;
  for (const ChannelValues& channel : ChannelValuesOf(place.header, companion)) {
    channels.append(
        py::make_tuple(FromLatin1(channel.definition), channel.unit, channel.scale, channel.name));
  }
  return channels;
}

py::object TableOf(const TsFile& self) {
  return self.Companion().IsLoaded() ? py::cast(Table(self.Companion().Table()))
                                     : py::object(py::none());
}

// Arrays of records x channels; channels that a record lacks have 0 samples.
py::dict Statistics(const TsFile& self, unsigned threads) {
  std::vector<RecordStats> records;
  std::size_t channels = 0;
  Result<> done;
  {
    const py::gil_scoped_release free;
    done = StatsOfRecords(self.Bytes(), self.Walk(), {.threads = threads, .stopped = {}},
                          [&](const RecordStats& record) {
                            channels = std::max(channels, record.channels.size());
                            records.push_back(record);
                          });
  }
  orvane::python::Check(done, self.Path());
  const std::vector<std::size_t> shape = {records.size(), channels};
  auto least = NewArray<std::int32_t>(shape);
  auto most = NewArray<std::int32_t>(shape);
  auto mean = NewArray<double>(shape);
  auto rms = NewArray<double>(shape);
  auto count = NewArray<std::int64_t>(shape);
  auto saturated = NewArray<std::int64_t>(shape);
  for (std::size_t i = 0; i < records.size(); ++i) {
    for (std::size_t c = 0; c < channels; ++c) {
      const std::size_t at = i * channels + c;
      const ChannelStats stats =
          c < records[i].channels.size() ? records[i].channels[c] : ChannelStats{};
      least.mutable_data()[at] = stats.Min();
      most.mutable_data()[at] = stats.Max();
      mean.mutable_data()[at] = stats.Mean();
      rms.mutable_data()[at] = stats.Rms();
      count.mutable_data()[at] = stats.count;
      saturated.mutable_data()[at] = stats.saturated;
    }
  }
  py::dict told;
  told["min"] = least;
  told["max"] = most;
  told["mean"] = mean;
  told["rms"] = rms;
  told["count"] = count;
  told["saturated"] = saturated;
  return told;
}

py::bytes BytesFrom(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Every record of a stack result file as it is; (records, where a record is cut or 0).
py::tuple ReadStack(const std::string& name) {
  const auto path = PathOf(name);
  StackReader reader;
  orvane::python::Check(reader.Open(path), path);
  py::list records;
  StackRecord record;
  for (;;) {
    bool is_there = false;
    {
      const py::gil_scoped_release free;
      is_there = reader.Next(&record);
    }
    if (!is_there) {
      break;
    }
    py::dict told;
    told["label"] = FromLatin1(record.header.Label());
    told["time"] = FromTime(record.header.time);
    told["first"] = int(record.header.first);
    told["second"] = int(record.header.second);
    told["flags"] = int(record.header.flags);
    told["value"] = double(record.header.value);
    told["extension"] = BytesFrom(record.extension);
    told["item_size"] = int(record.header.item_size);
    told["items"] = BytesFrom(record.items);
    records.append(told);
  }
  orvane::python::Check(reader.Outcome(), path);
  return py::make_tuple(records, reader.IsCut() ? reader.Offset() : 0);
}

}  // namespace

LeaveOut LeftOut(const TsFile& file, const std::string& choice) {
  if (choice.empty()) {
    return {};
  }
  const auto chosen = LeaveOutChoiceOf(choice);
  orvane::python::Check(chosen, file.Path());
  auto leave_out = LeaveOutOf(*chosen, file.Path(), file.Bytes(), file.HeaderSize());
  orvane::python::Check(leave_out, file.Path());
  return *leave_out;
}

void BindWaveform(py::module_* module) {
  py::class_<TsFile>(*module, "TimeSeries")
      .def(py::init(&OpenSeries))
      .def("count", &TsFile::Count)
      .def("bad_count", &TsFile::BadCount)
      .def("is_band", &TsFile::IsBandFile)
      .def("header_size", [](const TsFile& self) { return BytesIn(self.HeaderSize()); })
      .def("note",
           [](const TsFile& self) {
             return self.ReadError().empty() ? self.CompanionNote() : self.ReadError();
           })
      .def("header", [](const TsFile& self,
                        std::uint64_t number) { return FromHeader(self, PlaceOf(self, number)); })
      .def("counts", &Counts)
      .def("channels", &Channels)
      .def("table", &TableOf)
      .def("statistics", &Statistics);
  module->def("read_stack", &ReadStack);
}

}  // namespace orvane::python

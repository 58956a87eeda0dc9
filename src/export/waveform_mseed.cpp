// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/waveform_mseed.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <utility>
#include <vector>

#include "base/latin1.h"
#include "base/number_text.h"
#include "export/mseed_codes.h"
#include "export/mseed_stream.h"
#include "export/record_time.h"
#include "export/recording_input.h"
#include "export/station_xml.h"
#include "files/file_io.h"
#include "files/path_text.h"
#include "spectra/spectrum_calibration.h"
#include "table/geo_text.h"
#include "table/tech.h"
#include "timeseries/ts_listing.h"
#include "timeseries/ts_rec.h"

namespace orvane {
namespace {

constexpr std::int64_t kSecond = 1000000;  // microseconds
constexpr std::size_t kBuffer = std::size_t{256} * 1024;
constexpr double kHeldPerCount = 256;
constexpr double kHighestShare = 0.4;  // of the rate: above, the box's filters let nothing through
constexpr int kPointsPerDecade = 10;
constexpr int kDecades = 4;

// Records of one box, rate and number of channels: they share the channels' names.
struct Shape {
  TsHeader first;
  double rate = 0;
  std::vector<MseedChannel> names;
  std::vector<MseedStream> streams;
  std::int64_t begin = std::numeric_limits<std::int64_t>::max();
  std::int64_t end = std::numeric_limits<std::int64_t>::min();
};

std::vector<double> Frequencies(double rate) {
  std::vector<double> all;
  for (int i = -kDecades * kPointsPerDecade; i <= 0; ++i) {
    all.push_back(kHighestShare * rate * std::pow(10, static_cast<double>(i) / kPointsPerDecade));
  }
  const double reference = ReferenceFrequency(rate);
  all.insert(std::lower_bound(all.begin(), all.end(), reference), reference);
  return all;
}

class MseedJob {
 public:
  MseedJob(BatchTask* task, const MseedOptions* options, CalLibrary* library)
      : task_(*task), options_(*options), library_(*library) {}

  BatchResult Run() {
    const auto& path = task_.Outputs()[0];
    Result<> done = in_.Open(task_.Input(), options_.reading, options_.leave_out);
    if (!done) {
      return BatchFailed(done.Message());
    }
    done = out_.Open(path);
    done = done ? CopyRecords() : Failure(FileMessage(path, done.Message()));
    if (task_.Stopped()) {
      return BatchCancelled();
    }
    if (!done) {
      return BatchFailed(done.Message());
    }
    done = Write({});
    done = done ? out_.Commit() : done;
    if (!done) {
      return BatchFailed(FileMessage(path, done.Message()));
    }
    std::vector<std::filesystem::path> written = {path};
    return options_.has_station ? WithStation(std::move(written)) : BatchDone(written, Note());
  }

 private:
  // Takes records where `sink` of a stream puts them; in the order of the file they count on.
  MseedStream::Sink Sink() {
    return [this](std::span<std::byte> record) {
      if (written_) {
        written_ = Write(record);
      }
    };
  }

  // Without bytes: what waits.
  Result<> Write(std::span<std::byte> record) {
    constexpr std::size_t kDigits = 6;
    constexpr std::uint64_t kNumbers = 1000000;
    if (!record.empty()) {
      std::uint64_t number = ++records_ % kNumbers;
      for (std::size_t i = kDigits; i-- > 0; number /= 10) {
        record[i] = static_cast<std::byte>('0' + number % 10);
      }
      waiting_.insert(waiting_.end(), record.begin(), record.end());
    }
    if (waiting_.size() < kBuffer && !record.empty()) {
      return {};
    }
    const Result<> done = out_.Write(waiting_);
    waiting_.clear();
    return done;
  }

  bool IsWanted(const TsPlace& place) {
    if (in_.leave_out.Has(place)) {
      ++left_out_;
      return false;
    }
    if (!options_.keeps_bad && in_.file.HeaderSize() != TsHeaderSize::kBand &&
        place.header.IsBad()) {
      ++bad_;
      return false;
    }
    if (place.header.channels == 0 || place.scans_held == 0) {
      ++empty_;
      return false;
    }
    if (!SecondsOf(place.header.time)) {
      ++undated_;
      return false;
    }
    return true;
  }

  Result<Shape*> ShapeOf(const TsHeader& header) {
    const double rate = SampleRate(header);
    const auto at = std::find_if(shapes_.begin(), shapes_.end(), [&](const auto& shape) {
      return shape->rate == rate && shape->first.channels == header.channels &&
             shape->first.box == header.box;
    });
    if (at != shapes_.end()) {
      return at->get();
    }
    constexpr std::size_t kMostShapes = 100;
    if (!(rate > 0) || shapes_.size() == kMostShapes) {
      return Failure(rate > 0 ? "its records are of more than 100 kinds of box, rate and channels"
                              : "it has no sample rate, which this format needs");
    }
    auto names = MseedChannels({in_.file.Companion(), header.channels}, rate);
    const auto station = MseedStation(options_.network, header.box);
    if (!names || !station) {
      return Failure(names ? station.Message() : names.Message());
    }
    boxes_ += station_ == *station ? 0 : 1;
    station_ = *station;
    auto shape = std::make_unique<Shape>();
    shape->first = header;
    shape->rate = rate;
    shape->names = std::move(*names);
    for (const MseedChannel& name : shape->names) {
      shape->streams.emplace_back(MseedName{options_.network, *station, name.location, name.code},
                                  rate, options_.record_length);
    }
    return shapes_.emplace_back(std::move(shape)).get();
  }

  Result<> FlushAll(Shape* shape) {
    for (std::size_t c = 0; shape != nullptr && c < shape->streams.size(); ++c) {
      shape->streams[c].Flush(Sink());
    }
    return written_;
  }

  // A record continues what was before it where it begins within half a scan of its end.
  Result<> Continue(Shape* shape, std::int64_t time) {
    if (shape == current_ &&
        std::abs(static_cast<double>(shape->streams.front().Next() - time)) * shape->rate <=
            kSecond / 2.0) {
      return {};
    }
    const Result<> done = FlushAll(current_);
    segments_ += 1;
    current_ = shape;
    for (MseedStream& stream : shape->streams) {
      stream.Start(time);
    }
    return done;
  }

  Result<> CopyRecord(const TsPlace& place) {
    const auto shape = ShapeOf(place.header);
    if (!shape) {
      return Failure("record " + FormatUnsigned(place.number) + ": " + shape.Message());
    }
    if (const Result<> read = record_.Read(in_.file.Bytes(), place); !read) {
      return read;
    }
    const std::int64_t time = kSecond * std::int64_t{*SecondsOf(place.header.time)};
    const Result<> done = Continue(*shape, time);
    const std::size_t channels = record_.Channels();
    const auto held = record_.Held();
    for (std::size_t c = 0; c < channels; ++c) {
      samples_.clear();
      for (std::size_t i = c; i < held.size(); i += channels) {
        samples_.push_back(SampleOf(held[i]));
      }
      (*shape)->streams[c].Add(samples_, Sink());
    }
    (*shape)->begin = std::min((*shape)->begin, time);
    (*shape)->end = std::max((*shape)->end, (*shape)->streams.front().Next());
    return done ? written_ : done;
  }

  Result<> CopyRecords() {
    TsWalker walker = in_.Walk();
    Result<> done;
    for (TsPlace place; done && !task_.Stopped() && walker.Next(&place);) {
      cut_ = place.is_cut ? place.number : cut_;
      done = IsWanted(place) ? CopyRecord(place) : done;
      task_.Advance(place.next - place.offset);
    }
    done = done ? FlushAll(current_) : done;
    done = done ? walker.Outcome() : done;
    return done && shapes_.empty() && !task_.Stopped() ? Failure("no record to convert") : done;
  }

  static void Count(std::uint64_t count, const char* one, const char* many, std::string* note) {
    if (count > 0) {
      AddNote(FormatUnsigned(count) + (count == 1 ? one : many), note);
    }
  }

  std::string Note() const {
    std::string note = in_.note;
    AddNote(LeaveOutNote(in_.leave_out, left_out_), &note);
    Count(bad_, " bad record is a gap", " bad records are gaps", &note);
    Count(empty_, " record has no samples", " records have no samples", &note);
    Count(undated_, " record without a date is left out", " records without a date are left out",
          &note);
    if (cut_ > 0) {
      AddNote("the file ends within record " + FormatUnsigned(cut_), &note);
    }
    AddNote(std::string("times are whole seconds, taken as UTC; ")
                .append(FormatUnsigned(segments_))
                .append(segments_ == 1 ? " stretch without a gap" : " stretches without a gap"),
            &note);
    return note;
  }

  // Fails where the place is not known, or the responses are not.
  Result<Station> Describe(std::string* note) const {
    const auto& table = in_.file.Companion();
    const RecordingHeader header{table, 0};
    const auto place = GeoPlaceOf(table.Table());
    const auto latitude =
        options_.place.latitude || !place ? options_.place.latitude : place->latitude;
    const auto longitude =
        options_.place.longitude || !place ? options_.place.longitude : place->longitude;
    if (boxes_ > 1) {
      return Failure("its records are of more than one box");
    }
    if (!latitude || !longitude) {
      return Failure("its latitude and longitude are not known");
    }
    Station station{options_.network,
                    station_,
                    SettingText(header, "SITE"),
                    *latitude,
                    *longitude,
                    options_.place.elevation.value_or(SettingInt(header, "ELEV")),
                    {}};
    station.site = station.site.empty() ? "box " + station_ : PrintableLatin1(station.site);
    for (const auto& shape : shapes_) {
      if (const Result<> added = AddChannels(*shape, &station, note); !added) {
        return Failure(added.Message());
      }
    }
    return station;
  }

  Result<> AddChannels(const Shape& shape, Station* station, std::string* note) const {
    const auto folder =
        options_.calibrations.empty() ? task_.Input().parent_path() : options_.calibrations;
    SpectrumCalibration calibration;
    if (const auto loaded = calibration.Load(folder, in_.file, shape.first, &library_); !loaded) {
      return loaded;
    }
    if (note->find(calibration.Note()) == std::string::npos) {
      AddNote(calibration.Note(), note);
    }
    const std::vector<double> frequencies = Frequencies(shape.rate);
    const auto responses = calibration.Responses(shape.rate, frequencies);
    if (!responses) {
      return Failure(responses.Message());
    }
    const RecordingHeader header{in_.file.Companion(), shape.first.channels};
    for (std::size_t c = 0; c < shape.names.size(); ++c) {
      StationChannel channel{
          shape.names[c],
          PrintableLatin1(SettingText(header, "CHDEF" + FormatInt(static_cast<int>(c) + 1))),
          shape.rate,
          shape.begin,
          shape.end,
          {std::string(calibration.Unit(c)), {}}};
      const double metres =
          channel.response.unit == "V" ? Dipole(header, static_cast<int>(c) + 1) : 0;
      channel.response.unit += metres > 0 ? "/m" : "";
      const double factor = (metres > 0 ? metres : 1) / kHeldPerCount;
      for (std::size_t i = 0; i < (*responses)[c].size(); ++i) {
        const Complex& response = (*responses)[c][i];
        if (response != 0.0) {
          channel.response.points.push_back({frequencies[i], factor * std::abs(response),
                                             std::arg(response) * 180 / std::numbers::pi});
        }
      }
      station->channels.push_back(std::move(channel));
    }
    return {};
  }

  // Metres between the electrodes; 0 where the table does not say it of this method.
  static double Dipole(const RecordingHeader& header, int channel) {
    if (DefinitionLetter(header, channel) != 'E') {
      return 0;
    }
    const char axis = ComponentAxis(header, channel);
    const bool is_mt = SettingInt(header, "TECH") == kMtAmt;
    const double metres = !is_mt        ? SettingReal(header, "RXLEN")
                          : axis == 'X' ? SettingReal(header, "EXLN")
                          : axis == 'Y' ? SettingReal(header, "EYLN")
                                        : 0;
    return std::isfinite(metres) ? metres : 0;
  }

  BatchResult WithStation(std::vector<std::filesystem::path> written) const {
    const auto& path = task_.Outputs()[1];
    std::string note = Note();
    std::string told;
    const auto station = Describe(&told);
    if (!station) {
      AddNote("no StationXML: " + station.Message(), &note);
      return BatchDone(std::move(written), note);
    }
    const std::string text = StationXml(*station);
    OutFile out;
    Result<> done = out.Open(path);
    done = done ? out.Write(std::as_bytes(std::span(text))) : done;
    done = done ? out.Commit() : done;
    if (!done) {
      BatchResult failed = BatchFailed(FileMessage(path, done.Message()));
      failed.outputs = std::move(written);
      return failed;
    }
    written.push_back(path);
    AddNote(told, &note);
    return BatchDone(std::move(written), note);
  }

  BatchTask& task_;
  const MseedOptions& options_;
  CalLibrary& library_;
  RecordingInput in_;
  OutFile out_;
  std::vector<std::byte> waiting_;
  Result<> written_;
  CTsRec record_;
  std::vector<std::int32_t> samples_;  // of a channel
  std::vector<std::unique_ptr<Shape>> shapes_;
  Shape* current_ = nullptr;
  std::string station_;        // of the newest shape
  int boxes_ = 0;              // changes of it
  std::uint64_t records_ = 0;  // of MiniSEED
  std::uint64_t segments_ = 0;
  std::uint64_t left_out_ = 0;
  std::uint64_t bad_ = 0;
  std::uint64_t empty_ = 0;
  std::uint64_t undated_ = 0;
  std::uint64_t cut_ = 0;
};

}  // namespace

std::string_view WhyNoMseed() { return {}; }

Conversion WaveformMseed(MseedOptions options) {
  Conversion conversion;
  conversion.outputs_of = [has_station = options.has_station](const std::string& path) {
    std::vector<std::string> outputs = {TsResultName(path, ".mseed")};
    if (has_station) {
      outputs.push_back(TsResultName(path, ".xml"));
    }
    return outputs;
  };
  conversion.job = [options = std::move(options), library = std::make_shared<CalLibrary>()](
                       BatchTask& task) { return MseedJob(&task, &options, library.get()).Run(); };
  return conversion;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/harmonics_netcdf.h"

#include <limits>
#include <vector>

#include "base/latin1.h"
#include "base/number_text.h"
#include "export/channel_values.h"
#include "export/netcdf_file.h"
#include "export/record_time.h"
#include "files/file_io.h"
#include "files/path_names.h"
#include "files/path_text.h"

namespace orvane {
namespace {

// Records whose harmonics are at the same frequencies.
struct Part {
  double base_frequency = 0;
  double sample_rate = 0;
  std::vector<int> numbers;
  std::vector<double> frequencies;
  std::vector<double> times;
  std::vector<long long> records;
  std::vector<std::vector<double>> amplitudes, phases;  // of each channel, record after record

  bool Takes(const SpectraRecord& record) const {
    return base_frequency == record.base_frequency && sample_rate == record.sample_rate &&
           numbers == record.numbers;
  }
};

class NetcdfWriter final : public SpectraWriter {
 public:
  Result<> Open(const std::filesystem::path& path) override { return out_.Open(path); }
  bool HasFailed() const override { return false; }

  void Head(const SpectraSource& source, const std::filesystem::path& input) override {
    name_ = PrintableUtf8(PathText(input.filename()));
    box_ = source.first.box;
    calibration_ = PrintableUtf8(std::string(LastComponent(source.box_path)).append(".CLB"));
    const TsCompanion* companion = &source.header.settings;
    channels_ = ChannelValuesOf(source.first, companion, {"record", "harmonic", "time"});
    for (const CalibratedChannel& channel : source.channels) {
      units_.emplace_back(channel.Unit());
      sensors_.push_back(PrintableLatin1(channel.sensor_name));
    }
  }

  void Put(const SpectraRecord& record) override {
    if (record.frequencies.empty()) {
      return;
    }
    Part* part = nullptr;
    for (Part& one : parts_) {
      part = one.Takes(record) ? &one : part;
    }
    if (part == nullptr) {
      part = &parts_.emplace_back(Part{record.base_frequency,
                                       record.sample_rate,
                                       record.numbers,
                                       record.frequencies,
                                       {},
                                       {},
                                       std::vector<std::vector<double>>(units_.size()),
                                       std::vector<std::vector<double>>(units_.size())});
    }
    const auto seconds = SecondsOf(record.header.time);
    part->times.push_back(seconds ? *seconds : std::numeric_limits<double>::quiet_NaN());
    part->records.push_back(static_cast<long long>(record.number));
    for (const auto& lines : record.lines) {
      for (std::size_t c = 0; c < units_.size(); ++c) {
        part->amplitudes[c].push_back(lines[c].amplitude);
        part->phases[c].push_back(lines[c].phase);
      }
    }
  }

  Result<> Commit() override {
    if (parts_.empty()) {
      return Failure("no record has a harmonic within its length and rate");
    }
    const auto path = out_.PathToFill();
    if (!path) {
      return Failure(path.Message());
    }
    NcFile nc;
    nc.Create(*path);
    DefineGlobals(&nc);
    std::vector<Vars> vars;
    for (const Part& part : parts_) {
      const int group = vars.empty() ? nc.Root()
                                     : nc.AddGroup(std::string("part").append(
                                           FormatInt(static_cast<int>(vars.size()) + 1)));
      vars.push_back(Define(&nc, group, part));
    }
    nc.EndDefinitions();
    for (std::size_t i = 0; i < parts_.size(); ++i) {
      PutPart(&nc, vars[i], parts_[i]);
    }
    const Result<> closed = nc.Close();
    return closed ? out_.Commit() : closed;
  }

 private:
  struct Vars {
    int group = -1, harmonic = -1, frequency = -1, time = -1, record = -1;
    std::vector<int> amplitudes, phases;
  };

  void DefineGlobals(NcFile* nc) const {
    const auto add = [nc](const char* what, std::string_view text) {
      nc->AddText(nc->Root(), NC_GLOBAL, what, text);
    };
    add("Conventions", "CF-1.10");
    add("title", std::string("Calibrated spectra of ").append(name_));
    add("source", std::string("geophysical receiver ")
                      .append(FormatInt(box_))
                      .append(", calibration ")
                      .append(calibration_));
    add("references", "docs/formats/netcdf.md of Orvane");
    add("history", std::string("orvane-cli waveform harmonics --format netcdf ")
                       .append(name_)
                       .append(" (Orvane " ORVANE_VERSION ")"));
  }

  Vars Define(NcFile* nc, int group, const Part& part) const {
    Vars vars;
    vars.group = group;
    const int record = nc->AddDim(group, "record", part.records.size());
    const int harmonic = nc->AddDim(group, "harmonic", part.numbers.size());
    const auto add = [&](const std::string& name, nc_type type, const std::vector<int>& dims,
                         const std::string& what, std::string_view units) {
      const int var = nc->AddVar(group, name, type, dims);
      nc->AddText(group, var, "long_name", what);
      if (!units.empty()) {
        nc->AddText(group, var, "units", units);
      }
      return var;
    };
    vars.harmonic = add("harmonic", NC_INT, {harmonic}, "number of the odd harmonic", {});
    vars.frequency = add("frequency", NC_DOUBLE, {harmonic}, "frequency of the harmonic", "Hz");
    vars.time = add("time", NC_DOUBLE, {record}, "time of the record, UTC",
                    "seconds since 1970-01-01 00:00:00");
    nc->AddText(group, vars.time, "standard_name", "time");
    nc->AddText(group, vars.time, "calendar", "standard");
    nc->AddReal(group, vars.time, "_FillValue", std::numeric_limits<double>::quiet_NaN());
    vars.record = add("record_number", NC_INT64, {record},
                      "number of the record in the recording, from 1", {});
    nc->AddReal(group, NC_GLOBAL, "base_frequency", part.base_frequency);
    nc->AddReal(group, NC_GLOBAL, "sample_rate", part.sample_rate);
    for (std::size_t c = 0; c < units_.size(); ++c) {
      const std::string definition = PrintableLatin1(channels_[c].definition);
      const auto add_values = [&](const char* what, std::string_view units) {
        const int var = add(channels_[c].name + "_" + what, NC_DOUBLE, {record, harmonic},
                            std::string(what).append(" of ").append(definition), units);
        nc->AddText(group, var, "coordinates", "time frequency");
        nc->AddText(group, var, "sensor", sensors_[c]);
        return var;
      };
      vars.amplitudes.push_back(add_values("amplitude", units_[c]));
      vars.phases.push_back(add_values("phase", "degree"));
    }
    return vars;
  }

  static void PutPart(NcFile* nc, const Vars& vars, const Part& part) {
    const std::size_t records = part.records.size();
    const std::size_t harmonics = part.numbers.size();
    nc->Put(vars.group, vars.harmonic, {0}, {harmonics}, part.numbers.data());
    nc->Put(vars.group, vars.frequency, {0}, {harmonics}, part.frequencies.data());
    nc->Put(vars.group, vars.time, {0}, {records}, part.times.data());
    nc->Put(vars.group, vars.record, {0}, {records}, part.records.data());
    for (std::size_t c = 0; c < vars.amplitudes.size(); ++c) {
      nc->Put(vars.group, vars.amplitudes[c], {0, 0}, {records, harmonics},
              part.amplitudes[c].data());
      nc->Put(vars.group, vars.phases[c], {0, 0}, {records, harmonics}, part.phases[c].data());
    }
  }

  OutFile out_;
  std::string name_;
  int box_ = 0;
  std::string calibration_;
  std::vector<ChannelValues> channels_;
  std::vector<std::string> units_;
  std::vector<std::string> sensors_;
  std::vector<Part> parts_;
};

}  // namespace

std::shared_ptr<SpectraWriter> HarmonicsNetcdf() { return std::make_shared<NetcdfWriter>(); }

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include <memory>
#include <variant>

#include "base/status.h"
#include "bind.h"
#include "calibration/cal_records.h"
#include "files/path_text.h"
#include "response/box_response.h"
#include "response/fit_report.h"
#include "response/sensor_response.h"
#include "response/uncertainty.h"
#include "response/verdict.h"

namespace orvane::python {
namespace {

struct Calibration {
  std::filesystem::path path;
  int kind = 0;
  std::unique_ptr<CalData> cal;
};

std::unique_ptr<Calibration> Open(const std::string& name) {
  auto self = std::make_unique<Calibration>();
  self->path = PathOf(name);
  CalReport report;
  {
    const py::gil_scoped_release free;
    self->kind = CalKindOf(self->path);
    self->cal = ReadCalFileAt(self->kind, self->path, &report);
  }
  if (self->cal == nullptr) {
    Fail(self->path, report.message);
  }
  return self;
}

py::dict Header(const Calibration& self) {
  const CalHeader& header = self.cal->header;
  py::dict told;
  told["kind"] = self.kind;
  told["time"] = FromTime(header.utc);
  told["serial"] = int(header.snum);
  told["channels"] = self.cal->Channels();
  told["hardware"] = FromLatin1(CalText(header.hw));
  told["version"] = FromLatin1(CalText(header.ver));
  told["sensor"] = FromLatin1(CalText(header.hsn));
  told["nominal"] = double(header.hnom);
  return told;
}

// What was measured: frequency and kind of each record, where passes begin, responses of records x
// channels and their four values.
py::dict Records(const Calibration& self) {
  const CalData& cal = *self.cal;
  const std::size_t count = cal.records.size();
  const std::size_t channels = cal.Channels();
  auto frequency = NewArray<double>({count});
  auto kind = NewArray<std::uint8_t>({count});
  auto response = NewArray<std::complex<double>>({count, channels});
  auto values = NewArray<double>({count, channels, 4});
  for (std::size_t i = 0; i < count; ++i) {
    const CalFileRecord& record = cal.records[i];
    frequency.mutable_data()[i] = double(float(record.frequency));
    kind.mutable_data()[i] = record.kind;
    for (std::size_t c = 0; c < channels; ++c) {
      const CalBlock& block = record.channels[c];
      response.mutable_data()[i * channels + c] = {float(block.real), float(block.imaginary)};
      for (std::size_t k = 0; k < 4; ++k) {
        values.mutable_data()[(i * channels + c) * 4 + k] = double(float(block.values[k]));
      }
    }
  }
  py::dict told;
  told["frequency"] = frequency;
  told["kind"] = kind;
  told["response"] = response;
  told["values"] = values;
  told["passes"] = ArrayOf(cal.pass_table);
  return told;
}

bool HasModel(const Calibration& self) { return self.cal->model.parameter_count > 0; }

py::list Fit(const Calibration& self) {
  py::list channels;
  for (std::size_t c = 0; c < self.cal->Channels() && HasModel(self); ++c) {
    const BoxModel::FitReport& fit = self.cal->model.fits[c];
    const FrontEndParameters parameters = ParametersOf(*self.cal, c);
    py::dict told;
    told["is_fitted"] = fit.is_kept;
    told["points"] = fit.points;
    told["left_out"] = fit.rejected;
    told["iterations"] = fit.iterations;
    told["rms"] = fit.rms;
    told["max"] = fit.max;
    py::dict parts;
    for (std::size_t k = 0; k < parameters.size(); ++k) {
      parts[py::str(PartName(k))] = parameters[k];
    }
    told["parts"] = parts;
    channels.append(told);
  }
  return channels;
}

py::dict FromVerdict(std::size_t channel, const ChannelVerdict& verdict) {
  const char* const names[] = {"well", "with care", "not usable"};
  py::list reasons;
  for (const VerdictReason& reason : verdict.reasons) {
    reasons.append(reason.text);
  }
  py::dict told;
  told["channel"] = channel + 1;
  told["usability"] = names[static_cast<std::size_t>(verdict.usability)];
  told["summary"] = verdict.Summary();
  told["reasons"] = reasons;
  told["notes"] = verdict.notes;
  return told;
}

py::list Verdicts(const Calibration& self) {
  std::vector<std::pair<std::size_t, ChannelVerdict>> verdicts;
  {
    const py::gil_scoped_release free;
    for (std::size_t c = 0; c < self.cal->Channels() && HasModel(self); ++c) {
      verdicts.emplace_back(c, JudgeChannel(*self.cal, c));
    }
    if (!HasModel(self)) {
      const std::size_t c = SensorChannelOf(*self.cal);
      verdicts.emplace_back(c, JudgeRecords(*self.cal, self.kind, c, PathText(self.path.stem())));
    }
  }
  py::list told;
  for (const auto& [channel, verdict] : verdicts) {
    told.append(FromVerdict(channel, verdict));
  }
  return told;
}

// The bytes of a path, or a table itself.
using TableOrPath = std::variant<const Table*, std::string>;

RecordingHeader HeaderFor(const Calibration& self, const TableOrPath& table, int channels) {
  RecordingHeader header;
  if (const auto* path = std::get_if<std::string>(&table)) {
    TblReport report;
    if (header.settings.Load(PathOf(*path), &report) != kOk) {
      Fail(PathOf(*path), report.message);
    }
  } else {
    header.settings = TsCompanion(std::get<const Table*>(table)->table);
  }
  header.channels = channels > 0 ? channels : static_cast<int>(self.cal->Channels());
  return header;
}

// Responses and bands of frequencies x channels.
struct Responses {
  explicit Responses(std::vector<std::size_t> shape)
      : response(NewArray<std::complex<double>>(shape)),
        validity(NewArray<double>(shape)),
        bands{NewArray<double>(shape), NewArray<double>(shape), NewArray<double>(shape),
              NewArray<double>(shape)} {}

  py::array_t<std::complex<double>> response;
  py::array_t<double> validity;
  std::array<py::array_t<double>, 4> bands;  // amplitude, phase; then the wider ones
  // Without Python these only.
  std::complex<double>* const responses = response.mutable_data();
  double* const validities = validity.mutable_data();
  const std::array<double*, 4> of_bands = {bands[0].mutable_data(), bands[1].mutable_data(),
                                           bands[2].mutable_data(), bands[3].mutable_data()};
};

void FillBands(const Calibration& self, const BoxResponse& box, bool has_bands,
               const std::vector<double>& frequencies, Responses* out) {
  const std::size_t channels = box.Channels();
  std::vector<ModelUncertainty> known;
  for (std::size_t c = 0; has_bands && c < self.cal->Channels(); ++c) {
    known.emplace_back(*self.cal, c);
  }
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  for (std::size_t i = 0; i < frequencies.size(); ++i) {
    for (std::size_t c = 0; c < channels; ++c) {
      std::array<double, 4> band = {kUnknown, kUnknown, kUnknown, kUnknown};
      if (c < known.size()) {
        const ResponseBands bands = known[c].At(box.Setting(c), frequencies[i]);
        band = {bands.noise.amplitude, bands.noise.phase, bands.wider.amplitude, bands.wider.phase};
      }
      for (std::size_t k = 0; k < band.size(); ++k) {
        out->of_bands[k][i * channels + c] = band[k];
      }
    }
  }
}

py::tuple BoxResponses(const Calibration& self, const TableOrPath& table, int band, int channels,
                       const std::vector<double>& frequencies) {
  const RecordingHeader header = HeaderFor(self, table, channels);
  BoxResponse box;
  Status status = kOk;
  {
    const py::gil_scoped_release free;
    status = box.Prepare(self.cal.get(), &header, band);
  }
  if (status != kOk) {
    Fail(self.path, StatusText(status));
  }
  Responses out({frequencies.size(), box.Channels()});
  {
    const py::gil_scoped_release free;
    for (std::size_t i = 0; i < frequencies.size(); ++i) {
      const std::size_t at = i * box.Channels();
      const Status one = box.At(frequencies[i], {out.responses + at, box.Channels()},
                                {out.validities + at, box.Channels()});
      status = status == kOk ? one : status;
    }
    FillBands(self, box, HasModel(self) && !IsOfOlderFamily(header), frequencies, &out);
  }
  return py::make_tuple(out.response, out.validity, out.bands[0], out.bands[1], out.bands[2],
                        out.bands[3],
                        status == kOk ? std::string() : std::string(StatusText(status)));
}

py::array_t<std::complex<double>> SensorResponses(const Calibration& self, const TableOrPath& table,
                                                  int channels,
                                                  const std::vector<double>& frequencies) {
  const RecordingHeader header = HeaderFor(self, table, channels);
  SensorResponse sensor;
  if (const Status status = sensor.Prepare(self.cal.get(), &header); status != kOk) {
    Fail(self.path, StatusText(status));
  }
  auto response = NewArray<std::complex<double>>({frequencies.size()});
  std::complex<double>* const responses = response.mutable_data();
  const py::gil_scoped_release free;
  for (std::size_t i = 0; i < frequencies.size(); ++i) {
    responses[i] = sensor.At(frequencies[i]);
  }
  return response;
}

}  // namespace

void BindCalibration(py::module_* module) {
  py::class_<Calibration>(*module, "Calibration")
      .def(py::init(&Open))
      .def("header", &Header)
      .def("records", &Records)
      .def("fit", &Fit)
      .def("verdicts", &Verdicts)
      .def("box_response", &BoxResponses)
      .def("sensor_response", &SensorResponses);
}

}  // namespace orvane::python

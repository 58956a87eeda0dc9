// SPDX-License-Identifier: GPL-3.0-or-later
#include <limits>

#include "bind.h"
#include "files/path_text.h"
#include "spectra/calibrated_channel.h"
#include "spectra/decay_plan.h"
#include "spectra/file_spectrum.h"
#include "spectra/frequency_points.h"
#include "spectra/spectrum_calibration.h"
#include "table/tech.h"
#include "timeseries/decay_file.h"
#include "waveform.h"

namespace orvane::python {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

void Append(const std::string& note, std::string* notes) {
  notes->append(notes->empty() || note.empty() ? "" : "; ").append(note);
}

// Takes a spectrum of held values to units: those of calibrations in `folder`, else of the table.
Result<> TakeUnitsOf(const TsFile& file, const std::string& folder, FileSpectrum* found,
                     std::string* note) {
  const TsCompanion* companion = file.Companion().IsLoaded() ? &file.Companion() : nullptr;
  const std::vector<WaveformChannel> channels = WaveformChannels(found->header, companion);
  if (folder.empty()) {
    TakeUnits(channels, &found->spectrum);
    return {};
  }
  SpectrumCalibration calibration;
  CalLibrary library;
  if (Result<> loaded = calibration.Load(PathOf(folder), file, found->header, &library); !loaded) {
    return loaded;
  }
  Append(calibration.Note(), note);
  return calibration.Correct(channels, &found->spectrum);
}

py::dict FromSpectrum(const Spectrum& spectrum) {
  const std::size_t bins = spectrum.Bins();
  const std::size_t channels = spectrum.channels.size();
  auto frequency = NewArray<double>({bins});
  auto amplitude = NewArray<double>({bins, channels});
  auto density = NewArray<double>({bins, channels});
  py::list names;
  py::list units;
  for (std::size_t c = 0; c < channels; ++c) {
    names.append(FromLatin1(spectrum.channels[c].name));
    units.append(spectrum.channels[c].unit.empty() ? "count" : spectrum.channels[c].unit);
  }
  for (std::size_t bin = 0; bin < bins; ++bin) {
    frequency.mutable_data()[bin] = spectrum.Frequency(bin);
    for (std::size_t c = 0; c < channels; ++c) {
      amplitude.mutable_data()[bin * channels + c] = spectrum.Amplitude(c, bin);
      density.mutable_data()[bin * channels + c] = spectrum.Density(c, bin);
    }
  }
  py::dict told;
  told["rate"] = spectrum.rate;
  told["length"] = spectrum.length;
  told["segments"] = spectrum.segments;
  told["channels"] = names;
  told["units"] = units;
  told["frequency"] = frequency;
  told["amplitude"] = amplitude;
  told["density"] = density;
  return told;
}

py::dict Spectra(const TsFile& file, std::uint64_t record, std::size_t segment,
                 const std::string& leave_out, const std::string& calibrations, unsigned threads) {
  const LeaveOut left_out = LeftOut(file, leave_out);
  FileSpectrumOptions options;
  options.leave_out = left_out;
  options.record = record;
  options.segment = segment;
  options.pass.threads = threads;
  Result<FileSpectrum> found = Failure("none");
  Result<> corrected;
  std::string note;
  {
    const py::gil_scoped_release free;
    found = SpectrumOfFile(file, options);
    if (found) {
      note = found->Note(left_out);
      corrected = TakeUnitsOf(file, calibrations, &*found, &note);
    }
  }
  Check(found, file.Path());
  Check(corrected, file.Path());
  py::dict told = FromSpectrum(found->spectrum);
  told["records"] = found->records;
  told["note"] = note;
  return told;
}

py::list Labels(const std::vector<WaveformChannel>& channels) {
  py::list labels;
  for (const WaveformChannel& channel : channels) {
    labels.append(FromLatin1(channel.Label()));
  }
  return labels;
}

// Records x channels x rows of values and spreads, then channels x rows over the records.
py::dict FromDecay(const FileDecay& decay) {
  const std::size_t records = decay.records.size();
  const std::size_t channels = decay.channels.size();
  const std::size_t rows = decay.Rows();
  auto numbers = NewArray<std::int64_t>({records});
  auto value = NewArray<double>({records, channels, rows});
  auto spread = NewArray<double>({records, channels, rows});
  auto outlier = NewArray<bool>({records, channels, rows});
  auto median = NewArray<double>({channels, rows});
  auto scatter = NewArray<double>({channels, rows});
  py::list reasons;
  for (std::size_t i = 0; i < records; ++i) {
    const RecordDecay& record = decay.records[i];
    numbers.mutable_data()[i] = static_cast<std::int64_t>(record.number);
    reasons.append(record.reason);
    for (std::size_t c = 0; c < channels; ++c) {
      for (std::size_t row = 0; row < rows; ++row) {
        const std::size_t at = (i * channels + c) * rows + row;
        const auto found = decay.Value(record, c, row);
        value.mutable_data()[at] = found ? found->value : kUnknown;
        spread.mutable_data()[at] = found ? found->spread : kUnknown;
        outlier.mutable_data()[at] = found && decay.IsOutlier(record, c, row);
      }
    }
  }
  for (std::size_t c = 0; c < channels; ++c) {
    for (std::size_t row = 0; row < rows; ++row) {
      const RobustStats& stats = decay.stacked[c][row];
      median.mutable_data()[c * rows + row] = stats.count > 0 ? stats.median : kUnknown;
      scatter.mutable_data()[c * rows + row] = stats.count > 0 ? stats.spread : kUnknown;
    }
  }
  auto windows = NewArray<double>({decay.plan.windows.size(), 2});
  for (std::size_t k = 0; k < decay.plan.windows.size(); ++k) {
    windows.mutable_data()[2 * k] = decay.plan.windows[k].start;
    windows.mutable_data()[2 * k + 1] = decay.plan.windows[k].end;
  }
  py::dict told;
  told["channels"] = Labels(decay.channels);
  told["windows"] = windows;
  told["records"] = numbers;
  told["reasons"] = reasons;
  told["value"] = value;
  told["spread"] = spread;
  told["is_outlier"] = outlier;
  told["stacked"] = median;
  told["stacked_spread"] = scatter;
  told["note"] = decay.note;
  return told;
}

py::dict Decays(const TsFile& file, const std::string& windows, const std::string& leave_out,
                unsigned threads) {
  const LeaveOut left_out = LeftOut(file, leave_out);
  const auto chosen = windows.empty() ? Result<std::vector<DecayWindow>>(std::vector<DecayWindow>())
                                      : DecayWindowsOf(windows);
  Check(chosen, file.Path());
  Result<FileDecay> decay = Failure("none");
  {
    const py::gil_scoped_release free;
    const auto first = FirstForDecay(file, left_out, 0);
    const auto plan = first ? DecayPlanOf(file.Companion(), first->header.frequency, *chosen)
                            : Failure(first.Message());
    decay = plan ? DecayOfFile(file, {*plan, left_out, 0, 0, {}, {threads, {}}, {}})
                 : Failure(plan.Message());
  }
  Check(decay, file.Path());
  return FromDecay(*decay);
}

// Lines x channels of single records, then stacks x channels.
py::dict FromPoints(const FrequencyPoints& points) {
  const std::size_t channels = points.channels.size();
  auto record = NewArray<std::int64_t>({points.lines.size()});
  auto frequency = NewArray<double>({points.lines.size()});
  auto amplitude = NewArray<double>({points.lines.size(), channels});
  auto phase = NewArray<double>({points.lines.size(), channels});
  for (std::size_t i = 0; i < points.lines.size(); ++i) {
    record.mutable_data()[i] = static_cast<std::int64_t>(points.lines[i].record);
    frequency.mutable_data()[i] = points.lines[i].Frequency();
    for (std::size_t c = 0; c < channels; ++c) {
      const auto& point = points.lines[i].channels[c];
      amplitude.mutable_data()[i * channels + c] = point ? point->amplitude : kUnknown;
      phase.mutable_data()[i * channels + c] = point ? point->phase.value_or(kUnknown) : kUnknown;
    }
  }
  const std::size_t stacks = points.stacks.size();
  auto stacked = NewArray<double>({stacks});
  std::array<py::array_t<double>, 4> over = {
      NewArray<double>({stacks, channels}), NewArray<double>({stacks, channels}),
      NewArray<double>({stacks, channels}), NewArray<double>({stacks, channels})};
  for (std::size_t i = 0; i < stacks; ++i) {
    stacked.mutable_data()[i] = points.stacks[i].Frequency();
    for (std::size_t c = 0; c < channels; ++c) {
      const auto& [of_amplitude, of_phase] = points.stacks[i].channels[c];
      const bool has_amplitude = of_amplitude.count > 0;
      const bool has_phase = of_phase.count > 0;
      const std::size_t at = i * channels + c;
      over[0].mutable_data()[at] = has_amplitude ? of_amplitude.median : kUnknown;
      over[1].mutable_data()[at] = has_amplitude ? of_amplitude.spread : kUnknown;
      over[2].mutable_data()[at] = has_phase ? of_phase.median : kUnknown;
      over[3].mutable_data()[at] = has_phase ? of_phase.spread : kUnknown;
    }
  }
  py::dict told;
  told["channels"] = Labels(points.channels);
  told["records"] = record;
  told["frequency"] = frequency;
  told["amplitude"] = amplitude;
  told["phase"] = phase;
  told["stacked_frequency"] = stacked;
  told["stacked_amplitude"] = over[0];
  told["stacked_amplitude_spread"] = over[1];
  told["stacked_phase"] = over[2];
  told["stacked_phase_spread"] = over[3];
  told["note"] = points.note;
  return told;
}

py::dict Points(const TsFile& file, std::size_t reference, int most_harmonics,
                const std::string& leave_out, unsigned threads) {
  const LeaveOut left_out = LeftOut(file, leave_out);
  Result<FrequencyPoints> points = Failure("none");
  {
    const py::gil_scoped_release free;
    points =
        FrequencyPointsOf(file, {left_out, 0, reference, most_harmonics, {}, {threads, {}}, {}});
  }
  Check(points, file.Path());
  return FromPoints(*points);
}

// "decay", "frequencies", or nothing of both.
std::string ResultKind(const TsFile& file) {
  const Tech tech = TechOf(file.Companion().Table());
  return !file.Companion().IsLoaded() ? ""
         : HasDecay(tech)             ? "decay"
         : HasFrequencies(tech)       ? "frequencies"
                                      : "";
}

}  // namespace

void BindAnalysis(py::module_* module) {
  module->def("spectra", &Spectra);
  module->def("decays", &Decays);
  module->def("points", &Points);
  module->def("result_kind", &ResultKind);
}

}  // namespace orvane::python

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_SPECTRUM_VIEW_H_
#define ORVANE_SPECTRA_SPECTRUM_VIEW_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "spectra/file_spectrum_run.h"
#include "spectra/harmonic_table.h"
#include "timeseries/waveform_view.h"

namespace orvane {

class SpectrumCalibration;

/// A line to draw: frequencies in Hz above 0, values above 0 in the channel's unit; where a bin has
/// none it is no number, and the line breaks.
struct SpectrumCurve {
  std::size_t channel = 0;
  std::vector<double> frequencies;
  std::vector<double> values;
};

/// A frequency that is marked.
struct SpectrumMark {
  enum Kind { kFundamental, kHarmonic, kMains };
  Kind kind = kFundamental;
  double frequency = 0;  ///< Hz
};

/// The spectrum of a waveform on display, all but the drawing: of what, in which units, which
/// channels, cursor, texts. Records that are on display are transformed at once, a whole file on a
/// thread of its own. What the display's filters do is not in it. Texts and names are UTF-8.
class SpectrumView {
 public:
  enum class Part { kVisible, kRecord, kFile };

  SpectrumView();
  SpectrumView(const SpectrumView&) = delete;
  SpectrumView& operator=(const SpectrumView&) = delete;
  ~SpectrumView();

  /// Takes what the display shows. False where the spectrum stays as it was.
  bool Follow(const WaveformView& waveform);
  /// No waveform is shown any more; what was under way is cancelled. Settings stay.
  void Leave();

  // After one of these `Follow()` makes the spectrum anew.
  void SetPart(Part part);
  /// The average of a file does without these records.
  void SetLeftOut(const RecordNumbers& left_out);
  /// Empty: waveform units, without a correction.
  void SetCalibrationFolder(const std::filesystem::path& folder);

  Part OfPart() const { return part_; }
  const std::filesystem::path& CalibrationFolder() const { return folder_; }
  void SetDensity(bool is_density) { is_density_ = is_density; }
  bool IsDensity() const { return is_density_; }

  /// A file is being averaged.
  bool IsRunning() const { return run_ != nullptr; }
  int Percent() const { return run_ == nullptr ? 0 : run_->Percent(); }
  /// Takes the whole result once it is there; false: not yet.
  bool TakeResult(const WaveformView& waveform);

  /// Empty channels where there is none; `EmptyText()` says why.
  const Spectrum& Shown() const { return spectrum_; }
  const std::string& EmptyText() const { return empty_; }
  /// "Record 3, 24000 scans, bins of 0.1 Hz", what was left out, whether it is corrected.
  std::string Caption() const;
  /// "Amplitude (mV, nT)" of the channels drawn.
  std::string ValueLabel() const;
  /// The spectrum in sentences: what it is of, the greatest line of each channel drawn.
  std::string Summary() const;

  bool IsDrawn(std::size_t channel) const { return !hidden_.contains(channel); }
  void SetDrawn(std::size_t channel, bool is_drawn);
  /// In the channel's unit, for a density the root.
  double Value(std::size_t channel, std::size_t bin) const;
  /// The channels drawn, as lines over so many columns of a logarithmic axis: every bin, or the
  /// least and greatest of each column, so that a line of one bin is seen at every width.
  std::vector<SpectrumCurve> Curves(int columns) const;
  /// From the first bin above 0 to the last, in Hz.
  ValueRange Frequencies() const;

  /// Hz; 0: not known.
  double Fundamental() const { return fundamental_; }
  std::vector<SpectrumMark> Marks() const;
  std::vector<HarmonicRow> Harmonics(std::size_t channel) const;
  /// Why that is empty.
  std::string WhyNoHarmonics() const;

  void SetCursor(std::optional<double> frequency) { cursor_ = frequency; }
  /// The first step puts the cursor to the fundamental, or into the middle.
  void MoveCursor(int bins);
  /// To the next odd harmonic above or below; without a fundamental by ten bins.
  void MoveToHarmonic(int direction);
  /// The bin nearest to the cursor.
  std::optional<std::size_t> CursorBin() const;
  /// "10 Hz, harmonic 5", "50 Hz, mains"; empty without a cursor.
  std::string CursorText() const;

  /// The channels drawn, tab-separated: a line of titles with units, then one for each bin.
  std::string Text() const;
  /// The table of a channel, tab-separated, with a line of titles.
  std::string HarmonicsText(std::size_t channel) const;

 private:
  struct Source {
    const TsFile* file = nullptr;
    std::uint64_t number = 0;
    std::size_t begin = 0;  // scans
    std::size_t end = 0;
    std::uint64_t end_of_file = 0;  // of a whole file
    RecordShape shape;              // of the view, which spectra do without
    std::vector<WaveformChannel> channels;

    bool operator==(const Source& other) const;
  };

  Source SourceOf(const WaveformView& waveform) const;
  void Transform(const WaveformView& waveform);
  void Finish(const WaveformView& waveform);
  bool Correct(const WaveformView& waveform);
  bool PrepareFactors(const WaveformView& waveform);
  void PlaceCursor(double frequency);

  Part part_ = Part::kVisible;
  bool is_density_ = true;
  std::filesystem::path folder_;
  std::set<std::size_t> hidden_;
  std::optional<double> cursor_;

  Source source_;
  bool is_stale_ = true;
  bool is_unfinished_ = false;  // to be corrected otherwise
  RecordNumbers left_out_;
  std::unique_ptr<FileSpectrumRun> run_;
  Spectrum raw_;  // of held values
  TsHeader header_;
  std::string what_;  // the spectrum is of
  std::string note_;
  double fundamental_ = 0;
  std::string empty_;
  Spectrum spectrum_;

  std::unique_ptr<SpectrumCalibration> calibration_;  // of this file
  std::string uncorrected_;                           // why; empty: it is corrected
  Spectrum factors_;  // what a spectrum of ones becomes by the calibration
  std::vector<double> factor_scales_;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_SPECTRUM_VIEW_H_

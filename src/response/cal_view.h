// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_CAL_VIEW_H_
#define ORVANE_RESPONSE_CAL_VIEW_H_

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calibration/cal_curves.h"
#include "response/cal_compare_tolerance.h"
#include "response/cal_file.h"
#include "response/display_form.h"
#include "response/uncertainty.h"

namespace orvane {

/// A curve to draw.
struct CalTrace {
  enum Kind { kMeasured, kReference, kModel, kBand };

  std::size_t channel = 0;  ///< from 0
  Kind kind = kMeasured;    ///< the file's own, or what is to be drawn beside it; of the band
                            ///< around the model one side
  CalCurve curve;

  /// "Channel 3", "Channel 3, reference"
  std::string Label() const;
};

/// What the cursor reads of one pass of a curve.
struct CalReading {
  std::string label;
  int sweep = 0;         ///< the pass, from 0
  double frequency = 0;  ///< of the measured point nearest to the cursor, Hz
  double amplitude = 0;
  double phase = 0;                    ///< degrees
  std::optional<ResponseBands> known;  ///< of the model: how well
};

/// A curve over a reference at the frequencies of the first: the ratio of the amplitudes, the
/// difference of the phases. A point goes with the same pass of the reference, because the passes
/// are measured with other settings. Between the pass's frequencies its logarithms are
/// interpolated; points beyond them, of passes that the reference lacks, and those without an
/// amplitude above 0 are left out.
CalCurve RatioOf(const CalCurve& curve, const CalCurve& reference);

/// A calibration on display, all but the drawing: file, channels shown, reference, cursor. The
/// ranges outlive it, so that the next file is shown in the same.
class CalView {
 public:
  /// `display` must outlive the view.
  explicit CalView(CalDisplay* display) : display_(display) {}

  /// Opens a file and shows its first channel. A failure has the message for the user; the view is
  /// then without curves.
  Result<> Open(const std::filesystem::path& path);
  /// Reads file and reference again and keeps how they are shown: channels as far as they still
  /// exist, the cursor at the nearest point. After a failure all is as before.
  Result<> Reload();
  const CalCurves& Curves() const { return curves_; }
  std::size_t Count() const { return curves_.channels.size(); }

  /// Channels shown, from 0 and rising; at least one unless there is none.
  const std::vector<std::size_t>& Shown() const { return shown_; }
  void Show(std::vector<std::size_t> channels);
  void ShowAll();
  /// Shows the next channel alone, or with -1 the one before; false at the last.
  bool Step(int by);

  /// Compares with another file. After a failure the reference is as before.
  Result<> OpenReference(const std::filesystem::path& path);
  void RemoveReference();
  bool HasReference() const { return reference_.has_value(); }
  /// The ratio to the reference in place of both: in percent, on an axis that is not logarithmic.
  void SetRatio(bool is_ratio);
  bool ShowsRatio() const { return is_ratio_; }
  const std::filesystem::path& ReferencePath() const { return reference_->path; }
  /// By how much a ratio may be off, drawn around it.
  void SetTolerance(const CalTolerance& tolerance) { tolerance_ = tolerance; }
  const CalTolerance& Tolerance() const { return tolerance_; }

  /// The model of the box instead of lines between its points. Only a file that could be computed
  /// with has one; the ratio to a reference goes before it.
  bool HasModel() const { return model_ != nullptr; }
  void SetModel(bool is_shown) {
    shows_model_ = is_shown;
    traces_.reset();
  }
  bool ShowsModel() const { return shows_model_ && HasModel() && !is_ratio_; }
  /// The calibration with its model; null without one.
  const CalData* Model() const { return model_.get(); }
  const std::string& WhyNoModel() const { return why_no_model_; }

  std::string Title() const;
  std::string AmplitudeLabel() const { return is_ratio_ ? "Amplitude ratio (%)" : "Amplitude"; }
  std::string PhaseLabel() const {
    return is_ratio_ ? "Phase difference (degree)" : "Phase (degree)";
  }
  /// Worked out once for all that the cursor reads of them; valid until something else is shown.
  const std::vector<CalTrace>& Traces() const;

  /// What is shown of the curves. A file that does not fit the ranges opens in some of its own, and
  /// what is compared with a reference has some of its own: fitted again when something else is
  /// shown. All others outlive the view.
  const CalDisplay& Display() const { return own_ ? *own_ : *display_; }
  void SetDisplay(const CalDisplay& display);
  /// Ranges around all that is shown, with ends that read well.
  void FitDisplay();
  /// That the ranges are the file's own and why; empty where they are not.
  std::string RangesText() const;

  /// The cursor goes to the measured point of the first curve that is nearest to a frequency; none
  /// takes it away.
  void SetCursor(std::optional<double> frequency);
  /// To the next point, or with -1 the one before; without a cursor to the first or last.
  void MoveCursor(int by);
  std::optional<double> Cursor() const { return cursor_; }
  /// Of each curve all passes that have a point at the frequency nearest to the cursor.
  std::vector<CalReading> Readings() const;

 private:
  void LoadModel();
  bool FitsDisplay() const;
  void FollowShown();
  void ShowOthers();
  const CalCurve* ReferenceOf(std::size_t channel) const;
  std::vector<CalTrace> MakeTraces() const;
  const ModelUncertainty& KnownOf(std::size_t channel) const;

  CalDisplay* display_;
  std::optional<CalDisplay> own_;
  CalCurves curves_;
  std::optional<CalCurves> reference_;
  std::vector<std::size_t> shown_;
  bool is_ratio_ = false;
  CalTolerance tolerance_;
  std::unique_ptr<CalData> model_;
  mutable std::map<std::size_t, ModelUncertainty> known_;  // by channel, of those asked for
  std::string why_no_model_;
  bool shows_model_ = false;
  std::optional<double> cursor_;
  mutable std::optional<std::vector<CalTrace>> traces_;  // of what is shown; none: not made yet
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_CAL_VIEW_H_

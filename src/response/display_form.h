// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_DISPLAY_FORM_H_
#define ORVANE_RESPONSE_DISPLAY_FORM_H_

#include <string_view>

#include "forms/form_model.h"

namespace orvane {

/// What part of the curves the calibration plot shows.
struct CalDisplay {
  double max_amplitude = 10;
  double max_frequency = 100000;  ///< Hz
  double max_phase = 40;          ///< degrees
  double min_amplitude = 0.1;
  double min_frequency = 0.1;
  double min_phase = -40;
  int phase_grid_lines = 4;  ///< parts that the phase axis is divided into

  friend bool operator==(const CalDisplay&, const CalDisplay&) = default;
};

/// Why nothing can be drawn in these ranges; empty where it can.
std::string WhyEmpty(const CalDisplay& display);

/// The dialog of the display ranges. Its fields belong to no parameter.
class CalDisplayForm {
 public:
  static constexpr std::string_view kTitle = "Calibration Result Plot Parameters";
  enum : int {
    kMaxAmplitude = 1001,
    kMaxFrequency,
    kMaxPhase,
    kMinAmplitude,
    kMinFrequency,
    kMinPhase,
    kPhaseGridLines
  };

  explicit CalDisplayForm(const CalDisplay& display);

  FormModel& Model() { return model_; }
  /// What is entered, which must be acceptable.
  CalDisplay Display() const;

 private:
  ParamTable none_;
  FormModel model_;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_DISPLAY_FORM_H_

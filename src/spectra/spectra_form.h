// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_SPECTRA_FORM_H_
#define ORVANE_SPECTRA_SPECTRA_FORM_H_

#include <optional>
#include <string>

#include "forms/form_model.h"
#include "spectra/calibrated_spectra.h"

namespace orvane {

/// What is asked before recordings become calibrated spectra. Its fields belong to no parameter.
class SpectraForm {
 public:
  enum Control : int { kFolder = 1701, kBaseFrequency, kHarmonics, kReversed };

  /// `folder`: where calibrations were found last; may be empty.
  explicit SpectraForm(const std::string& folder);

  FormModel& Model() { return model_; }
  /// What keeps the entries from being accepted, in the order of the fields.
  std::optional<FormModel::Fault> Fault() const;
  /// As entered; who asks about missing sensors is left to the caller.
  SpectraOptions Options() const;

 private:
  ParamTable none_;
  FormModel model_;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_SPECTRA_FORM_H_

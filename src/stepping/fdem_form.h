// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of "Creat TFS File for Dr. Halvo FDEM".
#ifndef ORVANE_STEPPING_FDEM_FORM_H_
#define ORVANE_STEPPING_FDEM_FORM_H_

#include <string>

#include "forms/form_model.h"
#include "forms/prompts.h"

namespace orvane {

/// A schedule file of a fixed set of frequencies; no table has to do with it.
class FdemForm {
 public:
  enum Control : int { kSeconds = 1531, kCycles, kCurrent, kPath, kSet = 1536 };

  /// `prompts` must outlive the form.
  explicit FdemForm(Prompts* prompts);

  FormModel& Model() { return model_; }

  /// Starting values.
  void Open();
  /// Writes the file. False where the user was told why not. Validate first.
  bool Save();
  /// What was written, in words.
  const std::string& Note() const { return note_; }

 private:
  Prompts* prompts_;
  FormModel model_;
  std::string note_;
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_FDEM_FORM_H_

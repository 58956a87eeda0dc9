// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of "Creat TFS File for Dr. Halvo FDEM".
#ifndef ORVANE_STEPPING_FDEM_FORM_H_
#define ORVANE_STEPPING_FDEM_FORM_H_

#include <filesystem>
#include <string>

#include "forms/form_model.h"
#include "forms/prompts.h"

namespace orvane {

/// A schedule file of a fixed set of frequencies; no table has to do with it.
class FdemForm {
 public:
  enum Control : int { kSeconds = 1531, kCycles, kCurrent, kPath, kSet = 1536 };

  /// `prompts` must outlive the form. `folder`: where names without a root go.
  FdemForm(Prompts* prompts, std::filesystem::path folder);

  FormModel& Model() { return model_; }

  /// Starting values.
  void Open();
  /// A path from a dialog that has asked whether to replace the file already.
  void Choose(const std::string& path);
  /// The file that will be written, whole, with its extension; empty where none is named.
  std::filesystem::path Path() const;
  /// Writes the file, after a question where there is one that was not chosen in a dialog.
  /// False where the user said no or has seen why not. Validate first.
  bool Save();
  /// What was written, in words.
  const std::string& Note() const { return note_; }

 private:
  bool MayReplace(const std::filesystem::path& path) const;

  Prompts* prompts_;
  std::filesystem::path folder_;
  FormModel model_;
  std::string chosen_;
  std::string note_;
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_FDEM_FORM_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_BOX_STATUS_H_
#define ORVANE_EDITORS_BOX_STATUS_H_

#include "forms/form_model.h"

namespace orvane {

/// What a box told of its state in the table: only shown, never written.
class BoxStatusForm {
 public:
  enum Control : int { kLocalTime = 1280 };

  explicit BoxStatusForm(ParamTable* table);

  FormModel& Model() { return model_; }
  void Open() { model_.ReadAll(); }
  /// The three times in the table's time zone, or in UTC.
  void OnEdited(int control);

 private:
  ParamTable* table_;
  FormModel model_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_BOX_STATUS_H_

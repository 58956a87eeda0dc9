// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FORMS_PLAIN_FORM_H_
#define ORVANE_FORMS_PLAIN_FORM_H_

#include <array>
#include <span>

#include "forms/form_model.h"

namespace orvane {

/// A form without rules: its fields are read and written in their own order.
class PlainForm {
 public:
  /// `fields` must outlive the form.
  PlainForm(ParamTable* table, std::span<const Field> fields) : model_(table, fields) {}

  FormModel& Model() { return model_; }
  void Open() { model_.ReadAll(); }
  void Commit() {
    for (const Field& field : model_.Fields()) {
      model_.Write(std::array{field.control});
    }
  }

 private:
  FormModel model_;
};

}  // namespace orvane

#endif  // ORVANE_FORMS_PLAIN_FORM_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/serial_cautions.h"

#include <algorithm>
#include <vector>

#include "base/number_text.h"

namespace orvane {
namespace {

// 0 for a text that is not a number: OK reports that fault.
std::int32_t SerialIn(const FormModel& model, int control) {
  return ParseInt(model.Text(control)).value_or(0);
}

}  // namespace

void CautionSerials(std::span<const int, 5> auxiliaries, std::span<const int> others,
                    FormModel* model) {
  std::vector<int> fields(others.begin(), others.end());
  fields.insert(fields.end(), auxiliaries.begin(), auxiliaries.end());
  for (auto field = fields.begin(); field != fields.end(); ++field) {
    const std::int32_t serial = SerialIn(*model, *field);
    const auto twin = std::find_if(fields.begin(), field, [model, serial](int before) {
      return serial != 0 && SerialIn(*model, before) == serial;
    });
    model->SetCaution(*field, twin == field
                                  ? std::string()
                                  : "The same number as \"" + model->Caption(*twin) + "\"");
  }
  bool is_followed = false;
  for (auto field = auxiliaries.rbegin(); field != auxiliaries.rend(); ++field) {
    const bool is_empty = SerialIn(*model, *field) == 0;
    if (is_empty && is_followed) {
      model->SetCaution(*field, "No box here: the boxes after it get no start-up file");
    }
    is_followed = is_followed || !is_empty;
  }
}

}  // namespace orvane

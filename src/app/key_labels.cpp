// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/key_labels.h"

#include <array>
#include <map>
#include <set>
#include <span>

#include "base/ascii.h"
#include "editors/acq_fields.h"
#include "editors/site_forms.h"
#include "forms/form_field.h"
#include "stepping/step_table.h"
#include "stepping/stepping_fields.h"
#include "table/param_table.h"
#include "table/tech.h"

namespace orvane {
namespace {

using Labels = std::map<std::string, std::string, std::less<>>;

// What rules write that no dialog has a field for.
constexpr auto kWithoutField = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"CHHX", "Channel of Hx"},
    {"CHHY", "Channel of Hy"},
    {"CHHZ", "Channel of Hz"},
    {"HW", "Hardware"},
    {"EXR", "Ex contact resistivity (ohm)"},
    {"EYR", "Ey contact resistivity (ohm)"},
    {"EZR", "Ez contact resistivity (ohm)"},
});

void Add(std::span<const Field> fields, Labels* labels) {
  for (const Field& field : fields) {
    if (field.key.empty() || field.label.empty()) {
      continue;
    }
    std::string label(field.group);
    label.append(label.empty() ? "" : ": ").append(Trimmed(field.label));
    labels->emplace(field.key, std::move(label));  // the first dialog names it
  }
}

Labels AllLabels() {
  Labels labels;
  Add(AcqFields(), &labels);
  Add(SteppingFields(), &labels);
  ParamTable table;
  BoxSerialForm serials(&table);
  Add(serials.Model().Fields(), &labels);
  for (const Tech tech : {kSip, kTdem, kCsamt, kMtAmt}) {
    SiteForm site(&table, tech, {});
    Add(site.Model().Fields(), &labels);
  }
  for (const auto& [key, label] : kWithoutField) {
    labels.emplace(key, label);
  }
  for (int channel = 1; channel <= 8; ++channel) {
    const std::string number = std::to_string(channel);
    labels.emplace("GFC" + number, "Gain factor of channel " + number);
  }
  int row = 0;
  for (const std::string_view key : kFrequencyKeys) {
    labels.emplace(key, "FREQ" + std::to_string(++row));  // as the list names its rows
  }
  return labels;
}

}  // namespace

std::string LabelledKeys(const std::vector<std::string>& keys) {
  static const Labels labels = AllLabels();
  std::string text;
  // A key may have been changed by several dialogs.
  for (const std::string& key : std::set<std::string>(keys.begin(), keys.end())) {
    const auto label = labels.find(key);
    text += text.empty() ? "" : ", ";
    text += label == labels.end() ? key : label->second + " (" + key + ')';
  }
  return text;
}

}  // namespace orvane

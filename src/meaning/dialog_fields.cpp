// SPDX-License-Identifier: GPL-3.0-or-later
#include "meaning/dialog_fields.h"

#include <span>
#include <vector>

#include "base/ascii.h"
#include "base/number_text.h"
#include "editors/acq_fields.h"
#include "editors/box_status.h"
#include "editors/channel_keys.h"
#include "editors/comm_forms.h"
#include "editors/sensor_forms.h"
#include "editors/site_forms.h"
#include "editors/startup_files.h"
#include "stepping/cycle_form.h"
#include "stepping/step_table.h"
#include "stepping/stepping_fields.h"
#include "table/box_keys.h"
#include "table/param_access.h"

namespace orvane {
namespace {

// One of each title: SIP and TDIP share a dialog.
constexpr std::array<Tech, 5> kSiteMethods = {kSip, kTdem, kMtAmt, kCsamt, kFdem};

void Add(std::string_view dialog, std::span<const Field> fields, MeaningList* list) {
  for (const Field& field : fields) {
    list->AddField(dialog, field);
  }
}

void AddSites(const TransmitterNames& transmitters, ParamTable* table, MeaningList* list) {
  Add(BoxSerialForm::kTitle, BoxSerialForm(table).Model().Fields(), list);
  for (const Tech tech : kSiteMethods) {
    SiteForm site(table, tech, transmitters);
    Add(site.Title(), site.Model().Fields(), list);
  }
}

// The list of powers depends on the radio.
void AddRadio(ParamTable* table, MeaningList* list) {
  for (const std::string_view hardware : {"K36W2", "K36W9"}) {
    PutText(table, "HW", hardware);
    RadioForm radio(table);
    Add(RadioForm::kTitle, radio.Model().Fields(), list);
  }
}

void AddSensors(ParamTable* table, MeaningList* list) {
  CoilForm coil(table, {});
  Add(CoilForm::kTitle, coil.Model().Fields(), list);
  CurrentSensorForm sensor(table);
  Add(CurrentSensorForm::kTitle, sensor.Model().Fields(), list);
}

// Choices of the request are no field of a key: the box's file gets what they mean.
void AddStartup(ParamTable* table, MeaningList* list) {
  for (const int box : {StartupBox::kTransmitter, StartupBox::kMain, StartupBox::kMain + 1}) {
    StartupForm form(table, {box}, {});
    Add(form.Title(), form.Model().Fields(), list);
    list->AddPlace("RQST",
                   {form.Title(), std::string(form.Model().FieldOf(StartupForm::kSetup).label),
                    StartupForm::kSetup});
  }
}

// What the dialog takes and no server has.
void AddServers(MeaningList* list) { list->AddRange("FTPCPRT", {0, FtpForm::kLargestPort}); }

// Controls of the acquisition dialog and of the cycles that write keys by rules.
void AddRules(ParamTable* table, MeaningList* list) {
  for (const Field& field : AcqFields()) {
    if (field.control == acq::kFilter || field.control == acq::kVlfTrap) {
      list->AddPlace("LPFR", {std::string(acq::kTitle), std::string(field.label), field.control});
    }
  }
  EarlyWrites early(table);
  CycleForm cycle(table, &early, kTdem, {});
  const auto add = [&](ParamKey key, int control) {
    list->AddPlace(key, {std::string(Trimmed(cycle.Title())),
                         std::string(Trimmed(cycle.Model().FieldOf(control).label)), control});
  };
  add("TTOT", CycleForm::kCycle);
  add("CRMX", CycleForm::kCurrent);
  add("FCMX", CycleForm::kWireLength);
}

// The dialogs with a spread; only IP knows a reference box.
std::vector<std::string> SpreadDialogs(bool with_reference) {
  ParamTable none;
  std::vector<std::string> titles;
  for (const Tech tech : kSiteMethods) {
    const SiteForm site(&none, tech, {});
    if (site.HasSpread() && (!with_reference || HasReferenceBox(tech))) {
      titles.emplace_back(site.Title());
    }
  }
  return titles;
}

struct SpreadBox {
  BoxKind kind;
  int slot;
  std::string name;
};
std::vector<SpreadBox> SpreadBoxes() {
  std::vector<SpreadBox> boxes = {{kTransmitterBox, 0, "Transmitter box"},
                                  {kLocalBox, 0, "Main box"},
                                  {kReferenceBox, 0, "Reference box"}};
  for (int slot = 1; slot <= static_cast<int>(kAuxiliaryKeys.size()); ++slot) {
    boxes.push_back({kAuxiliaryBox, slot, "Auxiliary box " + FormatInt(slot)});
  }
  return boxes;
}

void AddChannels(const SpreadBox& box, MeaningList* list) {
  const std::vector<std::string> dialogs = SpreadDialogs(box.kind == kReferenceBox);
  for (int channel = 1; channel <= MaxChannels(box.kind); ++channel) {
    for (int at = 0; at < kChannelColumns; ++at) {
      const auto column = static_cast<ChannelColumn>(at);
      const ParamKey key = ChannelKey(box.kind, box.slot, channel, column);
      if (key.IsEmpty()) {
        continue;
      }
      const ChannelColumnInfo& info = InfoOf(column);
      list->Name(key,
                 box.name + ", channel " + FormatInt(channel) + ": " + std::string(info.meaning));
      list->AddUnit(key, info.unit);
      for (const std::string& dialog : dialogs) {
        list->AddPlace(key, {dialog, std::string(info.title)});
      }
    }
  }
}

void AddFrequencies(MeaningList* list) {
  int row = 0;
  for (const std::string_view key : kFrequencyKeys) {
    ++row;
    list->Name(key, "Requested frequency " + FormatInt(row));
    list->AddUnit(key, "Hz");
    list->AddPlace(key, {std::string(stepping::kTitle), "FREQ" + FormatInt(row)});
  }
}

}  // namespace

void AddDialogs(const TransmitterNames& transmitters, MeaningList* list) {
  ParamTable table;
  static_cast<void>(table.BuildParamIndex());  // without it the radio's powers stay unnamed
  Add(acq::kTitle, AcqFields(), list);
  Add(stepping::kTitle, SteppingFields(), list);
  AddSites(transmitters, &table, list);
  AddRadio(&table, list);
  Add(gsm::kTitle, GsmFields(), list);
  Add(FtpForm::kTitle, FtpForm(&table).Model().Fields(), list);
  AddServers(list);
  AddSensors(&table, list);
  Add(BoxStatusForm::kTitle, BoxStatusForm(&table).Model().Fields(), list);
  ParamTable without_method;
  AddStartup(&without_method, list);
  AddRules(&table, list);
}

void AddGrids(MeaningList* list) {
  for (const SpreadBox& box : SpreadBoxes()) {
    AddChannels(box, list);
  }
  AddFrequencies(list);
}

}  // namespace orvane

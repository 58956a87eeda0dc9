// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/startup_files.h"

#include <algorithm>

#include "base/number_text.h"
#include "editors/channel_keys.h"
#include "editors/file_close.h"
#include "editors/sensor_forms.h"
#include "editors/site_forms.h"
#include "files/path_text.h"
#include "table/box_keys.h"
#include "table/param_access.h"

namespace orvane {
namespace {

constexpr int kRequestSetup = 1;
constexpr int kRequestRecord = 2;     // MT/AMT
constexpr int kRequestCsRecord = 13;  // every other method
constexpr int kRecordOnlyChannel1 = 1;
constexpr std::int32_t kDefaultResistance = 200;  // ohm
constexpr int kCoilLength = 8;

constexpr std::array<Choice, 4> kGains = {
    {{"x 0.25", 1208}, {"x 1", 1209}, {"x 4", 1210}, {"x 16", 1211}}};
constexpr std::array<Choice, 2> kRadioTypes = {{{"Slave", 1226}, {"Master", 1003}}};
constexpr std::array<Choice, 2> kFileNames = {
    {{"Startup.tbl", StartupForm::kFixedName}, {"SerialNumber.tbl", StartupForm::kSerialName}}};

constexpr Field Coil(int control, std::string_view label, std::string_view key) {
  return {control, Widget::kText, label, key, StrPT, {}, {.max_length = kCoilLength}};
}

// The fields that both dialogs begin and end with. Requests and radio types are set by a rule.
constexpr Field kRadio = {StartupForm::kSlave,
                          Widget::kRadios,
                          "Radio Type",
                          "MSTR",
                          IntPT,
                          Offset(0, Unlisted::kFirst),
                          {},
                          kRadioTypes};
constexpr Field kFileName = {
    StartupForm::kFixedName, Widget::kRadios, "File Name", {}, IntPT, Unbound(), {}, kFileNames};
constexpr Field kClose = {StartupForm::kFileClose,
                          Widget::kCombo,
                          "Waveform file close time",
                          "FLEN",
                          IntPT,
                          Map(kFileCloseHours, Unlisted::kFirst),
                          {},
                          kFileCloseTimes};
constexpr Field kFolder = {StartupForm::kLocation, Widget::kPath, "Location", {}, StrPT, Unbound()};

constexpr auto kReceiver = std::to_array<Field>({
    IntegerField(StartupForm::kReceiverSerial, "Box serial number", "SNUM"),
    Coil(CoilForm::kHxSerial, "Hx serial number", "HXSN"),
    Coil(CoilForm::kHySerial, "Hy serial number", "HYSN"),
    Coil(CoilForm::kHzSerial, "Hz serial number", "HZSN"),
    RealField(CoilForm::kNominalGain, "Coil nominal gain (mV/nT)", "HNOM"),
    RealField(CoilForm::kTestAmplitude, "Coil test waveform amplitude (nT)", "HAMP"),
    IntegerField(StartupForm::kCalibrationTime, "Calibration time (x20 min)", "CCLT"),
    RealField(CoilForm::kMinCorner, "Coil cal. min. acceptable corner frequency (Hz)", "CCMN"),
    RealField(CoilForm::kMaxCorner, "Coil cal. max. acceptable corner frequency (Hz)", "CCMX"),
    RealField(CoilForm::kHighPass, "Coil pre-amplifier highpass corner frequency (Hz)", "CPHC"),
});
constexpr auto kMonitor = std::to_array<Field>({
    {StartupForm::kMonitorGain, Widget::kRadios, "Gain", "HGNC", IntPT, Offset(-1), {}, kGains},
    IntegerField(StartupForm::kMonitorSerial, "GVR serial number", "SNTX"),
    Coil(StartupForm::kCurrentSensorSerial, "Current sensor serial number", "CSSN"),
    RealField(StartupForm::kCurrentSensorGain, "Current sensor nominal gain (mV/A)", "CNOM"),
    RealField(StartupForm::kCurrentSensorAmplitude, "Current sensor test amplitude (A)", "CAMP"),
    IntegerField(StartupForm::kCalibrationTime, "Calibration time (x20 min)", "CCLT"),
});

// In the file, not in the edited table.
constexpr auto kReceiverOverrides = std::to_array<int>(
    {CoilForm::kHxSerial, CoilForm::kHySerial, CoilForm::kHzSerial, CoilForm::kMinCorner,
     CoilForm::kMaxCorner, CoilForm::kHighPass, CoilForm::kTestAmplitude, CoilForm::kNominalGain,
     StartupForm::kFileClose, StartupForm::kSlave, StartupForm::kCalibrationTime});
constexpr auto kMonitorOverrides =
    std::to_array<int>({StartupForm::kFileClose, StartupForm::kMonitorGain, StartupForm::kSlave,
                        StartupForm::kMonitorSerial});
constexpr auto kMonitorLasting =
    std::to_array<int>({StartupForm::kCurrentSensorAmplitude, StartupForm::kCurrentSensorGain,
                        StartupForm::kCurrentSensorSerial, StartupForm::kCalibrationTime});

constexpr std::array<const char*, 8> kFlags = {"FLAG1", "FLAG2", "FLAG3", "FLAG4",
                                               "FLAG5", "FLAG6", "FLAG7", "FLAG8"};
constexpr std::array<const char*, 3> kGainKeys = {"GFC1", "GFC2", "GFC3"};

const AuxiliaryKeys& KeysOfAuxiliary(StartupBox box) {
  return kAuxiliaryKeys[static_cast<std::size_t>(box.number) - 1];
}

void NameNoOtherBoxes(ParamTable* table) {
  PutInt(table, "SNNR", 0);
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    PutInt(table, keys.serial, 0);
  }
}

std::vector<Choice> RequestChoices(Tech tech) {
  return {{"Setup", StartupForm::kSetup},
          {tech == kMtAmt ? "Record" : "CS_Record", StartupForm::kRecord}};
}

std::vector<Field> FieldsOf(StartupBox box, std::span<const Choice> requests) {
  std::vector<Field> fields = {{StartupForm::kSetup,
                                Widget::kRadios,
                                "Startup Mode Requst",
                                {},
                                IntPT,
                                Unbound(),
                                {},
                                requests},
                               kRadio,
                               kFileName};
  if (box.IsTransmitter()) {
    fields.insert(fields.end(), std::begin(kMonitor), std::end(kMonitor));
  } else {
    fields.insert(fields.end(), std::begin(kReceiver), std::end(kReceiver));
  }
  fields.push_back(kClose);
  fields.push_back(kFolder);
  return fields;
}

}  // namespace

StartupForm::StartupForm(ParamTable* table, StartupBox box, const StartupChoices& choices)
    : table_(table),
      box_(box),
      monitor_serial_(choices.monitor_serial),
      tech_(TechOf(*table)),
      request_choices_(RequestChoices(tech_)),
      fields_(FieldsOf(box, request_choices_)),
      model_(table, fields_) {
  model_.ReadAll();
  const std::int32_t request = IntParam(*table, "RQST");
  model_.SetIndex(kSetup, request == kRequestCsRecord || request == kRequestRecord ? 1 : 0);
  // One name for all boxes in one folder would overwrite itself: serial numbers first.
  model_.SetIndex(kFixedName, choices.by_serial.value_or(true) ? 1 : 0);
  model_.SetText(kLocation, choices.folder);
  if (box.IsAuxiliary()) {
    model_.SetText(kReceiverSerial, FormatInt(StoredSerial(*table, box)));
  }
  ReadChannels();
}

void StartupForm::ReadChannels() {
  const std::string number = FormatInt(box_.number);
  const std::int32_t count = box_.IsAuxiliary() ? IntParam(*table_, KeysOfAuxiliary(box_).channels)
                                                : MainBoxChannels(*table_);
  const int most = box_.IsAuxiliary() ? kAuxiliaryChannels : MaxChannels(kLocalBox);
  for (int i = 1; i <= std::min(count, most); ++i) {
    const std::string channel = FormatInt(i);
    const std::string definition =
        box_.IsAuxiliary() ? "DEF" + number + "R" + channel : "CHDEF" + channel;
    const std::string gain = "GFC" + channel;
    channels_.push_back(
        {ParamAsText(*table_, definition), ParamAsText(*table_, gain), definition, gain});
  }
}

std::string StartupForm::Title() const {
  if (box_.IsTransmitter()) {
    return "Save DMUGVR  Startup File";
  }
  constexpr std::array<std::string_view, 6> kMethods = {" ( SIP )",   " ( TDIP )", " ( TDEM )",
                                                        " ( CSAMT )", " ( MT )",   " ( FDEM )"};
  const std::string title = box_.IsAuxiliary() ? "Save DMU Startup File" : "Save K3 Startup File";
  return IsKnown(tech_) ? title + std::string(kMethods[static_cast<std::size_t>(tech_) - 1])
                        : title;
}

bool StartupForm::IsBySerial() const { return model_.Index(kFixedName) == 1; }

std::int32_t StartupForm::Serial() const {
  return ParseIntPrefix(model_.Text(box_.IsTransmitter() ? kMonitorSerial : kReceiverSerial));
}

std::filesystem::path StartupForm::Path(const std::filesystem::path& document_folder) const {
  const std::string folder = Folder();
  const std::string name = IsBySerial() ? FormatInt(Serial()) + ".tbl" : "StartUp.tbl";
  return document_folder / PathOf(folder) / PathOf(name);
}

std::string StartupForm::EditGain(int channel, const std::string& text) {
  const std::string entered(Trimmed(text));
  const auto number = ParseReal(entered);
  if (!number) {
    return "Enter a number.";
  }
  const auto at = static_cast<std::size_t>(channel);
  if (at >= channels_.size() || at >= gains_.size()) {
    return "The box has no such channel.";
  }
  gains_[at] = number;
  channels_[at].gain = entered;
  return {};
}

ParamTable StartupForm::Derive() const {
  ParamTable derived = *table_;
  const int record = tech_ == kMtAmt ? kRequestRecord : kRequestCsRecord;
  if (box_.IsTransmitter()) {
    ApplyLastingBeforeFile(&derived);
    OverrideForMonitor(&derived);
  } else {
    OverrideForReceiver(&derived);
  }
  PutInt(&derived, "RQST", model_.Index(kSetup) == 1 ? record : kRequestSetup);
  PutInt(&derived, "SNUM", Serial());
  return derived;
}

void StartupForm::OverrideForMonitor(ParamTable* table) const {
  PutText(table, "CHDEF1", "Tx");  // channel 1 of this box measures the transmitter's current
  model_.WriteTo(table, kMonitorOverrides);
  NameNoOtherBoxes(table);
  for (const char* key : kFlags) {
    PutInt(table, key, 0);
  }
  PutInt(table, "FLAG1", kRecordOnlyChannel1);
}

void StartupForm::OverrideForReceiver(ParamTable* table) const {
  model_.WriteTo(table, kReceiverOverrides);
  if (monitor_serial_) {
    PutInt(table, "SNTX", *monitor_serial_);
  }
  if (!box_.IsAuxiliary()) {
    return;
  }
  NameNoOtherBoxes(table);
  for (std::size_t i = 0; i < gains_.size(); ++i) {
    if (gains_[i]) {
      PutReal(table, kGainKeys[i], *gains_[i]);
    }
  }
}

bool StartupForm::ApplyLastingBeforeFile(ParamTable* table) const {
  const ParamTable before = *table;
  model_.WriteTo(table, kMonitorLasting);
  if (HasFile()) {
    PutText(table, "CHDEFTX", "Tx");
  }
  bool is_changed = false;
  for (const ParamKey key : {"CAMP", "CNOM", "CSSN", "CCLT", "CHDEFTX"}) {
    const ParamEntry* now = table->FindParam(key);
    is_changed = is_changed || (now != nullptr && now->value != before.FindParam(key)->value);
  }
  return is_changed;
}

bool StartupForm::ApplyLasting(ParamTable* table) const {
  if (!box_.IsTransmitter()) {
    return false;
  }
  bool is_changed = ApplyLastingBeforeFile(table);
  for (const ParamKey key : {"LIFESTN", "LIFESTK"}) {
    is_changed =
        (HasFile() && PutInt(table, key, 0)) || is_changed;  // only once the file has the old ones
  }
  return is_changed;
}

std::vector<StartupBox> StartupBoxes(const ParamTable& table, std::vector<StartupBox>* left_out) {
  std::vector<StartupBox> boxes;
  if (TechOf(table) != kMtAmt) {
    boxes.push_back({StartupBox::kTransmitter});
  }
  boxes.push_back({StartupBox::kMain});
  bool has_ended = false;
  for (std::size_t i = 0; i < kAuxiliaryKeys.size(); ++i) {
    const std::int32_t serial = IntParam(table, kAuxiliaryKeys[i].serial);
    has_ended = has_ended || serial == 0;
    if (!has_ended) {
      boxes.push_back({static_cast<int>(i) + 1});
    } else if (serial != 0 && left_out != nullptr) {
      left_out->push_back({static_cast<int>(i) + 1});
    }
  }
  return boxes;
}

std::int32_t StoredSerial(const ParamTable& table, StartupBox box) {
  if (box.IsAuxiliary()) {
    return IntParam(table, KeysOfAuxiliary(box).serial);
  }
  return IntParam(table, box.IsTransmitter() ? "SNTX" : "SNUM");
}

bool SetDefaultResistances(ParamTable* table) {
  bool is_changed = false;
  for (const ParamKey key : {"EXR", "EYR", "EZR"}) {
    if (IntParam(*table, key) == 0) {
      is_changed = PutInt(table, key, kDefaultResistance) || is_changed;
    }
  }
  return is_changed;
}

std::uint32_t StartupVersion(const ParamTable& table, bool answer_is_yes) {
  return IntParam(table, "TBVO") == 1 && answer_is_yes ? 1 : 2;
}

}  // namespace orvane

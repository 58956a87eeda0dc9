// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/acq_form.h"

#include <array>

#include "base/number_text.h"
#include "editors/schedule_cautions.h"
#include "forms/codecs.h"
#include "table/param_access.h"
#include "table/param_time.h"
#include "table/recording_size.h"

namespace orvane {
namespace {

constexpr std::array kSchedule = {acq::kBand2, acq::kBand3, acq::kBand4, acq::kSampling,
                                  acq::kSlotLength};
constexpr std::array kTimes = {acq::kStart, acq::kEnd, acq::kHighStart, acq::kHighEnd};

// "LPFR" of filter index 1: with the rates of MT, else; and what the VLF trap adds to the latter.
constexpr int kFirstMtFilter = 160;
constexpr int kFirstFilter = 16;
constexpr int kTrapBit = 64;
constexpr int kFilterCount = 5;

// Index of a filter whose codes begin at `first`; 0 where `code` is none of them.
int FilterIndex(int code, int first) {
  return code >= first && code < first + kFilterCount ? code - first + 1 : 0;
}

}  // namespace

AcqForm::AcqForm(ParamTable* table, const Clock* now)
    : table_(table), now_(now), model_(table, AcqFields()), early_(table) {
  model_.SetCautionRule([this](FormModel*) { CautionTimes(); });
}

// What OK would store; unset where that is not a time.
ParamTime AcqForm::TimeIn(int control) const {
  const Field& field = model_.FieldOf(control);
  const Shown shown{model_.Text(control), kNothingChosen};
  if (model_.IsEdited(control) && !FaultOf(field, shown).empty()) {
    return {};
  }
  const auto values = model_.IsEdited(control) ? StoredOf(field, shown, model_.HourOffset())
                                               : model_.Stored(control);
  return values.empty() ? ParamTime{} : TimeOf(values.front());
}

void AcqForm::CautionTimes() {
  ScheduleCautions cautions;
  if (HasSchedule()) {
    cautions = CautionSchedule(TimeIn(acq::kStart), TimeIn(acq::kEnd), *now_);
  }
  const auto sentence = [](const std::string& what) {
    return what.empty() ? what : "This is " + what;
  };
  model_.SetCaution(acq::kStart, sentence(cautions.start));
  model_.SetCaution(acq::kEnd, sentence(cautions.end));
}

// A sampling that the list lacks counts as MT, as it does for the estimate.
bool AcqForm::IsMtSampling() const {
  const int sampling = model_.Index(acq::kSampling);
  return IsFunction(kMtAmt) && sampling != kAmt && sampling != kDamt;
}

void AcqForm::Open() {
  model_.ReadAll();
  ApplyTimeZone();
  model_.SetText(acq::kChannels, "6");
  ShowSpace();
  ReadFilter();
  // Before the method rules: "Off" enabled would mean that the method was a time-domain one, and
  // the stored filter would be lost.
  model_.Enable(acq::kFilterOff, false);
  ApplyFunctionRule();
}

void AcqForm::ReadFilter() {
  if (ChosenTech() == kNoTech) {
    return;
  }
  const std::int32_t code = IntParam(*table_, "LPFR");
  int index = 0;
  bool has_trap = false;
  if (IsMtSampling()) {
    index = FilterIndex(code, kFirstMtFilter);
  } else {
    index = FilterIndex(code, kFirstFilter);
    if (const int with_trap = FilterIndex(code, kFirstFilter + kTrapBit); with_trap > 0) {
      index = with_trap;
      has_trap = true;
    }
  }
  model_.SetIndex(acq::kFilter, index > 0 ? index : 1);
  model_.SetIndex(acq::kVlfTrap, has_trap ? 1 : 0);
}

void AcqForm::WriteFilter() {
  const int index = model_.Index(acq::kFilter);
  if (index == kNothingChosen) {
    return;
  }
  std::int32_t code = 0;
  if (index > 0 && IsMtSampling()) {
    code = kFirstMtFilter + index - 1;
  } else if (index > 0) {
    code = kFirstFilter + index - 1 + (model_.Index(acq::kVlfTrap) == 1 ? kTrapBit : 0);
  }
  PutInt(table_, "LPFR", code);
}

void AcqForm::OnEdited(int control) {
  switch (control) {
    case acq::kFunction:
      ApplyFunctionRule();
      ResetGainFactors();
      break;
    case acq::kSampling:
      ApplyFunctionRule();
      break;
    case acq::kZoneKind:
    case acq::kZone:
      ApplyTimeZone();
      break;
    default:
      break;
  }
}

void AcqForm::ApplyTimeZone() {
  int hours = 0;
  if (model_.Index(acq::kZoneKind) == 1) {
    const auto& stored = model_.Stored(acq::kZone);
    const int index = model_.Index(acq::kZone);
    if (index != kNothingChosen) {
      hours = index + kFirstZone;
    } else if (!stored.empty()) {
      hours = IntOf(stored.front());
    }
  }
  model_.SetHourOffset(hours);
}

void AcqForm::CopyTimesToHighRates() {
  model_.SetText(acq::kHighStart, model_.Text(acq::kStart));
  model_.SetText(acq::kHighEnd, model_.Text(acq::kEnd));
}

void AcqForm::CalculateSpace() {
  for (const ParamKey key :
       {ParamKey("L2NS"), ParamKey("L3NS"), ParamKey("L4NS"), ParamKey("MTSR"), ParamKey("HSMP")}) {
    early_.Remember(key);
  }
  model_.Write(kSchedule);
  for (const int control : kTimes) {
    const Field& field = model_.FieldOf(control);
    std::vector<ParamValue> values = model_.Stored(control);
    if (model_.IsEdited(control)) {
      values = StoredOf(field, {model_.Text(control), kNothingChosen}, 0);
    } else if (!values.empty()) {
      PutTime(ShiftedByHours(TimeOf(values.front()), model_.HourOffset()), &values.front());
    }
    if (!values.empty()) {
      early_.Put(field.key, AmxPT, values.front());  // kept: as shown, OK puts the hours right
    }
  }
  ShowSpace();
}

void AcqForm::ShowSpace() {
  const RecordingSize size =
      EstimateRecordingSize(*table_, ParseIntPrefix(model_.Text(acq::kChannels)), *now_);
  space_note_.clear();
  if (size.exact != size.stated) {
    space_note_ = "(> 4096 Mb: " + FormatReal(size.exact) + ")";
  }
  model_.SetText(acq::kSpace, FormatReal(size.stated));
}

Timeline AcqForm::Recording(const ScheduleFile* steps) const {
  ParamTable shown = *table_;
  model_.WriteTo(&shown, std::array{acq::kFunction});
  model_.WriteTo(&shown, kSchedule);
  model_.WriteTo(&shown, kTimes);
  return TimelineOf(shown, *now_, model_.HourOffset(), steps);
}

void AcqForm::WriteSchedule() {
  model_.Write(kSchedule);
  model_.Write(kTimes);
  if (RealParam(*table_, "HNOM") == 0.0) {
    PutReal(table_, "HNOM", IsMtSampling() ? 1000.0 : 100.0);
  }
}

void AcqForm::Commit() {
  model_.Write(std::array{acq::kZoneKind, acq::kZone});
  if (HasSchedule()) {
    WriteSchedule();
  }
  model_.Write(std::array{acq::kECoupling, acq::kHCoupling});
  WriteFilter();
  model_.Write(std::array{acq::kFunction, acq::kEGain, acq::kHGain, acq::kLineFrequency,
                          acq::kHxSerial, acq::kHySerial, acq::kHzSerial, acq::kFileClose,
                          acq::kRequest});
  constexpr std::int32_t kSetupMode = 1;
  PutInt(table_, "MODE", kSetupMode);
  model_.Write(std::array{acq::kDrift, acq::kCombFilter, acq::kPowerUpWindow});
}

std::string AcqForm::CouplingNote() const {
  const bool no_e = model_.Index(acq::kECoupling) == kNothingChosen;
  const bool no_h = model_.Index(acq::kHCoupling) == kNothingChosen;
  const std::string which = no_e && no_h ? "E/H" : no_e ? "E" : no_h ? "H" : "";
  return which.empty() ? which : which + " coupling not set";
}

Tech AcqForm::BeginSiteSetup() {
  const Tech tech = ChosenTech();
  if (tech != kNoTech) {
    early_.PutInt("TECH", tech);
  }
  return tech;
}

void AcqForm::SetCoilSerials(const std::string& hx, const std::string& hy, const std::string& hz) {
  const auto put = [this](int control, const std::string& serial) {
    if (model_.Text(control) != serial) {
      model_.SetText(control, serial);
    }
  };
  put(acq::kHxSerial, hx);
  put(acq::kHySerial, hy);
  put(acq::kHzSerial, hz);
}

}  // namespace orvane

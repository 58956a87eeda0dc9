// SPDX-License-Identifier: GPL-3.0-or-later
// What the chosen method decides in "Acquisition Parameters".
#include <algorithm>
#include <array>

#include "editors/acq_form.h"
#include "table/param_access.h"

namespace orvane {
namespace {

constexpr std::array kScheduleFields = {acq::kStart,   acq::kEnd,        acq::kHighStart,
                                        acq::kHighEnd, acq::kSlotLength, acq::kChannels,
                                        acq::kSpace};
constexpr std::array kScheduleEdits = {acq::kStart, acq::kEnd,   acq::kHighStart, acq::kHighEnd,
                                       acq::kBand2, acq::kBand3, acq::kBand4,     acq::kSlotLength};
constexpr std::array kStackRequests = {acq::kRequestStandby, acq::kRequestPause,
                                       acq::kRequestCsRecord};
constexpr int kDc = 0;
constexpr int kAc = 1;

}  // namespace

void AcqForm::ApplyFunctionRule() {
  LimitRequests();
  ShowSchedule();
  EnableSchedule();
  early_.PutInt("WFRM", IsTimeDomain() ? kTimeDomainWaveform : kFrequencyDomainWaveform);
  model_.Enable(acq::kDrift, IsTimeDomain());
  model_.Enable(acq::kCombFilter, !IsTimeDomain());
  if (IsTimeDomain()) {
    SetTimeDomain();
  } else {
    SetFrequencyDomain();
  }
  SetByFunction();
}

// MT/AMT has one request of its own to record, the stacking methods have three.
void AcqForm::LimitRequests() {
  model_.Enable(acq::kRequestRecord, HasSchedule());
  for (const int button : kStackRequests) {
    model_.Enable(button, !HasSchedule());
  }
  const auto& choices = model_.FieldOf(acq::kRequest).choices;
  const int index = model_.Index(acq::kRequest);
  if (index != kNothingChosen &&
      !model_.IsEnabled(choices[static_cast<std::size_t>(index)].control)) {
    model_.SetIndex(acq::kRequest, 0);
  }
}

// Only MT/AMT writes the schedule: the other methods show what stays stored.
void AcqForm::ShowSchedule() {
  for (const int control : kScheduleEdits) {
    if (HasSchedule()) {
      model_.BringBack(control);
    } else {
      model_.SetAside(control);
    }
  }
  if (!HasSchedule()) {
    model_.ShowStored(acq::kSampling);
  }
}

void AcqForm::EnableSchedule() {
  for (const int control : kScheduleFields) {
    model_.Enable(control, HasSchedule());
  }
  model_.EnableGroup(acq::kSampling, HasSchedule());
  const bool is_damt = model_.Index(acq::kSampling) == kDamt;
  model_.Enable(acq::kBand2, HasSchedule() && !IsMtSampling());
  model_.Enable(acq::kBand3, HasSchedule() && !is_damt);
  model_.Enable(acq::kBand4, IsMtSampling());
}

void AcqForm::SetTimeDomain() {
  for (const Choice& choice : model_.FieldOf(acq::kFilter).choices) {
    model_.Enable(choice.control, choice.control == acq::kFilterOff);
  }
  model_.SetIndex(acq::kFilter, 0);
  model_.SetIndex(acq::kVlfTrap, 0);
  model_.Enable(acq::kVlfTrap, false);
  model_.SetIndex(acq::kECoupling, kDc);
  model_.SetIndex(acq::kHCoupling, kDc);
  model_.Enable(acq::kEAcCoupling, false);
  model_.Enable(acq::kHAcCoupling, false);
  if (const std::int32_t windows = IntParam(*table_, "NUMITEM"); windows < 6 || windows >= 21) {
    early_.PutInt("NUMITEM", IsFunction(kTdip) ? 16 : 21);
  }
}

void AcqForm::SetFrequencyDomain() {
  model_.Enable(acq::kVlfTrap, !IsMtSampling());
  if (IsMtSampling()) {
    model_.SetIndex(acq::kVlfTrap, 0);
  }
  if (model_.IsEnabled(acq::kFilterOff)) {  // coming from the time domain
    for (const Choice& choice : model_.FieldOf(acq::kFilter).choices) {
      model_.Enable(choice.control, choice.control != acq::kFilterOff);
    }
    model_.SetIndex(acq::kFilter, 3);
    model_.Enable(acq::kEAcCoupling, true);
    model_.Enable(acq::kHAcCoupling, true);
  }
  early_.PutInt("NUMITEM", 1);
}

void AcqForm::SetByFunction() {
  if (!IsFunction(kSip) && !IsFunction(kCsamt) && !IsFunction(kFdem)) {
    return;
  }
  const int coupling = IsFunction(kSip) ? kDc : IsFunction(kCsamt) ? kAc : kNothingChosen;
  model_.SetIndex(acq::kECoupling, coupling);
  model_.SetIndex(acq::kHCoupling, coupling);
  model_.SetIndex(acq::kSampling, kAmt);
  if (IsFunction(kFdem)) {  // kept: couplings stay open, a box gets -1
    early_.PutInt("CHHX", 4);
    early_.PutInt("CHHY", 5);
    early_.PutInt("CHHZ", 6);
  }
}

// After a choice, never on opening.
void AcqForm::ResetGainFactors() {
  if (ChosenTech() == kNoTech || HasSchedule()) {
    return;
  }
  for (const ParamKey key :
       {ParamKey("GFC1"), ParamKey("GFC2"), ParamKey("GFC3"), ParamKey("GFC4"), ParamKey("GFC5"),
        ParamKey("GFC6"), ParamKey("GFC7"), ParamKey("GFC8")}) {
    early_.PutReal(key, 1.0);
  }
  if (IsFunction(kTdem)) {
    model_.SetText(acq::kDrift, "0");
  }
}

}  // namespace orvane

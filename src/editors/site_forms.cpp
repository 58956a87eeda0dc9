// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/site_forms.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "editors/serial_cautions.h"
#include "table/box_keys.h"
#include "table/param_access.h"

namespace orvane {
namespace {

constexpr int kTextLength = 15;   // of one string value
constexpr int kCoilLength = 8;    // of a coil's serial number
constexpr double kMilli = 0.001;  // voltages are stored in volts and shown in millivolts

constexpr std::array<Choice, 3> kNorthReferences = {
    {{"True North"}, {"Magnetic North"}, {"User Defined"}}};
constexpr std::array<Choice, 2> kCsamtArrays = {{{"Scalar"}, {"Vector(2H)"}}};
constexpr std::array<Choice, 9> kIpArrays = {{{"Random"},
                                              {"Dipole-Dipole"},
                                              {"Pole-Dipole"},
                                              {"Pole-Pole"},
                                              {"Gradient"},
                                              {"Schlumberger"},
                                              {"Inv-Schlumberger"},
                                              {"Wenner"},
                                              {"Inv-Wenner"}}};
constexpr std::array<Choice, 3> kTdemArrays = {
    {{"Central Loop"}, {"Grounded Dipole"}, {"Fixed Loop"}}};
constexpr std::array<Choice, 2> kFdemSources = {{{"Horizonal Loop"}, {"Grounded Dipole"}}};
constexpr std::array<Choice, 3> kSiteConfigurations = {
    {{"Tensor A//MT"}, {"Parallel Test"}, {"3-H Mag. Vector"}}};

// Stored array types of a grounded dipole; of the lists it is always the second item.
constexpr int kGroundedDipoleIndex = 1;
constexpr int kDipoleDipole = 1;

constexpr Field SurveyText(int control, std::string_view label, std::string_view prefix,
                           int pieces) {
  return {control, Widget::kText, label, prefix, StrPT, Pieces(pieces)};
}
constexpr Field Millivolts(int control, std::string_view label, std::string_view key) {
  return StoredIn("V", {control, Widget::kReal, label, key, FltPT, Scale(1000, kMilli)});
}
constexpr Field List(int control, std::string_view label, std::string_view key, const Codec& codec,
                     std::span<const Choice> choices) {
  return {control, Widget::kCombo, label, key, IntPT, codec, {}, choices};
}

constexpr auto kBoxSerials = std::to_array<Field>({
    Meaning("Serial number of the transmitter box",
            IntegerField(BoxSerialForm::kTransmitter, "GVR serial number", "SNTX")),
    Meaning("Serial number of the main box",
            IntegerField(BoxSerialForm::kMain, "K3 serial number", "SNUM")),
    Meaning("Serial number of auxiliary box 1",
            IntegerField(BoxSerialForm::kAux1, "Aux1 Box SN", kAuxiliaryKeys[0].serial)),
    Meaning("Serial number of auxiliary box 2",
            IntegerField(BoxSerialForm::kAux2, "Aux2 Box SN", kAuxiliaryKeys[1].serial)),
    Meaning("Serial number of auxiliary box 3",
            IntegerField(BoxSerialForm::kAux3, "Aux3 Box SN", kAuxiliaryKeys[2].serial)),
    Meaning("Serial number of auxiliary box 4",
            IntegerField(BoxSerialForm::kAux4, "Aux4 Box SN", kAuxiliaryKeys[3].serial)),
    Meaning("Serial number of auxiliary box 5",
            IntegerField(BoxSerialForm::kAux5, "Aux5 Box SN", kAuxiliaryKeys[4].serial)),
});

constexpr auto kSurvey = std::to_array<Field>({
    SurveyText(SiteForm::kProject, "Project", "SRVY", 4),
    SurveyText(SiteForm::kCompany, "Company", "CMPY", 4),
    SurveyText(SiteForm::kClient, "Client", "CLIENT", 4),
    SurveyText(SiteForm::kArea, "Survey area", "AREA", 4),
    SurveyText(SiteForm::kOperator, "Operator", "LOUT", 4),
    SurveyText(SiteForm::kComment, "Comment", "CMMNT", 8),
    TextField(SiteForm::kSite, "Site", "SITE", kTextLength),
    TextField(SiteForm::kLine, "Line", "LINE", kTextLength),
    RealField(SiteForm::kDeclination, "Declination (degree)", "DECL"),
});

constexpr auto kMtFields = std::to_array<Field>({
    RealField(SiteForm::kAzimuth, "Ex dipole azimuth (degree )", "EAZM"),
    RealField(SiteForm::kExLength, "Ex dipole length (m)", "EXLN"),
    RealField(SiteForm::kEyLength, "Ey dipole length (m)", "EYLN"),
    RealField(SiteForm::kHyAzimuth, "Hx coil azimuth (degree )", "HAZM"),
    IntegerField(SiteForm::kExResistivity, "Ex contact resistivity (ohm)", "EXR"),
    IntegerField(SiteForm::kEyResistivity, "Ey contact resistivity (ohm)", "EYR"),
    Millivolts(SiteForm::kExDcVoltage, "Ex DC voltage (mv)", "DXDC"),
    Millivolts(SiteForm::kExAcVoltage, "Ex AC voltage (mv)", "DXAC"),
    Millivolts(SiteForm::kEyDcVoltage, "Ey DC voltage (mv)", "DYDC"),
    Millivolts(SiteForm::kEyAcVoltage, "Ey AC voltage (mv)", "DYAC"),
    TextField(SiteForm::kHxSerial, "Hx serial number", "HXSN", kCoilLength),
    TextField(SiteForm::kHySerial, "Hy serial number", "HYSN", kCoilLength),
    TextField(SiteForm::kHzSerial, "Hz serial number", "HZSN", kCoilLength),
    List(SiteForm::kNorthReference, "North reference", "NREF", Offset(2, Unlisted::kFirst),
         kNorthReferences),
    List(SiteForm::kSiteConfiguration, "Site configuration", "ATYP", Offset(0),
         kSiteConfigurations),
});

constexpr Field kNorth =
    List(SiteForm::kNorthReference, "North reference", "NREF", Offset(2), kNorthReferences);

constexpr auto kCsamtFields = std::to_array<Field>({
    RealField(SiteForm::kRxEast, "Start pot East (m)", "ERXPOS"),
    RealField(SiteForm::kRxNorth, "Start pot North (m)", "NRXPOS"),
    RealField(SiteForm::kAzimuth, "Profile azimuth (degree)", "EAZM"),
    RealField(SiteForm::kRxLength, "Ex length (m)", "RXLEN"),
    IntegerField(SiteForm::kAutoIncrement, "Auto Inc.", "SITEINC"),
    {SiteForm::kHyAzimuth, Widget::kShown, "Hy azimuth (degree)", {}, FltPT, Unbound()},
    kNorth,
    List(SiteForm::kArrayType, "Array type", "ARRYTYP", Offset(9, Unlisted::kFirst), kCsamtArrays),
});

constexpr auto kIpFields = std::to_array<Field>({
    RealField(SiteForm::kRxEast, "Rx station close to Tx: East (m)", "ERXPOS"),
    RealField(SiteForm::kRxNorth, "Rx station close to Tx: North (m)", "NRXPOS"),
    RealField(SiteForm::kTxEast, "Tx station close to Rx: East (m)", "ETXCSRX"),
    RealField(SiteForm::kTxNorth, "Tx station close to Rx: North (m)", "NTXCSRX"),
    StoredIn("m", RealField(SiteForm::kRxLength, "Rx dipole length (MN)", "RXLEN")),
    StoredIn("m", RealField(SiteForm::kTxLength, "Tx dipole length (AB)", "TXLEN")),
    IntegerField(SiteForm::kAutoIncrement, "Auto Inc.", "SITEINC"),
    kNorth,
    List(SiteForm::kArrayType, "Array type", "ARRYTYP", Offset(0), kIpArrays),
});

constexpr auto kLoopFields = std::to_array<Field>({
    IntegerField(SiteForm::kAutoIncrement, "Auto Inc.", "SITEINC"),
    IntegerField(SiteForm::kLoopTurns, "Tx loop turns", "TXTURN"),
    RealField(SiteForm::kLoopLength, "Tx loop length (m)", "LLENGTH"),
    RealField(SiteForm::kLoopWidth, "Tx loop width (m)", "LWIDTH"),
    RealField(SiteForm::kAzimuth, "Profile azimuth (degree)", "PAZM"),
    RealField(SiteForm::kRampTime, "Ramp time (micro-sec)", "RAMPLEN"),
    RealField(SiteForm::kRxLength, "Setup interval (m)", "RXLEN"),
    StoredIn("degree",
             Meaning("Azimuth of the transmitter's diagonal or dipole",
                     RealField(SiteForm::kTxAzimuth, "Tx diag. azim. from BL to TR:", "TXAZIM"))),
    kNorth,
});

void Append(std::span<const Field> more, std::vector<Field>* fields) {
  fields->insert(fields->end(), more.begin(), more.end());
}

std::vector<Field> FieldsOf(Tech tech, std::span<const Choice> transmitters) {
  std::vector<Field> fields;
  Append(kSurvey, &fields);
  switch (tech) {
    case kMtAmt:
      Append(kMtFields, &fields);
      break;
    case kCsamt:
      Append(kCsamtFields, &fields);
      break;
    case kTdem:
    case kFdem:
      Append(kLoopFields, &fields);
      fields.push_back(tech == kTdem ? List(SiteForm::kArrayType, "Array type", "ARRYTYP",
                                            Offset(12, Unlisted::kFirst), kTdemArrays)
                                     : List(SiteForm::kArrayType, "Source Type", "ARRYTYP",
                                            Offset(15, Unlisted::kFirst), kFdemSources));
      fields.push_back(
          List(SiteForm::kTransmitterType, "Transmitter type", "TXTYPE", Offset(0), transmitters));
      break;
    default:
      Append(kIpFields, &fields);
      break;
  }
  return fields;
}

// Degrees from 0 to below 360.
double WithinCircle(double degrees) {
  const double rest = std::fmod(degrees, 360);
  return rest < 0 ? rest + 360 : rest;
}

std::vector<Choice> WithUnknown(const std::vector<std::string>& names) {
  std::vector<Choice> choices = {{"Unknown"}};
  for (const std::string& name : names) {
    choices.push_back({name});
  }
  return choices;
}

}  // namespace

BoxSerialForm::BoxSerialForm(ParamTable* table) : PlainForm(table, kBoxSerials) {
  Model().SetCautionRule([](FormModel* model) {
    CautionSerials(std::array<int, 5>{kAux1, kAux2, kAux3, kAux4, kAux5},
                   std::array<int, 2>{kMain, kTransmitter}, model);
  });
}

SiteForm::SiteForm(ParamTable* table, Tech tech,
                   const std::array<std::string, 4>& transmitter_models)
    : table_(table),
      tech_(tech),
      transmitter_models_(transmitter_models.begin(), transmitter_models.end()),
      transmitter_choices_(WithUnknown(transmitter_models_)),
      fields_(FieldsOf(tech, transmitter_choices_)),
      model_(table, fields_) {}

SiteForm::Kind SiteForm::Dialog() const {
  switch (tech_) {
    case kCsamt:
      return kCsamtSite;
    case kTdem:
    case kFdem:
      return kLoopSite;
    case kMtAmt:
      return kMtSite;
    default:
      return kIpSite;
  }
}

std::string_view SiteForm::Title() const {
  switch (tech_) {
    case kTdem:
      return "TDEM Site Setup";
    case kCsamt:
      return "CSAMT Site Setup";
    case kMtAmt:
      return "MT/AMT Site Setup";
    case kFdem:
      return "FDEM Setup";
    default:
      return "IP Site Setup";
  }
}

std::vector<std::string> SiteForm::Open() {
  std::vector<std::string> changed;
  const std::int32_t array_type = IntParam(*table_, "ARRYTYP");
  const bool is_ip = Dialog() == kIpSite;
  if (is_ip && (array_type < 0 || array_type >= static_cast<int>(kIpArrays.size()))) {
    PutInt(table_, "ARRYTYP", kDipoleDipole);
    changed.emplace_back("ARRYTYP");
  }
  model_.ReadAll();
  UpdateHyAzimuth();
  UpdateLoopFields();
  return changed;
}

double SiteForm::Real(int control) const {
  const auto& stored = model_.Stored(control);
  return model_.IsEdited(control) || stored.empty() ? ParseRealPrefix(model_.Text(control))
                                                    : RealOf(stored.front());
}

void SiteForm::OnEdited(int control) {
  if (control == kAzimuth) {
    UpdateHyAzimuth();
  } else if (control == kArrayType) {
    UpdateLoopFields();
  }
}

void SiteForm::UpdateHyAzimuth() {
  if (tech_ != kCsamt) {
    return;
  }
  const auto azimuth = ParseReal(model_.Text(kAzimuth));
  model_.SetText(kHyAzimuth, azimuth ? FormatReal(WithinCircle(*azimuth + 90)) : std::string());
}

bool SiteForm::IsGroundedDipole() const { return model_.Index(kArrayType) == kGroundedDipoleIndex; }

void SiteForm::UpdateLoopFields() {
  if (Dialog() != kLoopSite) {
    return;
  }
  const bool is_loop = !IsGroundedDipole();
  model_.SetCaption(kTxAzimuth, is_loop ? "Tx diag. azim. from BL to TR:" : "Tx dipole azimuth");
  for (const int control : {kLoopTurns, kLoopLength, kLoopWidth}) {
    model_.Enable(control, is_loop);
  }
}

std::vector<int> SiteForm::WriteOrder() const {
  std::vector<int> order;
  for (const Field& field : fields_) {
    if (field.control != kTransmitterType) {
      order.push_back(field.control);
    }
  }
  return order;
}

ParamTable SiteForm::Shown() const {
  ParamTable shown = *table_;
  model_.WriteTo(&shown, WriteOrder());
  PutInt(&shown, "TECH", tech_);
  return shown;
}

void SiteForm::Commit() { model_.Write(WriteOrder()); }

// A loop without a size becomes a square one of the effective area, which the transmitter's channel
// has in the grid.
void SiteForm::CompleteLoopSize() {
  const double area = RealParam(*table_, "TXLEN");
  const std::int32_t turns = IntParam(*table_, "TXTURN");
  const bool has_size = RealParam(*table_, "LLENGTH") != 0 && RealParam(*table_, "LWIDTH") != 0;
  if (has_size || turns <= 0 || !(area >= 0)) {
    return;
  }
  const double side = std::sqrt(area / turns);
  PutReal(table_, "LLENGTH", side);
  PutReal(table_, "LWIDTH", side);
}

void SiteForm::CommitAfterGrids() {
  if (Dialog() != kLoopSite) {
    return;
  }
  if (!IsGroundedDipole()) {
    CompleteLoopSize();
  }
  model_.Write(std::array<int, 1>{kTransmitterType});
}

}  // namespace orvane

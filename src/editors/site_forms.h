// SPDX-License-Identifier: GPL-3.0-or-later
// The site setup of each survey method: who surveys what and where, and the geometry of the layout.
// The boxes and channels of the spread are in spread.h.
#ifndef ORVANE_EDITORS_SITE_FORMS_H_
#define ORVANE_EDITORS_SITE_FORMS_H_

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "forms/plain_form.h"
#include "table/tech.h"

namespace orvane {

/// The serial numbers of the boxes, asked before the site of every method but MT/AMT.
class BoxSerialForm : public PlainForm {
 public:
  static constexpr std::string_view kTitle = "Input K3 and GVR Box Serial Number";
  enum Control : int {
    kTransmitter = 1234,
    kMain = 1235,
    kAux1 = 1255,
    kAux2 = 1256,
    kAux3 = 1258,
    kAux4 = 1259,
    kAux5 = 1257,
  };

  explicit BoxSerialForm(ParamTable* table);
};

/// The transmitter type list after "Unknown", where the user has set no other names.
inline constexpr std::array<std::string_view, 4> kTransmitterModels = {
    "Transmitter 1", "Transmitter 2", "Transmitter 3", "Transmitter 4"};

/// The site setup dialog of one method.
class SiteForm {
 public:
  /// Control numbers that rules and layouts name.
  enum Control : int {
    kProject = 1132,
    kCompany = 1133,
    kClient = 1134,
    kArea = 1135,
    kOperator = 1136,
    kComment = 1137,
    kLine = 1147,
    kSite = 1148,
    kDeclination = 1140,
    kNorthReference = 1155,
    kArrayType = 1154,
    kSiteConfiguration = 1267,
    kTransmitterType = 1164,
    kAzimuth = 1178,
    kHyAzimuth = 1141,
    kExLength = 1179,
    kEyLength = 1175,
    kExResistivity = 1180,
    kEyResistivity = 1174,
    kExDcVoltage = 1181,
    kExAcVoltage = 1173,
    kEyDcVoltage = 1176,
    kEyAcVoltage = 1177,
    kRxEast = 1145,
    kRxNorth = 1144,
    kTxEast = 1146,
    kTxNorth = 1143,
    kRxLength = 1142,
    kTxLength = 1139,
    kAutoIncrement = 1149,
    kLoopTurns = 1168,
    kLoopLength = 1166,
    kLoopWidth = 1167,
    kRampTime = 1165,
    kTxAzimuth = 1272,
    kHxSerial = 1090,
    kHySerial = 1091,
    kHzSerial = 1092,
  };

  /// SIP and TDIP share a dialog, TDEM and FDEM another.
  enum Kind : int { kCsamtSite = 159, kIpSite = 161, kLoopSite = 162, kMtSite = 163 };

  /// `transmitter_models`: the four names of the transmitter type list after "Unknown".
  SiteForm(ParamTable* table, Tech tech, const std::array<std::string, 4>& transmitter_models);

  Tech Method() const { return tech_; }
  /// The dialog, whose number it is, and its title.
  Kind Dialog() const;
  std::string_view Title() const;
  /// The electrodes follow one another along a line, so that their places can be calculated.
  bool HasLine() const { return Dialog() == kCsamtSite || Dialog() == kIpSite; }
  bool HasSpread() const { return tech_ != kMtAmt; }

  FormModel& Model() { return model_; }
  const FormModel& Model() const { return model_; }
  /// The number of a field: what is stored, with all its digits, or what was typed.
  double Real(int control) const;
  /// Reads the fields. IP: a stored array type that is none of the list becomes "Dipole-Dipole" in
  /// the table at once; the key is returned.
  std::vector<std::string> Open();
  /// To be called after the user changed a control.
  void OnEdited(int control);
  /// A copy of the table with what the form shows: for pictures of what OK would store.
  ParamTable Shown() const;
  /// Writes everything but the spread and what follows from it.
  void Commit();
  /// TDEM and FDEM, once the grids of the spread are written: the sides of a loop without a size,
  /// from the area that the grid holds, and the transmitter type.
  void CommitAfterGrids();

 private:
  std::vector<int> WriteOrder() const;
  bool IsGroundedDipole() const;
  void UpdateHyAzimuth();
  void UpdateLoopFields();
  void CompleteLoopSize();

  ParamTable* table_;
  Tech tech_;
  std::vector<std::string> transmitter_models_;
  std::vector<Choice> transmitter_choices_;
  std::vector<Field> fields_;
  FormModel model_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_SITE_FORMS_H_

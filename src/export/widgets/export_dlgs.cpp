// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/widgets/export_dlgs.h"

#include <array>

namespace orvane {

CNetcdfDlg::CNetcdfDlg(NetcdfForm* form, Prompts* prompts, QWidget* parent)
    : COptionsDlg(&form->Model(), prompts, parent) {
  setObjectName(QStringLiteral("netcdf"));
  setWindowTitle(QStringLiteral("Convert To NetCDF"));
  LayOut(std::to_array<OptionRow>({
      {NetcdfForm::kDeflate, "0: none; 1 is the fastest, 9 the smallest"},
  }));
}

CMseedDlg::CMseedDlg(MseedForm* form, Prompts* prompts, QWidget* parent)
    : COptionsDlg(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("mseed"));
  setWindowTitle(QStringLiteral("Convert To MiniSEED"));
  LayOut(std::to_array<OptionRow>({
      {MseedForm::kNetwork, "code of the archive; XX where there is none"},
      {MseedForm::kRecordLength, "512 is usual, 4096 for large archives"},
      {MseedForm::kKeepsBad, "else records that the box marked bad are gaps"},
      {MseedForm::kHasStation, "also NAME.xml: channels and their responses"},
      {MseedForm::kFolder, "empty: the folder of each recording",
       "Folder of the calibration files"},
      {MseedForm::kLatitude, "north; empty: as the table has it"},
      {MseedForm::kLongitude, "east; empty: as the table has it"},
      {MseedForm::kElevation, "empty: as the table has it"},
  }));
}

void CMseedDlg::OnEdited(int control) {
  if (control == MseedForm::kHasStation) {
    form_->Follow();
  }
}

}  // namespace orvane

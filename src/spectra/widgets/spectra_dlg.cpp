// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/widgets/spectra_dlg.h"

#include <array>

namespace orvane {

CSpectraDlg::CSpectraDlg(SpectraForm* form, Prompts* prompts, QWidget* parent)
    : COptionsDlg(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("spectra"));
  setWindowTitle(QStringLiteral("Calibrated Spectra"));
  LayOut(std::to_array<OptionRow>({
      {SpectraForm::kFolder, "empty: the folder of each recording",
       "Folder of the calibration files"},
      {SpectraForm::kBaseFrequency, "for records without one; 0: FREQ of their table"},
      {SpectraForm::kHarmonics, "odd harmonics of each record, at most"},
      {SpectraForm::kReversed, "wired the other way, such as 3,5; empty: none"},
  }));
}

}  // namespace orvane

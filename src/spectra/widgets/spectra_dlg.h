// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_WIDGETS_SPECTRA_DLG_H_
#define ORVANE_SPECTRA_WIDGETS_SPECTRA_DLG_H_

#include <optional>

#include "spectra/spectra_form.h"
#include "ui/options_dlg.h"

namespace orvane {

/// Where the calibrations are, and what of the spectra is wanted.
class CSpectraDlg : public COptionsDlg {
  Q_OBJECT

 public:
  CSpectraDlg(SpectraForm* form, Prompts* prompts, QWidget* parent);

 private:
  std::optional<FormModel::Fault> Fault() const override { return form_->Fault(); }

  SpectraForm* form_;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_WIDGETS_SPECTRA_DLG_H_

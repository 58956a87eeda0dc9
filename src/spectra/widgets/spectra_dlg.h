// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_WIDGETS_SPECTRA_DLG_H_
#define ORVANE_SPECTRA_WIDGETS_SPECTRA_DLG_H_

#include <QGridLayout>
#include <QPushButton>
#include <optional>

#include "spectra/spectra_form.h"
#include "ui/form_dialog.h"

namespace orvane {

/// Where the calibrations are, and what of the spectra is wanted.
class CSpectraDlg : public CFormDialog {
  Q_OBJECT

 public:
  CSpectraDlg(SpectraForm* form, Prompts* prompts, QWidget* parent);

 private:
  std::optional<FormModel::Fault> Fault() const override { return form_->Fault(); }
  void Commit() override {}
  void AddRow(QGridLayout* rows, int control, QPushButton* behind = nullptr);
  void OnBrowse();

  SpectraForm* form_;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_WIDGETS_SPECTRA_DLG_H_

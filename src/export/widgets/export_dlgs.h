// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXPORT_WIDGETS_EXPORT_DLGS_H_
#define ORVANE_EXPORT_WIDGETS_EXPORT_DLGS_H_

#include <optional>

#include "export/export_forms.h"
#include "ui/options_dlg.h"

namespace orvane {

/// How NetCDF files are written.
class CNetcdfDlg : public COptionsDlg {
  Q_OBJECT

 public:
  CNetcdfDlg(NetcdfForm* form, Prompts* prompts, QWidget* parent);
};

/// How MiniSEED files are written, and what describes their station.
class CMseedDlg : public COptionsDlg {
  Q_OBJECT

 public:
  CMseedDlg(MseedForm* form, Prompts* prompts, QWidget* parent);

 private:
  void OnEdited(int control) override;
  std::optional<FormModel::Fault> Fault() const override { return form_->Fault(); }

  MseedForm* form_;
};

}  // namespace orvane

#endif  // ORVANE_EXPORT_WIDGETS_EXPORT_DLGS_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_WAVEFORM_DLG_H_
#define ORVANE_TIMESERIES_WIDGETS_WAVEFORM_DLG_H_

#include "timeseries/waveform_form.h"
#include "ui/form_dialog.h"

namespace orvane {

/// How the records of a waveform are shown and stepped through.
class CWaveformDlg : public CFormDialog {
  Q_OBJECT

 public:
  /// All must outlive the dialog.
  CWaveformDlg(WaveformForm* form, WaveformView* view, Prompts* prompts, QWidget* parent);

 private:
  std::optional<FormModel::Fault> Fault() const override { return form_->Validate(); }
  void Commit() override { form_->Commit(view_); }

  WaveformForm* form_;
  WaveformView* view_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_WAVEFORM_DLG_H_

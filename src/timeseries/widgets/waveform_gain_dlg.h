// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_WAVEFORM_GAIN_DLG_H_
#define ORVANE_TIMESERIES_WIDGETS_WAVEFORM_GAIN_DLG_H_

#include "timeseries/waveform_gain_form.h"
#include "ui/form_dialog.h"

namespace orvane {

/// By which gains the record shown is drawn.
class CWaveformGainDlg : public CFormDialog {
  Q_OBJECT

 public:
  /// All must outlive the dialog.
  CWaveformGainDlg(WaveformGainForm* form, WaveformView* view, Prompts* prompts, QWidget* parent);

 private:
  void Commit() override { form_->Commit(view_); }

  WaveformGainForm* form_;
  WaveformView* view_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_WAVEFORM_GAIN_DLG_H_

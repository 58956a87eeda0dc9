// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_ACQ_PARAM_DLG_H_
#define ORVANE_EDITORS_WIDGETS_ACQ_PARAM_DLG_H_

#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <functional>
#include <optional>

#include "editors/acq_form.h"
#include "editors/widgets/timeline_bar.h"
#include "ui/form_dialog.h"

namespace orvane {

/// "Acquisition Parameters": method, front end, schedule and time zone of a receiver.
class CAcqParamDlg : public CFormDialog {
  Q_OBJECT

 public:
  /// `form` is open already; it reports what changed even after Cancel.
  CAcqParamDlg(AcqForm* form, Prompts* prompts, QWidget* parent = nullptr);

  /// What "Site Setup..." does; without it the button is disabled. Not called while no function is
  /// chosen.
  void SetSiteSetup(std::function<void()> handler);
  /// The schedule file of the table, for the timeline.
  void SetSchedule(ScheduleFile file);

 protected:
  void OnEdited(int control) override;
  void Commit() override { form_->Commit(); }
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPushButton* NewButton(int number, const char* text);
  void CreateButtons();
  QWidget* NewContent();
  QWidget* NewMethodColumn();
  QWidget* NewFunctionButtons();
  QWidget* NewFrontEndColumn();
  QWidget* NewScheduleBox();
  QWidget* NewFilterBox();
  QWidget* NewTimeZoneBox();
  QWidget* NewReceiverBox();
  QWidget* NewCoilBox();
  QLayout* NewChannelForm(int coupling, int gain);
  QLayout* NewSpaceRow();
  void ShowState();

  void OnCalcSpace();
  void OnSameTimes();
  void OnSiteSetup();

  AcqForm* form_;
  std::function<void()> site_setup_;
  std::optional<ScheduleFile> schedule_;
  QPushButton* site_setup_button_;
  QPushButton* same_times_;
  QPushButton* calc_space_;
  QLabel* coupling_note_;
  QLabel* space_note_;
  TimelineBar* timeline_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_ACQ_PARAM_DLG_H_

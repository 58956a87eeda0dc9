// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_STARTUP_RESULT_DLG_H_
#define ORVANE_EDITORS_WIDGETS_STARTUP_RESULT_DLG_H_

#include "editors/startup_run.h"
#include "ui/result_list_dlg.h"

namespace orvane {

/// What came of each box of a run.
class CStartupResultDlg : public CResultListDlg {
  Q_OBJECT

 public:
  CStartupResultDlg(const StartupRun& run, QWidget* parent);
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_STARTUP_RESULT_DLG_H_

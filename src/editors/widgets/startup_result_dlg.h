// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_STARTUP_RESULT_DLG_H_
#define ORVANE_EDITORS_WIDGETS_STARTUP_RESULT_DLG_H_

#include "editors/startup_run.h"
#include "ui/result_list_dlg.h"

namespace orvane {

using KeyNames = std::function<std::string(const std::vector<std::string>& keys)>;

/// What came of each box of a run; for the current row what differs from the main table.
class CStartupResultDlg : public CResultListDlg {
  Q_OBJECT

 public:
  /// `names`: the keys as users know them.
  CStartupResultDlg(const StartupRun& run, const KeyNames& names, QWidget* parent);
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_STARTUP_RESULT_DLG_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_BATCH_RESULT_DLG_H_
#define ORVANE_UI_BATCH_RESULT_DLG_H_

#include "files/batch.h"
#include "ui/result_list_dlg.h"

namespace orvane {

/// What became of a batch: a message, how many files ended how, and each file with its outputs, or
/// why it failed or was left alone.
class CBatchResultDlg : public CResultListDlg {
  Q_OBJECT

 public:
  /// The batch must be finished. `editor` must outlive the dialog.
  CBatchResultDlg(const Batch& batch, const QString& message, const TextEditor* editor,
                  QWidget* parent);
};

/// "done", "failed: REASON", ...
QString ResultText(const BatchResult& result);

/// "3 done, 1 done with notes, 2 failed, 1 cancelled": only what there is.
QString CountsText(const Batch& batch);

}  // namespace orvane

#endif  // ORVANE_UI_BATCH_RESULT_DLG_H_

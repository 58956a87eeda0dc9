// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_BATCH_RESULTS_H_
#define ORVANE_UI_BATCH_RESULTS_H_

#include <QDialog>
#include <QTreeWidget>

#include "core/batch.h"
#include "ui/text_editor.h"

namespace orvane {

/// What became of a batch: a message, and below it each file with its outputs, or why it failed or
/// was left alone. Double click or Return opens an output.
class CBatchResultDlg : public QDialog {
  Q_OBJECT

 public:
  /// The batch must be finished. `editor` must outlive the dialog.
  CBatchResultDlg(const Batch& batch, const QString& message, const TextEditor* editor,
                  QWidget* parent);

 protected:
  /// Return in the list opens an output and never reaches the dialog, which it would close.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddFile(const std::filesystem::path& input, const BatchResult& result);
  void Open(const QTreeWidgetItem* item);
  void CopyAll() const;

  const TextEditor* editor_;
  QTreeWidget* list_;
};

/// "done", "failed: REASON", ...
QString ResultText(const BatchResult& result);

}  // namespace orvane

#endif  // ORVANE_UI_BATCH_RESULTS_H_

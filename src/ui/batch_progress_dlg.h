// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_BATCH_PROGRESS_DLG_H_
#define ORVANE_UI_BATCH_PROGRESS_DLG_H_

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "files/batch.h"

namespace orvane {

/// Shows a batch while its workers work: file, count, bytes, time left, and Cancel.
class CBatchProgressDlg : public QDialog {
  Q_OBJECT

 public:
  /// The batch must outlive the dialog.
  CBatchProgressDlg(Batch* batch, const QString& title, QWidget* parent);

  /// Called on this thread for each file that is done with, in the order of the list; messages that
  /// it shows do not stop the workers.
  using Finished = std::function<void(std::size_t index, const BatchResult& result)>;

  /// Starts the batch and returns when it is finished. What takes a moment only is never shown.
  void Run(const Finished& finished = {});

  /// Cancel, Escape and the close button: stops the batch, which ends soon after.
  void reject() override;

 private:
  void Tick();
  void ShowProgress();

  Batch* batch_;
  Finished finished_;
  std::size_t told_ = 0;
  bool is_telling_ = false;
  QTimer timer_;
  QLabel* file_;
  QLabel* count_;
  QLabel* time_;
  QProgressBar* bar_;
  QPushButton* cancel_;
};

/// A number of bytes for reading at a glance: "999 bytes", "12.5 MB".
QString BytesText(std::uint64_t bytes);

}  // namespace orvane

#endif  // ORVANE_UI_BATCH_PROGRESS_DLG_H_

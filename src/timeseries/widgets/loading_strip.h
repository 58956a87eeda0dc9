// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_LOADING_STRIP_H_
#define ORVANE_TIMESERIES_WIDGETS_LOADING_STRIP_H_

#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <chrono>
#include <memory>

#include "timeseries/ts_loading.h"

namespace orvane {

/// What is read within this time is shown at once, without a strip.
inline constexpr std::chrono::milliseconds kLoadingPatience{30};

/// How far the reading of a file is, with a button that cancels it. Hidden while nothing is read;
/// what is read when the strip goes is cancelled.
class LoadingStrip : public QFrame {
  Q_OBJECT

 public:
  explicit LoadingStrip(QWidget* parent);

  /// Follows a reading in place of the one before.
  void Follow(std::unique_ptr<TsLoading> loading);
  bool IsReading() const { return loading_ != nullptr; }
  /// Lets the reading end without a result.
  void Cancel();
  QPushButton* CancelButton() { return cancel_; }
  /// The reading that is done.
  std::unique_ptr<TsLoading> Take();

 signals:
  /// A reading is done; the slot that is called takes it by `Take()`.
  void ended();
  /// "Reading of A.TSS was cancelled".
  void cancelled(const QString& text);

 private:
  void Look();
  QString Name() const;

  std::unique_ptr<TsLoading> loading_;
  QLabel* text_;
  QProgressBar* progress_;
  QPushButton* cancel_;
  QTimer timer_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_LOADING_STRIP_H_

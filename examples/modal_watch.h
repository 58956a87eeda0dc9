// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXAMPLES_MODAL_WATCH_H_
#define ORVANE_EXAMPLES_MODAL_WATCH_H_

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace orvane::examples {

/// Ends a program that nobody sits at when a box that nobody asked for waits for an answer: prints
/// what it says on standard error and exits with 1. Without this such a program waits for ever.
class ModalWatch {
 public:
  /// `at_end` is called before the program ends so.
  explicit ModalWatch(std::function<void()> at_end);

  /// This box is looked at and closed by the program itself.
  void Expect(QWidget* box) { expected_ = box; }

 private:
  void Look();

  std::function<void()> at_end_;
  QTimer timer_;
  QPointer<QWidget> expected_;
  QPointer<QWidget> seen_;  // at the last look
};

}  // namespace orvane::examples

#endif  // ORVANE_EXAMPLES_MODAL_WATCH_H_

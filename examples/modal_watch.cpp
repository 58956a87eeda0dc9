// SPDX-License-Identifier: GPL-3.0-or-later
#include "modal_watch.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace orvane::examples {
namespace {

constexpr std::chrono::milliseconds kPause{500};

QString TextOf(const QWidget* box) {
  QString text = box->windowTitle();
  if (const auto* message = qobject_cast<const QMessageBox*>(box); message != nullptr) {
    return text + QStringLiteral(": ") + message->text();
  }
  for (const QLabel* label : box->findChildren<QLabel*>()) {
    text += QLatin1Char('\n') + label->text();
  }
  return text;
}

}  // namespace

ModalWatch::ModalWatch(std::function<void()> at_end) : at_end_(std::move(at_end)) {
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
  timer_.start(kPause);
}

// Only what stands there for a while: an expected box may have come just now.
void ModalWatch::Look() {
  QWidget* box = QApplication::activeModalWidget();
  if (box == nullptr || box == expected_ || box != seen_) {
    seen_ = box;
    return;
  }
  std::fprintf(stderr, "A box waits for an answer, and nobody is here:\n%s\n",
               TextOf(box).toLocal8Bit().constData());
  at_end_();
  std::_Exit(1);
}

}  // namespace orvane::examples

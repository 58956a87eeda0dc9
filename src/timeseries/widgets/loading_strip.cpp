// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/loading_strip.h"

#include <QHBoxLayout>

#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr std::chrono::milliseconds kLook{50};
constexpr int kWhole = 100;

}  // namespace

LoadingStrip::LoadingStrip(QWidget* parent)
    : QFrame(parent),
      text_(new QLabel(this)),
      progress_(new QProgressBar(this)),
      cancel_(new QPushButton(QStringLiteral("Cancel"), this)) {
  setObjectName(QStringLiteral("loading"));
  setAccessibleName(QStringLiteral("Reading"));
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  progress_->setRange(0, kWhole);
  progress_->setTextVisible(false);
  progress_->setAccessibleName(QStringLiteral("Records read, in percent"));
  cancel_->setAutoDefault(true);  // Return presses it
  cancel_->setToolTip(QStringLiteral("Stop reading (Esc)"));
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(text_, 1);
  layout->addWidget(progress_, 1);
  layout->addWidget(cancel_);
  hide();
  timer_.setInterval(kLook);
  connect(&timer_, &QTimer::timeout, this, &LoadingStrip::Look);
  connect(cancel_, &QPushButton::clicked, this, &LoadingStrip::Cancel);
}

QString LoadingStrip::Name() const { return TextFromPath(loading_->Path().filename()); }

void LoadingStrip::Follow(std::unique_ptr<TsLoading> loading) {
  loading_ = std::move(loading);
  Look();
  show();
  timer_.start();
}

void LoadingStrip::Look() {
  if (loading_->IsDone()) {
    emit ended();
    return;
  }
  const int percent = loading_->Progress().Percent();
  progress_->setValue(percent);
  text_->setText(QStringLiteral("Reading records of %1 ... %2 %").arg(Name()).arg(percent));
}

std::unique_ptr<TsLoading> LoadingStrip::Take() {
  timer_.stop();
  hide();
  return std::move(loading_);
}

void LoadingStrip::Cancel() {
  if (IsReading()) {
    const QString text = QStringLiteral("Reading of %1 was cancelled").arg(Name());
    Take().reset();
    emit cancelled(text);
  }
}

}  // namespace orvane

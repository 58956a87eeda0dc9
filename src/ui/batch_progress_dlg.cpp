// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/batch_progress_dlg.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QVBoxLayout>

#include "base/number_text.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr int kTick = 50;  // milliseconds
constexpr auto kUnshown = std::chrono::milliseconds(300);
constexpr int kSteps = 1000;

QString TimeText(std::chrono::seconds left) {
  const auto seconds = left.count();
  return seconds < 60 ? QStringLiteral("about %1 s left").arg(seconds + 1)
                      : QStringLiteral("about %1 min left").arg((seconds + 59) / 60);
}

}  // namespace

QString BytesText(std::uint64_t bytes) {
  constexpr double kStep = 1000;
  if (bytes < 1000) {
    return QStringLiteral("%1 bytes").arg(bytes);
  }
  double number = static_cast<double>(bytes) / kStep;
  const char* unit = "kB";
  for (const char* larger : {"MB", "GB", "TB"}) {
    if (number >= kStep) {
      number /= kStep;
      unit = larger;
    }
  }
  return QString::fromStdString(FormatFixed(number, 1)) + QLatin1Char(' ') + QLatin1String(unit);
}

CBatchProgressDlg::CBatchProgressDlg(Batch* batch, const QString& title, QWidget* parent)
    : QDialog(parent),
      batch_(batch),
      file_(new QLabel(this)),
      count_(new QLabel(this)),
      time_(new QLabel(this)),
      bar_(new QProgressBar(this)) {
  setObjectName(QStringLiteral("batch-progress"));
  setWindowTitle(title);
  setModal(true);
  file_->setObjectName(QStringLiteral("file"));
  file_->setTextFormat(Qt::PlainText);
  count_->setObjectName(QStringLiteral("count"));
  time_->setObjectName(QStringLiteral("time"));
  time_->setAlignment(Qt::AlignRight);
  bar_->setRange(0, kSteps);
  bar_->setAccessibleName(QStringLiteral("Progress"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  cancel_ = buttons->button(QDialogButtonBox::Cancel);
  cancel_->setObjectName(QStringLiteral("2"));
  connect(buttons, &QDialogButtonBox::rejected, this, &CBatchProgressDlg::reject);
  connect(&timer_, &QTimer::timeout, this, &CBatchProgressDlg::Tick);

  auto* grid = new QGridLayout;
  grid->addWidget(file_, 0, 0, 1, 2);
  grid->addWidget(bar_, 1, 0, 1, 2);
  grid->addWidget(count_, 2, 0);
  grid->addWidget(time_, 2, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addWidget(buttons);
  setMinimumWidth(480);
  ShowProgress();
}

void CBatchProgressDlg::Run(const Finished& finished) {
  finished_ = finished;
  batch_->Start();
  if (!batch_->WaitFor(kUnshown)) {
    timer_.start(kTick);
    exec();
    timer_.stop();
  }
  batch_->Wait();
  Tick();
}

void CBatchProgressDlg::reject() {
  batch_->Stop();
  cancel_->setEnabled(false);
  time_->setText(QStringLiteral("stopping"));
}

void CBatchProgressDlg::Tick() {
  if (is_telling_) {
    return;  // the message of an earlier file is still open
  }
  is_telling_ = true;
  for (; told_ < batch_->Count() && batch_->Result(told_) != nullptr; ++told_) {
    if (finished_) {
      finished_(told_, *batch_->Result(told_));
    }
  }
  is_telling_ = false;
  ShowProgress();
  if (batch_->IsFinished() && told_ == batch_->Count()) {
    done(Accepted);
  }
}

void CBatchProgressDlg::ShowProgress() {
  const BatchProgress progress = batch_->Progress();
  const QString name = TextFromPath(progress.current.filename());
  file_->setText(fontMetrics().elidedText(name, Qt::ElideMiddle, 440));
  file_->setToolTip(TextFromPath(progress.current));
  count_->setText(QStringLiteral("%1 of %2 files, %3 of %4")
                      .arg(progress.files_done)
                      .arg(progress.files_total)
                      .arg(BytesText(progress.bytes_done), BytesText(progress.bytes_total)));
  bar_->setValue(progress.bytes_total == 0
                     ? 0
                     : static_cast<int>(static_cast<double>(progress.bytes_done) * kSteps /
                                        static_cast<double>(progress.bytes_total)));
  if (cancel_->isEnabled()) {
    const auto left = progress.TimeLeft();
    time_->setText(left ? TimeText(*left) : QString());
  }
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/widgets/decay_dock.h"

#include <QApplication>
#include <QClipboard>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/byte_text.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr int kLook = 50;  // ms

}  // namespace

DecayDock::DecayDock(Ask shown, QWidget* parent)
    : QDockWidget(QStringLiteral("Decay"), parent),
      shown_(std::move(shown)),
      plot_(new DecayPlot(this)),
      caption_(new QLabel(this)),
      channel_(new QComboBox(this)),
      quantity_(new QComboBox(this)),
      reference_(new QComboBox(this)),
      windows_(new QLineEdit(this)),
      log_x_(new QCheckBox(QStringLiteral("Logarithmic a&cross"), this)),
      log_y_(new QCheckBox(QStringLiteral("Logarithmic &up"), this)),
      progress_(new QProgressBar(this)) {
  setObjectName(QStringLiteral("decay-dock"));
  caption_->setObjectName(QStringLiteral("decay-caption"));
  caption_->setTextFormat(Qt::PlainText);
  caption_->setWordWrap(true);
  progress_->setAccessibleName(QStringLiteral("Records read, in percent"));
  auto* content = new QWidget(this);
  auto* layout = new QVBoxLayout(content);
  layout->addLayout(MakeChoices());
  layout->addWidget(progress_);
  layout->addWidget(caption_);
  layout->addWidget(plot_, 1);
  layout->addLayout(MakeButtons());
  auto* area = new QScrollArea(this);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidgetResizable(true);
  area->setWidget(content);
  setWidget(area);
  setFocusProxy(channel_);
  timer_.setInterval(kLook);
  connect(&timer_, &QTimer::timeout, this, &DecayDock::Look);
}

QLayout* DecayDock::MakeChoices() {
  quantity_->addItems({QStringLiteral("Amplitude"), QStringLiteral("Phase")});
  windows_->setPlaceholderText(QStringLiteral("by the stepping rule"));
  windows_->setToolTip(QStringLiteral("In ms after the current, such as 40-80,80-160"));
  log_x_->setChecked(true);
  auto* layout = new QFormLayout;
  const auto add = [layout](const char* text, const char* name, QWidget* field) {
    field->setObjectName(QLatin1String(name));
    layout->addRow(QLatin1String(text), field);
    field->setAccessibleName(QString(QLatin1String(text)).remove(QLatin1Char('&')));
  };
  add("Cha&nnel", "decay-channel", channel_);
  add("S&how", "decay-quantity", quantity_);
  add("Phase a&gainst", "decay-reference", reference_);
  add("&Windows (ms)", "decay-windows", windows_);
  log_x_->setObjectName(QStringLiteral("decay-log-x"));
  log_y_->setObjectName(QStringLiteral("decay-log-y"));
  auto* axes = new QHBoxLayout;
  axes->addWidget(log_x_);
  axes->addWidget(log_y_);
  axes->addStretch();
  layout->addRow(axes);
  for (QComboBox* box : {channel_, quantity_}) {
    connect(box, &QComboBox::currentIndexChanged, this, &DecayDock::ShowView);
  }
  connect(reference_, &QComboBox::currentIndexChanged, this, [this](int index) {
    view_.SetReference(static_cast<std::size_t>(std::max(index, 0)));
    Follow();
  });
  connect(windows_, &QLineEdit::editingFinished, this, &DecayDock::TakeWindows);
  for (QCheckBox* box : {log_x_, log_y_}) {
    connect(box, &QCheckBox::toggled, this, &DecayDock::ShowView);
  }
  return layout;
}

QLayout* DecayDock::MakeButtons() {
  auto* layout = new QHBoxLayout;
  const auto add = [this, layout](const char* text, const char* name, void (DecayDock::*act)()) {
    auto* button = new QPushButton(QLatin1String(text), this);
    button->setObjectName(QLatin1String(name));
    layout->addWidget(button);
    connect(button, &QPushButton::clicked, this, act);
    return button;
  };
  copy_ = add("Cop&y", "copy-decay", &DecayDock::Copy);
  save_ = add("Save &Picture...", "save-decay", &DecayDock::SavePicture);
  layout->addStretch();
  return layout;
}

void DecayDock::Follow() {
  if (!isVisible()) {
    return;
  }
  const Shown shown = shown_();
  if (shown.waveform == nullptr || !shown.waveform->IsOpen()) {
    view_.Leave();
    timer_.stop();
    ShowView();
  } else if (view_.Follow(*shown.waveform, *shown.left_out)) {
    timer_.start();
    ShowView();
  }
}

void DecayDock::showEvent(QShowEvent* event) {
  QDockWidget::showEvent(event);
  Follow();
}

void DecayDock::hideEvent(QHideEvent* event) {
  QDockWidget::hideEvent(event);
  view_.Leave();
  timer_.stop();
}

void DecayDock::Look() {
  if (view_.TakeResult()) {
    timer_.stop();
    TakeChannels();
    ShowView();
  } else if (view_.IsRunning()) {
    progress_->setValue(view_.Percent());
  } else {
    timer_.stop();
  }
}

// The same channel as before where there is one.
void DecayDock::TakeChannels() {
  QStringList labels;
  for (const std::string& label : view_.Channels()) {
    labels << TextFromBytes(label);
  }
  const QSignalBlocker of_channel(channel_);
  const QSignalBlocker of_reference(reference_);
  const auto before = static_cast<int>(labels.indexOf(channel_->currentText()));
  channel_->clear();
  channel_->addItems(labels);
  channel_->setCurrentIndex(before >= 0 ? before : static_cast<int>(view_.FirstChannel()));
  reference_->clear();
  reference_->addItem(QStringLiteral("None"));
  reference_->addItems(labels);
  reference_->setCurrentIndex(static_cast<int>(view_.Reference()));
}

void DecayDock::TakeWindows() {
  const Result<> set = view_.SetWindows(windows_->text().toStdString());
  fault_ = TextFromBytes(set.Message());
  if (!set) {
    emit told(fault_);
  }
  ShowView();
  Follow();
}

std::size_t DecayDock::Channel() const {
  return static_cast<std::size_t>(std::max(channel_->currentIndex(), 0));
}

StackPicture DecayDock::Picture() const {
  StackPicture picture;
  picture.has_log_x = log_x_->isChecked();
  picture.has_log_y = log_y_->isChecked();
  return picture;
}

void DecayDock::ShowView() {
  progress_->setVisible(view_.IsRunning());
  const bool is_phase = view_.HasPoints() && quantity_->currentIndex() == 1;
  quantity_->setEnabled(view_.HasPoints());
  reference_->setEnabled(view_.HasPoints());
  windows_->setEnabled(!view_.HasPoints());
  QString caption = view_.IsRunning() ? QStringLiteral("Reading the records ...")
                                      : TextFromBytes(view_.Caption(Channel()));
  if (is_phase && view_.Reference() == 0) {
    caption += QStringLiteral("; choose the channel that phases refer to");
  }
  caption_->setText(caption);
  if (!fault_.isEmpty()) {
    caption_->setText(fault_);
  }
  const DecayLines lines = view_.Lines(
      Channel(), is_phase ? DecayView::Quantity::kPhase : DecayView::Quantity::kAmplitude,
      Picture());
  plot_->setVisible(!lines.IsEmpty());
  for (QPushButton* button : {copy_, save_}) {
    button->setEnabled(!lines.IsEmpty());
  }
  plot_->Show(caption, lines, Picture());
}

void DecayDock::Copy() {
  QApplication::clipboard()->setText(TextFromBytes(view_.Text(Channel())));
  emit told(QStringLiteral("The stacked values were copied as text"));
}

void DecayDock::SavePicture() {
  AskAndSavePicture(
      plot_->size(), QStringLiteral("Decay"), this,
      [this](const QString& path, const QSize& size) { return plot_->Save(path, size); });
}

}  // namespace orvane

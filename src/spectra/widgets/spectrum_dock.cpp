// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/widgets/spectrum_dock.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QList>
#include <QScrollArea>
#include <QSettings>
#include <QSplitter>
#include <QVBoxLayout>

#include "ui/folder_dialog.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

const QString kCalibrations = QStringLiteral("Spectrum/Calibrations");
const QString kDensity = QStringLiteral("Spectrum/Density");
constexpr int kLook = 50;  // ms

QLabel* AddLabel(const char* name, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

SpectrumDock::SpectrumDock(Waveform waveform, LeftOut left_out, QWidget* parent)
    : QDockWidget(QStringLiteral("Spectrum"), parent),
      waveform_(std::move(waveform)),
      left_out_(std::move(left_out)),
      plot_(new SpectrumPlot(&view_, this)),
      channels_(new SpectrumChannels(&view_, this)),
      harmonics_(new HarmonicsList(this)),
      caption_(AddLabel("spectrum-caption", this)),
      reading_(AddLabel("spectrum-reading", this)),
      no_harmonics_(AddLabel("no-harmonics", this)),
      part_(new QComboBox(this)),
      quantity_(new QComboBox(this)),
      progress_(new QProgressBar(this)),
      cancel_(new QPushButton(QStringLiteral("Cancel"), this)) {
  setObjectName(QStringLiteral("spectrum-dock"));
  const QSettings settings;
  view_.SetDensity(settings.value(kDensity, true).toBool());
  view_.SetCalibrationFolder(PathFromText(settings.value(kCalibrations).toString()));
  MakeContent();
  setFocusProxy(plot_);
  timer_.setInterval(kLook);
  connect(&timer_, &QTimer::timeout, this, &SpectrumDock::Look);
  connect(plot_, &SpectrumPlot::cursorMoved, this, &SpectrumDock::ShowReadings);
  connect(plot_, &SpectrumPlot::pageWanted, this, &SpectrumDock::pageWanted);
  connect(channels_, &SpectrumChannels::ticked, plot_, &SpectrumPlot::ShowView);
  connect(channels_, &SpectrumChannels::moved, this, &SpectrumDock::ShowHarmonics);
}

void SpectrumDock::MakeContent() {
  auto* content = new QWidget(this);
  auto* layout = new QVBoxLayout(content);
  layout->addLayout(MakeChoices());
  layout->addLayout(MakeProgress());
  layout->addWidget(caption_);
  auto* tables = new QSplitter(content);
  tables->addWidget(channels_);
  auto* lower = new QWidget(tables);
  auto* of_lower = new QVBoxLayout(lower);
  of_lower->setContentsMargins(0, 0, 0, 0);
  of_lower->addWidget(harmonics_);
  of_lower->addWidget(no_harmonics_);
  tables->setSizes({200, 300});
  tables->setChildrenCollapsible(false);
  layout->addWidget(plot_, 3);
  layout->addWidget(reading_);
  layout->addWidget(tables, 2);
  layout->addLayout(MakeButtons());
  const QList<QWidget*> order = {part_, quantity_, cancel_, plot_, channels_, harmonics_};
  for (int i = 1; i < order.size(); ++i) {
    setTabOrder(order[i - 1], order[i]);
  }
  QWidget* before = harmonics_;
  for (const char* name : {"spectrum-calibrations", "spectrum-uncorrected", "copy-spectrum",
                           "copy-harmonics", "save-spectrum"}) {
    auto* button = content->findChild<QPushButton*>(QLatin1String(name));
    setTabOrder(before, button);
    before = button;
  }
  auto* area = new QScrollArea(this);
  area->setObjectName(QStringLiteral("spectrum-area"));
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidgetResizable(true);
  area->setWidget(content);
  setWidget(area);
}

QLayout* SpectrumDock::MakeChoices() {
  part_->addItems({QStringLiteral("Visible part"), QStringLiteral("Record"),
                   QStringLiteral("Whole file, averaged")});
  quantity_->addItems({QStringLiteral("Amplitude"), QStringLiteral("Power density")});
  quantity_->setCurrentIndex(view_.IsDensity() ? 1 : 0);
  auto* layout = new QHBoxLayout;
  const auto add = [this, layout](const char* text, const char* name, QComboBox* box) {
    auto* label = new QLabel(QLatin1String(text), this);
    label->setBuddy(box);
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(label->text().remove(QLatin1Char('&')));
    layout->addWidget(label);
    layout->addWidget(box);
  };
  add("Spectrum &of", "spectrum-part", part_);
  add("S&how", "spectrum-quantity", quantity_);
  layout->addStretch();
  connect(part_, &QComboBox::currentIndexChanged, this, &SpectrumDock::ChoosePart);
  connect(quantity_, &QComboBox::currentIndexChanged, this, [this](int index) {
    view_.SetDensity(index == 1);
    QSettings().setValue(kDensity, index == 1);
    ShowView();
  });
  return layout;
}

QLayout* SpectrumDock::MakeProgress() {
  progress_->setAccessibleName(QStringLiteral("Records averaged, in percent"));
  progress_->hide();
  cancel_->setObjectName(QStringLiteral("cancel-spectrum"));
  cancel_->setAutoDefault(true);  // Return presses it
  cancel_->setToolTip(QStringLiteral("Stop averaging and show the record"));
  cancel_->hide();
  connect(cancel_, &QPushButton::clicked, this, &SpectrumDock::Cancel);
  auto* layout = new QHBoxLayout;
  layout->addWidget(progress_, 1);
  layout->addWidget(cancel_);
  return layout;
}

QPushButton* SpectrumDock::AddButton(const char* text, const char* name, const char* tip,
                                     QLayout* layout) {
  auto* button = new QPushButton(QLatin1String(text), this);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(QLatin1String(tip));
  layout->addWidget(button);
  return button;
}

QLayout* SpectrumDock::MakeButtons() {
  auto* layout = new QHBoxLayout;
  connect(AddButton("Ca&librations...", "spectrum-calibrations",
                    "Correct by the calibrations in a folder", layout),
          &QPushButton::clicked, this, &SpectrumDock::AskForCalibrations);
  uncorrected_ = AddButton("&None", "spectrum-uncorrected", "Show without calibrations", layout);
  uncorrected_->setAccessibleName(QStringLiteral("No calibrations"));
  connect(uncorrected_, &QPushButton::clicked, this, [this] { SetCalibrations({}); });
  connect(AddButton("&Copy", "copy-spectrum", "Copy the channels drawn as text", layout),
          &QPushButton::clicked, this, &SpectrumDock::Copy);
  connect(AddButton("Copy &Table", "copy-harmonics", "Copy the table of harmonics as text", layout),
          &QPushButton::clicked, this, &SpectrumDock::CopyHarmonics);
  connect(AddButton("Save &Picture...", "save-spectrum", "Save as PNG, SVG or PDF", layout),
          &QPushButton::clicked, this, &SpectrumDock::SavePicture);
  return layout;
}

void SpectrumDock::Follow() {
  if (!isVisible()) {
    return;
  }
  const WaveformView* waveform = waveform_();
  const RecordNumbers* left_out = left_out_();
  view_.SetLeftOut(left_out == nullptr ? RecordNumbers() : *left_out);
  if (waveform == nullptr || !waveform->IsOpen()) {
    view_.Leave();
    timer_.stop();
  } else if (view_.Follow(*waveform)) {
    ShowView();
    timer_.start();
  }
}

void SpectrumDock::showEvent(QShowEvent* event) {
  QDockWidget::showEvent(event);
  Follow();
}

void SpectrumDock::hideEvent(QHideEvent* event) {
  QDockWidget::hideEvent(event);
  view_.Leave();
  timer_.stop();
}

void SpectrumDock::ChoosePart(int index) {
  view_.SetPart(static_cast<SpectrumView::Part>(index));
  Follow();
}

void SpectrumDock::Cancel() {
  part_->setCurrentIndex(static_cast<int>(SpectrumView::Part::kRecord));
  emit told(QStringLiteral("Averaging of the file was cancelled"));
}

void SpectrumDock::Look() {
  const WaveformView* waveform = waveform_();
  if (waveform == nullptr || !view_.IsRunning()) {
    timer_.stop();
  } else if (view_.TakeResult(*waveform)) {
    timer_.stop();
    ShowView();
    Follow();  // the file may have grown meanwhile
  } else {
    progress_->setValue(view_.Percent());
  }
}

void SpectrumDock::ShowView() {
  const bool had_focus = cancel_->hasFocus();
  progress_->setVisible(view_.IsRunning());
  cancel_->setVisible(view_.IsRunning());
  if (had_focus && !view_.IsRunning()) {
    plot_->setFocus();
  }
  caption_->setText(QString::fromStdString(view_.Caption()));
  uncorrected_->setEnabled(!view_.CalibrationFolder().empty());
  plot_->ShowView();
  ShowReadings();
  ShowHarmonics();
}

void SpectrumDock::ShowReadings() {
  const std::string at = view_.CursorText();
  reading_->setText(at.empty() ? QStringLiteral("No cursor: Left and Right set and move one")
                               : QStringLiteral("Cursor at ") + QString::fromStdString(at));
  channels_->ShowView();
  plot_->ShowCursor();
  if (!at.empty() && plot_->hasFocus()) {
    emit told(reading_->text());
  }
}

void SpectrumDock::ShowHarmonics() {
  harmonics_->ShowChannel(view_, channels_->Current());
  no_harmonics_->setVisible(harmonics_->rowCount() == 0);
  no_harmonics_->setText(QString::fromStdString(view_.WhyNoHarmonics()));
}

void SpectrumDock::SetCalibrations(const QString& folder) {
  QSettings().setValue(kCalibrations, folder);
  view_.SetCalibrationFolder(PathFromText(folder));
  Follow();
}

void SpectrumDock::AskForCalibrations() {
  const QString chosen =
      CFolderDialog::AskForFolder(this, QStringLiteral("Folder of the calibration files"),
                                  TextFromPath(view_.CalibrationFolder()));
  if (!chosen.isEmpty()) {
    SetCalibrations(chosen);
  }
}

void SpectrumDock::Copy() {
  QApplication::clipboard()->setText(QString::fromStdString(view_.Text()));
  emit told(QStringLiteral("The spectrum was copied as text"));
}

void SpectrumDock::CopyHarmonics() {
  const std::string table = view_.HarmonicsText(channels_->Current());
  if (!table.empty()) {
    QApplication::clipboard()->setText(QString::fromStdString(table));
  }
  emit told(table.empty() ? QString::fromStdString(view_.WhyNoHarmonics())
                          : QStringLiteral("The table of harmonics was copied as text"));
}

void SpectrumDock::SavePicture() {
  AskAndSavePicture(
      plot_->size(), QStringLiteral("Spectrum"), this,
      [this](const QString& path, const QSize& size) { return plot_->Save(path, size); });
}

}  // namespace orvane

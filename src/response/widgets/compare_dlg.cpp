// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/widgets/compare_dlg.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "ui/list_item.h"
#include "ui/plot_theme.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

const QString kAmplitude = QStringLiteral("Calibration/Tolerance of amplitudes");
const QString kPhase = QStringLiteral("Calibration/Tolerance of phases");
constexpr double kPercent = 100;
constexpr int kModelColumn = 7;
constexpr int kVerdictColumn = 10;
constexpr std::array<const char*, kVerdictColumn + 1> kTitles = {
    "Channel", "Pass",     "Setting", "Measured, %",    "at Hz",  "Measured, degrees",
    "at Hz",   "Model, %", "at Hz",   "Model, degrees", "Verdict"};

QString Number(double value, int digits) {
  return QString::fromStdString(FormatReal(value, digits));
}

QStringList CellsOf(const CalDeviation& row) {
  constexpr int kDigits = 3;
  constexpr int kFrequencyDigits = 6;
  QStringList cells = {Number(static_cast<double>(row.channel + 1), kDigits),
                       QString::number(row.sweep + 1), QString::fromStdString(row.setting)};
  cells << Number(kPercent * row.measured.amplitude, kDigits)
        << Number(row.measured.amplitude_at, kFrequencyDigits)
        << Number(row.measured.phase, kDigits) << Number(row.measured.phase_at, kFrequencyDigits);
  if (row.model) {
    cells << Number(kPercent * row.model->amplitude, kDigits)
          << Number(row.model->amplitude_at, kFrequencyDigits) << Number(row.model->phase, kDigits);
  }
  while (cells.size() < kVerdictColumn) {
    cells << QString();
  }
  return cells;
}

}  // namespace

CalTolerance KeptTolerance() {
  const QSettings settings;
  CalTolerance tolerance;
  const auto kept = [&settings](const QString& key, double usual) {
    const double value = settings.value(key, usual).toDouble();
    return value > 0 ? value : usual;
  };
  tolerance.amplitude = kept(kAmplitude, tolerance.amplitude);
  tolerance.phase = kept(kPhase, tolerance.phase);
  return tolerance;
}

CCompareDlg::CCompareDlg(CalComparison comparison, QWidget* parent)
    : QDialog(parent), comparison_(std::move(comparison)) {
  setWindowTitle(QStringLiteral("Compare Calibrations"));
  const CalTolerance kept = KeptTolerance();
  auto* allowed = new QHBoxLayout;
  amplitude_ = AddSpin("&Amplitudes within", "tolerance-amplitude", " %", kPercent * kept.amplitude,
                       allowed);
  phase_ = AddSpin("&Phases within", "tolerance-phase", " degrees", kept.phase, allowed);
  allowed->addStretch(1);
  verdict_ = new QLabel(this);
  table_ = new QTableWidget(this);
  table_->setTabKeyNavigation(false);
  verdict_->setObjectName(QStringLiteral("verdict"));
  verdict_->setWordWrap(true);
  table_->setObjectName(QStringLiteral("deviations"));
  table_->setAccessibleName(QStringLiteral("Worst deviations by channel and setting"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setTabKeyNavigation(false);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  Fill();
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* copy = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
  connect(copy, &QPushButton::clicked, this, &CCompareDlg::Copy);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(allowed);
  layout->addWidget(verdict_);
  layout->addWidget(table_, 1);
  layout->addWidget(buttons);
  Judge();
  ResizeWithinScreen(this, QSize(table_->horizontalHeader()->length() + 60, 480));
}

QDoubleSpinBox* CCompareDlg::AddSpin(const char* label, const char* name, const char* unit,
                                     double value, QLayout* layout) {
  constexpr double kMost = 100;
  constexpr int kDecimals = 3;
  auto* spin = new QDoubleSpinBox(this);
  spin->setObjectName(QString::fromLatin1(name));
  spin->setDecimals(kDecimals);
  spin->setRange(1e-3, kMost);
  spin->setSingleStep(0.1);
  spin->setSuffix(QString::fromLatin1(unit));
  spin->setValue(value);
  connect(spin, &QDoubleSpinBox::valueChanged, this, &CCompareDlg::Judge);
  auto* caption = new QLabel(QString::fromLatin1(label), this);
  caption->setBuddy(spin);
  layout->addWidget(caption);
  layout->addWidget(spin);
  return spin;
}

void CCompareDlg::Fill() {
  table_->setColumnCount(static_cast<int>(kTitles.size()));
  QStringList titles;
  for (const char* title : kTitles) {
    titles << QString::fromLatin1(title);
  }
  table_->setHorizontalHeaderLabels(titles);
  table_->setRowCount(static_cast<int>(comparison_.rows.size()));
  for (int row = 0; row < table_->rowCount(); ++row) {
    QStringList cells = CellsOf(comparison_.rows[static_cast<std::size_t>(row)]);
    cells << QStringLiteral("beyond");  // the wider of both words, for the column's width
    for (int column = 0; column < cells.size(); ++column) {
      auto* item = OnlyShown(new QTableWidgetItem(cells[column]));
      const bool is_text = column == 2 || column == kVerdictColumn;
      item->setTextAlignment((is_text ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
      table_->setItem(row, column, item);
    }
  }
  table_->resizeColumnsToContents();
  const bool has_model = std::any_of(comparison_.rows.begin(), comparison_.rows.end(),
                                     [](const CalDeviation& row) { return row.model.has_value(); });
  for (int column = kModelColumn; column < kVerdictColumn; ++column) {
    table_->setColumnHidden(column, !has_model);  // a sensor's
  }
}

// The tolerance may be another.
void CCompareDlg::Judge() {
  QSettings settings;
  settings.setValue(kAmplitude, amplitude_->value() / kPercent);
  settings.setValue(kPhase, phase_->value());
  const CalTolerance tolerance = KeptTolerance();
  int beyond = 0;
  for (int row = 0; row < table_->rowCount(); ++row) {
    const bool is_within = IsWithin(comparison_.rows[static_cast<std::size_t>(row)], tolerance);
    beyond += is_within ? 0 : 1;
    QTableWidgetItem* item = table_->item(row, kVerdictColumn);
    item->setText(is_within ? QStringLiteral("within") : QStringLiteral("beyond"));
    item->setForeground(is_within ? palette().color(QPalette::Text) : WarningColor(palette()));
  }
  QString text =
      beyond == 0
          ? QStringLiteral("All are within the tolerance: nothing has drifted.")
          : QStringLiteral("%1 of %2 beyond the tolerance.").arg(beyond).arg(table_->rowCount());
  if (!comparison_.note.empty()) {
    text += QLatin1Char(' ') + QString::fromStdString(comparison_.note);
  }
  verdict_->setText(text);
  emit toleranceChanged();
}

void CCompareDlg::Copy() {
  QString text;
  for (int column = 0; column < table_->columnCount(); ++column) {
    text += (column == 0 ? QString() : QStringLiteral("\t")) +
            table_->horizontalHeaderItem(column)->text();
  }
  for (int row = 0; row < table_->rowCount(); ++row) {
    for (int column = 0; column < table_->columnCount(); ++column) {
      text += QLatin1Char(column == 0 ? '\n' : '\t') + table_->item(row, column)->text();
    }
  }
  QApplication::clipboard()->setText(text + QLatin1Char('\n'));
}

}  // namespace orvane

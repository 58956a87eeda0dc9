// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/widgets/spectrum_tables.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "ui/list_item.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr int kDigits = 5;
constexpr int kFewDigits = 3;  // of noise

QString Number(double value, int digits = kDigits) {
  return QString::fromStdString(FormatReal(value, digits));
}
QString NumberOr(const std::optional<double>& value) {
  return value ? Number(*value, kFewDigits) : QString();
}

void SetUp(QTableWidget* table, const QString& name) {
  table->setAccessibleName(name);
  table->verticalHeader()->hide();
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setTabKeyNavigation(false);
  table->horizontalHeader()->setMinimumSectionSize(20);
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  table->horizontalHeader()->setResizeContentsPrecision(16);
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
  table->setMinimumHeight(80);
}

// What is there already stays: a step changes numbers only.
void SetCell(QTableWidget* table, int row, int column, const QString& text) {
  QTableWidgetItem* item = table->item(row, column);
  if (item == nullptr) {
    item = OnlyShown(new QTableWidgetItem);
    item->setTextAlignment((column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    table->setItem(row, column, item);
  }
  if (item->text() != text) {
    item->setText(text);
  }
}

}  // namespace

SpectrumChannels::SpectrumChannels(SpectrumView* view, QWidget* parent)
    : QTableWidget(0, 2, parent), view_(view) {
  setObjectName(QStringLiteral("spectrum-channels"));
  SetUp(this, QStringLiteral("Channels drawn"));
  setToolTip(QStringLiteral("Ticked channels are drawn; the harmonics are of the current one"));
  setHorizontalHeaderLabels({QStringLiteral("Channel"), QStringLiteral("At the cursor")});
  horizontalHeader()->setStretchLastSection(true);
  connect(this, &QTableWidget::itemChanged, this, &SpectrumChannels::Tick);
  connect(this, &QTableWidget::currentCellChanged, this, [this](int row, int, int before, int) {
    if (row != before) {
      emit moved();
    }
  });
}

std::size_t SpectrumChannels::Current() const {
  return static_cast<std::size_t>(std::max(currentRow(), 0));
}

void SpectrumChannels::Tick(const QTableWidgetItem* item) {
  if (item->column() == 0) {
    view_->SetDrawn(static_cast<std::size_t>(item->row()), item->checkState() == Qt::Checked);
    emit ticked();
  }
}

void SpectrumChannels::ShowView() {
  const QSignalBlocker blocker(this);
  const Spectrum& spectrum = view_->Shown();
  const auto bin = view_->CursorBin();
  setRowCount(static_cast<int>(spectrum.channels.size()));
  for (int row = 0; row < rowCount(); ++row) {
    const auto channel = static_cast<std::size_t>(row);
    const SpectrumChannel& of = spectrum.channels[channel];
    SetCell(this, row, 0, QString::fromStdString(of.name));
    QTableWidgetItem* name = item(row, 0);
    name->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    name->setCheckState(view_->IsDrawn(channel) ? Qt::Checked : Qt::Unchecked);
    const QColor color = TraceColor(row, palette());
    if (name->data(Qt::DecorationRole).value<QColor>() != color) {
      name->setData(Qt::DecorationRole, color);
    }
    const QString unit = QString::fromStdString(of.unit.empty() ? "counts" : of.unit) +
                         (view_->IsDensity() ? QStringLiteral("/√Hz") : QString());
    SetCell(this, row, 1,
            bin ? Number(view_->Value(channel, *bin)) + QLatin1Char(' ') + unit : QString());
  }
  if (currentRow() < 0 && rowCount() > 0) {
    setCurrentCell(0, 0);
  }
}

HarmonicsList::HarmonicsList(QWidget* parent) : QTableWidget(0, 5, parent) {
  setObjectName(QStringLiteral("spectrum-harmonics"));
  SetUp(this, QStringLiteral("Harmonics"));
  horizontalHeader()->setStretchLastSection(true);
}

void HarmonicsList::ShowChannel(const SpectrumView& view, std::size_t channel) {
  const std::vector<HarmonicRow> rows = view.Harmonics(channel);
  setRowCount(static_cast<int>(rows.size()));
  setVisible(!rows.empty());
  if (rows.empty()) {
    return;
  }
  const SpectrumChannel& of = view.Shown().channels[channel];
  const QString unit = QString::fromStdString(of.unit.empty() ? "counts" : of.unit);
  setAccessibleName(QStringLiteral("Harmonics of ") + QString::fromStdString(of.name));
  setHorizontalHeaderLabels({QStringLiteral("No."), QStringLiteral("Hz"), unit,
                             QStringLiteral("Noise\n%1/√Hz").arg(unit), QStringLiteral("S/N\ndB")});
  for (int row = 0; row < rowCount(); ++row) {
    const HarmonicRow& shown = rows[static_cast<std::size_t>(row)];
    const std::array<QString, 5> texts = {QString::number(shown.number), Number(shown.frequency),
                                          Number(shown.amplitude), NumberOr(shown.floor),
                                          NumberOr(shown.signal_to_noise)};
    for (int column = 0; column < columnCount(); ++column) {
      SetCell(this, row, column, texts[static_cast<std::size_t>(column)]);
    }
  }
}

}  // namespace orvane

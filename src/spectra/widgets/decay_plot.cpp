// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/widgets/decay_plot.h"

#include <qcustomplot.h>

#include "ui/byte_text.h"
#include "ui/plot_theme.h"

namespace orvane {

DecayPlot::DecayPlot(QWidget* parent) : MarksPlot(QStringLiteral("decay"), parent) {}

void DecayPlot::Show(const QString& title, DecayLines lines, const StackPicture& picture) {
  title_ = title;
  lines_ = std::move(lines);
  picture_ = picture;
  Draw();
}

void DecayPlot::Draw() {
  Clear();
  const QColor color = TraceColor(0, palette());
  AddCurves(lines_.records, color);
  if (!lines_.repeats.IsEmpty()) {
    QColor pale = color;
    pale.setAlphaF(0.5F);
    AddMarks(lines_.repeats, pale, QStringLiteral("Records"), false);
  }
  if (!lines_.outliers.IsEmpty()) {
    AddMarks(lines_.outliers, WarningColor(palette()), QStringLiteral("Outliers"), false);
  }
  if (!lines_.stacked.IsEmpty()) {
    AddMarks(lines_.stacked, color, QStringLiteral("Median and spread"), true);
  }
  const QString title =
      has_title_ ? QString(title_).replace(QStringLiteral("; "), QStringLiteral(";\n")) : QString();
  SetTexts(title, TextFromBytes(lines_.x_text), TextFromBytes(lines_.y_text));
  Name(QStringLiteral("Decay: ") + title_);
  SetRanges(picture_, false);
  FollowTheme();
  Plot()->replot(QCustomPlot::rpQueuedReplot);
}

Result<> DecayPlot::Save(const QString& path, const QSize& size) const {
  DecayPlot picture(nullptr);
  picture.title_ = title_;
  picture.has_title_ = true;
  picture.lines_ = lines_;
  picture.picture_ = picture_;
  return SaveCopy(&picture, path, size);
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/field_sheet_print.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextDocument>
#include <algorithm>

#include "editors/widgets/map_painter.h"
#include "ui/byte_text.h"
#include "ui/printer_choice.h"
#include "ui/themes.h"

namespace orvane {
namespace {

constexpr double kPointsPerInch = 72;
constexpr int kFontSize = 9;
constexpr double kBlankHeight = 54;  // of the lines for the pen, points
constexpr double kMostMap = 300;     // height, points

QString Escaped(const std::string& text) { return TextFromBytes(text).toHtmlEscaped(); }

QString LinesHtml(const FieldSheet& sheet) {
  QString html = QStringLiteral("<table width='100%' cellpadding='1'>");
  const auto cell = [&sheet](std::size_t at) {
    return at >= sheet.lines.size()
               ? QStringLiteral("<td></td><td></td>")
               : QStringLiteral("<td><b>%1</b>&nbsp;</td><td>%2&nbsp;&nbsp;&nbsp;</td>")
                     .arg(Escaped(sheet.lines[at].label), Escaped(sheet.lines[at].value));
  };
  const std::size_t half = (sheet.lines.size() + 1) / 2;
  for (std::size_t i = 0; i < half; ++i) {
    html += QStringLiteral("<tr>%1%2</tr>").arg(cell(i), cell(half + i));
  }
  return html + QStringLiteral("</table>");
}

QString ChannelsHtml(const FieldSheet& sheet) {
  QString html = QStringLiteral(
      "<table width='100%' border='1' cellspacing='0' cellpadding='3' "
      "style='border-style: solid; border-collapse: collapse'><tr>");
  for (const std::string_view column : kSheetColumns) {
    html += QStringLiteral("<th>%1</th>").arg(Escaped(std::string(column)));
  }
  html += QStringLiteral("</tr>");
  for (const auto& channel : sheet.channels) {
    html += QStringLiteral("<tr>");
    for (const std::string& text : channel) {
      html += QStringLiteral("<td>%1&nbsp;</td>").arg(Escaped(text));
    }
    html += QStringLiteral("</tr>");
  }
  return html + QStringLiteral("</table>");
}

// "Name ________", two beside each other.
void PaintBlanks(const QRectF& rect, QPainter* painter) {
  const double width = rect.width() / 2;
  int at = 0;
  for (const char* text :
       {"Place on the ground, remarks", "Voltages checked at (time)", "Date", "Signature"}) {
    const QPointF start = rect.topLeft() + QPointF((at % 2) * width, (at / 2 + 1) * 24);
    const QString label = QString::fromLatin1(text);
    painter->drawText(start, label);
    const double gap = QFontMetricsF(painter->font()).horizontalAdvance(label) + 6;
    painter->drawLine(start + QPointF(gap, 2), start + QPointF(width - 12, 2));
    ++at;
  }
}

}  // namespace

void PaintFieldSheet(const FieldSheet& sheet, const SpreadMap& map, const QSizeF& size,
                     QPainter* painter) {
  QFont font = QApplication::font();
  font.setPixelSize(kFontSize);
  QTextDocument document;
  document.setDocumentMargin(0);
  document.setDefaultFont(font);
  document.setHtml(QStringLiteral("<h2>%1</h2>%2<p></p>%3")
                       .arg(Escaped(sheet.title), LinesHtml(sheet), ChannelsHtml(sheet)));
  document.setTextWidth(size.width());
  painter->save();
  painter->setPen(Qt::black);
  painter->setFont(font);
  document.drawContents(painter);
  const double top = document.size().height() + kFontSize;
  const double height = std::min(size.height() - top - kBlankHeight, kMostMap);
  if (height > kFontSize * 8) {
    painter->save();
    painter->translate(0, top);
    MapLook look;
    PaintMap(painter, QSizeF(size.width(), height), map, look, ThemePalette(Theme::kSunlight),
             font);
    painter->restore();
  }
  PaintBlanks(QRectF(0, size.height() - kBlankHeight, size.width(), kBlankHeight), painter);
  painter->restore();
}

bool PrintFieldSheets(const ParamTable& table, const Clock& now, const ScheduleFile* steps,
                      QPrinter* printer) {
  QPainter painter;
  if (!painter.begin(printer)) {
    return false;
  }
  const SpreadMap map = MapOf(table);
  const double scale = printer->resolution() / kPointsPerInch;
  const QSizeF size = printer->pageRect(QPrinter::DevicePixel).size() / scale;
  painter.scale(scale, scale);
  bool is_first = true;
  for (const FieldSheet& sheet : FieldSheetsOf(table, now, steps)) {
    if (!is_first && !printer->newPage()) {
      return false;
    }
    is_first = false;
    PaintFieldSheet(sheet, map, size, &painter);
  }
  return painter.end();
}

void AskAndPrintFieldSheets(const ParamTable& table, const ScheduleFile* steps, QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
  printer.setDocName(QStringLiteral("Field sheet"));
  if (AskForPrinter(&printer, QStringLiteral("Print Field Sheet"), 0, parent) &&
      !PrintFieldSheets(table, UtcClock(), steps, &printer)) {
    QMessageBox::warning(parent, QStringLiteral("Orvane"),
                         QStringLiteral("The field sheet could not be printed"));
  }
}

}  // namespace orvane

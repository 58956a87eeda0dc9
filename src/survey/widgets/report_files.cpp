// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/report_files.h"

#include <QBuffer>
#include <QMessageBox>
#include <QPageLayout>
#include <QPdfWriter>
#include <QPixmap>
#include <QRegularExpression>
#include <QTextDocument>
#include <span>

#include "files/file_io.h"
#include "survey/widgets/coverage_view.h"
#include "ui/file_dialogs.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr const char* kFilters = "Report (*.html)|*.html|Report for printing (*.pdf)|*.pdf||";

constexpr int kPictureWidth = 900;  // of the paper's, in pixels of the text's layout

// Dark on light, whatever the desktop's theme.
QPalette PaperPalette() {
  QPalette paper(Qt::white);
  paper.setColor(QPalette::Text, Qt::black);
  paper.setColor(QPalette::WindowText, Qt::black);
  paper.setColor(QPalette::Window, Qt::white);
  return paper;
}

QImage CoverageImage(SurveyRows rows) {
  constexpr QSize kSize(kPictureWidth, 260);
  constexpr int kScale = 2;
  CoverageView view(nullptr);
  view.setPalette(PaperPalette());
  view.SetCoverage(CoverageOf(rows));
  view.resize(QSize(kSize.width(), std::min(kSize.height(), view.sizeHint().height())));
  QImage image(view.size() * kScale, QImage::Format_RGB32);
  image.setDevicePixelRatio(kScale);
  view.render(&image);
  return image;
}

// The page's text and tables; the picture is drawn anew, as the text's own layout knows no SVG.
QByteArray PdfOf(const SurveyReport& report) {
  QString page = QString::fromStdString(SurveyReportPage(report));
  static const QRegularExpression svg(QStringLiteral("<svg.*?</svg>"),
                                      QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression style(QStringLiteral("<style>.*?</style>"),
                                        QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression trace(QStringLiteral("<br><svg class=\"trace\".*?</svg>"),
                                        QRegularExpression::DotMatchesEverythingOption);
  page.remove(style);
  page.remove(trace);
  page.replace(svg, QStringLiteral("<img src=\"coverage\" width=\"%1\">").arg(kPictureWidth));
  const QPalette paper = PaperPalette();
  for (const auto& [key, color] :
       {std::pair("done", TraceColor(0, paper)), std::pair("bad", WarningColor(paper)),
        std::pair("plan", GridColor(paper))}) {
    page.replace(QStringLiteral("<span class=\"key %1\"></span>").arg(QLatin1String(key)),
                 QStringLiteral(" &nbsp; <span style=\"background-color:%1\">&nbsp; &nbsp;</span> ")
                     .arg(color.name()));
  }
  page.replace(QStringLiteral("<table>"), QStringLiteral("<table width=\"100%\">"));
  // Long names would leave the first column no room, and the last row of a page only a title.
  page.replace(QStringLiteral("<th>Recording</th>"),
               QStringLiteral("<th width=\"115\">Recording</th>"));
  for (const char* title : {"Recordings", "Checksums"}) {
    page.replace(
        QStringLiteral("<h2>%1").arg(QLatin1String(title)),
        QStringLiteral("<h2 style=\"page-break-before:always\">%1").arg(QLatin1String(title)));
  }
  QTextDocument document;
  document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("coverage")),
                       CoverageImage(report.rows));
  document.setDefaultStyleSheet(
      QStringLiteral("th,td{padding:2px 4px;font-size:6pt}th{text-align:left}"
                     "td.t,td.n{white-space:nowrap}h1{font-size:16pt}h2{font-size:12pt}"));
  document.setDefaultFont(QFont(QStringLiteral("Liberation Sans"), 9));
  document.setHtml(page);
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setPageSize(QPageSize(QPageSize::A4));
  writer.setPageOrientation(QPageLayout::Landscape);
  writer.setTitle(QStringLiteral("Survey ") + QString::fromStdString(report.name));
  document.print(&writer);
  return buffer.data();
}

}  // namespace

Result<> SaveReport(const SurveyReport& report, const QString& path) {
  const bool is_pdf = path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive);
  const QByteArray bytes =
      is_pdf ? PdfOf(report) : QByteArray::fromStdString(SurveyReportPage(report));
  return WriteFile(
      PathFromText(path),
      std::as_bytes(std::span(bytes.constData(), static_cast<std::size_t>(bytes.size()))));
}

void AskAndSaveReport(const SurveyReport& report, QWidget* parent) {
  CFileDialog dialog(QStringLiteral("Save Report"), kFilters, {}, parent);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("html"));
  dialog.selectFile(QStringLiteral("survey.html"));
  QObject::connect(
      &dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.contains(QStringLiteral("pdf")) ? QStringLiteral("pdf")
                                                                       : QStringLiteral("html"));
      });
  if (!dialog.ExecRemembering(QStringLiteral("Folders/Survey reports"))) {
    return;
  }
  if (const Result<> saved = SaveReport(report, dialog.Chosen()); !saved) {
    QMessageBox::warning(parent, QStringLiteral("Orvane"), QString::fromStdString(saved.Message()));
  }
}

}  // namespace orvane

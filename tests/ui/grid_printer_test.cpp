// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/grid_printer.h"

#include <QPaintEngine>
#include <QPrintEngine>

#include "support/gui.h"
#include "support/qt_warnings.h"

namespace orvane {
namespace {

// Keeps the texts of each page and how far they reach; its measures are those of the PDF printer.
class Paper : public QPrinter, private QPrintEngine, private QPaintEngine {
 public:
  Paper() : QPaintEngine(AllFeatures) {
    pdf_.setOutputFormat(PdfFormat);
    pdf_.setPageSize(QPageSize(QPageSize::A6));
    setEngines(this, this);
  }
  std::vector<QStringList> pages{1};
  QPointF reach;

 private:
  void setProperty(PrintEnginePropertyKey, const QVariant&) override {}
  QVariant property(PrintEnginePropertyKey key) const override {
    return pdf_.printEngine()->property(key);
  }
  bool newPage() override { return pages.emplace_back(), true; }
  bool abort() override { return false; }
  int metric(QPaintDevice::PaintDeviceMetric id) const override {
    return pdf_.printEngine()->metric(id);
  }
  PrinterState printerState() const override { return Active; }
  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  void updateState(const QPaintEngineState&) override {}
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
  void drawPath(const QPainterPath&) override {}
  Type type() const override { return User; }
  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    pages.back() << item.text();
    reach.rx() = std::max(reach.x(), at.x() + item.width());
    reach.ry() = std::max(reach.y(), at.y() + item.descent());
  }

  QPrinter pdf_;
};

TEST(GridPrinter, PagesHoldHeaderFootAndVisibleRows) {
  CGridCtrl grid;
  std::vector<std::vector<QString>> rows = {{"H", "I"}};
  for (int row = 1; row <= 200; ++row) {
    rows.push_back({QString::number(row), "x"});
  }
  grid.SetTexts(rows);
  grid.SetFixedRowCount(1);
  grid.SetRowVisible(7, false);
  grid.SetPrintTitle("title");
  for (const int width : {50, 900}) {  // narrower and wider than the page
    SCOPED_TRACE(width);
    grid.SetColumnWidth(0, width);
    Paper paper;
    const int count = grid.PageCount(paper);
    ASSERT_TRUE(grid.Print(&paper));
    ASSERT_EQ(static_cast<int>(paper.pages.size()), count);
    EXPECT_GT(count, 1);
    QStringList printed;
    for (int page = 1; page <= count; ++page) {
      QStringList texts = paper.pages[static_cast<std::size_t>(page - 1)];
      EXPECT_EQ(texts.mid(0, 4).join('|'), QString("Page %1 of %2|title|H|I").arg(page).arg(count));
      printed << texts.mid(4);
    }
    printed.removeAll("x");
    EXPECT_EQ(printed.size(), 199);
    EXPECT_EQ(printed.value(5) + printed.value(6) + printed.value(198), "68200");
    const QSizeF page = paper.pageRect(QPrinter::DevicePixel).size();
    EXPECT_LE(paper.reach.x(), page.width());
    EXPECT_LE(paper.reach.y(), page.height());
  }
}

TEST(GridPrinter, WritesPdfAndTellsFailures) {
  const testing::TempDir dir;
  CGridCtrl grid;
  for (const auto& [name, is_done] : {std::pair{"x.pdf", true}, {"none/x.pdf", false}}) {
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString((dir / name).string()));
    const testing::ExpectedQtWarning none("QPainter::begin(): Returned false");
    EXPECT_EQ(grid.Print(&printer), is_done) << name;
  }
  EXPECT_EQ(testing::ReadAll(dir / "x.pdf").substr(0, 4), "%PDF");
}

}  // namespace
}  // namespace orvane

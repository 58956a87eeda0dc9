// SPDX-License-Identifier: GPL-3.0-or-later
// The map of the spread and the timeline, where they are shown.

#include "app/qt_prompts.h"
#include "editors/widgets/acq_param_dlg.h"
#include "editors/widgets/field_sheet_print.h"
#include "editors/widgets/map_dock.h"
#include "editors/widgets/site_dlg.h"
#include "support/frame_test.h"
#include "support/gui.h"
#include "support/qt_warnings.h"
#include "support/table_help.h"
#include "ui/grid_ctrl.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

TEST(SpreadMapView, GoesWithTheGridsAndTheFields) {
  ParamTable table = testing::NewTable();
  testing::SetAll(&table,
                  "TECH=1 ARRYTYP=1 SNUM=7 NCHN=2 CHDEF1=Ex1 CHDEF2=Ex2 SN01=8 NCHN1R=1 DEF1R1=Ex3 "
                  "RXLEN=50 TXLEN=100 ERXPOS=450 ETXCSRX=350");
  QtPrompts prompts;
  SiteForm form(&table, kSip, TransmitterModels());
  static_cast<void>(form.Open());
  CSiteDlg dialog(&form, &table, &prompts, nullptr);
  dialog.findChild<QPushButton*>(QStringLiteral("show-map"))->setChecked(true);
  dialog.show();
  auto* map = dialog.findChild<SpreadMapView*>();
  auto* boxes = dialog.findChild<CGridCtrl*>(QString::number(SpreadPanel::kBoxes));
  auto* channels = dialog.findChild<CGridCtrl*>(QString::number(SpreadPanel::kChannels));
  EXPECT_EQ(map->Current(), -1);
  EXPECT_EQ(map->accessibleDescription(),
            "2 stations. Transmitter 0: no positions of Tx. Local Box 7: no positions of Ex1, Ex2. "
            "Aux. Box 8: no positions of Ex3");
  dialog.findChild<QPushButton*>(QString::number(CSiteDlg::kCalcCoord))->click();
  const auto told = [map] { return map->accessibleDescription().section(QLatin1Char('.'), 0, 0); };
  EXPECT_EQ(told(),
            "Ex1, Local Box 7: from 450 E, 0 N to 500 E, 0 N (m), length 50 m, azimuth 90 "
            "degrees");
  QTest::keyClick(map, Qt::Key_Right);
  EXPECT_EQ(channels->GetFocusCell().first, 2);
  QTest::keyClick(map, Qt::Key_Right);
  EXPECT_EQ(boxes->GetFocusCell().first, 3);
  EXPECT_TRUE(told().startsWith("Ex3, Aux")) << told().toStdString();
  QTest::keyClick(map, Qt::Key_Home);
  EXPECT_EQ(boxes->GetFocusCell().first, 1);
  boxes->SetFocusCell(2, kBoxSerial);
  channels->SetFocusCell(2, 1);
  EXPECT_TRUE(told().startsWith("Ex2")) << told().toStdString();
  channels->SetFocusCell(2, kNegativeEast + 1);
  dialog.SetMarker([](const ParamTable& edited, const Spread&) {
    return std::vector<MapMark>{{1, 1, "is " + testing::Get(edited, "ENEG2")}};
  });
  channels->PasteText(QStringLiteral("560"));
  EXPECT_TRUE(map->accessibleDescription().contains("; is 560")) << "as OK would store it";
  EXPECT_TRUE(told().contains("to 560 E, 0 N (m), length 60 m")) << told().toStdString();
  auto* station = dialog.findChild<QLineEdit*>(QString::number(SiteForm::kRxEast));
  station->clear();
  QTest::keyClicks(station, QStringLiteral("900"));
  EXPECT_EQ(PlaceText(map->Map().items[4].points[0]), "900 E, 0 N");
  EXPECT_EQ(testing::Get(table, "EPOS1"), "0") << "only OK stores it";
}

TEST(SpreadMapView, ShowsMarksAndTellsWhatIsUnderThePointer) {
  ParamTable table = testing::NewTable();
  testing::SetAll(&table, "TECH=2 ARRYTYP=1 SNUM=7 NCHN=1 CHDEF1=Ex1 ENEG1=100 NNEG1=100 ERXPOS=1");
  SpreadMapView view(nullptr);
  view.resize(400, 400);
  view.SetMap(MapOf(table));
  const auto has_warning = [&view, warning = WarningColor(view.palette()).rgb()] {
    const QImage image = view.grab().toImage();
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixel(x, y) == warning) {
          return true;
        }
      }
    }
    return false;
  };
  EXPECT_FALSE(has_warning());
  view.SetMarked({{0, -1, "no transmitter"}});
  EXPECT_FALSE(has_warning()) << "of another box";
  view.SetMarked({{1, -1, "too long"}, {1, 0, "twice"}});
  EXPECT_TRUE(has_warning());
  view.Choose(1, 0);
  EXPECT_TRUE(view.accessibleDescription().contains("azimuth 45 degrees; too long; twice. "));
  const QRectF area = MapArea(view.size(), view.font(), view.Map());
  EXPECT_EQ(view.TextAt(area.center()),
            "Ex1, Local Box 7: from 0 E, 0 N to 100 E, 100 N (m), length 141.421 m, azimuth 45 "
            "degrees\ntoo long; twice");
  const QString beside = view.TextAt(area.center() - QPointF(0, 60));
  EXPECT_TRUE(beside.startsWith("50.0 E, 7")) << beside.toStdString();
  QTest::keyClick(&view, Qt::Key_Plus);
  EXPECT_TRUE(view.TextAt(area.center()).startsWith("Ex1")) << "around what is chosen";
  QTest::keyClick(&view, Qt::Key_0);
  EXPECT_EQ(view.TextAt(area.center() - QPointF(0, 60)), beside);
}

TEST(FieldSheet, PrintsAPageForEachBox) {
  ParamTable table = testing::NewTable();
  testing::SetAll(&table, "TECH=1 SNUM=7 SNTX=3 SN01=8 NCHN=1 CHDEF1=Ex1 EPOS1=450");
  const testing::TempDir folder;
  QPrinter printer;
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(TextFromPath(folder / "sheets.pdf"));
  EXPECT_TRUE(PrintFieldSheets(table, UtcClock(), nullptr, &printer));
  EXPECT_NE(testing::ReadAll(folder / "sheets.pdf").find("/Count 3"), std::string::npos);
  printer.setOutputFileName(TextFromPath(folder / "none" / "sheets.pdf"));
  const testing::ExpectedQtWarning none("QPainter::begin(): Returned false");
  EXPECT_FALSE(PrintFieldSheets(table, UtcClock(), nullptr, &printer));
}

using testing::FrameTest;

TEST_F(FrameTest, TheMapFollowsTheTableAndIsSaved) {
  auto* dock = frame_.findChild<MapDock*>();
  frame_.show();
  testing::SetAll(&doc_.Table(), "TECH=5 EAZM=0 EXLN=100 EYLN=60");
  doc_.UpdateAllViews();
  EXPECT_TRUE(dock->View()->Map().items.empty()) << "nobody sees it";
  frame_.Command(kViewMap)->trigger();
  EXPECT_TRUE(dock->isVisible());
  EXPECT_EQ(LengthOf(dock->View()->Map().items[0]), 100);
  testing::Set(&doc_.Table(), "EXLN", "80");
  doc_.UpdateAllViews();
  EXPECT_EQ(LengthOf(dock->View()->Map().items[0]), 80);
  for (const auto& [name, magic] : {std::pair("map.png", "\x89PNG"), std::pair("map.svg", "<?xml"),
                                    std::pair("map.pdf", "%PDF")}) {
    EXPECT_TRUE(dock->View()->SavePicture(TextFromPath(dir_ / name), QSize(600, 400)));
    EXPECT_EQ(testing::ReadAll(dir_ / name).substr(0, std::string(magic).size()), magic);
  }
  EXPECT_FALSE(dock->View()->SavePicture(TextFromPath(dir_ / "map.txt"), QSize(600, 400)));
  testing::SetAll(&doc_.Table(), "TECH=1 SNUM=7 NCHN=1 CHDEF1=Ex1 FLAG1=1 EPOS1=50 ENEG1=50");
  doc_.UpdateAllViews();
  dock->View()->Choose(1, 0);
  EXPECT_TRUE(dock->View()->accessibleDescription().contains("at one place: channel 1"))
      << dock->View()->accessibleDescription().toStdString();
  frame_.Command(kViewMap)->trigger();
  EXPECT_FALSE(dock->isVisible());
}

TEST(TimelineBar, FollowsWhatIsTyped) {
  ParamTable table = testing::NewTable();
  testing::SetAll(&table,
                  "TECH=5 MTSR=1 HSMP=600 TMZONE=1 TMDIFF=1 STIM=2026/11/24_17:00:00 "
                  "ETIM=2026/11/24_18:00:00");
  const UtcClock now;
  AcqForm form(&table, &now);
  form.Open();
  QtPrompts prompts;
  CAcqParamDlg dialog(&form, &prompts);
  dialog.show();
  auto* bar = dialog.findChild<TimelineBar*>();
  const QString start =
      QStringLiteral("Timeline: Recording from 2026/11/24 18:00:00 to 2026/11/24 ");
  EXPECT_TRUE(bar->accessibleName().startsWith(start + "19:00:00 (UTC+1), 1 h; high rates"))
      << bar->accessibleName().toStdString();
  auto* end = dialog.findChild<QLineEdit*>(QString::number(acq::kEnd));
  end->setText(QString());
  QTest::keyClicks(end, QStringLiteral("2026/11/24 20:00:00"));
  EXPECT_TRUE(bar->accessibleName().startsWith(start + "20:00:00 (UTC+1), 2 h"))
      << bar->accessibleName().toStdString();
  EXPECT_EQ(bar->TextAt(QPointF(bar->width() - 8, bar->fontMetrics().lineSpacing() * 1.5)),
            "High rates: slot of 600 s, 2026/11/24 19:50:00 to 2026/11/24 20:00:00");
}

}  // namespace
}  // namespace orvane

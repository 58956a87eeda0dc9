// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/widgets/calibration_display.h"

#include <qcustomplot.h>

#include "support/cal_bytes.h"
#include "support/frame_test.h"
#include "support/sweeps.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class CalibrationDisplayTest : public testing::FrameTest {
 protected:
  CalibrationDisplayTest() {
    std::string bytes = CalHeaderBytes(1, 3);
    for (int i = 0; i < 5; ++i) {
      bytes +=
          CalRecordBytes(1, std::pow(10.F, static_cast<float>(i)), i + 1, {0, 0, 0, 0, 1, 0}, 3);
    }
    WriteAll(dir_ / "box.clb", bytes);
    WriteAll(dir_ / "bad.clb", "short");
    frame_.show();
    frame_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&frame_));
  }
  QString Path(const char* name) { return TextFromPath(dir_ / name); }
  CCalibrationDisplay* Shown() { return qobject_cast<CCalibrationDisplay*>(frame_.Display()); }
  // Does something to the window that comes up next.
  void WhenModal(const std::function<void(QWidget*)>& act) {
    auto* timer = new QTimer(&frame_);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
      if (QWidget* window = QApplication::activeModalWidget(); window != nullptr) {
        timer->deleteLater();
        timer->stop();
        act(window);
      }
    });
    timer->start(5);
  }
};

TEST_F(CalibrationDisplayTest, StepsBySelectionKeysAndToolBarAndGoesWithEscape) {
  const bool was_modified = doc_.IsModified();
  ASSERT_TRUE(frame_.Displays().OpenCalibration(Path("box.clb")));
  auto* list = Shown()->findChild<QListWidget*>(QStringLiteral("channels"));
  frame_.Command(kScrollForward)->trigger();
  EXPECT_TRUE(frame_.windowTitle().startsWith(QStringLiteral("box.clb Channel: 2 - ")));
  EXPECT_EQ(list->selectedItems().value(0)->text(), QStringLiteral("Channel 2"));
  QTest::keyClick(list, Qt::Key_PageDown);
  EXPECT_EQ(Shown()->Title(), QStringLiteral("box.clb Channel: 3"));
  QTest::keyClick(list, Qt::Key_Up);
  EXPECT_EQ(Shown()->Title(), QStringLiteral("box.clb Channel: 2"));
  QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Shown()->Title(), QStringLiteral("box.clb Channels: 1, 2, 3"));
  QTest::keyClick(list, Qt::Key_Right);
  EXPECT_EQ(Shown()->View().Cursor(), 1);
  EXPECT_EQ(Shown()->findChild<QTableWidget*>(QStringLiteral("readings"))->rowCount(), 3);
  QTest::keyClick(list, Qt::Key_Escape);
  EXPECT_FALSE(Shown()->View().Cursor());
  QTest::keyClick(list, Qt::Key_Escape);
  EXPECT_EQ(frame_.Display(), nullptr);
  EXPECT_EQ(doc_.IsModified(), was_modified);
  EXPECT_EQ(doc_.Path(), QString());
}

TEST_F(CalibrationDisplayTest, RangesStayForTheNextFileAndCancelChangesNothing) {
  ASSERT_TRUE(frame_.Displays().OpenCalibration(Path("box.clb")));
  const auto edit = [this](bool is_ok) {
    WhenModal([is_ok](QWidget* window) {
      auto* line = window->findChild<QLineEdit*>(QStringLiteral("1001"));
      line->clear();
      QTest::keyClicks(line, is_ok ? QStringLiteral("25.5") : QStringLiteral("7"));
      auto* dialog = qobject_cast<QDialog*>(window);
      is_ok ? dialog->accept() : dialog->reject();
    });
    frame_.Command(kCalibrationSettings)->trigger();
  };
  edit(true);
  EXPECT_EQ(Shown()->View().Display().max_amplitude, 25.5);
  edit(false);
  ASSERT_TRUE(frame_.Displays().OpenCalibration(Path("box.clb")));
  EXPECT_EQ(Shown()->View().Display().max_amplitude, 25.5);
}

TEST_F(CalibrationDisplayTest, AFileThatFailsLeavesNoCurves) {
  ASSERT_TRUE(frame_.Displays().OpenCalibration(Path("box.clb")));
  for (const auto& [name, expected] :
       {std::pair{"bad.clb", QStringLiteral("Orvane: Failed to read calbration header!")},
        {"none.clb", QStringLiteral("File Open Error: Failed to open file ") + Path("none.clb") +
                         QLatin1Char('!')}}) {
    QString said;
    WhenModal([&said](QWidget* window) {
      said =
          window->windowTitle() + QStringLiteral(": ") + qobject_cast<QMessageBox*>(window)->text();
      window->close();
    });
    EXPECT_FALSE(frame_.Displays().OpenCalibration(Path(name)));
    EXPECT_EQ(said, expected);
  }
  EXPECT_EQ(frame_.Display(), nullptr);
}

TEST_F(CalibrationDisplayTest, TheModelIsShownAndDoubtIsTold) {
  ASSERT_TRUE(frame_.Displays().OpenCalibration(Path("box.clb")));
  auto* model = Shown()->findChild<QAction*>(QStringLiteral("model"));
  EXPECT_FALSE(model->isEnabled()) << "one pass";
  EXPECT_TRUE(model->toolTip().contains(QStringLiteral("passes")))
      << model->toolTip().toStdString();
  EXPECT_TRUE(Shown()->findChild<QLabel*>(QStringLiteral("warning"))->isHidden());
  Sweeps sweeps;
  sweeps.parts = NominalParameters(0);
  WriteAll(dir_ / "model.clb", BoxBytes(sweeps, 2, 1));
  ASSERT_TRUE(frame_.Displays().OpenCalibration(Path("model.clb")));
  auto* list = Shown()->findChild<QListWidget*>(QStringLiteral("channels"));
  auto* plot = Shown()->findChild<CalibrationPlot*>()->Plot();
  const int graphs = plot->graphCount();
  QTest::keyClick(list, Qt::Key_M, Qt::ControlModifier);
  EXPECT_EQ(plot->graphCount(), graphs + 3 * 2 * 12 + 3)
      << "for each pass, above and below, a line and both sides of its band; rows of the legend";
  QTest::keyClick(list, Qt::Key_Right);  // the cursor
  auto* readings = Shown()->findChild<QTableWidget*>(QStringLiteral("readings"));
  QStringList known;
  for (int row = 0; row < readings->rowCount(); ++row) {
    known << readings->item(row, 5)->text();
  }
  EXPECT_TRUE(std::any_of(known.begin(), known.end(), [](const QString& percent) {
    return percent.toDouble() > 0 && percent.toDouble() < 1;
  })) << known.join(QLatin1Char('|')).toStdString();
  const QString warning = Shown()->findChild<QLabel*>(QStringLiteral("warning"))->text();
  EXPECT_TRUE(warning.startsWith(QStringLiteral("Warning - Channel 2: "))) << warning.toStdString();
  QString told;
  WhenModal([&told](QWidget* window) {
    told = window->findChild<QTableWidget*>(QStringLiteral("fit"))->item(0, 0)->text();
    window->close();
  });
  QTest::keyClick(list, Qt::Key_I, Qt::ControlModifier);
  EXPECT_EQ(told, QStringLiteral("fitted"));
}

TEST_F(CalibrationDisplayTest, ComparesWithAToleranceOfTheUsers) {
  Sweeps sweeps;
  sweeps.parts = NominalParameters(0);
  WriteAll(dir_ / "new.clb", BoxBytes(sweeps, 2, 2));
  sweeps.parts[0] += 0.05;  // every gain
  WriteAll(dir_ / "old.clb", BoxBytes(sweeps, 2, 2));
  ASSERT_TRUE(frame_.Displays().OpenCalibration(Path("new.clb")));
  auto* compare = Shown()->findChild<QAction*>(QStringLiteral("compare"));
  EXPECT_FALSE(compare->isEnabled()) << "no reference";
  ASSERT_TRUE(Shown()->OpenReference(Path("old.clb")));
  QStringList verdicts;
  QStringList cells;
  for (const char* percent : {"4", "6"}) {
    WhenModal([&](QWidget* window) {
      auto* amplitude = window->findChild<QDoubleSpinBox*>(QStringLiteral("tolerance-amplitude"));
      amplitude->selectAll();
      QTest::keyClicks(amplitude, QString::fromLatin1(percent));
      QTest::keyClick(amplitude, Qt::Key_Tab);
      verdicts << window->findChild<QLabel*>(QStringLiteral("verdict"))->text();
      const auto* table = window->findChild<QTableWidget*>(QStringLiteral("deviations"));
      cells.clear();
      for (int row = 0; row < table->rowCount(); ++row) {
        cells << table->item(row, 3)->text() + QLatin1Char(' ') + table->item(row, 10)->text();
      }
      window->close();
    });
    compare->trigger();
  }
  ASSERT_EQ(verdicts.size(), 2);
  EXPECT_TRUE(verdicts[0].contains(QStringLiteral("beyond"))) << verdicts[0].toStdString();
  EXPECT_TRUE(verdicts[1].startsWith(QStringLiteral("All are within")))
      << verdicts[1].toStdString();
  EXPECT_TRUE(cells.contains(QStringLiteral("-4.76 within")))
      << "1 / 1.05 - 1: " << cells.join(QLatin1Char('|')).toStdString();
}

TEST_F(CalibrationDisplayTest, AClickBesideTheAxesLeavesTheCursor) {
  ASSERT_TRUE(frame_.Displays().OpenCalibration(Path("box.clb")));
  auto* plot = Shown()->findChild<CalibrationPlot*>()->Plot();
  plot->replot();
  const auto axes = plot->axisRects();
  QTest::mouseClick(plot, Qt::LeftButton, {}, QPoint(2, axes.value(0)->rect().center().y()));
  EXPECT_FALSE(Shown()->View().Cursor());
  QTest::mouseClick(plot, Qt::LeftButton, {}, axes.value(1)->rect().center());
  EXPECT_TRUE(Shown()->View().Cursor());
}

TEST_F(CalibrationDisplayTest, ARatioIsDrawnAndSaved) {
  ASSERT_TRUE(frame_.Displays().OpenCalibration(Path("box.clb")));
  ASSERT_TRUE(Shown()->OpenReference(Path("box.clb")));
  EXPECT_EQ(Shown()->View().Traces().size(), 2U);
  Shown()->findChild<QAction*>(QStringLiteral("ratio"))->trigger();
  EXPECT_EQ(Shown()->View().Traces().front().curve.amplitude, (std::vector<double>(5, 100)));
  auto* plot = Shown()->findChild<CalibrationPlot*>();
  for (const auto& [name, start] :
       {std::pair("a.png", "\x89PNG"), std::pair("a.svg", "<?xml"), std::pair("a.pdf", "%PDF")}) {
    EXPECT_EQ(plot->Save(Path(name), QSize(600, 400)).Message(), "");
    EXPECT_TRUE(ReadAll(dir_ / name).starts_with(start)) << name;
  }
  Shown()->findChild<QAction*>(QStringLiteral("no-reference"))->trigger();
  EXPECT_FALSE(Shown()->View().ShowsRatio());
}

}  // namespace
}  // namespace orvane

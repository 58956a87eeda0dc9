// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/widgets/spectrum_dock.h"

#include <qcustomplot.h>

#include <QApplication>
#include <QClipboard>
#include <cmath>
#include <numbers>

#include "support/frame_test.h"
#include "support/tbl_bytes.h"
#include "support/ts_bytes.h"
#include "timeseries/widgets/waveform_display.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// 2400 scans at 1200 a second of a transmitter of 4 Hz. Its fifth harmonic, 20 Hz, is on a bin;
// the second channel has nothing.
std::string SineRecord(double amplitude) {
  TsBytes record{.frequency = 4, .channels = 2, .rate = 1200, .unit = 0};
  for (int n = 0; n < 2400; ++n) {
    const double turn = 2 * std::numbers::pi * 20 * n / 1200;
    record.samples.push_back(static_cast<int>(std::lround(amplitude * std::sin(turn))));
    record.samples.push_back(0);
  }
  return record.Bytes();
}

class SpectrumDockTest : public testing::FrameTest {
 protected:
  void SetUp() override {
    WriteAll(dir_ / "A.TSS", SineRecord(50000) + SineRecord(20000));
    WriteAll(dir_ / "A.TBL", HeaderV2() + Padded(Padded("FSCV", 16) + RealBytes(0), 32));
    doc_.OnNewDocument();
    frame_.resize(1180, 690);
    frame_.show();
    Open(&frame_);
    dock_ = frame_.findChild<SpectrumDock*>();
    frame_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame_));
    ASSERT_TRUE(frame_.Command(kViewSpectrum)->isEnabled());
  }
  void Open(CMainFrame* frame) {
    frame->OpenAny(TextFromPath(dir_ / "A.TSS"));
    ASSERT_TRUE(QTest::qWaitFor([frame] { return !frame->Displays().IsReading(); }, 30000));
  }
  template <typename Widget = QLabel>
  Widget* Find(const char* name) {
    return dock_->findChild<Widget*>(QLatin1String(name));
  }
  QString Cell(const char* table, int row, int column) {
    return Find<QTableWidget>(table)->item(row, column)->text();
  }
  void Key(QWidget* widget, int key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(widget, static_cast<Qt::Key>(key), with);
  }

  SpectrumDock* dock_ = nullptr;
};

TEST_F(SpectrumDockTest, NamesASineByKeyboardAlone) {
  EXPECT_FALSE(dock_->isVisible());
  Key(&frame_, Qt::Key_F9);
  ASSERT_TRUE(dock_->isVisible());
  SpectrumPlot* plot = dock_->Plot();
  Key(Find<QComboBox>("spectrum-quantity"), Qt::Key_Home);  // amplitude
  Key(plot, Qt::Key_Right);                                 // the fundamental
  EXPECT_EQ(Find("spectrum-reading")->text(), "Cursor at 4 Hz, harmonic 1");
  Key(plot, Qt::Key_Right, Qt::ControlModifier);
  Key(plot, Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(Find("spectrum-reading")->text(), "Cursor at 20 Hz, harmonic 5");
  EXPECT_EQ(Cell("spectrum-channels", 0, 1), "50000 counts");
  EXPECT_EQ(Cell("spectrum-channels", 1, 1), "0 counts");
  EXPECT_TRUE(plot->accessibleDescription().contains("Ch 1: greatest 50000 counts at 20 Hz."))
      << plot->accessibleDescription().toStdString();
  EXPECT_TRUE(plot->accessibleDescription().contains("Ch 2: nothing but zero."));
  EXPECT_EQ(Cell("spectrum-harmonics", 2, 1) + " " + Cell("spectrum-harmonics", 2, 2), "20 50000");
  Key(plot, Qt::Key_Left);
  EXPECT_EQ(Find("spectrum-reading")->text(), "Cursor at 19.5 Hz");
  Key(plot, Qt::Key_Right);
  Key(plot, Qt::Key_PageDown);  // the next record
  EXPECT_EQ(Cell("spectrum-channels", 0, 1), "20000 counts");
  EXPECT_TRUE(Find("spectrum-caption")->text().startsWith("Record 2, 2400 scans, bins of 0.5 Hz"));
  // Another part: half of the record, and a channel less.
  Key(plot, Qt::Key_Escape);
  ASSERT_TRUE(frame_.Display()->hasFocus());
  QTest::keyClicks(frame_.Display(), "+");
  EXPECT_TRUE(Find("spectrum-caption")->text().startsWith("Part of record 2, 1600 scans"))
      << Find("spectrum-caption")->text().toStdString();
  Key(Find<QTableWidget>("spectrum-channels"), Qt::Key_Space);
  EXPECT_FALSE(dock_->View().IsDrawn(0));
  EXPECT_EQ(dock_->View().Curves(100).size(), 1U);
  QTest::mouseClick(Find<QPushButton>("copy-spectrum"), Qt::LeftButton);
  EXPECT_TRUE(
      QApplication::clipboard()->text().startsWith("frequency (Hz)\tCh 2 (counts)\n0\t0\n"));
  frame_.ShowTable();
  EXPECT_FALSE(dock_->isVisible()) << "no waveform";
  Open(&frame_);
  EXPECT_TRUE(dock_->isVisible()) << "wanted before";
}

TEST_F(SpectrumDockTest, ComesBackAtTheNextStart) {
  for (const bool is_wanted : {true, false}) {
    auto frame = std::make_unique<CMainFrame>(&doc_, &prompts_, &notices_);
    frame->show();
    Open(frame.get());
    EXPECT_NE(frame->findChild<SpectrumDock*>()->isVisible(), is_wanted);
    frame->Command(kViewSpectrum)->trigger();
    frame.reset();
  }
}

// Mean squares: sqrt((50000^2 + 20000^2) / 2) = 38078.9.
TEST_F(SpectrumDockTest, AveragesTheFileAndSaysWhatIsLeftOut) {
  Key(&frame_, Qt::Key_F9);
  auto* part = Find<QComboBox>("spectrum-part");
  const auto average = [&] {
    Key(part, Qt::Key_Home);
    Key(part, Qt::Key_End);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !dock_->View().IsRunning(); }, 30000));
  };
  dock_->View().SetDensity(false);
  average();
  dock_->View().SetCursor(20);
  Key(Find<QTableWidget>("spectrum-channels"), Qt::Key_Down);
  EXPECT_TRUE(
      Find("spectrum-caption")->text().startsWith("Average of 2 records, 2 segments of 2400"))
      << Find("spectrum-caption")->text().toStdString();
  EXPECT_NEAR(dock_->View().Value(0, 40), 38078.9, 0.1);
  // A tick in the list of records, kept or not, averages again.
  qobject_cast<CWaveformDisplay*>(frame_.Display())->Book()->SetLeftOut(1, true);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !dock_->View().IsRunning(); }, 30000));
  EXPECT_TRUE(Find("spectrum-caption")->text().contains("1 record left out"))
      << Find("spectrum-caption")->text().toStdString();
  EXPECT_NEAR(dock_->View().Value(0, 40), 20000, 0.1);
  // Without the box's calibration it says so; a cancelled file gives the record again.
  dock_->SetCalibrations(TextFromPath(dir_.Path()));
  EXPECT_TRUE(Find("spectrum-caption")->text().contains("not corrected: "))
      << Find("spectrum-caption")->text().toStdString();
  Key(part, Qt::Key_Home);
  part->setCurrentIndex(2);
  QTest::mouseClick(Find<QPushButton>("cancel-spectrum"), Qt::LeftButton);
  EXPECT_FALSE(dock_->View().IsRunning());
  EXPECT_TRUE(Find("spectrum-caption")->text().startsWith("Record 1"));
  EXPECT_TRUE(dock_->Plot()->Save(TextFromPath(dir_ / "s.png"), QSize(600, 400)));
  EXPECT_EQ(ReadAll(dir_ / "s.png").substr(0, 4), "\x89PNG");
}

}  // namespace
}  // namespace orvane

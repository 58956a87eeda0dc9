// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/widgets/decay_dock.h"

#include <qcustomplot.h>

#include <QClipboard>

#include "base/number_text.h"
#include "spectra/decay_listing.h"
#include "support/decay_bytes.h"
#include "support/frame_test.h"
#include "timeseries/widgets/waveform_display.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class DecayDockTest : public testing::FrameTest {
 protected:
  void Open(const std::string& table, const std::string& records) {
    WriteAll(dir_ / "A.TBL", table);
    WriteAll(dir_ / "A.TSS", records);
    doc_.OnNewDocument();
    frame_.resize(1180, 690);
    frame_.show();
    frame_.OpenAny(TextFromPath(dir_ / "A.TSS"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !frame_.Displays().IsReading(); }, 30000));
    dock_ = frame_.findChild<DecayDock*>();
    if (!dock_->isVisible()) {
      frame_.Command(kViewDecay)->trigger();
    }
    ASSERT_TRUE(dock_->isVisible());
    Wait();
  }
  void Wait() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !dock_->View().IsRunning(); }, 30000));
  }
  template <typename Widget>
  Widget* Find(const char* name) {
    return dock_->findChild<Widget*>(QLatin1String(name));
  }
  QString Caption() { return Find<QLabel>("decay-caption")->text(); }
  RecordBook* Book() { return qobject_cast<CWaveformDisplay*>(frame_.Display())->Book(); }

  DecayDock* dock_ = nullptr;
};

// Five records of one decay; the last one is of another voltage and share.
std::string FiveRecords() {
  std::string records;
  for (unsigned i = 1; i <= 5; ++i) {
    DecayBytes record{.volts = {0.02, 0.005}, .share = i == 5 ? 0.2 : 0.05};
    record.starts_at = 0.125 * i;
    record.noise = 1e-6;
    records += record.Bytes(i);
  }
  return records;
}

TEST_F(DecayDockTest, HasThePlantedChargeabilityAndTheToolsNumbers) {
  Open(DecayBytes::Table(), FiveRecords());
  EXPECT_TRUE(Caption().startsWith("Stack of 5 records; 8 windows by the stepping rule, "))
      << Caption().toStdString();
  EXPECT_GE(dock_->Plot()->Shown().outliers.x.size(), 8U) << "a window each of the fifth";
  Book()->SetLeftOut(5, true);
  auto* windows = Find<QLineEdit>("decay-windows");
  windows->setText(QStringLiteral("20-10"));
  QTest::keyClick(windows, Qt::Key_Return);
  EXPECT_FALSE(Caption().startsWith("Stack")) << "refused, and said";
  windows->setText(QStringLiteral("20-60,60-140,140-300,300-500"));
  QTest::keyClick(windows, Qt::Key_Return);
  Wait();
  const QString begin = QStringLiteral(
      "Stack of 4 records; 4 windows as chosen, 20 to 500 ms; "
      "chargeability over them ");
  ASSERT_TRUE(Caption().startsWith(begin)) << Caption().toStdString();
  EXPECT_TRUE(Caption().endsWith("; 1 record left out")) << Caption().toStdString();
  const double chargeability =
      Caption().mid(begin.size()).section(QLatin1Char(' '), 0, 0).toDouble();
  EXPECT_NEAR(chargeability / (1000 * DecayBytes().Mean(1, 0.02, 0.5)), 1, 0.005);

  // The tool's rows of the stack, by its own reader of the file.
  DecayListingOptions options;
  options.windows = *DecayWindowsOf("20-60,60-140,140-300,300-500");
  options.leave_out = *LeaveOutChoiceOf("5");
  std::string listed;
  ListingWork work;
  work.put = [&listed](std::string_view piece) { listed += piece; };
  ASSERT_TRUE(DecayListing(options)(dir_ / "A.TSS", work));
  const DecayLines& shown = dock_->Plot()->Shown();
  ASSERT_EQ(shown.stacked.y.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) {
    const std::string value = FormatReal(shown.stacked.y[i], 7);
    EXPECT_NE(listed.find("all\tEx1 (mV)\t" + std::to_string(i + 1)), std::string::npos);
    EXPECT_NE(listed.find("\t" + value + "\t" + FormatReal(shown.stacked.spread[i], 7) + "\t\n"),
              std::string::npos)
        << value;
  }
  EXPECT_NE(listed.find("\t" + FormatReal(chargeability, 4).substr(0, 4)), std::string::npos);
  QTest::mouseClick(Find<QPushButton>("copy-decay"), Qt::LeftButton);
  EXPECT_TRUE(QApplication::clipboard()->text().startsWith(
      "Time after the current (ms)\tEx1 (mV)\tspread\n40\t"));
  QTest::keyClick(Find<QComboBox>("decay-channel"), Qt::Key_Down);
  Find<QCheckBox>("decay-log-y")->click();
  EXPECT_EQ(dock_->Plot()->Shown().y_text, "|Ex2 (mV)|");
  frame_.ShowTable();
  EXPECT_FALSE(dock_->isVisible());
}

// Of SIP amplitudes, and phases against a channel; without what is needed, the reason.
TEST_F(DecayDockTest, HasAmplitudesAndPhasesOrSaysWhyNot) {
  std::string records;
  for (const double volts : {0.02, 0.021, 0.02}) {
    records += DecayBytes{.volts = {volts, -0.01}, .share = 0}.Bytes();
  }
  Open(DecayBytes::Table(1), records);
  EXPECT_TRUE(Caption().startsWith("Amplitude and phase of 1 frequency, 3 records"))
      << Caption().toStdString();
  // A square wave of a half period's on-time: 4 / pi sin(pi / 4) of its height.
  EXPECT_NEAR(dock_->Plot()->Shown().stacked.y.at(0), 20 * 0.900316, 0.02);
  EXPECT_EQ(dock_->Plot()->Shown().repeats.x.size(), 3U);
  QTest::keyClick(Find<QComboBox>("decay-quantity"), Qt::Key_End);
  EXPECT_TRUE(Caption().endsWith("choose the channel that phases refer to"));
  EXPECT_TRUE(dock_->Plot()->Shown().IsEmpty());
  QTest::keyClick(Find<QComboBox>("decay-reference"), Qt::Key_End);
  Wait();
  EXPECT_NEAR(std::abs(dock_->Plot()->Shown().stacked.y.at(0)), 180, 1e-6);
  EXPECT_EQ(dock_->Plot()->Shown().y_text, "Phase (degrees) of Ex1 against Ex2");
  QTest::mouseClick(Find<QPushButton>("copy-decay"), Qt::LeftButton);
  const QStringList cells = QApplication::clipboard()->text().section('\n', 1, 1).split('\t');
  ASSERT_EQ(cells.size(), 5) << "frequency, amplitude, phase, each with its spread";
  EXPECT_NEAR(cells[1].toDouble(), 20 * 0.900316, 0.02);
  EXPECT_NEAR(std::abs(cells[3].toDouble()), 180, 1e-6);

  auto* display = qobject_cast<CWaveformDisplay*>(frame_.Display());
  display->View().SetGains(1, {2, 1}, true);
  display->ShowView();
  Wait();
  EXPECT_TRUE(Caption().endsWith("; gains as entered"));
  QTest::keyClick(Find<QComboBox>("decay-quantity"), Qt::Key_Home);
  EXPECT_NEAR(dock_->Plot()->Shown().stacked.y.at(0), 10 * 0.900316, 0.01);

  Open(DecayBytes::Table(5), records);
  EXPECT_EQ(Caption(), "The method (TECH) has no transmitter, or is not known");
  EXPECT_TRUE(dock_->Plot()->Shown().IsEmpty());
}

}  // namespace
}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include <set>

#include "support/frame_test.h"
#include "support/tbl_bytes.h"
#include "timeseries/widgets/record_dock.h"
#include "timeseries/widgets/waveform_display.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

constexpr int kRecords = 300;
constexpr int kScans = 50;
constexpr int kSpike = 40;
constexpr int kSaturated = 120;
constexpr int kBad = 200;
constexpr int kDead = 260;

std::string Header(int number) {
  std::string header(252, '\0');
  header.replace(10, 2, Little(kScans, 2));
  header[12] = 2;
  header[14] = static_cast<char>(number == kBad ? 6 : 0);
  header[17] = 3;
  header.replace(18, 2, Little(100, 2));
  header.replace(36, 8, RealBytes(number <= 150 ? 4 : 8));
  return header;
}

// Two channels that go up and down by 200 counts, but for one fault in each of four records.
std::string Record(int number) {
  std::string record = Header(number);
  for (int scan = 0; scan < kScans; ++scan) {
    int first = scan % 2 == 0 ? 100 : -100;
    int second = first;
    first = number == kSpike && scan == 7 ? 900 : first;
    second = number == kSaturated && scan > 30 ? 8388607 : second;
    second = number == kDead ? 3 : second;
    record += Little(static_cast<std::uint32_t>(first), 3);
    record += Little(static_cast<std::uint32_t>(second), 3);
  }
  return record;
}

class Records : public testing::FrameTest {
 protected:
  void SetUp() override {
    std::string bytes;
    for (int number = 1; number <= kRecords; ++number) {
      bytes += Record(number);
    }
    WriteAll(dir_ / "A.TSS", bytes);
    WriteAll(dir_ / "A.TBL", HeaderV2() + Padded(Padded("FSCV", 16) + RealBytes(0), 32));
    doc_.OnNewDocument();
    frame_.resize(1300, 700);
    frame_.show();
    Open();
  }
  void Open() {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [] {
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        QTest::keyClick(box, Qt::Key_Return);  // that there is a bad record
      }
    });
    timer.start(5);
    frame_.OpenAny(TextFromPath(dir_ / "A.TSS"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !frame_.Displays().IsReading(); }, 30000));
    ASSERT_TRUE(QTest::qWaitFor([this] { return Display()->Book()->IsDone(); }, 30000));
    frame_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame_));
  }
  CWaveformDisplay* Display() { return qobject_cast<CWaveformDisplay*>(frame_.Display()); }
  RecordStrip* Strip() { return Display()->findChild<RecordStrip*>(); }
  std::uint64_t Shown() { return Display()->View().Number(); }

  // The records whose columns of the picture look like no ordinary one, by tens.
  std::set<int> Remarkable(int width) {
    RecordStrip strip(Display()->Book(), nullptr);
    strip.resize(width, strip.sizeHint().height());
    const QImage picture = strip.grab().toImage();
    const auto column = [&](int x) { return picture.copy(x, 0, 1, picture.height()); };
    const auto x_of = [&](int number) { return 3 + (width - 6) * (number - 1) / kRecords; };
    const std::array<QImage, 2> ordinary = {column(x_of(80)), column(x_of(230))};
    std::set<int> found;
    for (int x = 3; x < width - 3; ++x) {
      if (column(x) != ordinary[0] && column(x) != ordinary[1]) {
        found.insert((x - 3) * kRecords / (width - 6) / 10 * 10);
      }
    }
    return found;
  }
};

TEST_F(Records, EachFaultIsSeenInTheStripAtEveryWidth) {
  for (const int width : {906, 306, 131}) {
    std::set<int> found = Remarkable(width);
    for (const int fault : {kSpike, kSaturated, kBad, kDead}) {
      EXPECT_TRUE(found.count((fault - 1) / 10 * 10) + found.count(fault / 10 * 10) > 0)
          << fault << " at " << width;
    }
    for (const int plain : {10, 80, 180, 220, 280}) {
      EXPECT_EQ(found.count(plain), 0U) << plain << " at " << width;
    }
  }
  EXPECT_GT(Remarkable(906).count(140) + Remarkable(906).count(150), 0U) << "the frequency's step";
}

TEST_F(Records, TheStripGoesToRecordsByKeysMouseAndValue) {
  RecordStrip* strip = Strip();
  QTest::keyClick(strip, Qt::Key_Right);
  EXPECT_EQ(Shown(), 2U);
  QTest::keyClick(strip, Qt::Key_End);
  EXPECT_EQ(Shown(), 300U);
  QTest::keyClick(strip, Qt::Key_Home);
  EXPECT_EQ(Shown(), 1U);
  const double pixels = strip->width() - 6;
  QTest::mouseClick(strip, Qt::LeftButton, {}, {3 + static_cast<int>(pixels * 199.5 / 300), 20});
  EXPECT_EQ(Shown(), 200U);
  EXPECT_EQ(strip->accessibleDescription(), QStringLiteral("Record 200 of 300, bad"));
  auto* spoken = QAccessible::queryAccessibleInterface(strip);
  ASSERT_NE(spoken->valueInterface(), nullptr);
  spoken->valueInterface()->setCurrentValue(120);
  EXPECT_EQ(Shown(), 120U);
  EXPECT_EQ(spoken->text(QAccessible::Description), QStringLiteral("Record 120 of 300, saturated"));
}

TEST_F(Records, TheListSortsFaultsToItsTopAndGoesThere) {
  QAction* command = frame_.Command(kViewRecords);
  EXPECT_TRUE(command->isEnabled());
  command->trigger();
  auto* dock = frame_.findChild<RecordDock*>();
  ASSERT_TRUE(dock->isVisible());
  CListView* list = dock->List();
  const QAbstractItemModel* model = list->model();
  ASSERT_EQ(model->rowCount(), kRecords);
  struct Case {
    const char* title;
    Qt::SortOrder order;
    int first;
  };
  for (const auto& [title, order, first] : {Case{"Ch 1 peak to peak", Qt::DescendingOrder, kSpike},
                                            Case{"Ch 2 saturated", Qt::DescendingOrder, kSaturated},
                                            Case{"Status", Qt::DescendingOrder, kBad},
                                            Case{"Ch 2 peak to peak", Qt::AscendingOrder, kDead},
                                            Case{"Frequency (Hz)", Qt::DescendingOrder, 151}}) {
    SCOPED_TRACE(title);
    int column = 0;
    while (model->headerData(column, Qt::Horizontal).toString() != QLatin1String(title)) {
      ASSERT_LT(++column, model->columnCount());
    }
    list->setCurrentIndex(model->index(0, column));
    QTest::keyClick(list, Qt::Key_S);
    if (order == Qt::AscendingOrder) {
      QTest::keyClick(list, Qt::Key_S);
    }
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(Shown(), static_cast<std::uint64_t>(first));
  }
  auto* filter = dock->findChild<QLineEdit*>();
  filter->setText(QStringLiteral("Saturated"));
  ASSERT_EQ(model->rowCount(), 1);
  filter->clear();
  EXPECT_EQ(model->rowCount(), kRecords);
  frame_.Displays().Close();
  EXPECT_FALSE(dock->isVisible());
  EXPECT_FALSE(command->isEnabled());
  EXPECT_EQ(model->rowCount(), 0);
  Open();
  EXPECT_TRUE(dock->isVisible()) << "it comes back with the next waveform";
}

TEST_F(Records, TicksAreKeptBesideTheFileAndFound) {
  frame_.Command(kViewRecords)->trigger();
  auto* dock = frame_.findChild<RecordDock*>();
  const auto press = [&](const char* name) {
    dock->findChild<QPushButton*>(QLatin1String(name))->click();
  };
  const auto said = [&] { return dock->findChild<QLabel*>("record-summary")->text(); };
  press("leave-out-bad");
  dock->List()->setCurrentIndex(dock->List()->model()->index(2, 3));
  QTest::keyClick(dock->List(), Qt::Key_Space);
  EXPECT_EQ(said(), QStringLiteral("2 records left out; not kept beside the file"));
  press("keep-beside");
  EXPECT_EQ(said(), QStringLiteral("2 records left out"));
  EXPECT_NE(ReadAll(dir_ / "A.TSS.leave-out.txt").find("\n3\n200\n"), std::string::npos);
  Display()->Reload();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Display()->Book()->IsDone(); }, 30000));
  EXPECT_EQ(said(), QStringLiteral("2 records left out"));
  auto* ticked = dock->List()->model();
  EXPECT_EQ(ticked->index(2, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  press("take-all-records");
  press("keep-beside");
  EXPECT_FALSE(QFile::exists(TextFromPath(dir_ / "A.TSS.leave-out.txt")));
  WriteAll(dir_ / "A.TSS.leave-out.txt", "1 9\n3\n");
  Display()->Reload();
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return said().contains(QStringLiteral("is not used")); }, 30000))
      << said().toStdString();
}

TEST_F(Records, AreMeasuredFoldedFilteredAndLaidOverEachOther) {
  WaveformView& view = Display()->View();
  const auto key = [this](Qt::Key pressed, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(Display(), pressed, with);
    QApplication::processEvents();
  };
  Display()->setFocus();
  view.SetCursor(WaveformView::kFirstCursor, 0);
  view.SetCursor(WaveformView::kSecondCursor, 0.4);
  Display()->ShowView();
  const auto* readings = Display()->findChild<QTableWidget*>(QStringLiteral("readings"));
  QStringList texts;
  for (const auto& [row, column] : {std::pair(1, 6), {1, 7}, {3, 3}}) {
    texts << readings->item(row, column)->text();
  }
  EXPECT_EQ(texts, QStringList({"-100", "100", "2.5"})) << "minimum, maximum, 1 / dt";
  key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(QApplication::clipboard()->text().contains(QStringLiteral("slope (per s)")));

  // 100 scans a second at 4 Hz: 25 places, of two periods that are each other's opposite.
  key(Qt::Key_F);
  EXPECT_EQ(view.NoteText(), "mean of 2 periods");
  ASSERT_EQ(view.Record().Scans(), 25U);
  EXPECT_EQ(view.Values(0)[3], 0);
  EXPECT_GT(view.Shaped().spreads[0][3], 100 * 256 * 0.99);
  key(Qt::Key_F);
  EXPECT_EQ(view.Record().Scans(), 50U);

  Display()->GoTo(kSaturated);
  RecordShape shape;
  shape.filter.removes_trend = true;
  view.SetShape(shape);
  double sum = 0;
  for (const double value : view.Values(1)) {
    sum += value;
  }
  EXPECT_NEAR(sum, 0, 1);
  EXPECT_EQ(view.NoteText(), "mean and trend removed");
  view.SetShape({});

  Display()->GoTo(kSpike - 1);
  const auto picture = [this] {
    QApplication::processEvents();
    return Display()->findChild<WaveformPlot*>()->grab().toImage();
  };
  const QImage alone = picture();
  key(Qt::Key_O);
  EXPECT_NE(picture(), alone);
  key(Qt::Key_O);
  EXPECT_EQ(picture(), alone);
}

}  // namespace
}  // namespace orvane

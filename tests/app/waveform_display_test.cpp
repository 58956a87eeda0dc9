// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_display.h"

#include <qcustomplot.h>

#include <QMenu>
#include <atomic>
#include <fstream>
#include <new>
#include <thread>

#include "app/notice_label.h"
#include "files/file_system.h"
#include "support/frame_test.h"
#include "support/tbl_bytes.h"
#include "timeseries/widgets/loading_strip.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// Two channels of four scans, two a second, with samples that count up from `first`.
std::string Record(int first, int status) {
  std::string record(252, '\0');
  record.replace(10, 2, Little(4, 2));
  record[12] = 2;
  record[14] = static_cast<char>(status);
  record[17] = 3;
  record.replace(18, 2, Little(2, 2));
  record.replace(36, 8, RealBytes(8));
  for (int sample = 0; sample < 8; ++sample) {
    record += Little(static_cast<std::uint64_t>(first + sample), 3);
  }
  return record;
}

class WaveformDisplay : public testing::FrameTest {
 protected:
  void SetUp() override {
    WriteAll(dir_ / "A.TSS", Record(1, 0) + Record(11, 0) + Record(21, 6));
    WriteAll(dir_ / "A.TBL", HeaderV2() + Padded(Padded("FSCV", 16) + RealBytes(0), 32));
    doc_.OnNewDocument();
    frame_.resize(900, 600);
    frame_.show();
  }
  // Opens a file and closes the boxes that come up, whose texts it returns.
  QString Open(const QString& path) {
    QString said;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [this, &said] {
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        QTest::keyClick(box, key_);
        if (!box->isVisible()) {  // one that is not ready for keys yet gets another
          said += box->windowTitle() + QLatin1Char(':') + box->text();
        }
      }
    });
    timer.start(5);
    frame_.OpenAny(path);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !frame_.Displays().IsReading(); }, 30000));
    return said;
  }
  WaveformView& View() { return Display()->View(); }
  CWaveformDisplay* Display() { return qobject_cast<CWaveformDisplay*>(frame_.Display()); }
  QAction* Action(const char* name) { return Display()->findChild<QAction*>(QLatin1String(name)); }

  Qt::Key key_ = Qt::Key_Return;  // that answers boxes
};

TEST_F(WaveformDisplay, StepsThroughTheRecordsAndGivesTheTableBack) {
  EXPECT_EQ(Open(TextFromPath(dir_ / "A.TSS")),
            QStringLiteral("Orvane:There are 1 bad records starting at segment3!"));
  ASSERT_NE(Display(), nullptr);
  EXPECT_TRUE(frame_.windowTitle().startsWith(QStringLiteral("A.TSS - ")));
  frame_.Command(kScrollForward)->trigger();
  EXPECT_EQ(View().Number(), 2U);
  Action("next-bad")->trigger();
  EXPECT_TRUE(View().IsBad());
  frame_.Command(kScrollForward)->trigger();
  EXPECT_EQ(View().Number(), 3U) << "beyond the last";
  Display()->findChild<QSpinBox*>()->setValue(1);
  EXPECT_EQ(View().Number(), 1U);
  EXPECT_FALSE(doc_.IsModified());
  Action("close")->trigger();
  EXPECT_EQ(frame_.Display(), nullptr);
  EXPECT_FALSE(frame_.Command(kScrollForward)->isEnabled());
}

TEST_F(WaveformDisplay, CursorsReadWhatTheFileHolds) {
  Open(TextFromPath(dir_ / "A.TSS"));
  QTest::keyClick(Display(), Qt::Key_Right, Qt::ControlModifier);  // into the middle
  QTest::keyClick(Display(), Qt::Key_Right, Qt::ControlModifier);
  QTest::keyClick(Display(), Qt::Key_Left, Qt::ShiftModifier);
  const auto* readings = Display()->findChild<QTableWidget*>();
  ASSERT_EQ(readings->rowCount(), 4) << "time, two channels, 1 / dt";
  const auto scan = static_cast<double>(View().Reading(WaveformView::kFirstCursor)->scan);
  // A scan has two samples.
  EXPECT_EQ(readings->item(1, 1)->text().toDouble(), 1 + 2 * scan);
  EXPECT_EQ(readings->item(2, 1)->text().toDouble(), 2 + 2 * scan);
  EXPECT_FALSE(readings->item(0, 3)->text().isEmpty());
  Action("copy")->trigger();
  EXPECT_EQ(QApplication::clipboard()->text().count(QLatin1Char('\n')), 5);
  Action("close")->trigger();
  EXPECT_NE(frame_.Display(), nullptr) << "the first Escape removes the cursors";
}

TEST_F(WaveformDisplay, KeysOfTheReadingsTheBoxAndReloading) {
  Open(TextFromPath(dir_ / "A.TSS"));
  frame_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&frame_));
  const auto* notice = frame_.findChild<NoticeLabel*>();
  QApplication::clipboard()->setText(QStringLiteral("before"));
  const auto copy = Qt::ControlModifier | Qt::ShiftModifier;
  QTest::keyClick(Display(), Qt::Key_C, copy);
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("before"));
  EXPECT_TRUE(notice->text().startsWith(QStringLiteral("There is no cursor")));
  View().SetCursor(WaveformView::kFirstCursor, 0);
  QTest::keyClick(Display(), Qt::Key_C, copy);
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Time (s)\t0\nCh 1\t1\nCh 2\t2\n"));

  auto* box = Display()->findChild<QSpinBox*>();
  box->setFocus();
  box->selectAll();
  QTest::keyClick(box, Qt::Key_3);
  QTest::keyClick(box, Qt::Key_Escape);
  EXPECT_FALSE(box->hasFocus());
  EXPECT_TRUE(View().Reading(WaveformView::kFirstCursor)) << "Escape left the box only";
  EXPECT_EQ(View().Number(), 1U);
  EXPECT_EQ(box->value(), 1);

#ifndef Q_OS_WIN  // where a file that is shown cannot be made shorter
  WriteAll(dir_ / "A.TSS", Record(31, 0));
  QTest::keyClick(Display(), Qt::Key_F5);
  EXPECT_EQ(View().Count(), 1U);
  EXPECT_EQ(box->maximum(), 1);
  EXPECT_EQ(View().Reading(WaveformView::kFirstCursor)->values[0], 31);
#endif
}

TEST_F(WaveformDisplay, NoToolHidesAndTheTitleIsWhole) {
  Open(TextFromPath(dir_ / "A.TSS"));
  View().SetCursor(WaveformView::kFirstCursor, 0);
  frame_.resize(960, 640);
  Display()->ShowView();
  QApplication::processEvents();
  for (const QToolButton* tool : Display()->findChildren<QToolButton*>()) {
    EXPECT_EQ(tool->isVisible(), tool->objectName() != QStringLiteral("qt_toolbar_ext_button"))
        << tool->text().toStdString();
  }
  const auto* plot = Display()->findChild<WaveformPlot*>()->Plot();
  const auto* header = dynamic_cast<QCPLayoutGrid*>(plot->plotLayout()->element(0, 0));
  const auto* title = dynamic_cast<QCPTextElement*>(header->element(0, 0));
  for (const QString& line : title->text().split(QLatin1Char('\n'))) {
    EXPECT_LE(QFontMetrics(title->font()).horizontalAdvance(line), plot->width());
  }
  EXPECT_EQ(title->text().simplified(), QString::fromStdString(View().TitleText()).simplified());
}

TEST_F(WaveformDisplay, WhatIsToldOfATableIsNotLostWithTheDisplay) {
  WriteAll(dir_ / "short.tbl", testing::ReadAll(dir_ / "A.TBL"));
  EXPECT_EQ(Open(TextFromPath(dir_ / "A.TSS")), QStringLiteral("Orvane:There are 1 bad records "
                                                               "starting at segment3!"));
  ASSERT_NE(Display(), nullptr);
  EXPECT_EQ(Open(TextFromPath(dir_ / "short.tbl")), QString());
  EXPECT_EQ(Display(), nullptr);
  const auto* notice = frame_.findChild<NoticeLabel*>();
  EXPECT_EQ(notice->text(),
            QStringLiteral("Loaded 0 of 719 parameters; the others keep their previous values; "
                           "1 record is left out: FSCV"));
  Open(TextFromPath(dir_ / "A.TSS"));
  frame_.Command(kFileNew)->trigger();
  EXPECT_EQ(Display(), nullptr);
  EXPECT_EQ(notice->text(), QStringLiteral("New table; the parameters keep their previous values"));
}

TEST_F(WaveformDisplay, OffersRawCountsOfAWaveformWithoutItsTable) {
  std::filesystem::remove(dir_ / "A.TBL");
  const QString told =
      QStringLiteral("File Open Error:Failed to open file %1!Orvane:Without its table")
          .arg(TextFromPath(dir_ / "A.TBL"));
  key_ = Qt::Key_Escape;
  EXPECT_TRUE(Open(TextFromPath(dir_ / "A.TSS")).startsWith(told));
  EXPECT_EQ(Display(), nullptr);
  key_ = Qt::Key_Return;
  EXPECT_TRUE(Open(TextFromPath(dir_ / "A.TSS")).startsWith(told));
  ASSERT_NE(Display(), nullptr);
  EXPECT_EQ(View().Channel(1).Label(), "Ch 2");
  EXPECT_EQ(frame_.findChild<NoticeLabel*>()->text(),
            QStringLiteral("1 / 3, first bad at 3, raw counts, no table A.TBL, headers assumed to "
                           "have 252 bytes"));
}

// A disk that takes its time, or has no memory left to read into.
std::atomic<int> milliseconds_per_read = 0;
std::atomic<bool> has_no_memory = false;

class SlowDisk {
 public:
  SlowDisk() {
    milliseconds_per_read = 250;
    has_no_memory = false;
    ReaderCalls().some_at = [](int handle, std::uint64_t offset, std::span<std::byte> bytes) {
      std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds_per_read));
      if (has_no_memory) {
        throw std::bad_alloc();
      }
      return Usual().some_at(handle, offset, bytes);
    };
  }
  ~SlowDisk() { ReaderCalls() = Usual(); }

 private:
  static const ReadCalls& Usual() {
    static const ReadCalls calls = ReaderCalls();
    return calls;
  }
  const ReadCalls* usual_ = &Usual();  // before they are replaced
};

TEST_F(WaveformDisplay, ReadsBesideTheWindow) {
  const QString file = TextFromPath(dir_ / "B.TSS");
  WriteAll(dir_ / "B.TSS", Record(1, 0) + Record(11, 0));
  std::filesystem::copy_file(dir_ / "A.TBL", dir_ / "B.TBL");
  const auto* notice = frame_.findChild<NoticeLabel*>();
  const auto is_read = [this] { return !frame_.Displays().IsReading(); };
  const auto strip = [this] { return frame_.Display()->findChild<LoadingStrip*>(); };
  const SlowDisk disk;

  ASSERT_TRUE(frame_.OpenAny(file));
  ASSERT_TRUE(frame_.Displays().IsReading());
  EXPECT_TRUE(frame_.windowTitle().startsWith(QStringLiteral("B.TSS - ")));
  EXPECT_EQ(strip()->findChild<QLabel*>()->text(),
            QStringLiteral("Reading records of B.TSS ... 0 %"));
  EXPECT_TRUE(frame_.Command(kEditRaw)->isEnabled()) << "the table is there to work on";
  frame_.Display()->findChild<QAction*>(QStringLiteral("cancel"))->trigger();
  EXPECT_EQ(frame_.Display(), nullptr);
  EXPECT_EQ(notice->text(), QStringLiteral("Reading of B.TSS was cancelled"));

  for (const char* other : {"A.TBL", "B.TSS"}) {  // in its place
    ASSERT_TRUE(frame_.OpenAny(file));
    ASSERT_TRUE(frame_.OpenAny(TextFromPath(dir_ / other)));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  ASSERT_TRUE(frame_.Displays().IsReading());
  milliseconds_per_read = 0;
  ASSERT_TRUE(QTest::qWaitFor(is_read));
  ASSERT_NE(Display(), nullptr);
  EXPECT_EQ(View().Count(), 2U);

  WriteAll(dir_ / "B.TSS", Record(1, 0));
  milliseconds_per_read = 250;
  Display()->Reload();
  EXPECT_TRUE(strip()->isVisible());
  EXPECT_EQ(View().Count(), 2U) << "what is shown stays";
  Action("close")->trigger();
  EXPECT_FALSE(strip()->isVisible());
  ASSERT_NE(Display(), nullptr) << "Escape ended the reading only";
  EXPECT_EQ(View().Count(), 2U);
  Display()->Reload();
  milliseconds_per_read = 0;
  EXPECT_TRUE(QTest::qWaitFor([&] { return !strip()->isVisible(); }));
  EXPECT_EQ(View().Count(), 1U);

  milliseconds_per_read = 250;
  has_no_memory = true;
  EXPECT_EQ(Open(file), QStringLiteral("File Open Error:Failed to open file %1!").arg(file));
  EXPECT_EQ(notice->text(), file + QStringLiteral(": Cannot allocate memory"));
  EXPECT_EQ(frame_.Display(), nullptr);
}

TEST_F(WaveformDisplay, HidesZoomsAndBoxesChannels) {
  Open(TextFromPath(dir_ / "A.TSS"));
  const auto activate = [this] {
    frame_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&frame_));
  };
  activate();
  auto* plot = Display()->findChild<WaveformPlot*>()->Plot();
  const auto drag = [plot](const QPoint& from, const QPoint& to, Qt::KeyboardModifiers keys) {
    QTest::mousePress(plot, Qt::LeftButton, keys, from);
    QMouseEvent move(QEvent::MouseMove, to, plot->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     keys);
    QApplication::sendEvent(plot, &move);
    QTest::mouseRelease(plot, Qt::LeftButton, keys, to);
    QApplication::processEvents();
  };
  // The rectangles are those of the time axis, of the last channel and so on.
  const auto axes = [plot](int channel) {
    return plot->axisRect(plot->axisRectCount() - 1 - channel);
  };
  const auto place = [axes](int channel) { return axes(channel)->rect(); };
  const auto values = [axes](int channel) { return axes(channel)->axis(QCPAxis::atLeft)->range(); };
  const QCPRange first = values(0);
  const QCPRange second = values(1);
  const QRect below = place(1);
  drag(below.center(), below.bottomRight() - QPoint(below.width() / 10, 0), Qt::ShiftModifier);
  EXPECT_NEAR(View().VisibleTimes().low, 0.75, 0.01) << "the record has 1.5 s";
  EXPECT_NEAR(View().VisibleTimes().high, 1.35, 0.01);
  EXPECT_NEAR(values(1).size() / second.size(), 0.5, 0.02);
  EXPECT_FALSE(View().Reading(WaveformView::kSecondCursor));
  QTest::keyClick(Display(), Qt::Key_R);
  QApplication::processEvents();
  EXPECT_NEAR(values(1).size(), second.size(), 1e-9);

  QTest::keyClick(Display(), Qt::Key_Comma);  // from the second, which the box chose
  QTest::keyClick(Display(), Qt::Key_Up, Qt::AltModifier);
  QTest::keyClick(Display(), Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier);
  QApplication::processEvents();
  EXPECT_NEAR(values(0).size() * 1.5, first.size(), 1e-9);
  EXPECT_LT(values(0).center(), first.center()) << "the trace went up";
  EXPECT_NEAR(values(1).size(), second.size(), 1e-9);
  QTest::keyClick(Display(), Qt::Key_E);
  QApplication::processEvents();
  EXPECT_NEAR(place(0).height(), 4 * place(1).height(), 8);

  EXPECT_EQ(Action("hide")->text(), QStringLiteral("Hide Ch 1"));
  QTest::keyClick(Display(), Qt::Key_H);
  EXPECT_EQ(plot->axisRectCount(), 2) << "one channel, and the time";
  QTest::keyClick(Display(), Qt::Key_H);
  EXPECT_EQ(frame_.findChild<NoticeLabel*>()->text(),
            QStringLiteral("Ch 2 is the only channel shown"));
  QTimer::singleShot(0, [] {
    const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(menu->actions().at(0)->isChecked());
    EXPECT_FALSE(menu->actions().at(1)->isEnabled()) << "the last one stays";
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
  });
  QTest::keyClick(Display(), Qt::Key_N);
  EXPECT_EQ(plot->axisRectCount(), 3);
  activate();  // a menu was up
  QTimer::singleShot(0, [] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions()[0]).center());
  });
  QTest::keyClick(Display(), Qt::Key_L);
  activate();
  EXPECT_EQ(View().NoteText(), "mean and trend removed");
  QTest::keyClick(Display(), Qt::Key_T);
  QTest::keyClick(Display(), Qt::Key_C);
  EXPECT_EQ(View().Channel(0).Label(), "Ch 1 (counts)");
}

TEST_F(WaveformDisplay, FollowsTheFileAndTheFolder) {
  for (const char* name : {"b.TSS", "C.TS1", "b.TRS"}) {
    WriteAll(dir_ / name, Record(1, 0));
  }
  std::filesystem::copy_file(dir_ / "A.TBL", dir_ / "b.TBL");
  Open(TextFromPath(dir_ / "b.TSS"));
  const auto* notice = frame_.findChild<NoticeLabel*>();
  const auto* fate = Display()->findChild<QLabel*>(QStringLiteral("fate"));
  Display()->Book()->SetLeftOut(1, true);
  const auto write = [this](const std::string& bytes) {
    std::ofstream(dir_ / "b.TSS", std::ios::binary | std::ios::in | std::ios::out) << bytes;
    Display()->LookAtFile();
  };
  write(Record(1, 0) + Record(2, 0) + Record(3, 0).substr(0, 260));
  EXPECT_EQ(View().Count(), 2U);
  EXPECT_EQ(notice->text(), QStringLiteral("1 record more"));
  write(Record(1, 0) + Record(2, 0) + Record(3, 0));
  EXPECT_EQ(View().Count(), 3U);
  EXPECT_TRUE(QTest::qWaitFor([this] { return Display()->Book()->IsDone(); }));
  EXPECT_EQ(Display()->Book()->List().Size(), 3U);
  EXPECT_EQ(Display()->Book()->LeftOut().Count(), 1U);
  EXPECT_EQ(View().Number(), 1U);
  EXPECT_TRUE(fate->isHidden());
  std::filesystem::resize_file(dir_ / "b.TSS", 300);
  Display()->LookAtFile();
  EXPECT_EQ(fate->text(), QStringLiteral("b.TSS has become shorter; F5 reads it again"));
#ifndef Q_OS_WIN  // where it stays until nobody shows it
  std::filesystem::remove(dir_ / "b.TSS");
  Display()->LookAtFile();
  EXPECT_EQ(fate->text(), QStringLiteral("b.TSS is no longer there"));
#endif
  EXPECT_FALSE(fate->isHidden());

  const auto go = [this](Qt::Key key) {
    frame_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&frame_));
    QTest::keyClick(Display(), key, Qt::ControlModifier);
    QApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !frame_.Displays().IsReading(); }, 30000));
    return frame_.Display() == nullptr ? QString() : frame_.Display()->Title();
  };
  EXPECT_EQ(go(Qt::Key_PageDown), QStringLiteral("C.TS1"));
  EXPECT_EQ(go(Qt::Key_PageDown), QStringLiteral("C.TS1"));
  EXPECT_EQ(notice->text(), QStringLiteral("C.TS1 is the last file of its kind in the folder"));
  WriteAll(dir_ / "B.TSS", Record(1, 0));
  WriteAll(dir_ / "B.TBL", "");  // cannot be used
  std::filesystem::remove(dir_ / "b.TBL");
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      // By a button: a key could come to the display below, once the box is gone.
      QAbstractButton* no = box->button(QMessageBox::No);
      (no != nullptr ? no : box->button(QMessageBox::Ok))->click();
    }
  });
  timer.start(5);
  EXPECT_EQ(go(Qt::Key_PageUp), QStringLiteral("C.TS1")) << "that file was told";
  Action("enlarge")->trigger();
  EXPECT_EQ(go(Qt::Key_PageUp), QStringLiteral("A.TSS"));
  EXPECT_TRUE(Display()->Traces().Enlarged()) << "of the same channels";
}

TEST_F(WaveformDisplay, TellsWhatCannotBeOpenedAndSavesPictures) {
  const QString missing = TextFromPath(dir_ / "B.TSS");
  EXPECT_EQ(Open(missing), QStringLiteral("File Open Error:Failed to open file %1!").arg(missing));
  EXPECT_EQ(frame_.Display(), nullptr);
  Open(TextFromPath(dir_ / "A.TSS"));
  auto* picture = Display()->findChild<WaveformPlot*>();
  for (const auto& [name, begin] :
       {std::pair("p.png", "\x89PNG"), std::pair("p.svg", "<?xml"), std::pair("p.pdf", "%PDF")}) {
    EXPECT_EQ(picture->Save(TextFromPath(dir_ / name), QSize(700, 500)).Message(), "");
    EXPECT_EQ(testing::ReadAll(dir_ / name).rfind(begin, 0), 0U) << name;
  }
  EXPECT_EQ(QImage(TextFromPath(dir_ / "p.png")).size(), QSize(700, 500));
  EXPECT_FALSE(SavePlot(picture->Plot(), TextFromPath(dir_ / "none/p.png")));
}

}  // namespace
}  // namespace orvane

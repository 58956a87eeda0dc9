// SPDX-License-Identifier: GPL-3.0-or-later
// What has changed, and the way back: steps, the dock, values as text.
#include "app/change_commands.h"

#include <QRegularExpression>
#include <QSet>
#include <QTableView>

#include "changes/widgets/apply_values_dlg.h"
#include "changes/widgets/save_values_dlg.h"
#include "editors/acq_fields.h"
#include "editors/site_forms.h"
#include "editors/widgets/param_table_dlg.h"
#include "support/assistive.h"
#include "support/frame_test.h"
#include "support/modal.h"
#include "support/tbl_bytes.h"
#include "table/param_access.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class Changes : public FrameTest {
 protected:
  void SetUp() override {
    doc_.OnNewDocument();
    frame_.show();
    ASSERT_TRUE(doc_.OnSaveDocument(Path("a.tbl")));
  }
  QString Path(const char* name) const { return QString::fromStdString((dir_ / name).string()); }
  void Trigger(int id) { frame_.Command(id)->trigger(); }
  QString TextOf(int id) const { return frame_.Command(id)->text(); }
  QString Counter() const {
    return frame_.findChild<QToolButton*>(QStringLiteral("change-count"))->text();
  }
  QString Notice() const { return frame_.findChild<QLabel*>(QStringLiteral("notice"))->text(); }
  QTableView* List() const { return frame_.findChild<QTableView*>(QStringLiteral("change-list")); }
  // The rows as a screen reader finds them.
  QStringList Rows() const {
    QStringList rows;
    // Without an accessibility bus it does not hear of rows that come and go.
    QAccessible::deleteAccessibleInterface(
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(List())));
    QAccessibleTableInterface* table =
        QAccessible::queryAccessibleInterface(List())->tableInterface();
    for (int row = 0; row < table->rowCount(); ++row) {
      QStringList cells;
      for (const int column : {0, 2, 3}) {
        cells << table->cellAt(row, column)->text(QAccessible::Name);
      }
      rows << cells.join(QLatin1Char('|'));
    }
    return rows;
  }
  void Press(const char* name) { frame_.findChild<QPushButton*>(QLatin1String(name))->click(); }
  void Set(ParamKey key, std::int32_t number, const char* step) {
    PutInt(&table_, key, number);
    doc_.NoteStep(QLatin1String(step));
  }
};

void TypeInto(QWidget* window, int control, const QString& text) {
  SetTextAssistively(window->findChild<QLineEdit*>(QString::number(control)), text);
}
void Accept(QWidget* window) { QTest::keyClick(window, Qt::Key_Return); }
void Cancel(QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); }
// What a user types into the value of a row of the raw parameters.
void EditRow(QWidget* window, const char* key, const char* value) {
  QTest::keyClick(window, Qt::Key_L, Qt::ControlModifier);
  auto* lookup = window->findChild<QLineEdit*>(QStringLiteral("1083"));
  lookup->clear();
  QTest::keyClicks(lookup, QLatin1String(key));
  QTest::keyClick(lookup, Qt::Key_Return);
  auto* grid = window->findChild<CGridCtrl*>();
  QTest::keyClick(grid, Qt::Key_F2);
  auto* line = qobject_cast<QLineEdit*>(window->focusWidget());
  ASSERT_NE(line, nullptr);
  line->selectAll();
  QTest::keyClicks(line, QLatin1String(value));
  QTest::keyClick(line, Qt::Key_Return);
}

TEST_F(Changes, AreSeenRevertedUndoneMadeAgainAndSaved) {
  const std::string before = ReadAll(dir_ / "a.tbl");
  EXPECT_EQ(Counter(), QStringLiteral("No changes"));
  EXPECT_FALSE(frame_.Command(kEditUndo)->isEnabled());
  WithModal([](QWidget* window) { TypeInto(window, 1016, QStringLiteral("7")), Accept(window); },
            [this] { Trigger(kEditCoil); });
  EXPECT_EQ(TextOf(kEditUndo), QStringLiteral("&Undo Coil Calibration (1 value)"));
  WithModal([](QWidget* window) { TypeInto(window, 1291, QStringLiteral("crew")), Accept(window); },
            [this] { Trigger(kEditFtp); });
  WithModal([](QWidget* window) { EditRow(window, "LFRQ", "50"), Cancel(window); },
            [this] { Trigger(kEditRaw); });
  EXPECT_EQ(Counter(), QStringLiteral("3 changes"));
  QApplication::setActiveWindow(&frame_);
  QTest::keyClick(&frame_, Qt::Key_F8);
  const QStringList all = {QStringLiteral("LFRQ|60: 60 Hz|50: 50 Hz"), QStringLiteral("CCLT|2|7"),
                           QStringLiteral("FTPCUSR||(not shown)")};
  QStringList rows = Rows();
  EXPECT_EQ(QSet(rows.begin(), rows.end()), QSet(all.begin(), all.end()));

  const auto revert = [this](const QString& code) {
    const auto row =
        static_cast<int>(Rows().indexOf(QRegularExpression(code + QStringLiteral("\\|.*"))));
    List()->setCurrentIndex(List()->model()->index(row, 0));
    QTest::keyClick(List(), Qt::Key_Space);
    const QString shown = Counter();
    QTest::keyClick(&frame_, Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Counter() != shown; }));
  };
  revert(QStringLiteral("LFRQ"));
  QTest::keyClick(&frame_, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Rows().size(), 3) << "the dock follows";
  EXPECT_EQ(Notice(), QStringLiteral("Undone: Revert (1 value)"));
  doc_.findChild<QTimer*>()->start(1);
  EXPECT_TRUE(QTest::qWaitFor([this] { return Notice() == QStringLiteral("Ready"); }));
  QTest::keyClick(&frame_, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Rows().size(), 2);
  revert(QStringLiteral("FTPCUSR"));
  QTest::keyClick(List(), Qt::Key_Escape);
  EXPECT_TRUE(frame_.findChild<COrvaneView*>()->isAncestorOf(frame_.focusWidget()));
  EXPECT_TRUE(List()->isVisible());
  QTest::keyClick(&frame_, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(Counter(), QStringLiteral("No changes"));
  EXPECT_TRUE(Rows().isEmpty());
  std::string expected = before;
  expected[expected.find("CCLT") + 16] = 7;
  EXPECT_EQ(ReadAll(dir_ / "a.tbl"), expected);
}

TEST_F(Changes, AStepIsWhatOneDialogChanged) {
  Set("TECH", kFdem, "Edit");
  Set("CHHX", 7, "Edit");
  // A dialog that writes before its OK.
  WithModal(Cancel, [this] { Trigger(kEditAcquisition); });
  EXPECT_TRUE(
      TextOf(kEditUndo).startsWith(QStringLiteral("&Undo Acquisition Parameters, cancelled (")))
      << TextOf(kEditUndo).toStdString();
  EXPECT_TRUE(
      Notice().startsWith(QStringLiteral("Cancelled; these were changed before and stay: ")));
  EXPECT_TRUE(Notice().endsWith(QStringLiteral(". Undo takes them back")));
  Trigger(kEditUndo);
  EXPECT_EQ(IntParam(table_, "CHHX"), 7);
  // The site's OK stays when the acquisition around it is cancelled.
  WithWindows({[](QWidget* window) {
                 window->findChild<QPushButton*>(QString::number(acq::kSiteSetup))->click();
                 Cancel(window);
               },
               Accept,
               [](QWidget* window) {
                 TypeInto(window, SiteForm::kSite, QStringLiteral("valley"));
                 Accept(window);
               }},
              [this] { Trigger(kEditAcquisition); });
  EXPECT_TRUE(TextOf(kEditUndo).startsWith(QStringLiteral("&Undo Site Setup (")))
      << TextOf(kEditUndo).toStdString();
  EXPECT_TRUE(doc_.OnSaveDocument(Path("b.tbl")));
  EXPECT_TRUE(frame_.Command(kEditUndo)->isEnabled()) << "saving ends nothing";
  Trigger(kEditUndo);
  EXPECT_TRUE(doc_.IsModified());
  Trigger(kEditRedo);
  EXPECT_FALSE(doc_.IsModified()) << "the versions that the save set are of this step";
  EXPECT_TRUE(doc_.OnOpenDocument(Path("a.tbl")));
  EXPECT_FALSE(frame_.Command(kEditUndo)->isEnabled() || frame_.Command(kEditRedo)->isEnabled());
}

TEST_F(Changes, RawEditsAreStepsThatAreUndoneInTheirWindow) {
  Set("TPFR", 9, "Edit");
  WithModal(
      [this](QWidget* window) {
        QApplication::setActiveWindow(window);
        const auto* undo = window->findChild<QPushButton*>(QStringLiteral("undo"));
        EditRow(window, "LFRQ", "55");
        EditRow(window, "EGNC", "3");
        const auto* grid = window->findChild<CGridCtrl*>();
        const auto shown = [grid] {
          int row = 1;
          while (grid->GetItemText(row, kCodeColumn) != QStringLiteral("EGNC")) {
            ++row;
          }
          return grid->GetItemText(row, kValueColumn);
        };
        QTest::keyClick(window, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(IntParam(table_, "EGNC"), 1);
        EXPECT_EQ(IntParam(table_, "LFRQ"), 55);
        EXPECT_EQ(shown(), QStringLiteral("1"));
        QTest::keyClick(window, Qt::Key_Y, Qt::ControlModifier);
        EXPECT_EQ(shown(), QStringLiteral("3"));
        for (const bool has_more : {true, true, false}) {
          EXPECT_EQ(undo->isEnabled(), has_more);
          QTest::keyClick(window, Qt::Key_Z, Qt::ControlModifier);
        }
        EXPECT_EQ(window->findChild<QLabel*>(QStringLiteral("caution"))->text(),
                  QStringLiteral("Nothing more to undo here"));
        EXPECT_EQ(IntParam(table_, "TPFR"), 9) << "a step of before";
        window->findChild<QPushButton*>(QStringLiteral("redo"))->click();
        Cancel(window);
      },
      [this] { Trigger(kEditRaw); });
  EXPECT_EQ(TextOf(kEditUndo), QStringLiteral("&Undo Raw Parameters (1 value)"));
  EXPECT_EQ(TextOf(kEditRedo), QStringLiteral("Re&do Raw Parameters (1 value)"));
}

TEST_F(Changes, ADoubleClickOpensTheDialogOfTheKey) {
  struct Row {
    const char* key;
    std::int32_t tech;
    const char* title;
    const char* focus;  // its number; null: any
    std::pair<int, int> cell = {};
  };
  const Row rows[] = {
      {"TECH", kSip, "Acquisition Parameters", nullptr},
      {"LFRQ", kSip, "Acquisition Parameters", nullptr},
      {"FTPCUSR", kSip, "FTP Client Setup", "1291"},
      {"CCLT", kSip, "Coil Calibration", "1016"},
      {"SITE", kSip, "IP Site Setup", "1148"},
      {"SITE", kMtAmt, "MT/AMT Site Setup", "1148"},
      {"STIM", kMtAmt, "Acquisition Parameters", nullptr},
      {"STIM", kSip, "Parameter Table", "1079"},  // only MT/AMT has a schedule
      {"FRQ3", kSip, "SIP Frequency Stepping Parameters", "frequencies", {4, 1}},
      {"LPFR", kMtAmt, "Acquisition Parameters", "1039"},  // not "Off", which the method disables
      {"CHDEF3", kSip, "IP Site Setup", "1152", {3, 1}},
      {"GFC1", kSip, "IP Site Setup", "1152", {1, 12}},
      {"DEF1R1", kSip, "Parameter Table", "1079"},  // there is no such box
      {"TBVO", kSip, "Parameter Table", "1079"},
  };
  for (const Row& row : rows) {
    PutInt(&table_, "TECH", row.tech);
    const ParamTable before = table_;
    const auto titles = WithWindows(
        {[&row](QWidget* window) {
          if (row.focus != nullptr) {
            EXPECT_EQ(window->focusWidget()->objectName(), QLatin1String(row.focus)) << row.key;
          }
          const auto* grid = qobject_cast<CGridCtrl*>(window->focusWidget());
          if (row.cell.first > 0 && grid != nullptr) {
            EXPECT_EQ(grid->GetFocusCell(), row.cell) << row.key;
          }
          Cancel(window);
        }},
        [&] { emit frame_.findChild<ChangesDock*>()->editWanted(row.key); });
    EXPECT_EQ(titles.value(0), QLatin1String(row.title)) << row.key;
  }
}

TEST_F(Changes, AreThoseAgainstDefaultsATableABoxAndVersion1) {
  auto* dock = frame_.findChild<ChangesDock*>();
  WriteAll(dir_ / "b.tbl", HeaderV2() + RecordV2("TECH", 0, IntPT, "\x04") +
                               RecordV2("NEWKEY", 0, IntPT, "\x01") +
                               RecordV2("SITE", 0, StrPT, "valley"));
  dock->SetSecond(Path("b.tbl"));
  dock->ShowAgainst(Against::kTable);
  QStringList rows = Rows();
  EXPECT_EQ(rows.size(), 701);
  EXPECT_TRUE(rows.contains(QStringLiteral("SITE|valley|")));
  EXPECT_TRUE(rows.contains(QStringLiteral("LFRQ|not in the file|60: 60 Hz")));
  EXPECT_TRUE(rows.back().startsWith(QStringLiteral("NEWKEY|"))) << rows.back().toStdString();
  for (const int row : {0, 1}) {  // TECH and SITE, as ticks of a screen reader
    QAccessible::queryAccessibleInterface(List())
        ->tableInterface()
        ->cellAt(row, 0)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
  }
  Press("take");
  EXPECT_EQ(TextOf(kEditUndo), QStringLiteral("&Undo Take Over (2 values)"));
  EXPECT_EQ(IntParam(table_, "TECH"), kCsamt);

  dock->ShowAgainst(Against::kDefaults);
  EXPECT_TRUE(Rows().contains(QStringLiteral("SITE||valley")));
  Press("copy");
  EXPECT_TRUE(QApplication::clipboard()->text().contains(QLatin1Char('\t')));
  dock->ShowAgainst(Against::kVersion1);
  EXPECT_TRUE(Rows().contains(QStringLiteral("FTPCUSR|left out of the file|")));
  EXPECT_FALSE(Rows().contains(QStringLiteral("SITE|left out of the file|valley")));
  dock->ShowAgainst(Against::kBox);
  EXPECT_FALSE(frame_.findChild<QPushButton*>(QStringLiteral("take-all"))->isEnabled())
      << "what a box would hold is no value to take";
  dock->ShowAgainst(Against::kFile);
  Press("take-all");
  EXPECT_FALSE(doc_.IsModified());
  std::filesystem::remove(dir_ / "a.tbl");
  dock->Follow();
  EXPECT_TRUE(Rows().isEmpty());
  EXPECT_TRUE(frame_.findChild<QLabel*>(QStringLiteral("change-summary"))
                  ->text()
                  .contains(QStringLiteral("a.tbl: ")));
}

TEST_F(Changes, ValuesGoThroughAFileAsOneStep) {
  Set("LFRQ", 55, "Edit");
  PutText(&table_, "FTPCUSR", "crew");
  doc_.NoteStep(QStringLiteral("Edit"));
  WithModal(
      [&](QWidget* window) {
        auto* save = qobject_cast<SaveValuesDlg*>(window);
        ASSERT_TRUE(save->SaveTo(Path("values.txt")));
      },
      [this] { Trigger(kSaveValues); });
  EXPECT_EQ(Notice(),
            QStringLiteral("1 value saved to values.txt; left out, because they are secret: 1"));
  const std::string text = ReadAll(dir_ / "values.txt");
  EXPECT_NE(text.find("\nLFRQ=55\n"), std::string::npos) << text;
  EXPECT_EQ(text.find("crew"), std::string::npos);

  WriteAll(dir_ / "values.txt", "EGNC=3\nNOSUCH=1\nLFRQ=55\nLFRQ=6x\n\n# rest\nSITE=valley\n");
  WithModal(
      [&](QWidget* window) {
        auto* apply = qobject_cast<ApplyValuesDlg*>(window);
        ASSERT_TRUE(apply->LoadFile(Path("values.txt")));
        const auto* list = window->findChild<QTableView*>();
        QStringList lines;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
          lines << list->model()->index(row, 0).data().toString() + QLatin1Char(' ') +
                       list->model()->index(row, 3).data().toString().section(QLatin1Char(':'), 0,
                                                                              0);
        }
        EXPECT_EQ(lines.join(QStringLiteral(", ")),
                  QStringLiteral("1 new, 2 unknown key, 3 same, 4 not parsable, 7 new"));
        auto* button = window->findChild<QPushButton*>(QStringLiteral("1"));
        EXPECT_FALSE(button->isEnabled()) << "with bad lines nothing counts but what is ticked";
        window->findChild<QPushButton*>(QStringLiteral("tick-all"))->click();
        EXPECT_EQ(button->text(), QStringLiteral("&Apply (2)"));
        button->click();
      },
      [this] { Trigger(kApplyValues); });
  EXPECT_EQ(TextOf(kEditUndo), QStringLiteral("&Undo Apply Values (2 values)"));
  EXPECT_EQ(IntParam(table_, "EGNC"), 3);

  QApplication::clipboard()->setText(QStringLiteral("EGNC=4"));
  WithModal(
      [](QWidget* window) {
        window->findChild<QPushButton*>(QStringLiteral("clipboard"))->click();
        Accept(window);
      },
      [this] { Trigger(kApplyValues); });
  EXPECT_EQ(IntParam(table_, "EGNC"), 4);
}

TEST(TableHistory, KeepsAThousandStepsAndLosesNothing) {
  ParamTable table;
  ASSERT_EQ(table.BuildParamIndex(), kOk);
  TableHistory history(&table);
  for (int i = 1; i <= TableHistory::kMostSteps + 5; ++i) {
    PutInt(&table, "LFRQ", 1000 + i);
    EXPECT_TRUE(history.NoteStep(QStringLiteral("Edit")));
    EXPECT_FALSE(history.NoteStep(QStringLiteral("Nothing")));
  }
  PutInt(&table, "EGNC", 77);  // nobody has noted it
  history.Undo();
  EXPECT_NE(IntParam(table, "EGNC"), 77);
  history.Redo();
  EXPECT_EQ(IntParam(table, "EGNC"), 77);
  // A save of what was opened as version 1 changes the version, which the table has twice.
  PutInt(&table, "TBVI", 1);
  history.Clear();
  PutReal(&table, "EXLN", 60);
  history.NoteStep(QStringLiteral("Edit"));
  EXPECT_EQ(history.Steps().undoText(), QStringLiteral("Edit (1 value)")) << "also twice there";
  PutInt(&table, "TBVI", 2);
  history.FoldSave();
  history.Undo();
  EXPECT_TRUE(history.Steps().canRedo());
  EXPECT_FALSE(history.Steps().canUndo());
  EXPECT_EQ(IntParam(table, "TBVI"), 2);
  history.Redo();
  EXPECT_FALSE(history.Steps().canRedo());
  history.Undo();
  history.Redo();
  history.Clear();
  for (int i = 1; i <= TableHistory::kMostSteps + 5; ++i) {
    PutInt(&table, "LFRQ", 1000 + i);
    history.NoteStep(QStringLiteral("Edit"));
  }
  for (int i = 0; i < 2 * TableHistory::kMostSteps; ++i) {
    history.Undo();
  }
  EXPECT_EQ(IntParam(table, "LFRQ"), 1005) << "the oldest are forgotten";
}

}  // namespace
}  // namespace orvane

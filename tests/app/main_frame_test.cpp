// SPDX-License-Identifier: GPL-3.0-or-later
// The windows as users meet them: by keyboard, by name and by assistive tools.

#include <QAbstractItemView>
#include <QDockWidget>
#include <QMenu>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <set>

#include "editors/acq_fields.h"
#include "editors/site_forms.h"
#include "editors/widgets/param_table_dlg.h"
#include "editors/widgets/spread_panel.h"
#include "editors/widgets/startup_dlg.h"
#include "files/path_text.h"
#include "support/assistive.h"
#include "support/frame_test.h"
#include "support/modal.h"
#include "support/table_help.h"
#include "support/tbl_bytes.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// Types characters that QTest has no key for.
void Type(QWidget* widget, const QString& text) {
  for (const QChar character : text) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
    QApplication::sendEvent(widget, &press);
  }
}

class MainFrame : public testing::DocTest {
 protected:
  void SetUp() override {
    frame_ = std::make_unique<CMainFrame>(&doc_, &prompts_, &notices_);
    doc_.OnNewDocument();
    frame_->show();
  }

  QString Path(const char* name) const { return QString::fromStdString((dir_ / name).string()); }
  QString Notice() const { return frame_->findChild<QLabel*>(QStringLiteral("notice"))->text(); }
  void WriteTable(const char* name, char tech) const {
    WriteAll(dir_ / name, HeaderV2() + RecordV2("TECH", 0, IntPT, std::string(1, tech)));
  }

  std::unique_ptr<CMainFrame> frame_;
};

TEST_F(MainFrame, HasEveryCommand) {
  struct Row {
    int id;
    const char* text;
    const char* status_tip;
    bool is_enabled;
  };
  // A sample of each kind; texts with their doubled blanks.
  const Row rows[] = {
      {57601, "&Open...", "Open TBL file", true},
      {57603, "&Save", "Save TBL file", true},
      {57604, "Save &As...", "Save TBL file with a new name", true},
      {32798, "Save *.TBL Files for All &Boxes...", "Save TBL files for all boxes", true},
      {57616, "Recent &File", "Open this document", false},
      {57665, "E&xit", "Quit the application; prompts to save TBL file", true},
      {32773, "&MHX Wireless Network Settings...", "Set MHX Wireless Network", true},
      {32775, "&Raw Parameters...", "Display and edit parameters in raw table", true},
      {32780, "Convert  &FD Stack Result File(s) to ASCII File(s)...",
       "Convert  stack result (*.trs)  file(s)  into CSV file(s)", true},
      {32806, "Create TFS File For Dr. &Halvo FDEM ...", "", true},
      {59392, "&Toolbar", "", true},
      {32901, "&User Guide", "Open the user guide", true},
      {57664, "&About Orvane...", "", true},
      {32795, "Scroll forward", "Scroll forward in time series", false},
  };
  for (const Row& row : rows) {
    const auto* action = frame_->findChild<QAction*>(QString::number(row.id));
    ASSERT_NE(action, nullptr) << row.id;
    EXPECT_EQ(action->text(), QString::fromLatin1(row.text));
    EXPECT_EQ(action->statusTip(), QString::fromLatin1(row.status_tip));
    EXPECT_EQ(action->isEnabled(), row.is_enabled) << row.id;
  }
  std::set<int> disabled;
  for (const MenuRows& menu : Menus()) {
    for (const CommandRow& row : menu.rows) {
      const auto* action = frame_->findChild<QAction*>(QString::number(row.id));
      if (action != nullptr && !action->isEnabled()) {
        disabled.insert(row.id);
      }
    }
  }
  EXPECT_EQ(disabled, (std::set<int>{kFileRecent, kEditUndo, kEditRedo, kViewRecords, kViewSpectrum,
                                     kViewDecay}));
  std::vector<int> commands;
  for (const QAction* menu : frame_->menuBar()->actions()) {
    int count = 0;
    for (const QAction* action : menu->menu()->actions()) {
      count += !action->isSeparator() && action->isVisible() ? 1 : 0;
    }
    commands.push_back(count);
  }
  EXPECT_EQ(commands, (std::vector<int>{13, 12, 11, 12, 2}));
  EXPECT_EQ(frame_->Command(kFileOpen)->shortcut(), QKeySequence(QStringLiteral("Ctrl+O")));
  EXPECT_EQ(frame_->Command(kEditRadio)->toolTip(), QStringLiteral("MHX  Modern"));
  for (const QAction* action : frame_->findChild<QToolBar*>()->actions()) {
    EXPECT_TRUE(action->isSeparator() || !action->icon().pixmap(24).toImage().isNull());
  }
}

TEST_F(MainFrame, IconsAndBarsFollowTheUser) {
  auto* bar = frame_->findChild<QToolBar*>();
  frame_->Command(kViewToolbar)->trigger();
  EXPECT_FALSE(bar->isVisible());
  frame_->Command(kViewToolbar)->trigger();
  EXPECT_TRUE(bar->isVisible());
  frame_->Command(kViewStatusBar)->trigger();
  EXPECT_FALSE(frame_->statusBar()->isVisible());
  frame_->Command(kViewStatusBar)->trigger();

  const QPalette light = QApplication::palette();
  const auto picture = [this] {
    return frame_->Command(kFileOpen)->icon().pixmap(QSize(24, 24)).toImage();
  };
  const QImage before = picture();
  QPalette dark(QColor(40, 40, 40), QColor(30, 30, 30));
  dark.setColor(QPalette::WindowText, Qt::white);
  QApplication::setPalette(dark);
  EXPECT_NE(picture(), before);
  QApplication::setPalette(light);
  EXPECT_EQ(picture(), before);
}

TEST_F(MainFrame, ThemesAreChosenKeptAndGivenBack) {
  const QPalette system = QApplication::palette();
  const QString style = QApplication::style()->metaObject()->className();
  for (const auto& [id, name, base] : {std::tuple(kThemeDark, "dark", "#1e1e20"),
                                       std::tuple(kThemeSunlight, "sunlight", "#ffffff"),
                                       std::tuple(kThemeLight, "light", "#ffffff")}) {
    frame_->Command(id)->trigger();
    EXPECT_EQ(QApplication::palette().color(QPalette::Base), QColor(base)) << name;
    EXPECT_EQ(QSettings().value(QStringLiteral("Window/Theme")).toString(), QLatin1String(name));
    EXPECT_EQ(TracePen(Qt::black).widthF(), id == kThemeSunlight ? 3 : 1.5);
    EXPECT_FALSE(frame_->Command(kThemeSystem)->isChecked());
    const CMainFrame next(&doc_, &prompts_, &notices_);
    EXPECT_TRUE(next.Command(id)->isChecked()) << "at the next start";
  }
  frame_->Command(kThemeSystem)->trigger();
  EXPECT_EQ(QApplication::palette(), system);
  EXPECT_EQ(QApplication::style()->metaObject()->className(), style);
}

TEST_F(MainFrame, OpensEditsSavesAndReopensByKeyboard) {
  WriteTable("in.tbl", 3);
  auto* heading = frame_->findChild<QLabel*>(QStringLiteral("name"));
  EXPECT_EQ(heading->toolTip(), QString()) << "an untitled table has no folder";
  WithModal(
      [this](QWidget* window) {
        auto* name = window->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(name, nullptr);
        name->setText(Path("in.tbl"));
        QTest::keyClick(name, Qt::Key_Return);
      },
      [this] { frame_->Command(kFileOpen)->trigger(); });
  EXPECT_EQ(frame_->windowTitle(), QStringLiteral("in.tbl[*] - Orvane"));
  EXPECT_EQ(frame_->windowFilePath(), QDir::fromNativeSeparators(Path("in.tbl")));
  EXPECT_EQ(QAccessible::queryAccessibleInterface(heading)->text(QAccessible::Description),
            QString::fromStdString(dir_.Path().string()));

  WithModal(
      [this](QWidget* window) {
        EXPECT_EQ(window->windowTitle(), QStringLiteral("Parameter Table"));
        auto* lookup = window->findChild<QLineEdit*>(QString::number(CParamTableDlg::kLookup));
        QTest::keyClicks(lookup, "site");
        QTest::keyClick(lookup, Qt::Key_Return);
        auto* grid = window->findChild<CGridCtrl*>(QString::number(CParamTableDlg::kGrid));
        EXPECT_EQ(grid->GetItemText(grid->GetFocusCell().first, 1), QStringLiteral("SITE"));
        EXPECT_EQ(grid->GetItemText(grid->GetFocusCell().first, kMeaningColumn),
                  QStringLiteral("Site"));
        QTest::keyClick(grid, Qt::Key_F2);
        auto* editor = window->findChild<QLineEdit*>(QStringLiteral("cellEditor"));
        ASSERT_NE(editor, nullptr);
        Type(editor, QString(QChar(0x20AC)) + QStringLiteral("S100") + QChar(0xC5));
        EXPECT_EQ(editor->text(), QStringLiteral("S100") + QChar(0xC5)) << "no byte for the euro";
        // Closed with the editor still open: the edit counts.
        window->findChild<QPushButton*>(QStringLiteral("1"))->click();
      },
      [this] { frame_->Command(kEditRaw)->trigger(); });
  EXPECT_TRUE(frame_->isWindowModified());

  QApplication::setActiveWindow(frame_.get());
  QTest::keySequence(frame_.get(), QKeySequence(QStringLiteral("Ctrl+S")));
  EXPECT_FALSE(frame_->isWindowModified());
  const std::string saved = ReadAll(dir_ / "in.tbl");
  ASSERT_EQ(saved.size(), 23040U);
  EXPECT_NE(saved.find(std::string("S100\xC5\0", 6)), std::string::npos);

  ASSERT_TRUE(frame_->OpenFile(Path("in.tbl")));
  const auto values = frame_->findChildren<QLabel*>();
  EXPECT_TRUE(std::any_of(values.begin(), values.end(), [](const QLabel* label) {
    return label->accessibleName() == QStringLiteral("Survey: Site: S100") + QChar(0xC5);
  }));
}

TEST_F(MainFrame, TheTableAtAGlanceOpensWhatEditsIt) {
  SetAll(&table_, "TECH=1 SNUM=7 CHDEF1=Ex1");
  doc_.UpdateAllViews();
  const auto card = [this](const char* name) {
    return frame_->findChild<GlanceCard*>(QString::fromLatin1(name));
  };
  const auto opened = [](const std::function<void()>& open) {
    return WithWindows({[](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); }}, open)
        .value(0);
  };
  for (const auto& [name, title, says] :
       {std::tuple("method", "Acquisition Parameters", "Opens Acquisition Parameters"),
        {"times", "Parameter Table", "Opens Raw Parameters"},
        {"boxes", "Site Setup", "Opens Site Setup"},
        {"timeline-card", "Acquisition Parameters", "Opens Acquisition Parameters"}}) {
    EXPECT_NE(card(name)->focusPolicy() & Qt::TabFocus, 0) << name;
    EXPECT_TRUE(card(name)->accessibleDescription().endsWith(QLatin1String(says)))
        << card(name)->accessibleDescription().toStdString();
    for (const auto& open : std::initializer_list<std::function<void()>>{
             [&] { QTest::keyClick(card(name), Qt::Key_Return); },
             [&] { QTest::mouseClick(card(name), Qt::LeftButton, {}, QPoint(40, 30)); },
             [&] {
               QSignalSpy clicked(card(name), &GlanceCard::clicked);
               QAccessible::queryAccessibleInterface(card(name))
                   ->actionInterface()
                   ->doAction(QAccessibleActionInterface::pressAction());
               clicked.wait();  // it is seen to go down first
             }}) {
      const QString window = opened(open);
      EXPECT_TRUE(window.contains(QLatin1String(title))) << name << window.toStdString();
    }
  }
  for (const auto& [name, dock] :
       {std::pair("check", "morning-check"), std::pair("map-card", "map-dock")}) {
    card(name)->click();
    EXPECT_TRUE(frame_->findChild<QDockWidget*>(QLatin1String(dock))->isVisible()) << name;
  }
  SetAll(&table_, "TECH=5");
  doc_.UpdateAllViews();
  EXPECT_TRUE(opened([&] { card("times")->click(); }).contains("Acquisition"));
  EXPECT_TRUE(opened([&] { card("boxes")->click(); }).contains("Parameter Table"));
}

TEST_F(MainFrame, SaysHowToBeginUntilSomethingIsOpenOrEdited) {
  const auto start = [this] { return frame_->findChild<StartPanel*>(); };
  EXPECT_TRUE(start()->isVisible());
  Set(&table_, "SITE", "S1");
  doc_.NoteStep(QStringLiteral("Edit"));
  EXPECT_FALSE(start()->isVisible()) << "edited";
  WriteTable("in.tbl", 3);
  ASSERT_TRUE(doc_.OnSaveDocument(Path("mine.tbl")));
  ASSERT_TRUE(frame_->OpenFile(Path("in.tbl")));
  doc_.OnNewDocument();
  frame_ = std::make_unique<CMainFrame>(&doc_, &prompts_, &notices_);
  frame_->show();
  EXPECT_TRUE(start()->isVisible()) << "of the next start";
  auto* recent = start()->findChild<QPushButton*>(QStringLiteral("start-recent"));
  EXPECT_TRUE(recent->text().endsWith("in.tbl"));
  QTest::keyClick(recent, Qt::Key_Return);
  EXPECT_EQ(QFileInfo(doc_.Path()), QFileInfo(Path("in.tbl")));
  EXPECT_FALSE(start()->isVisible()) << "opened";
}

TEST_F(MainFrame, ClosingTheRawEditorWithoutAnEditChangesNothing) {
  WithModal(
      [](QWidget* window) {
        auto* grid = window->findChild<CGridCtrl*>(QString::number(CParamTableDlg::kGrid));
        QTest::keyClick(grid, Qt::Key_F2);
        auto* editor = window->findChild<QLineEdit*>(QStringLiteral("cellEditor"));
        QTest::keyClicks(editor, "5");
        QTest::keyClick(editor, Qt::Key_Escape);
        QTest::keyClick(grid, Qt::Key_Escape);
      },
      [this] { frame_->Command(kEditRaw)->trigger(); });
  EXPECT_FALSE(doc_.IsModified());
}

TEST_F(MainFrame, KeepsFourRecentFilesAndForgetsMissingOnes) {
  for (const char* name : {"1.tbl", "2.tbl", "3.tbl", "4&.tbl", "5.tbl"}) {
    WriteTable(name, 1);
    ASSERT_TRUE(frame_->OpenFile(Path(name)));
  }
  const auto text = [this](int i) { return frame_->Command(kFileRecent + i)->text(); };
  EXPECT_EQ(text(0), QStringLiteral("&1 ") + Path("5.tbl"));
  EXPECT_EQ(text(1), QStringLiteral("&2 ") + Path("4&&.tbl"));
  EXPECT_EQ(text(3), QStringLiteral("&4 ") + Path("2.tbl"));
  frame_->Command(kFileRecent + 3)->trigger();
  EXPECT_EQ(doc_.Title(), QStringLiteral("2.tbl"));

  std::filesystem::remove(dir_ / "5.tbl");
  WithModal([](QWidget* window) { window->close(); },
            [this] { frame_->Command(kFileRecent + 1)->trigger(); });
  EXPECT_EQ(RecentFiles().Paths(), (QStringList{Path("2.tbl"), Path("4&.tbl"), Path("3.tbl")}));
}

TEST_F(MainFrame, AsksBeforeClosingAndTakesDroppedFiles) {
  WriteTable("drop.tbl", 2);
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(Path("drop.tbl")), QUrl::fromLocalFile(Path("b.tss"))});
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(frame_.get(), &enter);
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(frame_.get(), &drop);
  EXPECT_EQ(doc_.Title(), QStringLiteral("drop.tbl"));
  EXPECT_EQ(Notice(), QStringLiteral("Loaded 1 of 719 parameters; the others keep their previous "
                                     "values; not opened: b.tss"));
  const auto marks = frame_->findChild<QLabel*>(QStringLiteral("file"))->text();
  EXPECT_TRUE(marks.endsWith(QStringLiteral("718 of 719 values are not in the file")));
  const std::int32_t edited = 3;
  ASSERT_EQ(table_.SetParam("TECH", IntPT, &edited), kOk);
  doc_.NoteStep(QStringLiteral("Edit"));
  WithModal([](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); },
            [this] { EXPECT_FALSE(frame_->close()); });
  WithModal(
      [](QWidget* window) { static_cast<QMessageBox*>(window)->button(QMessageBox::No)->click(); },
      [this] { EXPECT_TRUE(frame_->close()); });
}

void Accept(QWidget* window) { static_cast<QDialog*>(window)->accept(); }

TEST_F(MainFrame, SetsUpASiteFromTheAcquisitionParameters) {
  const std::int32_t ip = 2;
  ASSERT_EQ(table_.SetParam("TECH", IntPT, &ip), kOk);
  doc_.OnNewDocument();
  const QStringList titles = WithWindows(
      {[](QWidget* window) {
         window->findChild<QPushButton*>(QString::number(acq::kSiteSetup))->click();
         static_cast<QDialog*>(window)->reject();
       },
       [](QWidget* window) {
         auto* serial = window->findChild<QLineEdit*>(QString::number(BoxSerialForm::kAux1));
         serial->selectAll();
         QTest::keyClicks(serial, "1203");
         Accept(window);
       },
       [](QWidget* window) {
         auto* boxes = window->findChild<CGridCtrl*>(QString::number(SpreadPanel::kBoxes));
         EXPECT_EQ(boxes->accessibleName(), QStringLiteral("Boxes"));
         EXPECT_EQ(boxes->GetItemText(3, 0), QStringLiteral(" Aux. Box"));
         EXPECT_EQ(boxes->GetItemText(3, 1), QStringLiteral("1203"));
         boxes->SetFocusCell(3, 1);
         auto* channels = window->findChild<CGridCtrl*>(QString::number(SpreadPanel::kChannels));
         EXPECT_EQ(channels->GetRowCount(), 4);
         channels->SetFocusCell(1, 1);
         channels->setFocus();
         QTest::keyClick(channels, Qt::Key_F2);
         QTest::keyClicks(window->findChild<QLineEdit*>(QStringLiteral("cellEditor")), "Ex4");
         auto* project = window->findChild<QLineEdit*>(QString::number(SiteForm::kProject));
         QTest::keyClicks(project, QString(61, QLatin1Char('p')));
         EXPECT_EQ(window->findChild<QLabel*>(QStringLiteral("count1132"))->text(),
                   QStringLiteral("61 of 60, will be cut"));
         Accept(window);
       }},
      [this] { frame_->Command(kEditAcquisition)->trigger(); });
  EXPECT_EQ(titles, (QStringList{QStringLiteral("Acquisition Parameters"),
                                 QStringLiteral("Input K3 and GVR Box Serial Number"),
                                 QStringLiteral("IP Site Setup")}));
  EXPECT_TRUE(doc_.IsModified()) << "although the acquisition parameters were cancelled";
  EXPECT_TRUE(Notice().contains("Serial number of auxiliary box 1 (SN01)"))
      << Notice().toStdString();
  WithWindows({Accept}, [this] { frame_->Command(kEditAcquisition)->trigger(); });
  EXPECT_EQ(Notice(), QStringLiteral("Ready")) << "the line was no longer news";
  std::array<char, kValueSize> text{};
  EXPECT_EQ(table_.GetParam("DEF1R1", StrPT, text.data()), kOk);
  EXPECT_STREQ(text.data(), "Ex4");
}

TEST_F(MainFrame, SavesAFileForEachBox) {
  WriteTable("open.tbl", 1);
  ASSERT_TRUE(frame_->OpenFile(Path("open.tbl")));
  const std::int32_t serials[] = {31, 24, 1203};
  ASSERT_EQ(table_.SetParam("SNTX", IntPT, &serials[0]), kOk);
  ASSERT_EQ(table_.SetParam("SNUM", IntPT, &serials[1]), kOk);
  ASSERT_EQ(table_.SetParam("SN01", IntPT, &serials[2]), kOk);
  const auto reject = [](QWidget* window) { static_cast<QDialog*>(window)->reject(); };
  const auto last = [this](QWidget* window) {
    EXPECT_EQ(window->findChild<QLabel*>(QStringLiteral("path"))->text(), Path("1203.tbl"));
    EXPECT_EQ(
        window->findChild<CGridCtrl*>(QString::number(CStartupDlg::kChannelGrid))->GetRowCount(),
        4);
    Accept(window);
  };
  QString rows;
  const auto list = [&rows](QWidget* window) {
    auto* tree = window->findChild<QTreeWidget*>();
    for (int row = 0; row < tree->topLevelItemCount(); ++row) {
      rows += tree->topLevelItem(row)->text(0) + '|' +
              tree->topLevelItem(row)->text(1).section(':', 0, 0) + '\n';
    }
    tree->setCurrentItem(tree->topLevelItem(2));
    EXPECT_TRUE(window->findChild<QLabel*>(QStringLiteral("details"))
                    ->text()
                    .startsWith(QStringLiteral("Other than in the main table: ")));
    Accept(window);
  };
  const QStringList titles = WithWindows({Accept, reject, last, list},
                                         [this] { frame_->Command(kFileSaveAllBoxes)->trigger(); });
  EXPECT_EQ(titles, (QStringList{QStringLiteral("Save DMUGVR  Startup File"),
                                 QStringLiteral("Save K3 Startup File ( SIP )"),
                                 QStringLiteral("Save DMU Startup File ( SIP )"), "Orvane"}));
  EXPECT_EQ(rows,
            "main receiver, serial 24|skipped\ntransmitter monitor, serial 31|written\n"
            "auxiliary 1, serial 1203|written\n");
  EXPECT_EQ(dir_.Count(), 3U) << "a cancelled box has no file";
  EXPECT_EQ(Notice(), QStringLiteral("2 of 2 files written, 1 box skipped"));
  EXPECT_TRUE(doc_.IsModified());
  // Stop ends the run: no second dialog, and no list where nothing was written.
  const std::int32_t beyond_a_gap = 1207;
  ASSERT_EQ(table_.SetParam("SN03", IntPT, &beyond_a_gap), kOk);
  const auto stop = [](QWidget* window) {
    EXPECT_EQ(window->findChild<QLabel*>("heading")->text(),
              "Box 1 of 3: transmitter monitor, serial 31");
    EXPECT_TRUE(
        window->findChild<QLabel*>("doubts")->text().contains("auxiliary 3, serial 1207: no file"));
    window->findChild<QPushButton*>("stop")->click();
  };
  EXPECT_EQ(WithWindows({stop}, [this] { frame_->Command(kFileSaveAllBoxes)->trigger(); }).size(),
            1);
}

TEST_F(MainFrame, ANoticeOfManyLinesTakesOne) {
  auto* notice = frame_->findChild<QLabel*>(QStringLiteral("notice"));
  const int height = notice->sizeHint().height();
  notices_.ShowNotice("2 of 3 files written\nauxiliary 1: failed");
  EXPECT_EQ(notice->sizeHint().height(), height);
  EXPECT_EQ(notice->toolTip(), QStringLiteral("2 of 3 files written\nauxiliary 1: failed"));
  const QImage two = notice->grab().toImage();
  notices_.ShowNotice("2 of 3 files written");
  EXPECT_EQ(notice->grab().toImage(), two);
}

TEST(QtPrompts, EnterAnswersYesButWhereThatLosesSomething) {
  QtPrompts prompts;
  const auto ask = [&prompts](auto question, Qt::Key key) {
    QTimer::singleShot(0, [key] { QTest::keyClick(QApplication::activeModalWidget(), key); });
    return (prompts.*question)("Orvane", "Replace it?");
  };
  EXPECT_EQ(ask(&Prompts::AskYesNo, Qt::Key_Return), Answer::kYes);
  EXPECT_EQ(ask(&Prompts::AskYesNo, Qt::Key_Escape), Answer::kNo);
  EXPECT_EQ(ask(&Prompts::AskToLose, Qt::Key_Return), Answer::kNo);
  EXPECT_EQ(ask(&Prompts::AskToLose, Qt::Key_Enter), Answer::kNo);
  EXPECT_EQ(ask(&Prompts::AskToLose, Qt::Key_Escape), Answer::kNo);
  EXPECT_EQ(ask(&Prompts::AskToLose, Qt::Key_Y), Answer::kYes);
  EXPECT_EQ(ask(&Prompts::AskYesNoCancel, Qt::Key_Escape), Answer::kCancel);
}

TEST(ParamTableDlg, SortsLooksUpFiltersAndMarks) {
  ParamTable table;
  ASSERT_EQ(table.BuildParamIndex(), kOk);
  CParamTableDlg dialog(&table, nullptr, {}, [](const ParamEntry& entry) {
    return RawMeaning{"Value " + std::to_string(static_cast<int>(entry.value[0]))};
  });
  dialog.show();
  auto* grid = dialog.findChild<CGridCtrl*>(QString::number(CParamTableDlg::kGrid));
  auto* sort = dialog.findChild<QCheckBox*>(QString::number(CParamTableDlg::kSortByCode));
  auto* lookup = dialog.findChild<QLineEdit*>(QString::number(CParamTableDlg::kLookup));
  auto* filter = dialog.findChild<QLineEdit*>(QStringLiteral("filter"));
  ASSERT_EQ(grid->GetRowCount(), 720);
  QAccessibleTableInterface* cells = QAccessible::queryAccessibleInterface(grid)->tableInterface();
  EXPECT_EQ(cells->rowCount(), 720);
  EXPECT_EQ(cells->cellAt(0, 3)->text(QAccessible::Name), QStringLiteral("Write Permission"));

  sort->click();
  EXPECT_EQ(grid->GetItemText(1, 1), QStringLiteral("1RCTL"));
  EXPECT_EQ(grid->GetItemText(719, 1), QStringLiteral("ZPOSTX"));
  sort->click();
  EXPECT_EQ(grid->GetItemText(9, 0), QStringLiteral("9"));
  EXPECT_EQ(grid->GetItemText(10, 0), QStringLiteral("10"));

  filter->setText(QStringLiteral("fdrift"));
  EXPECT_FALSE(grid->IsRowVisible(1));
  lookup->setText(QStringLiteral("tbvo"));
  QTest::keyClick(lookup, Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible()) << "Return looks up, it does not close";
  EXPECT_EQ(grid->GetFocusCell(), std::make_pair(1, 4));
  EXPECT_TRUE(filter->text().isEmpty()) << "it hid the row";
  filter->setText(QStringLiteral("fdrift"));
  lookup->setText(QStringLiteral("zpostx"));
  filter->setFocus();
  QTest::keyClick(filter, Qt::Key_Return);
  EXPECT_EQ(dialog.focusWidget(), grid) << "Return in the filter goes to the grid";
  EXPECT_FALSE(filter->text().isEmpty());
  QTest::keyClick(lookup, Qt::Key_Return);
  const auto [found, column] = grid->GetFocusCell();
  EXPECT_EQ(grid->GetItemText(found, 1), QStringLiteral("ZPOSTX"));
  EXPECT_TRUE(
      grid->viewport()->rect().contains(grid->visualRect(grid->model()->index(found, column))))
      << "it is scrolled to, though the filter was just cleared";
  lookup->setText(QStringLiteral("tbvo"));
  QTest::keyClick(lookup, Qt::Key_Return);

  // "TBVO" is at 1 and 27; the partner shows what was stored, the row itself what was typed.
  QTest::keyClick(grid, Qt::Key_Return);
  auto* editor = dialog.findChild<QLineEdit*>(QStringLiteral("cellEditor"));
  ASSERT_NE(editor, nullptr);
  QTest::keyClicks(editor, "1x");
  QTest::keyClick(editor, Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([grid] { return !grid->IsEditing(); }));
  EXPECT_EQ(grid->GetItemText(1, 4), QStringLiteral("1x"));
  EXPECT_EQ(grid->GetItemText(27, 4), QStringLiteral("1"));
  for (const int row : {1, 27}) {
    EXPECT_EQ(grid->GetItemText(row, kMeaningColumn),
              row == 1 ? QStringLiteral("Value 1; stored as 1") : QStringLiteral("Value 1"));
  }
  EXPECT_EQ(cells->cellAt(1, 4)->text(QAccessible::Description),
            QStringLiteral("changed, stored as 1"));
  const auto* caution = dialog.findChild<QLabel*>(QStringLiteral("caution"));
  for (const bool is_read : {false, true}) {
    EXPECT_EQ(grid->GetFocusCell().first, is_read ? 3 : 2) << "Return goes down";
    EXPECT_EQ(caution->text(), is_read ? QString() : QStringLiteral("TBVO=1x: stored as 1"));
    EXPECT_EQ(grid->accessibleDescription(), caution->text());
    QTest::keyClick(grid, Qt::Key_Down);
  }
  dialog.resize(1, 1);
  EXPECT_LE(dialog.width(), 683);  // half of a small laptop's screen
  EXPECT_LE(dialog.height(), 384);
  EXPECT_EQ(cells->cellAt(27, 4)->text(QAccessible::Description), QStringLiteral("changed"));
  EXPECT_TRUE(dialog.IsModified());
  QTest::keyClick(grid, Qt::Key_Left);
  QTest::keyClick(grid, Qt::Key_F2);
  EXPECT_FALSE(grid->IsEditing()) << "only values can be edited";
}

RawMeaning ExplainCoupling(const ParamEntry& entry) {
  RawMeaning meaning{"Coupling"};
  if (ParamKey(entry.key) == ParamKey("ACDC")) {
    meaning.choices = {{"0", "DC"}, {"1", "AC"}};
    meaning.caution = entry.value[0] > 1 ? "not a listed value" : "";
  }
  return meaning;
}

TEST(ParamTableDlg, OffersCodedValues) {
  constexpr int kRow = 8;  // "ACDC"
  ParamTable table;
  ASSERT_EQ(table.BuildParamIndex(), kOk);
  CParamTableDlg dialog(&table, nullptr, {}, ExplainCoupling);
  dialog.show();
  QApplication::setActiveWindow(&dialog);
  auto* grid = dialog.findChild<CGridCtrl*>(QString::number(CParamTableDlg::kGrid));
  const auto editor = [&dialog] {
    return dialog.findChild<QLineEdit*>(QStringLiteral("cellEditor"));
  };
  const auto list = [] {
    return qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
  };
  const auto open = [&](Qt::Key key, Qt::KeyboardModifiers with) {
    grid->SetFocusCell(kRow, kValueColumn);
    QTest::keyClick(grid, key, with);
  };
  const auto value = [&] {
    EXPECT_TRUE(QTest::qWaitFor([&] { return editor() == nullptr; }));
    return grid->GetItemText(kRow, kValueColumn);
  };

  open(Qt::Key_F4, Qt::NoModifier);
  ASSERT_NE(list(), nullptr);
  EXPECT_EQ(list()->currentIndex().data().toString(), "1: AC");
  QTest::keyClick(list(), Qt::Key_Up);
  QTest::keyClick(list(), Qt::Key_Escape);
  EXPECT_EQ(list(), nullptr);
  ASSERT_TRUE(grid->IsEditing()) << "Escape closes the list alone";
  QTest::keyClick(editor(), Qt::Key_Down, Qt::AltModifier);
  QTest::keyClick(list(), Qt::Key_Up);
  QTest::keyClick(list(), Qt::Key_Return);
  EXPECT_EQ(value(), "0");
  EXPECT_EQ(grid->GetItemText(kRow, kMeaningColumn), "Coupling") << "stored as chosen";

  open(Qt::Key_F2, Qt::NoModifier);
  EXPECT_EQ(list(), nullptr);
  QTest::keyClicks(editor(), "7");
  EXPECT_EQ(list(), nullptr) << "not in the way of typing";
  QTest::keyClick(editor(), Qt::Key_Return);
  EXPECT_EQ(value(), "7");
  QAccessibleTableInterface* cells = QAccessible::queryAccessibleInterface(grid)->tableInterface();
  EXPECT_EQ(cells->cellAt(kRow, kValueColumn)->text(QAccessible::Description),
            "changed, not a listed value");

  open(Qt::Key_F2, Qt::NoModifier);
  auto* button = editor()->findChild<QToolButton*>();
  ASSERT_NE(button, nullptr);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name), "Choose");
  QAccessible::queryAccessibleInterface(button)->actionInterface()->doAction(
      QAccessibleActionInterface::pressAction());
  ASSERT_TRUE(QTest::qWaitFor([&] { return list() != nullptr; }));
  QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                    list()->visualRect(list()->model()->index(1, 0)).center());
  EXPECT_EQ(value(), "1");
  open(Qt::Key_Down, Qt::AltModifier);
  EXPECT_NE(list(), nullptr);
  list()->close();
}

TEST(ParamTableDlg, KeepsFavouritesAndLeavesThemOver) {
  QSettings().remove(QStringLiteral("Raw Parameters/Favourites"));
  ParamTable table;
  ASSERT_EQ(table.BuildParamIndex(), kOk);
  const ParamTable file = table;
  const auto settings = [] {
    return QSettings().value(QStringLiteral("Raw Parameters/Favourites")).toStringList();
  };
  for (const bool is_again : {false, true}) {
    CParamTableDlg dialog(&table, nullptr, {}, ExplainCoupling, is_again ? nullptr : &file);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    auto* grid = dialog.findChild<CGridCtrl*>(QString::number(CParamTableDlg::kGrid));
    const auto box = [&dialog](RawSwitch what) {
      return dialog.findChild<QCheckBox*>(QStringLiteral("switch%1").arg(what));
    };
    EXPECT_EQ(box(kChangedSinceFile)->isEnabled(), !is_again);
    QAccessibleTableInterface* cells =
        QAccessible::queryAccessibleInterface(grid)->tableInterface();
    const auto is_star = [&](int row) {
      const QAccessibleInterface* cell = cells->cellAt(row, kMeaningColumn);
      EXPECT_EQ(cell->text(QAccessible::Description) == "favourite", cell->state().checked);
      return cell->state().checked != 0;
    };
    const auto star = [grid](int row) {
      const QRect cell = grid->visualRect(grid->model()->index(row, kMeaningColumn));
      QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                        QPoint(cell.left() + 9, cell.center().y()));
    };
    if (!is_again) {
      grid->SetFocusCell(1, kValueColumn);
      QTest::keyClick(grid, Qt::Key_D, Qt::ControlModifier);
      EXPECT_TRUE(is_star(1) && is_star(27)) << "both rows of TBVO";
      star(4);
      grid->SetFocusCell(5, kMeaningColumn);
      QTest::keyClick(grid, Qt::Key_Space);
      EXPECT_EQ(settings(), QStringList({"EGNC", "HGNC", "TBVO"}));
    }
    EXPECT_TRUE(is_star(4) && is_star(5));
    testing::ToggleAssistively(box(kFavourites));
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("rowCount"))->text(), "4 of 719");
    EXPECT_FALSE(grid->IsRowVisible(2));
    dialog.findChild<QLineEdit*>(QString::number(CParamTableDlg::kLookup))->setText("TBVI");
    dialog.findChild<QPushButton*>(QString::number(CParamTableDlg::kLookupButton))->click();
    EXPECT_TRUE(grid->IsRowVisible(2)) << "it was asked for";
    EXPECT_FALSE(box(kFavourites)->isChecked());
    star(5);
    EXPECT_FALSE(is_star(5));
    star(5);
  }
  EXPECT_EQ(settings().size(), 3);
}

TEST_F(MainFrame, TellsInABarOfAFileThatOthersChanged) {
  WriteTable("a.tbl", 3);
  ASSERT_TRUE(frame_->OpenFile(Path("a.tbl")));
  auto* bar = frame_->findChild<ChangedFileBar*>();
  const auto come_back = [this] {
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    frame_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame_.get()));
  };
  come_back();
  EXPECT_TRUE(bar->isHidden());
  WriteTable("a.tbl", 4);
  come_back();
  EXPECT_TRUE(bar->isVisible());
  EXPECT_EQ(bar->findChild<QLabel*>()->text(), QStringLiteral("a.tbl has changed on disk"));
  EXPECT_EQ(QAccessible::queryAccessibleInterface(bar)->text(QAccessible::Name),
            QStringLiteral("File changed on disk"));
  const QList<QPushButton*> buttons = bar->findChildren<QPushButton*>();
  ASSERT_EQ(buttons.size(), 3);
  buttons[0]->click();
  const auto* list = frame_->findChild<QTableView*>(QStringLiteral("change-list"));
  ASSERT_TRUE(list->isVisible()) << "Compare shows what the file has now";
  EXPECT_EQ(list->model()->index(0, 2).data(), QStringLiteral("4: CSAMT"));
  EXPECT_EQ(list->model()->index(0, 3).data(), QStringLiteral("3: TDEM"));
  const auto goes = [bar] { return QTest::qWaitFor([bar] { return bar->isHidden(); }); };
  QAccessibleInterface* load = QAccessible::queryAccessibleInterface(buttons[1]);
  EXPECT_EQ(load->text(QAccessible::Name), QStringLiteral("Load it"));
  load->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(goes());
  EXPECT_FALSE(doc_.IsModified());
  std::int32_t tech = 0;
  EXPECT_EQ(table_.GetParam("TECH", IntPT, &tech), kOk);
  EXPECT_EQ(tech, 4);

  WriteTable("a.tbl", 5);
  come_back();
  QTest::keyClick(frame_.get(), Qt::Key_K, Qt::AltModifier);
  EXPECT_TRUE(goes());
  EXPECT_TRUE(doc_.IsModified());
  std::filesystem::remove(dir_ / "a.tbl");
  come_back();
  EXPECT_TRUE(bar->findChild<QLabel*>()->text().startsWith(QStringLiteral("a.tbl is no longer")));
  EXPECT_TRUE(buttons[0]->isHidden() && buttons[1]->isHidden()) << "there is nothing to load";
  frame_->Command(kFileSave)->trigger();
  EXPECT_TRUE(bar->isHidden());
  EXPECT_EQ(ReadAll(dir_ / "a.tbl").size(), 23040U);
}

TEST_F(MainFrame, ANameThatIsNoTextIsRefusedWithItsReason) {
#ifdef Q_OS_WIN
  const std::filesystem::path name = L"a\xD800.tbl";  // half a pair
#else
  const std::filesystem::path name = "a\xFF.tbl";
#endif
  WriteAll(dir_.Path() / name, "x");
  WriteAll(dir_.Path() / PathOf("a\xEF\xBF\xBD.tbl"), "looks alike");
  QString said;
  WithModal(
      [&said](QWidget* window) {
        said = qobject_cast<QMessageBox*>(window)->text();
        window->close();
      },
      [&] { EXPECT_FALSE(frame_->OpenAny(TextFromPath(dir_.Path() / name))); });
  EXPECT_TRUE(said.contains(QStringLiteral("bytes that are not text"))) << said.toStdString();
}

}  // namespace
}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/survey_window.h"

#include "app/command_map.h"
#include "support/example_survey.h"
#include "support/frame_test.h"
#include "support/modal.h"
#include "survey/widgets/report_files.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class SurveyWindowTest : public FrameTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(MakeExampleSurvey(dir_ / "s", "--evening"));
    doc_.OnNewDocument();
    frame_.show();
    EXPECT_FALSE(frame_.OpenAny(TextFromPath(dir_ / "s"))) << "no display of the main window";
    window_ = frame_.findChild<CSurveyWindow*>();
    ASSERT_NE(window_, nullptr);
    ASSERT_TRUE(WaitForScan());
  }
  bool WaitForScan() {
    return QTest::qWaitFor([this] { return !window_->IsScanning(); }, 30000);
  }
  template <typename Widget>
  Widget* Find(const char* name) {
    return window_->findChild<Widget*>(QLatin1String(name));
  }
  QString State() { return Find<QLabel>("survey-state")->text(); }
  // The first cell of each top row.
  QStringList Tops() {
    QStringList tops;
    for (int row = 0; row < window_->Model().rowCount(); ++row) {
      tops << window_->Model().index(row, 0).data().toString();
    }
    return tops;
  }

  CSurveyWindow* window_ = nullptr;
};

TEST_F(SurveyWindowTest, ListsGroupsAndFiltersByKeyboard) {
  EXPECT_FALSE(window_->Findings().empty());
  // A field laptop's screen at twice the size, with a title above.
  EXPECT_LE(window_->minimumSizeHint().width(), 683);
  EXPECT_LE(window_->minimumSizeHint().height(), 384 - 24);
  EXPECT_TRUE(State().contains(QStringLiteral("findings"))) << State().toStdString();
  auto* list = Find<QTreeView>("recordings");
  auto* grouping = Find<QComboBox>("survey-grouping");
  QTest::keyClick(grouping, Qt::Key_Down);  // by box
  const QStringList boxes = Tops();
  EXPECT_GE(boxes.size(), 5);
  EXPECT_TRUE(boxes.contains(QStringLiteral("1215: 5 rows")) ||
              !boxes.filter(QStringLiteral("1215: ")).isEmpty())
      << boxes.join(QLatin1Char('|')).toStdString();
  QTest::keyClick(grouping, Qt::Key_Home);  // no groups
  list->sortByColumn(static_cast<int>(SurveyColumn::kBad), Qt::DescendingOrder);
  EXPECT_EQ(window_->Model().index(0, static_cast<int>(SurveyColumn::kBox)).data().toString(),
            QStringLiteral("1207"));
  auto* filter = Find<QLineEdit>("survey-filter");
  QTest::keyClicks(filter, QStringLiteral("1207 tss"));
  EXPECT_GT(window_->Model().rowCount(), 0);
  for (int row = 0; row < window_->Model().rowCount(); ++row) {
    EXPECT_TRUE(Tops()[row].contains(QStringLiteral("1207")));
  }
  // Return opens the file in the main window.
  filter->clear();
  QTest::keyClicks(filter, QStringLiteral("1215-2.tss"));
  ASSERT_EQ(window_->Model().rowCount(), 1);
  list->setFocus();
  list->setCurrentIndex(window_->Model().index(0, 0));
  QTest::keyClick(list, Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([this] { return frame_.Display() != nullptr; }, 10000));
}

TEST_F(SurveyWindowTest, ShowsFindingsAndWhatBelongsToThem) {
  auto* findings = Find<FindingsPane>("survey-findings");
  const QAbstractItemModel& model = *findings->model();
  ASSERT_EQ(model.rowCount(), static_cast<int>(window_->Findings().size()));
  for (int i = 0; i < model.rowCount(); ++i) {
    const SurveyFinding& finding = window_->Findings()[static_cast<std::size_t>(i)];
    if (finding.path.empty()) {
      continue;
    }
    findings->setCurrentIndex(model.index(i, 0));
    QTest::keyClick(findings, Qt::Key_Return);
    const QModelIndex current = Find<QTreeView>("recordings")->currentIndex();
    EXPECT_EQ(current.siblingAtColumn(0).data().toString().toStdString(), finding.path);
    EXPECT_TRUE(current.siblingAtColumn(static_cast<int>(SurveyColumn::kFindings))
                    .data(Qt::AccessibleTextRole)
                    .toString()
                    .contains(QString::fromStdString(finding.sentence)));
  }
  QTest::keyClicks(Find<QLineEdit>("findings-filter"), QStringLiteral("bad"));
  EXPECT_EQ(model.rowCount(), 1);
  EXPECT_TRUE(
      Find<QTabWidget>("survey-tabs")->tabText(0).startsWith(QStringLiteral("Findings (1 of ")));
  // A site on the map, or beside it, chooses its recordings.
  auto* map = Find<SpreadMapView>("survey-map");
  ASSERT_EQ(map->Map().items.size(), 3U);
  Find<QTabWidget>("survey-tabs")->setCurrentIndex(1);
  QTest::keyClick(map, Qt::Key_End);
  QTest::keyClick(map, Qt::Key_Return);
  const auto chosen = [this] {
    QStringList names;
    for (const QModelIndex& index :
         Find<QTreeView>("recordings")->selectionModel()->selectedRows()) {
      names << index.data().toString();
    }
    names.sort();
    return names.join(QLatin1Char(' '));
  };
  EXPECT_EQ(chosen(),
            QStringLiteral("2026-11-23/1203-2.TSS 2026-11-23/1203.TSS 2026-11-23/1207.TSS "
                           "2026-11-23/1215.TSS 2026-11-23/2417.TSS"));
  auto* sites = Find<QListWidget>("survey-sites");
  ASSERT_EQ(sites->count(), 4);
  sites->setCurrentRow(3);
  QTest::keyClick(sites, Qt::Key_Return);
  EXPECT_EQ(chosen(), QStringLiteral("2026-11-23/1211.TSS")) << "of no site that is named";
  EXPECT_EQ(sites->currentRow(), 3);
  sites->setCurrentRow(0);
  QTest::keyClick(sites, Qt::Key_Return);
  EXPECT_TRUE(chosen().startsWith(QStringLiteral("2026-11-21/1203.TSS ")));
  // The picture of what was recorded when goes from recording to recording.
  auto* coverage = Find<CoverageView>("coverage");
  EXPECT_TRUE(coverage->accessibleDescription().startsWith(QStringLiteral("5 boxes from ")))
      << coverage->accessibleDescription().toStdString();
  Find<QTreeView>("recordings")->setCurrentIndex({});
  QTest::keyClick(coverage, Qt::Key_Right);
  const auto name = [this] {
    return Find<QTreeView>("recordings")->currentIndex().siblingAtColumn(0).data().toString();
  };
  const QString first = name();
  QTest::keyClick(coverage, Qt::Key_Down);
  EXPECT_NE(name(), first);
  EXPECT_FALSE(name().isEmpty());
}

TEST_F(SurveyWindowTest, SeesNewFilesAndGivesTheSelectionToConversions) {
  const auto count = [this] { return window_->Model().List().Rows().size(); };
  const std::size_t before = count();
  std::filesystem::path recording;
  for (const SharedRow& row : window_->Model().List().Rows()) {
    if (row->IsRecording()) {
      recording = dir_ / "s" / row->place / row->files.front().name;
    }
  }
  std::filesystem::copy_file(recording, recording.parent_path() / "9999.TSS");
  EXPECT_TRUE(QTest::qWaitFor([&] { return count() > before; }, 20000));
  ASSERT_TRUE(WaitForScan());
  auto* list = Find<QTreeView>("recordings");
  list->selectAll();
  QSignalSpy wanted(window_, &CSurveyWindow::conversionWanted);
  auto* menu = Find<QToolButton>("survey-convert")->menu();
  emit menu->aboutToShow();
  ASSERT_TRUE(menu->actions().value(7)->isEnabled());
  WithWindows({[](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); },
               [](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); }},
              [&] { menu->actions().value(7)->trigger(); });  // tables to text
  ASSERT_EQ(wanted.size(), 1);
  EXPECT_FALSE(wanted[0][1].toStringList().isEmpty());
  EXPECT_TRUE(wanted[0][1].toStringList().filter(QStringLiteral(".TSS")).isEmpty());
  const SurveyReport report = {"s", window_->Model().List().Rows(), window_->Findings(), {}};
  EXPECT_TRUE(SaveReport(report, TextFromPath(dir_ / "r.pdf")));
  const std::string pdf = ReadAll(dir_ / "r.pdf");
  EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
  EXPECT_NE(pdf.find("/Subtype /Image"), std::string::npos) << "of the coverage";
  EXPECT_TRUE(SaveReport(report, TextFromPath(dir_ / "r.html")));
  EXPECT_FALSE(SaveReport(report, TextFromPath(dir_ / "none/r.html")));
}

#ifndef Q_OS_WIN  // where a folder that is watched cannot be renamed
// A card that is pulled out, and put in again.
TEST_F(SurveyWindowTest, SaysThatTheFolderIsGoneAndSeesItComeBack) {
  const QString before = State();
  std::filesystem::rename(dir_ / "s", dir_ / "elsewhere");
  const auto is_gone = [this] { return State().contains(TextFromPath(dir_ / "s")); };
  ASSERT_TRUE(QTest::qWaitFor(is_gone, 20000)) << State().toStdString();
  EXPECT_GT(window_->Model().rowCount(), 0) << "what was there is still to be seen";
  std::filesystem::rename(dir_ / "elsewhere", dir_ / "s");
  EXPECT_TRUE(QTest::qWaitFor([&] { return State() == before; }, 20000)) << State().toStdString();
}
#endif

}  // namespace
}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTableView>
#include <QTableWidget>
#include <QToolButton>

#include "check/widgets/check_dock.h"
#include "files/file_system.h"
#include "support/assistive.h"
#include "support/frame_test.h"
#include "support/modal.h"
#include "table/param_access.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class CheckDockTest : public FrameTest {
 protected:
  void SetUp() override {
    doc_.OnNewDocument();
    for (const auto& [key, serial] :
         {std::pair("SNUM", 2417), {"SN01", 1203}, {"SN02", 0}, {"SN03", 1207}}) {
      PutInt(&table_, key, serial);
    }
    ASSERT_TRUE(doc_.OnSaveDocument(QString::fromStdString((dir_ / "Main.tbl").string())));
    frame_.show();
    QApplication::setActiveWindow(&frame_);
    QTest::keyClick(&frame_, Qt::Key_F7);
    ASSERT_TRUE(Dock()->isVisible());
    WaitForFiles();
  }
  CheckDock* Dock() const { return frame_.findChild<CheckDock*>(); }
  QTableView* List() const { return Dock()->findChild<QTableView*>(QStringLiteral("findings")); }
  void WaitForFiles() const {
    QSignalSpy done(Dock()->findChild<FileCheck*>(), &FileCheck::done);
    Dock()->LookAtFiles();
    ASSERT_TRUE(done.wait());
  }
  int RowOf(std::string_view id) const {
    const auto* model = qobject_cast<FindingsModel*>(List()->model());
    for (int row = 0; row < model->rowCount(); ++row) {
      if (model->At(row).id == id) {
        return row;
      }
    }
    return -1;
  }
  QStringList There() const {
    const auto* boxes = Dock()->findChild<QTableWidget*>();
    QStringList texts;
    for (int row = 0; row < boxes->rowCount(); ++row) {
      texts << boxes->item(row, 4)->text() + QLatin1Char(' ') + boxes->item(row, 1)->text();
    }
    return texts;
  }
};

TEST_F(CheckDockTest, FollowsTheTableAndOpensTheDialogThatMends) {
  const int gap = RowOf("serial-gap");
  ASSERT_GE(gap, 0);
  EXPECT_EQ(gap, 0) << "errors come first";
  const QModelIndex sentence = List()->model()->index(gap, FindingsModel::kSentence);
  EXPECT_TRUE(sentence.data().toString().contains(QStringLiteral("1207")));
  EXPECT_EQ(List()->model()->index(gap, 0).data(Qt::AccessibleTextRole), QStringLiteral("error"));
  const auto* counter = frame_.findChild<QToolButton*>(QStringLiteral("finding-counter"));
  EXPECT_EQ(counter->text(), Dock()->CountText());
  List()->setCurrentIndex(sentence);
  const auto titles =
      WithWindows({[](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); }},
                  [this] { QTest::keyClick(List(), Qt::Key_Return); });
  EXPECT_EQ(titles.size(), 1) << "Return opens what mends it";
  PutInt(&table_, "SN02", 1205);
  doc_.NoteStep(QStringLiteral("Edit"));
  EXPECT_EQ(RowOf("serial-gap"), -1);
}

TEST_F(CheckDockTest, DismissedHintsStayAwayForThisTableOnly) {
  int hint = -1;
  const auto* model = qobject_cast<FindingsModel*>(List()->model());
  for (int row = 0; row < model->rowCount(); ++row) {
    hint = model->At(row).severity == Severity::kHint ? row : hint;
  }
  ASSERT_GE(hint, 0);
  const int all = model->rowCount();
  List()->setCurrentIndex(model->index(hint, 0));
  Dock()->findChild<QPushButton*>(QStringLiteral("dismiss"))->click();
  EXPECT_EQ(model->rowCount(), all - 1);
  Dock()->Follow();
  EXPECT_EQ(model->rowCount(), all - 1);
  Dock()->findChild<QCheckBox*>()->click();
  EXPECT_EQ(model->rowCount(), all) << "to be taken back";
  Dock()->findChild<QCheckBox*>()->click();
  Dock()->SetFile(QStringLiteral("/other.tbl"));
  Dock()->Follow();
  EXPECT_EQ(model->rowCount(), all) << "of another table nothing is dismissed";
}

TEST_F(CheckDockTest, SaysWhatLiesInTheBoxesPlacesAndWritesAllOfThem) {
  const QString left_out = QStringLiteral("1207 gets no file");
  EXPECT_EQ(There(), (QStringList{QStringLiteral("2417 nothing"), QStringLiteral("1203 nothing"),
                                  left_out}));
  std::vector<QString> asked;
  WithWindows({[&asked](QWidget* window) {
                 auto* box = qobject_cast<QMessageBox*>(window);
                 asked.push_back(box->text());
                 box->button(QMessageBox::Yes)->click();
               },
               [](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); }},
              [this] { Dock()->findChild<QPushButton*>(QStringLiteral("write-all"))->click(); });
  ASSERT_EQ(asked.size(), 1U);
  EXPECT_TRUE(asked[0].contains(QStringLiteral("1207 gets no file"))) << asked[0].toStdString();
  EXPECT_TRUE(std::filesystem::exists(dir_ / "2417.tbl"));
  EXPECT_TRUE(std::filesystem::exists(dir_ / "1203.tbl"));
  WaitForFiles();
  EXPECT_EQ(There(),
            (QStringList{QStringLiteral("2417 same"), QStringLiteral("1203 same"), left_out}));
  WriteAll(dir_ / "1203.tbl", ReadAll(dir_ / "2417.tbl"));
  WaitForFiles();
  EXPECT_EQ(There().value(1), QStringLiteral("1203 serial 2417"));
}

// The card of 1203 loses what is written to it; the other one takes its file.
TEST_F(CheckDockTest, CopiesTheFilesToTheirCardsAndReadsThemBack) {
  static ReadCalls usual = ReaderCalls();
  for (const char* card : {"card1", "card2"}) {
    std::filesystem::create_directories(dir_ / card);
  }
  WithWindows({[](QWidget* window) {
                 qobject_cast<QMessageBox*>(window)->button(QMessageBox::Yes)->click();
               },
               [](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); }},
              [this] { Dock()->findChild<QPushButton*>(QStringLiteral("write-all"))->click(); });
  ReaderCalls().forget = [](const std::filesystem::path& path) {
    if (path.filename() == "1203.tbl") {
      std::filesystem::resize_file(path, 100);
    }
    return true;
  };
  QString state;
  QStringList results;
  WithWindows(
      {[&](QWidget* window) {
         auto* main = window->findChild<QLineEdit*>(QStringLiteral("card-2417"));
         auto* auxiliary = window->findChild<QLineEdit*>(QStringLiteral("card-1203"));
         auto* copy = window->findChild<QPushButton*>(QStringLiteral("copy"));
         EXPECT_FALSE(copy->isEnabled()) << "no card is named";
         SetTextAssistively(auxiliary, QString::fromStdString((dir_ / "card1").string()));
         QMimeData folder;
         folder.setUrls({QUrl::fromLocalFile(QString::fromStdString((dir_ / "card2").string()))});
         QDragEnterEvent enter(QPoint(2, 2), Qt::CopyAction, &folder, Qt::LeftButton,
                               Qt::NoModifier);
         QApplication::sendEvent(main, &enter);
         QDropEvent drop(QPointF(2, 2), Qt::CopyAction, &folder, Qt::LeftButton, Qt::NoModifier);
         QApplication::sendEvent(main, &drop);
         state = window->findChild<QLabel*>(QStringLiteral("cards-state"))->text();
         // Its result comes up while it is open.
         QTimer::singleShot(0, copy, &QPushButton::click);
       },
       [&results](QWidget* window) {
         for (const auto* label : window->findChildren<QLabel*>()) {
           results << label->text();
         }
         const auto* list = window->findChild<QTreeWidget*>();
         for (int row = 0; row < list->topLevelItemCount(); ++row) {
           const auto* item = list->topLevelItem(row);
           results << item->text(0) + QLatin1Char(' ') + item->text(1);
         }
         QTest::keyClick(window, Qt::Key_Escape);
       },
       [](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); }},
      [this] { Dock()->findChild<QPushButton*>(QStringLiteral("copy-to-cards"))->click(); });
  ReaderCalls() = usual;
  EXPECT_TRUE(state.startsWith(QStringLiteral("2 of 2 files will be copied")))
      << state.toStdString();
  const std::string all = results.join(QLatin1Char('\n')).toStdString();
  for (const char* text : {"1 of 2 files are on their cards", "23040 bytes, verified",
                           "1203.tbl does not hold what was written to it"}) {
    EXPECT_NE(all.find(text), std::string::npos) << all;
  }
  EXPECT_EQ(ReadAll(dir_ / "card2" / "2417.tbl"), ReadAll(dir_ / "2417.tbl"));
  EXPECT_EQ(PathFromText(QSettings().value(QStringLiteral("Cards/2417")).toString()),
            dir_ / "card2");
}

}  // namespace
}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDrag>
#include <QUrl>

#include "support/gui.h"
#include "ui/grid_ctrl.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// Column A is never edited, row 3 is hidden; B and C take the numbers 0 to 99.
class GridPaste : public ::testing::Test {
 protected:
  GridPaste() {
    grid_.SetRowCount(1);
    grid_.SetFixedRowCount(1);
    Fill();
    grid_.SetBeginEdit([](int, int col) { return col > 0; });
    grid_.SetEditValidator(&validator_);
    grid_.resize(400, 300);
    grid_.show();
  }
  void Fill() {
    grid_.SetTexts(
        {{"A", "B", "C"}, {"a", "1", "2"}, {"b", "3", "4"}, {"c", "5", "6"}, {"d", "7", "8"}});
    grid_.SetRowVisible(3, false);
  }
  QString Data() const {
    QStringList rows;
    for (int row = 1; row < 5; ++row) {
      rows << grid_.GetItemText(row, 0) + grid_.GetItemText(row, 1) + grid_.GetItemText(row, 2);
    }
    return rows.join(' ');
  }
  QPoint Middle(int row, int col) const {
    return grid_.visualRect(grid_.model()->index(row, col)).center();
  }
  // What a drag over a cell and a drop there come to.
  bool Drop(const QMimeData& data, int row, int col) {
    const QPoint at = Middle(row, col);
    const auto all = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(at, all, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(grid_.viewport(), &enter);
    QDropEvent drop(at, all, &data, Qt::LeftButton, Qt::NoModifier);
    drop.setDropAction(Qt::MoveAction);
    if (enter.isAccepted()) {
      QApplication::sendEvent(grid_.viewport(), &drop);
    }
    return enter.isAccepted() && drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
  }

  QIntValidator validator_{0, 99};
  CGridCtrl grid_;
};

TEST_F(GridPaste, KeepsToTheRulesOfEditing) {
  struct Case {
    const char* text;
    int row, col;
    const char* data;  // afterwards
    int notices, set, refused;
  };
  const std::vector<Case> cases = {
      {"11\t12\r\n13\t14\n", 1, 1, "a1112 b1314 c56 d78", 4, 4, 0},
      {"11\n12\n13\n14", 1, 1, "a112 b124 c56 d138", 3, 3, 0},  // past hidden and last rows
      {"x\t11\t12\t13", 2, 0, "a12 b1112 c56 d78", 2, 2, 1},
      {"1\tx\n100\t9", 1, 1, "a12 b39 c56 d78", 1, 2, 2},
      {"", 1, 1, "a12 b34 c56 d78", 0, 0, 0},
      {"9", -1, -1, "a12 b34 c56 d78", 0, 0, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    Fill();
    grid_.SetFocusCell(c.row, c.col);
    const QSignalSpy notices(&grid_, &CGridCtrl::cellEdited);
    const QSignalSpy pasted(&grid_, &CGridCtrl::pasted);
    QGuiApplication::clipboard()->setText(c.text);
    QTest::keyClick(&grid_, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Data(), c.data);
    EXPECT_EQ(notices.count(), c.notices);
    EXPECT_EQ(pasted.value(0), (QVariantList{c.set, c.refused}));
  }
}

TEST_F(GridPaste, FindsItsCellsWhenAListenerSorts) {
  QObject::connect(&grid_, &CGridCtrl::cellEdited, [&] { grid_.SortTextItems(0, false); });
  grid_.SetFocusCell(1, 1);
  EXPECT_EQ(grid_.PasteText("11\n12\n13"), 3);
  EXPECT_EQ(Data(), "d138 c56 b124 a112");
}

TEST_F(GridPaste, DropsPasteWhereTheyFallAndOnlyWhenEnabled) {
  QMimeData text;
  text.setText("11\n12");
  EXPECT_FALSE(Drop(text, 2, 1));
  grid_.SetDragEnabled(true);
  EXPECT_TRUE(Drop(text, 2, 1)) << "copied, although a move was proposed";
  EXPECT_EQ(Data(), "a12 b114 c56 d128");
  QMimeData file;
  file.setUrls({QUrl::fromLocalFile("/1")});
  file.setText("1");
  EXPECT_FALSE(Drop(file, 1, 1));
}

TEST_F(GridPaste, DragsSelectedCellsOut) {
  if (QApplication::platformName() == QLatin1String("windows")) {
    GTEST_SKIP() << "Windows itself drags, until a real button is released";
  }
  QString dragged;
  const auto drag = [&](int row) {
    dragged.clear();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      if (const auto* running = grid_.findChild<QDrag*>()) {
        dragged = running->mimeData()->text();
        QDrag::cancel();
      }
    });
    timer.start(0);
    QTest::mousePress(grid_.viewport(), Qt::LeftButton, {}, Middle(row, 1));
    QTest::mouseMove(grid_.viewport(), Middle(row, 1) + QPoint(5, 0));
    QTest::mouseMove(grid_.viewport(), Middle(4, 2));
    QTest::mouseRelease(grid_.viewport(), Qt::LeftButton, {}, Middle(4, 2));
    QCoreApplication::processEvents();
    return dragged;
  };
  grid_.SetFocusCell(1, 1);
  EXPECT_EQ(drag(1), "") << "off";
  grid_.SetDragEnabled(true);
  grid_.SetFocusCell(1, 1);
  EXPECT_EQ(drag(2), "") << "not selected";
  EXPECT_EQ(grid_.SelectionAsText(), "3\t4\n7\t8");
  EXPECT_EQ(drag(2), "3\t4\n7\t8");
}

// Each window that opens is answered in its turn; what is pressed in a menu is pressed as assistive
// tools do, which leaves it open.
class Answers : public QTimer {
 public:
  explicit Answers(const QStringList& answers) {
    QObject::connect(this, &QTimer::timeout, [this, left = answers]() mutable {
      QWidget* menu = QApplication::activePopupWidget();
      QWidget* window = menu != nullptr ? menu : QApplication::activeModalWidget();
      if (window == nullptr || !window->isVisible() || left.isEmpty()) {
        return;
      }
      const QString answer = left.takeFirst();
      if (menu != nullptr) {
        QAccessible::queryAccessibleInterface(menu)
            ->child(answer.toInt())
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
      } else if (auto* files = qobject_cast<QFileDialog*>(window)) {
        files->selectFile(answer);
        QMetaObject::invokeMethod(files, "accept");
      } else {
        auto* box = qobject_cast<QMessageBox*>(window);
        told << (box == nullptr ? window->metaObject()->className() : box->text());
        window->close();
      }
    });
    start(0);
  }
  QStringList told;
};

TEST_F(GridPaste, TheMenuSavesLoadsAndTellsWhatIsRefused) {
  const TempDir dir;
  const auto path = QString::fromStdString((dir / "cells.txt").string());
  QObject::connect(&grid_, &CGridCtrl::cellEdited, [&](int row, int col) {
    if (grid_.GetItemText(row, col) == "66") {
      grid_.SetItemText(row, col, "6");
      EXPECT_TRUE(grid_.RefuseEdit("C: no 66"));
    }
  });
  const auto choose = [&](const QStringList& answers) {
    Answers answered(answers);
    QTest::keyClick(&grid_, Qt::Key_F10, Qt::ShiftModifier);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return answered.told;
  };
  const char* header = "A\tB\tC\n";
  EXPECT_EQ(choose({"3", path}), QStringList());
  EXPECT_EQ(ReadAll(dir / "cells.txt"),
            std::string(header) + "a\t1\t2\nb\t3\t4\nc\t5\t6\nd\t7\t8\n");
  EXPECT_EQ(choose({"4", path}), QStringList()) << "as they are: nothing is refused";
  WriteAll(dir / "cells.txt", std::string(header) + "a\t11\t2\nb\t3\t100\nc\t5\t66\nd\t7\t9\n");
  EXPECT_EQ(choose({"4", path, ""}),
            QStringList("2 of 12 cells were refused and stay as they were.\n\nRow 3, C: no 66"));
  EXPECT_EQ(Data(), "a112 b34 c56 d79");
  WriteAll(dir / "cells.txt", "other\n");
  EXPECT_EQ(choose({"4", path, ""}), QStringList(path + ": line 1: 1 cells instead of 3"));
  const QStringList printed = choose({"5", ""});
#ifdef Q_OS_WIN
  EXPECT_TRUE(printed == QStringList("QPrintDialog") ||
              printed == QStringList("No printer is installed"));
#else
  EXPECT_EQ(printed, QStringList("QPrintDialog"));
#endif
  grid_.SetFocusCell(1, 2);
  Answers answered({""});
  EXPECT_EQ(grid_.PasteText("66\n12"), 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(answered.told.value(0).section('\n', 2), "Row 1, C: no 66");
}

TEST_F(GridPaste, CellsSurviveAFile) {
  const TempDir dir;
  const auto path = QString::fromStdString((dir / "cells").string());
  const QString odd = QStringLiteral("\\t\t\r\n\u00e4\\");
  grid_.SetEditValidator(nullptr);
  grid_.SetItemText(3, 2, odd);
  ASSERT_EQ(grid_.SaveCells(path).Message(), "");
  EXPECT_EQ(ReadAll(dir / "cells"),
            "A\tB\tC\na\t1\t2\nb\t3\t4\nc\t5\t\\\\t\\t\\r\\n\u00e4\\\\\nd\t7\t8\n");
  for (int row = 1; row < 5; ++row) {
    grid_.SetItemText(row, 2, "0");
  }
  ASSERT_EQ(grid_.LoadCells(path).Message(), "");
  EXPECT_EQ(Data(), "a12 b34 c5" + odd + " d78");
  grid_.SetOwnerOfCells("Local Box 7");
  ASSERT_EQ(grid_.SaveCells(path).Message(), "");
  EXPECT_TRUE(ReadAll(dir / "cells").starts_with("A of Local Box 7\tB\tC\n"));
  ASSERT_EQ(grid_.LoadCells(path).Message(), "");
  grid_.SetOwnerOfCells("Aux. Box 8");
  EXPECT_NE(
      grid_.LoadCells(path).Message().find("\"A of Local Box 7\" and not \"A of Aux. Box 8\""),
      std::string::npos);
  const std::string reason = grid_.SaveCells(path + "/x").Message();
  EXPECT_TRUE(reason.starts_with(QDir::toNativeSeparators(path + "/x: ").toStdString())) << reason;
}

TEST_F(GridPaste, ForeignFilesChangeNothing) {
  const TempDir dir;
  const auto path = QString::fromStdString((dir / "cells").string());
  struct Case {
    const char* bytes;
    const char* reason;
  };
  for (const auto& c : std::vector<Case>{
           {"", "the header is a different one"},
           {"A\tB\tD\na\t9\t9\n", "the header is a different one: \"D\" and not \"C\""},
           {"A\tB\tC\na\t9\t9\nb\t9\n", "line 3: 2 cells instead of 3"},
           {"A\tB\tC\na\t9\t9\nb\t9\t\\x\n",
            "line 3: a backslash that is not followed by t, n, r or a backslash"},
           {"A\tB\tC\na\t9\t9\n", "the number of rows is 1 and not 4"},
           {"A\tB\tC\na\t9\t9\nc\t9\t9\nb\t9\t9\nd\t9\t9\n",
            "row 2 is \"c\" and not \"b\"; nothing was loaded"},
           {"A\tB\tC\na\t9\t9\nb\t9\t9\xC3", "the text is not UTF-8"}}) {
    WriteAll(dir / "cells", c.bytes);
    EXPECT_EQ(grid_.LoadCells(path).Message(), path.toStdString() + ": " + c.reason);
    EXPECT_EQ(Data(), "a12 b34 c56 d78");
  }
}

}  // namespace
}  // namespace orvane

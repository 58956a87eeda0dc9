// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/grid_ctrl.h"

#include "support/gui.h"

#include <QDialog>
#include <QGuiApplication>
#include <QHelpEvent>

namespace orvane {
namespace {

using Cell = std::pair<int, int>;
using Rows = std::vector<std::vector<QString>>;

// A grid of three columns in a dialog; row r holds "n<r>", a number and a remark.
class GridTest : public ::testing::Test {
 protected:
  GridTest() {
    grid->SetTexts({{"Name", "Value", "Remark"},
                    {"n1", "10", "b"},
                    {"n2", "9", "a"},
                    {"n3", "100", ""},
                    {"n4", "9", "B"},
                    {"n5", "-1", "a"}});
    grid->SetFixedRowCount(1);
    grid->SetBeginEdit([](int row, int col) { return col == 1 && row != 3; });
    button->setDefault(true);
    QObject::connect(button, &QPushButton::clicked, [this] { ++clicks; });
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(grid);
    layout->addWidget(button);
    dialog.resize(500, 400);
    dialog.show();
    dialog.activateWindow();
    grid->setFocus();
    QCoreApplication::processEvents();
  }

  QLineEdit* Editor() const { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }

  // To whatever has the focus, as from a real keyboard.
  static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static void Type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }

  QString Column(int col) const {
    QStringList texts;
    for (int row = 0; row < grid->GetRowCount(); ++row) {
      texts << grid->GetItemText(row, col);
    }
    return texts.join(' ');
  }

  static QString TipOver(const QPoint& pos, QWidget* viewport) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->inherits("QTipLabel")) {
        delete widget;  // hiding it takes a moment
      }
    }
    QHelpEvent help(QEvent::ToolTip, pos, viewport->mapToGlobal(pos));
    QCoreApplication::sendEvent(viewport, &help);
    return QToolTip::text();
  }

  QDialog dialog;
  CGridCtrl* grid = new CGridCtrl;
  QPushButton* button = new QPushButton("ok");
  int clicks = 0;
};

TEST_F(GridTest, VetoDecidesWhatCanBeEdited) {
  struct Case {
    int row, col;
    bool editable;
  };
  const std::vector<Case> cases = {
      {0, 1, false}, {1, 0, false}, {1, 1, true}, {3, 1, false}, {5, 1, true}};
  for (const auto& c : cases) {
    const QModelIndex index = grid->model()->index(c.row, c.col);
    EXPECT_EQ(index.flags().testFlag(Qt::ItemIsEditable), c.editable) << c.row << ',' << c.col;
    EXPECT_EQ(grid->model()->setData(index, "7"), c.editable) << c.row << ',' << c.col;
    grid->setCurrentIndex(index);
    Key(Qt::Key_F2);
    EXPECT_EQ(grid->IsEditing(), c.editable) << c.row << ',' << c.col;
    grid->CommitEdit();
  }
  grid->SetBeginEdit(nullptr);
  grid->SetFocusCell(1, 1);
  for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Return, Qt::Key_Enter, Qt::Key_5}) {
    Key(key);
  }
  EXPECT_FALSE(grid->IsEditing());
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(grid->GetFocusCell(), Cell(1, 1));
}

TEST_F(GridTest, EditsEndAsTheKeyboardSays) {
  struct Case {
    const char* name;
    Qt::Key begin;
    const char* typed;
    Qt::Key end;
    const char* text;  // afterwards
    int notices;
    Cell focus;
  };
  const std::vector<Case> cases = {
      {"F2", Qt::Key_F2, "12", Qt::Key_Return, "12", 1, {2, 1}},
      {"Return", Qt::Key_Return, "12", Qt::Key_Enter, "12", 1, {2, 1}},
      {"typing replaces", Qt::Key_4, "2", Qt::Key_Return, "42", 1, {2, 1}},
      {"blanks are kept", Qt::Key_F2, " 1 ", Qt::Key_Return, " 1 ", 1, {2, 1}},
      {"Escape", Qt::Key_F2, "12", Qt::Key_Escape, "10", 0, {1, 1}},
      {"unchanged", Qt::Key_F2, "10", Qt::Key_Return, "10", 0, {2, 1}},
      {"down", Qt::Key_F2, "12", Qt::Key_Down, "12", 1, {2, 1}},
      {"Tab", Qt::Key_F2, "12", Qt::Key_Tab, "12", 1, {1, 1}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    grid->setFocus();
    grid->SetItemText(1, 1, "10");
    grid->SetFocusCell(1, 1);
    QSignalSpy notices(grid, &CGridCtrl::cellEdited);
    Key(c.begin);
    ASSERT_TRUE(grid->IsEditing() && Editor());
    EXPECT_EQ(Editor()->objectName(), "cellEditor");
    EXPECT_EQ(Editor()->accessibleName(), "Value");
    Type(c.typed);
    Key(c.end);
    QCoreApplication::processEvents();
    EXPECT_FALSE(grid->IsEditing());
    EXPECT_EQ(grid->GetItemText(1, 1), c.text);
    EXPECT_EQ(notices.count(), c.notices);
    EXPECT_EQ(grid->GetFocusCell(), c.focus);
    EXPECT_EQ(button->hasFocus(), c.end == Qt::Key_Tab);
    EXPECT_TRUE(dialog.isVisible());
  }
  EXPECT_EQ(clicks, 0);
  grid->setFocus();
  Key(Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
}

TEST_F(GridTest, TabVisitsEditableCellsWhereItIsAsked) {
  grid->SetTabVisitsCells(true);
  grid->setFocus();
  grid->SetFocusCell(1, 0);
  std::vector<Cell> visited;
  for (int i = 0; i < 4; ++i) {
    Key(Qt::Key_Tab);
    visited.push_back(grid->GetFocusCell());
  }
  EXPECT_EQ(visited, (std::vector<Cell>{{1, 1}, {2, 1}, {4, 1}, {5, 1}})) << "3 is forbidden";
  Key(Qt::Key_Tab);
  EXPECT_TRUE(button->hasFocus()) << "out behind the last one";
  grid->setFocus();
  Key(Qt::Key_Backtab);
  EXPECT_EQ(grid->GetFocusCell(), Cell(4, 1));
  Key(Qt::Key_4);
  Key(Qt::Key_Tab);
  EXPECT_EQ(grid->GetFocusCell(), Cell(5, 1));
  EXPECT_EQ(grid->GetItemText(4, 1), "4");
  QObject::connect(grid, &CGridCtrl::cellEdited, grid, [this] { grid->RefuseEdit(); });
  grid->SetFocusCell(1, 1);
  Key(Qt::Key_7);
  Key(Qt::Key_Return);
  EXPECT_EQ(grid->GetFocusCell(), Cell(1, 1)) << "a refused cell is not left";
  Key(Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_TRUE(button->hasFocus());
}

TEST_F(GridTest, CommitEditIsSynchronousAndNotifiesOnce) {
  // A listener that puts another text in place and sorts must not provoke a second notice.
  int notices = 0;
  QObject::connect(grid, &CGridCtrl::cellEdited, [&](int row, int col) {
    ++notices;
    EXPECT_EQ(grid->GetItemText(row, col), "077");
    EXPECT_FALSE(grid->IsEditing());
    grid->SetItemText(row, col, "77");
    grid->SortTextItems(0, false);
  });
  grid->SetFocusCell(1, 1);
  Key(Qt::Key_F2);
  Type("077");
  grid->SetItemMarked(1, 1, true);  // must leave alone what is being typed
  grid->CommitEdit();
  EXPECT_EQ(notices, 1);
  EXPECT_EQ(grid->GetItemText(5, 1), "77");
  EXPECT_EQ(grid->GetFocusCell(), Cell(5, 1));
  QCoreApplication::processEvents();
  grid->CommitEdit();
  EXPECT_EQ(notices, 1);
}

TEST_F(GridTest, ValidatorAndLimitBindEveryWayOut) {
  const QIntValidator validator(0, 500);
  grid->SetEditValidator(&validator);
  grid->DefaultCell().SetTextLimit(2);
  grid->SetFocusCell(5, 1);  // "-1", which the validator would not accept
  Key(Qt::Key_F2);
  Key(Qt::Key_Return);
  EXPECT_FALSE(grid->IsEditing()) << "an untouched text must not lock the editor";
  grid->SetItemText(1, 1, "100");  // longer than what may be typed
  grid->SetFocusCell(1, 1);
  Key(Qt::Key_F2);
  EXPECT_EQ(Editor()->text(), "100");
  Key(Qt::Key_Escape);
  grid->SetItemText(1, 1, "10");
  Key(Qt::Key_F2);
  Type("4x321");
  EXPECT_EQ(Editor()->text(), "43");
  Editor()->clear();
  Key(Qt::Key_Return);
  EXPECT_TRUE(grid->IsEditing());
  EXPECT_EQ(clicks, 0);
  grid->SetFocusCell(2, 1);
  EXPECT_FALSE(grid->IsEditing());
  EXPECT_EQ(grid->GetItemText(1, 1), "10");
  for (const char* text : {"x", "", "123"}) {
    EXPECT_FALSE(grid->model()->setData(grid->model()->index(1, 1), text)) << text;
  }
}

TEST_F(GridTest, SortingCarriesRowsAlong) {
  const auto by_number = [](const QString& a, const QString& b) { return a.toInt() < b.toInt(); };
  struct Case {
    const char* name;
    int col;
    bool number, ascending;
    const char* order;
    int focus;  // where n3 comes to stand
  };
  const std::vector<Case> cases = {{"text", 1, false, true, "Name n5 n1 n3 n2 n4", 3},
                                   {"text down", 1, false, false, "Name n2 n4 n3 n1 n5", 3},
                                   {"number", 1, true, true, "Name n5 n2 n4 n1 n3", 5},
                                   {"number down", 1, true, false, "Name n3 n1 n2 n4 n5", 1},
                                   {"code units", 2, false, true, "Name n3 n4 n2 n5 n1", 1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    grid->SetVisibleRows({});
    grid->SortTextItems(0, true);
    grid->SetItemMarked(2, 0, true);
    grid->SetVisibleRows({true, true, false, true, true, false});  // without n2 and n5
    grid->SetFocusCell(3, 2);
    QSignalSpy moved(grid, &CGridCtrl::focusCellChanged);
    c.number ? grid->SortItems(by_number, c.col, c.ascending)
             : grid->SortTextItems(c.col, c.ascending);
    EXPECT_EQ(Column(0), c.order);
    EXPECT_EQ(grid->GetFocusCell(), Cell(c.focus, 2));
    EXPECT_EQ(moved.count(), c.focus == 3 ? 0 : 1);
    EXPECT_EQ(grid->selectionModel()->selectedIndexes(), QModelIndexList{grid->currentIndex()});
    for (int row = 0; row < 6; ++row) {
      const QString name = grid->GetItemText(row, 0);
      EXPECT_EQ(grid->IsRowVisible(row), name != "n2" && name != "n5") << name.toStdString();
      EXPECT_EQ(grid->GetCell(row, 0)->IsMarked(), name == "n2") << name.toStdString();
    }
  }
}

TEST_F(GridTest, KeysNeverReachFixedOrHiddenRows) {
  grid->SetVisibleRows({true, false, true, false, true, false});
  EXPECT_EQ(grid->GetFocusCell().first, 2) << "the focus leaves the hidden row";
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_N, Qt::Key_Down,
                            Qt::Key_Down, Qt::Key_PageDown, Qt::Key_End}) {
    for (const auto modifier : {Qt::NoModifier, Qt::ControlModifier}) {
      Key(key, modifier);
      const int row = grid->GetFocusCell().first;
      EXPECT_TRUE(row == 2 || row == 4) << key << " -> " << row;
    }
  }
  EXPECT_EQ(grid->GetFocusCell(), Cell(4, 2));
  Key(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(grid->GetFocusCell(), Cell(2, 0));
  grid->SetFocusCell(3, 1);
  grid->SetFocusCell(0, 1);
  EXPECT_EQ(grid->GetFocusCell(), Cell(2, 0));
  grid->SetRowVisible(4, false);
  grid->SetRowVisible(2, false);
  EXPECT_EQ(grid->GetFocusCell(), Cell(-1, -1));
  Key(Qt::Key_Down);
  EXPECT_EQ(grid->GetFocusCell(), Cell(-1, -1));
}

TEST_F(GridTest, CopiesTheSelectedRectangle) {
  grid->SetItemText(4, 2, "two\nlines\tand tab");
  grid->SetRowVisible(2, false);
  const auto select = [&](int top, int left, int bottom, int right) {
    grid->selectionModel()->select(
        QItemSelection(grid->model()->index(top, left), grid->model()->index(bottom, right)),
        QItemSelectionModel::Select);
  };
  grid->clearSelection();
  QGuiApplication::clipboard()->setText("before");
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
  select(0, 1, 3, 2);
  select(5, 0, 5, 0);
  EXPECT_EQ(grid->SelectionAsText(), "\t10\tb\n\t100\t\n\t\t\nn5\t\t");
  select(4, 2, 4, 2);
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(),
            "\t10\tb\n\t100\t\n\t\ttwo lines and tab\nn5\t\t");
}

TEST_F(GridTest, ExpandsColumnsUntilOneIsDragged) {
  const auto widths = [&] {
    return grid->GetColumnWidth(0) + grid->GetColumnWidth(1) + grid->GetColumnWidth(2);
  };
  for (int col = 0; col < 3; ++col) {
    grid->SetColumnWidth(col, 60 + 20 * col);
  }
  EXPECT_EQ(widths(), 240);
  grid->ExpandColumnsToFit();
  for (const int width : {500, 701, 400}) {
    dialog.resize(width, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(widths(), grid->viewport()->width());
    EXPECT_NEAR(grid->GetColumnWidth(2) - grid->GetColumnWidth(0), 40, 1);
  }
  dialog.resize(180, 400);
  QCoreApplication::processEvents();
  EXPECT_EQ(widths(), 240);
  dialog.resize(500, 400);
  QCoreApplication::processEvents();
  Key(Qt::Key_Right, Qt::AltModifier);  // counts as dragging
  const int dragged = widths();
  EXPECT_GT(dragged, grid->viewport()->width());
  dialog.resize(700, 400);
  QCoreApplication::processEvents();
  EXPECT_EQ(widths(), dragged);
}

TEST_F(GridTest, AssistiveToolsCountTheFixedRows) {
  Rows rows(720, {"name", "", "x"});
  rows[0] = {"Name", "Value", "Remark"};
  rows[719][2] = "last";
  grid->SetTexts(rows);
  grid->SetItemMarked(719, 2, true);
  QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(grid)->tableInterface();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->rowCount(), 720);
  EXPECT_EQ(table->columnCount(), 3);
  for (const auto& [row, col] : {Cell{0, 0}, {0, 2}, {1, 0}, {1, 1}, {719, 2}}) {
    QAccessibleInterface* cell = table->cellAt(row, col);
    ASSERT_TRUE(cell && cell->isValid()) << row << ',' << col;
    EXPECT_EQ(cell->text(QAccessible::Name), grid->GetItemText(row, col));
    EXPECT_EQ(cell->tableCellInterface()->rowIndex(), row);
    EXPECT_EQ(cell->text(QAccessible::Description), row == 719 ? "changed" : "");
  }
  QSignalSpy notices(grid, &CGridCtrl::cellEdited);
  for (const int col : {0, 1}) {
    table->cellAt(1, col)->setText(QAccessible::Value, "5");
  }
  EXPECT_EQ(grid->GetItemText(1, 0), "name") << "the veto holds for assistive tools too";
  EXPECT_EQ(grid->GetItemText(1, 1), "5");
  EXPECT_EQ(notices.count(), 1);
}

TEST_F(GridTest, TitleTipOnlyWhereTextIsCut) {
  const QString text = "<b> is a text rather longer than its column";
  grid->SetItemText(1, 0, text);
  grid->SetItemText(0, 0, text);
  QWidget* body = grid->viewport();
  QWidget* header = grid->horizontalHeader()->viewport();
  const auto over_cell = [&] {
    return TipOver(grid->visualRect(grid->model()->index(1, 0)).topLeft() + QPoint(5, 5), body);
  };
  grid->SetColumnWidth(0, 60);
  EXPECT_EQ(over_cell(), Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text);
  EXPECT_NE(TipOver({5, 5}, header), "");
  grid->SetColumnWidth(0, 480);
  EXPECT_EQ(over_cell(), "");
  EXPECT_EQ(TipOver({5, 5}, header), "");
  static_cast<CGridCell*>(grid->GetCell(1, 0))->SetTipText("own");
  EXPECT_EQ(over_cell(), "own");
}

TEST_F(GridTest, MayBeDestroyedWhileEditing) {
  grid->SetFocusCell(1, 1);
  Key(Qt::Key_F2);
  ASSERT_TRUE(grid->IsEditing());
  grid->SetTexts({{"H", "I"}, {"a", "b"}});
  EXPECT_FALSE(grid->IsEditing());
  grid->SetFocusCell(1, 1);
  grid->edit(grid->currentIndex());
  ASSERT_TRUE(grid->IsEditing());
  delete grid;
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/stack_display.h"

#include <qcustomplot.h>

#include "app/main_frame.h"
#include "support/frame_test.h"
#include "support/modal.h"
#include "support/stack_bytes.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class StackDisplayTest : public FrameTest {
 protected:
  void Show(const std::string& bytes) {
    WriteAll(dir_ / "a.TRS", bytes);
    frame_.show();
    frame_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&frame_));
    ASSERT_TRUE(frame_.OpenAny(TextFromPath(dir_ / "a.TRS")));
    display_ = qobject_cast<CStackDisplay*>(frame_.Display());
    ASSERT_NE(display_, nullptr);
  }
  template <typename T>
  T* Find(const char* name) const {
    return display_->findChild<T*>(QString::fromLatin1(name));
  }
  // The cells of a row of the items.
  QString Row(int row) const {
    const auto* items = Find<QTableWidget>("items");
    QStringList cells;
    for (int column = 0; column < items->columnCount(); ++column) {
      cells << items->item(row, column)->text();
    }
    return cells.join(QLatin1Char(' ')).simplified();
  }
  QCustomPlot* Plot() const { return display_->findChild<QCustomPlot*>(); }
  // Marks that are drawn filled, or hollow.
  int Marks(bool is_hollow) const { return Plot()->graph(is_hollow ? 1 : 0)->dataCount(); }

  CStackDisplay* display_ = nullptr;
};

std::string TimeRecord(std::string_view label, float a, float b, double value26) {
  return StackBytes(label, Extension(1), 8, 2,
                    FloatBytes(a) + FloatBytes(70) + FloatBytes(b) + FloatBytes(80), value26);
}

TEST_F(StackDisplayTest, ShowsLabelsItemsAndPointsByKeyboard) {
  Show(TimeRecord("E2", 4, -8, 0.5) + TimeRecord("E1", 1, 2, 1) + TimeRecord("E2", 6, -2, 2) + "x");
  auto* list = Find<QListWidget>("labels");
  EXPECT_EQ(list->count(), 2);
  EXPECT_TRUE(list->hasFocus());
  EXPECT_EQ(Row(0), QStringLiteral("1 1 2 5 1.48")) << "item, its place, records, median, spread";
  EXPECT_EQ(Row(1), QStringLiteral("2 2 2 -5 4.44"));
  EXPECT_TRUE(Find<QLabel>("note")->text().contains(QStringLiteral("ends within a record")));
  QTest::keyClick(list, Qt::Key_Y);
  EXPECT_EQ(Marks(false), 1);
  EXPECT_EQ(Marks(true), 1) << "a negative median on a logarithmic axis";
  QTest::keyClick(list, Qt::Key_2);
  EXPECT_EQ(Row(1), QStringLiteral("2 2 2 80 0"));
  QTest::keyClick(list, Qt::Key_2);
  QTest::keyClick(list, Qt::Key_PageDown);
  EXPECT_EQ(Row(1), QStringLiteral("2 2 1 2 0"));
  QTest::keyClick(list, Qt::Key_PageUp);
  auto* over = Find<QComboBox>("against");
  over->setFocus();
  QTest::keyClick(over, Qt::Key_Down);
  EXPECT_EQ(Plot()->xAxis->label(), QStringLiteral("Field at 26"));
  EXPECT_EQ(Marks(false), 2) << "the first item of both records";
  EXPECT_DOUBLE_EQ(Plot()->graph(0)->data()->at(1)->key, 2);
  EXPECT_FALSE(Find<QAction>("windows")->isEnabled()) << "there is no table";
  QTest::keyClick(list, Qt::Key_Escape);
  EXPECT_EQ(frame_.Display(), nullptr);
}

TEST_F(StackDisplayTest, TellsWhatIsOnlySuggestedAndWhatCannotBeRead) {
  Show(StackBytes("A", Extension(1), 4, 3, FloatBytes(1) + FloatBytes(2) + FloatBytes(3)));
  auto* domain = Find<QComboBox>("domain");
  EXPECT_EQ(domain->currentText(), QStringLiteral("Frequency domain"));
  EXPECT_FALSE(Find<QAction>("second")->isEnabled());
  domain->setFocus();
  QTest::keyClick(domain, Qt::Key_Up);
  EXPECT_TRUE(Find<QLabel>("note")->text().contains(QStringLiteral("1 of 1 records")));
  WriteAll(dir_ / "b.trs", "short");
  QString told;
  WithModal(
      [&told](QWidget* window) {
        told = qobject_cast<QMessageBox*>(window)->text();
        window->close();
      },
      [this] { EXPECT_FALSE(frame_.OpenAny(TextFromPath(dir_ / "b.trs"))); });
  EXPECT_TRUE(told.contains(QStringLiteral("b.trs"))) << told.toStdString();
  EXPECT_EQ(frame_.Display(), display_) << "what was there stays";
}

}  // namespace
}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
// What people need who use keyboard, screen reader or a weak screen, in every window there is.

#include <QButtonGroup>
#include <QContextMenuEvent>
#include <QGroupBox>
#include <QPainter>
#include <QRegularExpression>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTabBar>

#include "editors/widgets/param_table_dlg.h"
#include "editors/widgets/startup_dlg.h"
#include "every_window.h"
#include "response/widgets/calibration_display.h"
#include "support/assistive.h"
#include "support/gui.h"
#include "timeseries/widgets/stack_display.h"
#include "timeseries/widgets/waveform_display.h"
#include "ui/byte_text.h"
#include "ui/form_dialog.h"
#include "ui/form_texts.h"
#include "ui/grid_ctrl.h"
#include "ui/plot_theme.h"
#include "ui/theme_style.h"
#include "ui/themes.h"

namespace orvane {
namespace {

bool TakesFocus(const QWidget* widget) {
  return widget->isVisible() && widget->isEnabled() && widget->focusProxy() == nullptr &&
         (widget->focusPolicy() & Qt::TabFocus) != 0;
}

std::string NameOf(const QWidget* widget) {
  return std::string(widget->metaObject()->className()) + " " + widget->objectName().toStdString();
}

// Those that the tab key goes through, in its order.
std::vector<QWidget*> FocusChain(QWidget* window) {
  std::vector<QWidget*> chain;
  QWidget* widget = window;
  do {
    if (TakesFocus(widget) && window->isAncestorOf(widget)) {
      chain.push_back(widget);
    }
    widget = widget->nextInFocusChain();
  } while (widget != window);
  return chain;
}

void ExpectNames(QWidget* window) {
  for (QWidget* widget : FocusChain(window)) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(interface, nullptr) << NameOf(widget);
    EXPECT_FALSE(interface->text(QAccessible::Name).trimmed().isEmpty()) << NameOf(widget);
  }
}

// The child of `container` that `widget` is or is in.
const QWidget* BranchOf(const QWidget* container, const QWidget* widget) {
  while (widget->parentWidget() != container) {
    widget = widget->parentWidget();
  }
  return widget;
}

// Wherever the tab key goes, in the innermost place that holds both ends it goes down or to the
// right; but once it goes back to the beginning, wherever in the chain that is.
void ExpectOrder(QWidget* window) {
  const auto chain = FocusChain(window);
  std::string back;
  int times = 0;
  for (std::size_t i = 0; i < chain.size() && chain.size() > 1; ++i) {
    const QWidget* from = chain[i];
    const QWidget* to = chain[(i + 1) % chain.size()];
    if (from->isAncestorOf(to) || to->isAncestorOf(from)) {
      continue;  // neither is before the other
    }
    const QWidget* container = to->parentWidget();
    while (!container->isAncestorOf(from)) {
      container = container->parentWidget();
    }
    const QRect start = BranchOf(container, from)->geometry();
    const QRect end = BranchOf(container, to)->geometry();
    const bool is_up = end.bottom() < start.top();
    const bool is_same_row = !is_up && end.top() <= start.bottom();
    if ((is_up || is_same_row) && end.left() <= start.right()) {
      back += NameOf(from) + " then " + NameOf(to) + "; ";
      ++times;
    }
  }
  EXPECT_LE(times, 1) << back;
}

QChar Mnemonic(const QString& text) {
  const QKeySequence keys = QKeySequence::mnemonic(text);
  return keys.isEmpty() ? QChar() : QChar(static_cast<char16_t>(keys[0].key()));
}

void ExpectMnemonics(QWidget* window) {
  std::map<QChar, std::string> taken;
  const auto take = [&taken](const QString& text) {
    if (const QChar key = Mnemonic(text); !key.isNull()) {
      EXPECT_EQ(taken[key], "") << text.toStdString();
      taken[key] = text.toStdString();
    }
  };
  for (const QWidget* widget : window->findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->window() != window) {
      continue;
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
      take(button->text());
    } else if (const auto* label = qobject_cast<const QLabel*>(widget);
               label != nullptr && label->buddy() != nullptr) {
      take(label->text());
    } else if (const auto* group = qobject_cast<const QGroupBox*>(widget)) {
      take(group->title());
    } else if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
      for (int i = 0; i < tabs->count(); ++i) {
        take(tabs->tabText(i));
      }
    }
  }
}

// Every row of a menu has a letter, and no two the same.
void ExpectMnemonics(const QMenu* menu) {
  std::map<QChar, std::string> taken;
  for (const QAction* action : menu->actions()) {
    if (action->isSeparator() || !action->isVisible()) {
      continue;
    }
    const QChar key = Mnemonic(action->text());
    EXPECT_FALSE(key.isNull()) << action->text().toStdString();
    EXPECT_EQ(taken[key], "") << action->text().toStdString();
    taken[key] = action->text().toStdString();
    if (action->menu() != nullptr) {
      ExpectMnemonics(action->menu());
    }
  }
}

// What has a key of its own, as the guide's table tells it: "key | command".
std::set<QString> KeysOf(const QList<QAction*>& actions) {
  std::set<QString> keys;
  for (const QAction* action : actions) {
    if (!action->shortcut().isEmpty()) {
      keys.insert(action->shortcut().toString() + QStringLiteral(" | ") +
                  action->text().remove(QLatin1Char('&')));
    }
  }
  return keys;
}

// The rows of the tables below the headings of the guide's chapter, by heading.
std::map<QString, std::set<QString>> KeysOfTheGuide() {
  QFile file(QStringLiteral(ORVANE_GUIDE "/keys.md"));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  std::map<QString, std::set<QString>> keys;
  QString heading;
  for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
    if (line.startsWith(QStringLiteral("## "))) {
      heading = line.mid(3);
    } else if (line.startsWith(QStringLiteral("| `"))) {
      const QStringList cells = line.split(QLatin1Char('|'));
      keys[heading].insert(cells.value(1).remove(QLatin1Char('`')).trimmed() +
                           QStringLiteral(" | ") + cells.value(2).trimmed());
    }
  }
  return keys;
}

// Relative luminance and contrast as the web's accessibility guidelines define them.
double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one) + 0.05;
  const double b = Luminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

// Every field of a form takes what is set from outside, and shows what the form has.
void ExpectFieldsFollow(QWidget* window) {
  const auto* dialog = qobject_cast<CFormDialog*>(window);
  for (QWidget* widget : dialog == nullptr ? QList<QWidget*>() : window->findChildren<QWidget*>()) {
    const int control = widget->objectName().toInt();
    if (control == 0 || !widget->isEnabled() || !widget->isVisible()) {
      continue;
    }
    SCOPED_TRACE(control);
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
      const QString text = line->isReadOnly() ? line->text() : QStringLiteral("1");
      testing::SetTextAssistively(line, QStringLiteral("1"));
      EXPECT_EQ(line->text(), text);
      EXPECT_EQ(dialog->Form().Text(control), BytesFromText(text));
    } else if (auto* list = qobject_cast<QComboBox*>(widget)) {
      list->setCurrentIndex(list->count() - 1);
      EXPECT_EQ(dialog->Form().Index(control), list->currentIndex());
    } else if (auto* check = qobject_cast<QCheckBox*>(widget)) {
      testing::ToggleAssistively(check);
      EXPECT_EQ(dialog->Form().Index(control), check->isChecked() ? 1 : 0);
    } else if (auto* radio = qobject_cast<QRadioButton*>(widget)) {
      testing::ToggleAssistively(radio);
      const QButtonGroup* group = radio->group();
      const int first = group->buttons().front()->objectName().toInt();
      for (const Field& field : dialog->Form().Fields()) {
        if (!field.choices.empty() && field.choices.front().control == first) {
          EXPECT_EQ(dialog->Form().Index(field.control), group->checkedId());
        }
      }
    }
  }
}

// Every control of a parameter says in its tip which; what is heard with each field stays short.
void ExpectTips(QWidget* window, int* count) {
  for (const char* name : {"1151", "1152", "frequencies"}) {
    if (const auto* grid = window->findChild<CGridCtrl*>(QString::fromLatin1(name));
        grid != nullptr && grid->GetRowCount() > 1) {
      EXPECT_TRUE(grid->GetCell(1, 1)->GetTipText().contains(QStringLiteral("\nParameter: ")))
          << name;
    }
  }
  const auto* dialog = qobject_cast<CFormDialog*>(window);
  if (dialog == nullptr) {
    return;
  }
  for (const Field& field : dialog->Form().Fields()) {
    for (const ParamKey key : KeysOf(field)) {
      const int button = field.widget == Widget::kRadios ? field.choices.front().control : 0;
      const auto* widget =
          window->findChild<QWidget*>(QString::number(button != 0 ? button : field.control));
      if (widget == nullptr || key.IsEmpty()) {
        continue;
      }
      SCOPED_TRACE(field.control);
      const QString tip = widget->toolTip();
      EXPECT_TRUE(tip.contains(LabelText(field.key))) << tip.toStdString();
      EXPECT_TRUE(tip.contains(QStringLiteral("\nA box may"))) << tip.toStdString();
      EXPECT_TRUE(widget->whatsThis().contains(LabelText(field.key)));
      EXPECT_FALSE(widget->accessibleDescription().isEmpty());
      EXPECT_FALSE(widget->accessibleDescription().contains(QLatin1Char('\n')));
      ++*count;
    }
  }
}

// A tick box that nobody can toggle promises assistive tools what does not happen.
void ExpectNoEmptyToggles(QWidget* window) {
  for (const QAbstractItemView* view : window->findChildren<QAbstractItemView*>()) {
    const QAbstractItemModel* model = view->model();
    for (int row = 0; model != nullptr && row < model->rowCount(); ++row) {
      for (int column = 0; column < model->columnCount(); ++column) {
        const QModelIndex index = model->index(row, column);
        EXPECT_TRUE(!index.flags().testFlag(Qt::ItemIsUserCheckable) ||
                    index.data(Qt::CheckStateRole).isValid())
            << NameOf(view) << " row " << row;
      }
    }
  }
}

// What the context menu of a grid offers, by the way in; "none" where no menu comes.
QString MenuOf(CGridCtrl* grid, int way) {
  QString entries = QStringLiteral("none");
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&entries] {
    if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
      QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(menu);
      entries = interface->text(QAccessible::Name);
      for (int i = 0; i < interface->childCount(); ++i) {
        const QAccessibleInterface* child = interface->child(i);
        entries += child->role() == QAccessible::MenuItem
                       ? QStringLiteral(" | ") + child->text(QAccessible::Name)
                       : QString();
      }
      ExpectMnemonics(menu);
      menu->close();
    }
  });
  timer.start(0);
  const QPoint at = grid->visualRect(grid->currentIndex()).center();
  if (way == 0) {
    QContextMenuEvent key(QContextMenuEvent::Keyboard, at, grid->mapToGlobal(at));
    QApplication::sendEvent(grid, &key);
  } else if (way == 1) {
    QTest::keyClick(grid, Qt::Key_F10, Qt::ShiftModifier);
  } else {
    QContextMenuEvent mouse(QContextMenuEvent::Mouse, at, grid->viewport()->mapToGlobal(at));
    QApplication::sendEvent(grid->viewport(), &mouse);
  }
  return entries;
}

// Grids whose cells are edited have more in their menu, and take what is dropped.
void ExpectGridMenus(QWidget* window, std::set<QString>* seen) {
  for (auto* grid : window->findChildren<CGridCtrl*>()) {
    if (!grid->isVisible() || grid->window() != window) {
      continue;
    }
    SCOPED_TRACE(NameOf(grid));
    const auto* heading = window->findChild<QLabel*>(QStringLiteral("heading"));
    const bool is_auxiliary =
        heading != nullptr && heading->text().contains(QStringLiteral("auxiliary"));
    const bool is_edited = grid->objectName() == QString::number(CStartupDlg::kChannelGrid)
                               ? is_auxiliary
                               : grid->objectName() != QStringLiteral("windows");
    QString expected =
        is_edited
            ? QStringLiteral("Cells | Copy | Paste | Save cells... | Load cells... | Print...")
            : QStringLiteral("Cells | Copy | Save cells... | Print...");
    if (grid->objectName() == QString::number(CParamTableDlg::kGrid)) {
      expected += QStringLiteral(" | Favourite");
    }
    for (const int way : {0, 1, 2}) {
      EXPECT_EQ(MenuOf(grid, way), expected) << way;
    }
    EXPECT_EQ(grid->acceptDrops(), is_edited);
    seen->insert(grid->objectName() + (is_edited ? QString() : QStringLiteral(" shown")));
  }
}

TEST(Accessibility, EveryWindow) {
  const testing::TempDir dir;
  const QString survey = TextFromPath(dir / "survey");
  ASSERT_EQ(QProcess::execute(QStringLiteral(ORVANE_EXAMPLE_SURVEY), {survey}), 0);
  auto* app = dynamic_cast<COrvaneApp*>(QApplication::instance());
  ASSERT_NE(app, nullptr);
  app->InitInstance(survey + QStringLiteral("/SIP/Startup.tbl"));
  int count = 0;
  int tips = 0;
  std::set<QString> grids;
  EXPECT_TRUE(examples::VisitEveryWindow(app, survey, [&](QWidget* window, const char* name) {
    SCOPED_TRACE(name);
    window->show();
    QApplication::processEvents();
    ExpectNames(window);
    ExpectOrder(window);
    ExpectMnemonics(window);
    ExpectNoEmptyToggles(window);
    ExpectTips(window, &tips);
    ExpectGridMenus(window, &grids);
    ExpectFieldsFollow(window);
    if (window == &app->Frame()) {  // with its columns side by side, too
      const QSize size = window->size();
      window->resize(1300, 700);
      QApplication::processEvents();
      ExpectOrder(window);
      window->resize(size);
    }
    EXPECT_FALSE(window->windowTitle().isEmpty());
    ++count;
    return true;
  }));
  EXPECT_GT(count, 50);
  EXPECT_GT(tips, 300);
  EXPECT_EQ(grids.size(), 8U) << "of 7 grids one is edited for some boxes only";
  for (const QAction* menu : app->Frame().menuBar()->actions()) {
    ExpectMnemonics(menu->menu());
  }
  const auto keys = KeysOfTheGuide();
  EXPECT_EQ(
      KeysOf(app->Frame().findChildren<QAction*>(QRegularExpression(QStringLiteral("^\\d+$")))),
      keys.at(QStringLiteral("Everywhere in the main window")));
  EXPECT_EQ(KeysOf(CWaveformDisplay(nullptr).actions()),
            keys.at(QStringLiteral("While a waveform is shown")));
  CalDisplay ranges;
  EXPECT_EQ(KeysOf(CCalibrationDisplay(&ranges, nullptr).actions()),
            keys.at(QStringLiteral("While a calibration is shown")));
  EXPECT_EQ(KeysOf(CStackDisplay(nullptr).actions()),
            keys.at(QStringLiteral("While stack results are shown")));
  app->Frame().hide();
}

constexpr auto kThemes = {Theme::kLight, Theme::kDark, Theme::kSunlight};

TEST(Accessibility, TheCurrentCellStandsOutInAllThemesAndStyles) {
  std::vector<std::unique_ptr<QStyle>> styles;
  std::vector<std::pair<QStyle*, QPalette>> looks;
  const auto add = [&](std::unique_ptr<QStyle> style) {
    looks.emplace_back(style.get(), style->standardPalette());
    // That of Windows paints editors white whatever the palette says; themes do not use it.
    const bool is_native = style->name() == QLatin1String("windowsvista");
    for (const Theme theme : is_native ? std::vector<Theme>() : std::vector<Theme>(kThemes)) {
      looks.emplace_back(style.get(), ThemePalette(theme));
    }
    styles.push_back(std::move(style));
  };
  add(std::make_unique<ThemeStyle>());
  for (const QString& name : QStyleFactory::keys()) {
    add(std::unique_ptr<QStyle>(QStyleFactory::create(name)));
  }
  ASSERT_GE(styles.size(), 3U) << "Fusion and Windows at least";
  for (const auto& [style, palette] : looks) {
    CGridCtrl grid;
    grid.setStyle(style);
    grid.setPalette(palette);
    grid.SetTexts(std::vector<std::vector<QString>>(3, std::vector<QString>(3)));
    grid.SetBeginEdit([](int, int) { return true; });
    grid.show();
    grid.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
    grid.SetFocusCell(1, 1);
    const QRect cell = grid.visualRect(grid.model()->index(1, 1));
    for (const char* state : {"selected", "edited", "neither"}) {
      if (std::string_view(state) == "neither") {
        grid.CommitEdit();
        grid.clearSelection();
      } else if (std::string_view(state) == "edited") {
        QTest::keyClick(&grid, Qt::Key_F2);
        ASSERT_TRUE(grid.IsEditing());
        grid.findChild<QLineEdit*>()->setStyle(style);
      }
      const QImage seen = grid.viewport()->grab().toImage();
      const QColor frame = seen.pixelColor(cell.left(), cell.center().y());
      const QColor ground = seen.pixelColor(cell.right() - 4, cell.center().y());
      EXPECT_GE(Contrast(frame, ground), 4.5)
          << style->name().toStdString() << ", " << state << ", " << frame.name().toStdString();
    }
  }
}

// The outline of what nobody has chosen yet, and the lines between cells.
TEST(Accessibility, UncheckedButtonsAndGridLinesAreSeenInAllThemes) {
  const ThemeStyle style;
  for (const Theme theme : kThemes) {
    ApplyTheme(theme);
    const QPalette palette = QApplication::palette();
    for (const auto primitive : {QStyle::PE_IndicatorRadioButton, QStyle::PE_IndicatorCheckBox}) {
      QImage image(16, 16, QImage::Format_RGB32);
      image.fill(palette.color(QPalette::Window));
      QPainter painter(&image);
      QStyleOptionButton option;
      option.palette = palette;
      option.rect = QRect(1, 1, 13, 13);
      option.state = QStyle::State_Enabled;
      style.drawPrimitive(primitive, &option, &painter, nullptr);
      painter.end();
      double most = 0;
      for (int x = 0; x < 5; ++x) {
        most = std::max(most, Contrast(image.pixelColor(x, 7), palette.color(QPalette::Window)));
      }
      EXPECT_GE(most, 3) << static_cast<int>(theme);
    }
    QStyleOption table;
    table.palette = palette;
    const QColor line = QColor::fromRgb(static_cast<QRgb>(
        style.styleHint(QStyle::SH_Table_GridLineColor, &table, nullptr, nullptr)));
    EXPECT_GE(Contrast(line, palette.color(QPalette::Base)), 2) << static_cast<int>(theme);
  }
  ApplyTheme(Theme::kSystem);
}

TEST(Accessibility, LinesOfPlotsStandOutInAllThemes) {
  for (const Theme theme : kThemes) {
    const QPalette palette = ThemePalette(theme);
    for (const auto role : {QPalette::Base, QPalette::Window}) {
      const QColor ground = palette.color(role);
      for (int i = 0; i < 12; ++i) {
        EXPECT_GE(Contrast(TraceColor(i, palette), ground), 4.5) << i << " " << role;
      }
      EXPECT_GE(Contrast(palette.color(QPalette::WindowText), ground), 4.5);
      for (const auto drawn : {QPalette::Highlight, QPalette::Link}) {
        EXPECT_GE(Contrast(StandOut(palette.color(drawn), palette), ground), 4.5) << drawn;
      }
    }
  }
}

}  // namespace
}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/display.h"

#include <QContextMenuEvent>
#include <QHash>
#include <QHeaderView>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/theme_icon.h"

namespace orvane {
namespace {

constexpr const char* kMenu = "orvane-menu";  // of a command: its title

}  // namespace

CDisplay::CDisplay(const QString& name, QWidget* parent)
    : QWidget(parent), bar_(new QToolBar(this)) {
  setAccessibleName(name);
  bar_->setAccessibleName(name + QStringLiteral(" tools"));
  if (auto* more = bar_->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))) {
    more->setAccessibleName(QStringLiteral("More tools"));
  }
  bar_->setToolButtonStyle(Qt::ToolButtonIconOnly);  // those without an icon show their text
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(bar_);
}

QAction* CDisplay::AddKey(const char* text, const char* name, const char* tip,
                          const QKeySequence& key, Act act) {
  auto* action = new QAction(QString::fromLatin1(text), this);
  action->setObjectName(QString::fromLatin1(name));
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  const QString keys = key.toString(QKeySequence::NativeText);
  action->setIcon(ThemeIcon(action->objectName()));
  const QString title = action->icon().isNull() ? QString() : action->text() + QStringLiteral(": ");
  action->setToolTip(title + QString::fromLatin1(tip) +
                     (keys.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(keys)));
  connect(action, &QAction::triggered, this, std::move(act));
  addAction(action);
  return action;
}

QAction* CDisplay::AddButton(const char* text, const char* name, const char* tip,
                             const QKeySequence& key, Act act) {
  QAction* action = AddKey(text, name, tip, key, std::move(act));
  bar_->addAction(action);
  return action;
}

void CDisplay::PutIntoMenu(QAction* command, const QString& menu) {
  command->setProperty(kMenu, menu);
}

QPoint CDisplay::PlaceBelow(QAction* command) const {
  const QWidget* button = bar_->widgetForAction(command);
  const bool is_seen = button != nullptr && button->isVisible();
  return is_seen ? button->mapToGlobal(button->rect().bottomLeft()) : mapToGlobal(rect().center());
}

QAction* CDisplay::AddReload() {
  return AddKey("Reload", "reload", "Read the file again", Qt::Key_F5, [this] { Reload(); });
}

void CDisplay::AddFiles() {
  AddKey("Next file", "next-file", "The next file of this kind in the folder",
         Qt::CTRL | Qt::Key_PageDown, [this] { emit fileWanted(1); });
  AddKey("Previous file", "previous-file", "The file of this kind before it in the folder",
         Qt::CTRL | Qt::Key_PageUp, [this] { emit fileWanted(-1); });
}

QTableWidget* CDisplay::MakeReadings() {
  auto* readings = new QTableWidget(this);
  readings->setObjectName(QStringLiteral("readings"));
  readings->setAccessibleName(QStringLiteral("Cursor readings"));
  readings->setEditTriggers(QAbstractItemView::NoEditTriggers);
  readings->setTabKeyNavigation(false);
  readings->verticalHeader()->hide();
  readings->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  readings->hide();
  return readings;
}

void CDisplay::ShowMenu(const QPoint& at) {
  QMenu menu(this);
  QHash<QString, QMenu*> menus;
  for (QAction* action : actions()) {
    const QString title = action->property(kMenu).toString();
    if (!title.isEmpty() && !menus.contains(title)) {
      menus[title] = menu.addMenu(title);
    }
    (title.isEmpty() ? &menu : menus[title])->addAction(action);
  }
  menu.exec(at);
}

void CDisplay::contextMenuEvent(QContextMenuEvent* event) { ShowMenu(event->globalPos()); }

}  // namespace orvane

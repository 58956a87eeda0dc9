// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start_panel.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>

#include "ui/theme_icon.h"

namespace orvane {

StartPanel::StartPanel(QWidget* parent)
    : QGroupBox(QStringLiteral("Begin"), parent),
      layout_(new QVBoxLayout(this)),
      recent_(new QVBoxLayout) {
  setObjectName(QStringLiteral("start"));
  auto* open = NewButton(QStringLiteral("&Open..."), "start-open", QStringLiteral("Open TBL file"));
  open->setIcon(ThemeIcon(QStringLiteral("open")));
  connect(open, &QPushButton::clicked, this, &StartPanel::openWanted);
  auto* fresh = NewButton(QStringLiteral("&New"), "start-new",
                          QStringLiteral("Go on with the new table beside this"));
  connect(fresh, &QPushButton::clicked, this, &StartPanel::newWanted);
  setFocusProxy(open);
  layout_->addWidget(open);
  layout_->addWidget(fresh);
  layout_->addLayout(recent_);
  auto* drop = new QLabel(QStringLiteral("or drop files here"), this);
  drop->setAlignment(Qt::AlignHCenter);
  layout_->addWidget(drop);
}

QPushButton* StartPanel::NewButton(const QString& text, const char* name, const QString& tip) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::fromLatin1(name));
  button->setToolTip(tip);
  button->setAccessibleDescription(tip);
  button->setAutoDefault(true);  // Return presses it
  return button;
}

void StartPanel::SetRecent(const QStringList& paths) {
  while (QLayoutItem* item = recent_->takeAt(0)) {
    item->widget()->hide();
    item->widget()->deleteLater();  // it may be the one that was pressed
    delete item;
  }
  QWidget* before = findChild<QPushButton*>(QStringLiteral("start-new"));
  for (int i = 0; i < paths.size(); ++i) {
    const QString path = paths[i];
    QString name = QFileInfo(path).dir().dirName() + QLatin1Char('/') + QFileInfo(path).fileName();
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    auto* button = NewButton(QStringLiteral("&%1 %2").arg(i + 1).arg(name), "start-recent", path);
    button->setFlat(true);
    connect(button, &QPushButton::clicked, this, [this, path] { emit fileWanted(path); });
    recent_->addWidget(button);
    setTabOrder(before, button);
    before = button;
  }
}

}  // namespace orvane

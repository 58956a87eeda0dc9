// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folder_line.h"

#include <QDropEvent>
#include <QHBoxLayout>
#include <QMimeData>
#include <QToolButton>
#include <QUrl>

#include "ui/folder_dialog.h"

namespace orvane {

CFolderLine::CFolderLine(const QString& label, const QString& name, QWidget* parent)
    : QWidget(parent), line_(new QLineEdit(this)) {
  line_->setObjectName(name);
  line_->setAccessibleName(label);
  line_->setClearButtonEnabled(true);
  line_->installEventFilter(this);
  for (auto* button : line_->findChildren<QToolButton*>()) {
    button->setAccessibleName(QStringLiteral("Clear"));
  }
  auto* browse = new QToolButton(this);
  browse->setText(QStringLiteral("..."));
  browse->setFocusPolicy(Qt::TabFocus);
  browse->setAccessibleName(QStringLiteral("Choose a folder: ") + label);
  connect(browse, &QToolButton::clicked, this, &CFolderLine::Choose);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(line_, 1);
  row->addWidget(browse);
  setFocusProxy(line_);
}

void CFolderLine::Choose() {
  const QString folder =
      CFolderDialog::AskForFolder(this, QStringLiteral("Choose a folder"), Text());
  if (!folder.isEmpty()) {
    Take(folder);
  }
}

void CFolderLine::Take(const QString& folder) {
  line_->setText(folder);
  emit line_->editingFinished();
}

// Qt's line would take a dropped folder as the text of its address, or not at all.
bool CFolderLine::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop) {
    auto* drop = static_cast<QDropEvent*>(event);
    const QList<QUrl> urls = drop->mimeData()->urls();
    if (!urls.isEmpty() && urls.front().isLocalFile()) {
      drop->acceptProposedAction();
      if (type == QEvent::Drop) {
        Take(urls.front().toLocalFile());
      }
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
// Dragging the texts of cells out of CGridCtrl and dropping them there.
#include <QDrag>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>

#include "ui/grid_ctrl.h"

namespace orvane {
namespace {

// A file manager offers the paths of files as plain text too.
bool IsDroppable(const QDropEvent& event) {
  return event.possibleActions().testFlag(Qt::CopyAction) && event.mimeData()->hasText() &&
         !event.mimeData()->hasUrls();
}

// Whatever is proposed: were a text moved, its source would delete it.
void AcceptCopy(QDropEvent* event, bool accepted) {
  if (accepted) {
    event->setDropAction(Qt::CopyAction);
  }
  event->setAccepted(accepted);
}

}  // namespace

void CGridCtrl::SetDragEnabled(bool enabled) {
  drags_ = enabled;
  setDragEnabled(false);  // until a selected cell is pressed
  setAcceptDrops(enabled);
}

void CGridCtrl::mousePressEvent(QMouseEvent* event) {
  // Qt would drag from every cell, so that no range could be selected any more.
  setDragEnabled(drags_ && selectionModel()->isSelected(indexAt(event->position().toPoint())));
  QTableView::mousePressEvent(event);
}

void CGridCtrl::startDrag(Qt::DropActions /*supported_actions*/) {
  auto* texts = new QMimeData;
  texts->setText(SelectionAsText());
  auto* drag = new QDrag(this);  // Qt deletes it in its own time
  drag->setMimeData(texts);
  drag->exec(Qt::CopyAction);
}

void CGridCtrl::dragEnterEvent(QDragEnterEvent* event) { AcceptCopy(event, IsDroppable(*event)); }

void CGridCtrl::dragMoveEvent(QDragMoveEvent* event) {
  QTableView::dragMoveEvent(event);  // scrolls near the edges
  AcceptCopy(event, IsDroppable(*event) && indexAt(event->position().toPoint()).isValid());
}

void CGridCtrl::dropEvent(QDropEvent* event) {
  stopAutoScroll();
  const QPersistentModelIndex target = indexAt(event->position().toPoint());
  AcceptCopy(event, IsDroppable(*event) && target.isValid());
  if (!event->isAccepted()) {
    return;
  }
  const GridTexts texts = SplitPastedText(event->mimeData()->text());
  const QPointer<CGridCtrl> self(this);
  CommitEdit();
  if (self) {
    EnterTexts(target, texts, false);
  }
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of many cells out of CGridCtrl and into it: copying, pasting, dragging and dropping. Each
// cell that takes one is set as if it were edited in place.
#include <QClipboard>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTimer>
#include <utility>

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

QString CGridCtrl::SelectionAsText() const {
  QRect bounds;  // columns across, rows down
  for (const QModelIndex& index : selectedIndexes()) {
    if (!isRowHidden(index.row())) {
      bounds |= QRect(index.column(), index.row(), 1, 1);
    }
  }
  QStringList lines;
  for (int row = bounds.top(); row <= bounds.bottom(); ++row) {
    if (isRowHidden(row)) {
      continue;
    }
    QStringList fields;
    for (int col = bounds.left(); col <= bounds.right(); ++col) {
      const QModelIndex index = model_.index(row, col);
      fields << (selectionModel()->isSelected(index) ? delegate_.displayText(index.data(), locale())
                                                     : QString());
    }
    lines << fields.join(QLatin1Char('\t'));
  }
  return lines.join(QLatin1Char('\n'));
}

void CGridCtrl::CopySelection() {
  if (selectionModel()->hasSelection()) {
    QGuiApplication::clipboard()->setText(SelectionAsText());
  }
}

void CGridCtrl::Paste() { PasteText(QGuiApplication::clipboard()->text()); }

int CGridCtrl::PasteText(const QString& text) {
  const QPointer<CGridCtrl> self(this);
  CommitEdit();
  return self ? EnterTexts(currentIndex(), SplitPastedText(text), false) : 0;
}

int CGridCtrl::EnterTexts(const QModelIndex& first, const GridTexts& texts, bool is_load) {
  // All cells are found before the first is set: who hears of an edit may sort or hide rows. Of a
  // cell that has gone by then the text is refused.
  struct Target {
    QPersistentModelIndex index;
    QString text;
  };
  std::vector<Target> targets;
  const int last_row = first.isValid() ? GetRowCount() - 1 : -1;
  int row = first.row();
  for (const QStringList& line : texts) {
    while (row <= last_row && !is_load && isRowHidden(row)) {
      ++row;
    }
    if (row > last_row && !is_load) {
      break;
    }
    int col = first.column();
    for (const QString& text : line) {
      if (const QModelIndex index = model_.index(row, col++); index.isValid() || is_load) {
        targets.push_back({index, text});
      }
    }
    ++row;
  }
  int set = 0;
  int refused = 0;
  Entering entering;
  const QPointer<CGridCtrl> self(this);
  entering_ = &entering;
  for (const auto& [index, text] : targets) {
    entering.row = index.row() - GetFixedRowCount() + 1;
    entering.is_refused = false;
    const bool entered = model_.EnterText(index, text);
    ++(entered && !entering.is_refused ? set : refused);
    if (!self) {
      return set;
    }
  }
  entering_ = nullptr;
  emit pasted(set, refused);
  if (self && (!entering.reasons.isEmpty() || (is_load && refused > 0))) {
    // Later: who dropped a text waits for the end of the drop.
    QTimer::singleShot(0, this, [this, set, refused, reasons = std::move(entering.reasons)] {
      TellRefused(set, refused, reasons);
    });
  }
  return set;
}

bool CGridCtrl::RefuseEdit(const QString& reason) {
  if (entering_ == nullptr) {
    stays_ = true;
    return false;
  }
  entering_->is_refused = true;
  if (!reason.isEmpty()) {
    entering_->reasons << tr("Row %1, %2").arg(entering_->row).arg(reason);
  }
  return true;
}

void CGridCtrl::TellRefused(int set, int refused, QStringList reasons) {
  constexpr int kMostTold = 10;
  QString text =
      tr("%1 of %2 cells were refused and stay as they were.").arg(refused).arg(set + refused);
  if (const auto more = reasons.size() - kMostTold; more > 0) {
    reasons.resize(kMostTold);
    reasons << tr("and %1 more").arg(more);
  }
  if (!reasons.isEmpty()) {
    text += QStringLiteral("\n\n") + reasons.join(QLatin1Char('\n'));
  }
  QMessageBox::warning(this, QStringLiteral("Orvane"), text);
}

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

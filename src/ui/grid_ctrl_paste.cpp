// SPDX-License-Identifier: GPL-3.0-or-later
// Setting many cells of CGridCtrl at once, each as if it were edited in place.
#include <QClipboard>
#include <QGuiApplication>
#include <QPersistentModelIndex>
#include <QPointer>

#include "ui/grid_ctrl.h"

namespace orvane {

void CGridCtrl::Paste() { PasteText(QGuiApplication::clipboard()->text()); }

int CGridCtrl::PasteText(const QString& text) {
  const QPointer<CGridCtrl> self(this);
  CommitEdit();
  return self ? EnterTexts(currentIndex(), SplitPastedText(text), false) : 0;
}

int CGridCtrl::EnterTexts(const QModelIndex& first, const GridTexts& texts, bool hidden_too) {
  // All cells are found before the first is set: who hears of an edit may sort or hide rows. Of a
  // cell that vanishes meanwhile the text is refused.
  struct Target {
    QPersistentModelIndex index;
    QString text;
  };
  std::vector<Target> targets;
  const int last_row = first.isValid() ? GetRowCount() - 1 : -1;
  int row = first.row();
  for (const QStringList& line : texts) {
    while (row <= last_row && !hidden_too && isRowHidden(row)) {
      ++row;
    }
    if (row > last_row) {
      break;
    }
    int col = first.column();
    for (const QString& text : line) {
      if (const QModelIndex index = model_.index(row, col++); index.isValid()) {
        targets.push_back({index, text});
      }
    }
    ++row;
  }
  int set = 0;
  int refused = 0;
  const QPointer<CGridCtrl> self(this);
  for (const auto& [index, text] : targets) {
    const bool entered = model_.EnterText(index, text);
    ++(entered ? set : refused);
    if (!self) {
      return set;
    }
  }
  emit Pasted(set, refused);
  return set;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_CHANGED_FILE_BAR_H_
#define ORVANE_APP_CHANGED_FILE_BAR_H_

#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include "app/orvane_doc.h"

namespace orvane {

/// A strip above the view that is there while the document's file is another than it was, or gone,
/// and the user has not decided about it. It stops nobody.
class ChangedFileBar : public QFrame {
  Q_OBJECT

 public:
  /// Hidden until a look finds something. Looks after whatever the document did.
  ChangedFileBar(COrvaneDoc* doc, QWidget* parent);

  /// Looks at the file now: when the user comes back to the window.
  void Look();

 signals:
  /// The bar went while it had the focus.
  void focusLeft();
  /// What differs between the table and the file as it is now is to be shown.
  void compareWanted();

 private:
  void ShowText(const QString& text, bool can_load);
  void HideBar();

  COrvaneDoc* doc_;
  QLabel* text_;
  QPushButton* compare_;
  QPushButton* load_;
  QPushButton* keep_;
};

}  // namespace orvane

#endif  // ORVANE_APP_CHANGED_FILE_BAR_H_

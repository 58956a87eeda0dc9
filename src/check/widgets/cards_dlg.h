// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHECK_WIDGETS_CARDS_DLG_H_
#define ORVANE_CHECK_WIDGETS_CARDS_DLG_H_

#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <vector>

#include "check/set_rows.h"
#include "files/batch.h"
#include "ui/folder_line.h"

namespace orvane {

/// "Copy To Cards": which box's file goes to which card. A card is named once for each serial
/// number and kept in the settings. A box without a card, or without a file, is left out.
class CCardsDlg : public QDialog {
  Q_OBJECT

 public:
  CCardsDlg(std::vector<SetRow> boxes, QWidget* parent);

  /// Asks before a file is copied that is not what would be written for its box, or over one of
  /// another box; replaceable for tests. `text` names them.
  std::function<bool(const QString& text)> may_copy;

  /// Copies, each copy read back, and shows what came of it.
  void accept() override;

 private:
  struct Row {
    SetRow box;
    CFolderLine* card;
  };

  void AddRow(QGridLayout* grid, const SetRow& box);
  /// The rows that are copied.
  std::vector<const Row*> Chosen() const;
  /// Why nothing can be copied so: two boxes would get one file, a card is not there.
  QString Clash() const;
  void ShowWhatIsCopied();
  /// What the user should know before.
  QStringList Doubts() const;
  /// True where all are copied.
  bool ShowResults(const Batch& batch);

  std::vector<Row> rows_;
  QLabel* state_;
  QPushButton* copy_;
};

}  // namespace orvane

#endif  // ORVANE_CHECK_WIDGETS_CARDS_DLG_H_

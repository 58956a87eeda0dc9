// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_GRID_DELEGATE_H_
#define ORVANE_UI_GRID_DELEGATE_H_

#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

#include "ui/grid_cell.h"

namespace orvane {

// Tool tips guess whether they were given markup; this keeps cell texts plain.
QString PlainToolTip(const QString& text);

// A text on one line, as rows of one height need it.
QString OneLine(QString text);

// Draws the cells of a grid, shows their title tips and makes their in-place editors.
class GridDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  // The editor that is open now, or null. Owned by the view.
  QLineEdit* OpenEditor() const { return open_editor_; }

  // Opens the list of what may be chosen in the open editor, at its text.
  void OpenChoices() const;
  // F4 and Alt+Down, as in lists of other windows.
  static bool IsKeyOfChoices(const QKeyEvent& event);

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void destroyEditor(QWidget* editor, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;
  QString displayText(const QVariant& value, const QLocale& locale) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
  bool eventFilter(QObject* object, QEvent* event) override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

 signals:
  // Return or the tab key has closed the editor.
  void editorLeft(QKeyEvent* event);

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  void OfferChoices(QLineEdit* editor, const CGridCellBase& cell);
  void AddChoicesButton(QLineEdit* editor) const;

  mutable QPointer<QLineEdit> open_editor_;  // the view asks for editors through const calls
};

}  // namespace orvane

#endif  // ORVANE_UI_GRID_DELEGATE_H_

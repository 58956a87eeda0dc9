// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/grid_delegate.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <QToolTip>
#include <algorithm>

#include "ui/byte_text.h"
#include "ui/grid_model.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr auto kLoadedText = "loadedText";  // property: what the editor was last filled with

// Whether the editor holds a text that may go into its cell; lets the validator repair it first.
bool Settle(QLineEdit& editor) {
  if (editor.text() == editor.property(kLoadedText).toString()) {
    return true;
  }
  if (!editor.hasAcceptableInput() && editor.validator()) {
    QString text = editor.text();
    editor.validator()->fixup(text);
    editor.setText(text);
  }
  return editor.hasAcceptableInput();
}

// Draws its own frame over its own ground, whatever the style draws in and around editors.
class CellEditor : public QLineEdit {
 public:
  explicit CellEditor(QWidget* parent) : QLineEdit(parent) {
    setFrame(false);
    setTextMargins(1, 1, 1, 1);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLineEdit::paintEvent(event);
    constexpr int kWidth = 2;
    QPainter painter(this);
    const QColor color = StandOut(palette().color(QPalette::Highlight), palette());
    const QRect inner = rect().adjusted(kWidth, kWidth, -kWidth, -kWidth);
    for (const QRect& side : QRegion(rect()).subtracted(inner)) {
      painter.fillRect(side, color);
    }
  }
};

}  // namespace

QString PlainToolTip(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QString OneLine(QString text) {
  for (QChar& c : text) {
    if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QLatin1Char('\t')) {
      c = QLatin1Char(' ');
    }
  }
  return text;
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& index) const {
  const auto* model = qobject_cast<const GridModel*>(index.model());
  const CGridCellBase* cell = model ? model->GetCell(index.row(), index.column()) : nullptr;
  if (!cell) {
    return nullptr;
  }
  auto* editor = new CellEditor(parent);
  editor->setObjectName(QStringLiteral("cellEditor"));
  QString name = model->headerData(index.column(), Qt::Horizontal).toString();
  name.replace(QLatin1Char('\n'), QLatin1Char(' '));
  editor->setAccessibleName(name.isEmpty() ? tr("Column %1").arg(index.column() + 1) : name);
  editor->setAlignment(cell->GetAlignment());
  // A text that is too long already must not be cut by merely opening the editor.
  editor->setMaxLength(std::max(cell->GetTextLimit(), static_cast<int>(cell->GetText().size())));
  editor->setValidator(model->Validator());
  connect(editor, &QLineEdit::inputRejected, editor, [editor] { TellWhyRejected(editor); });
  open_editor_ = editor;
  if (const QStringList choices = cell->GetChoices(); !choices.isEmpty()) {
    const_cast<GridDelegate*>(this)->OfferChoices(editor, choices);
  }
  return editor;
}

// The list opens with the editor; choosing from it ends the edit.
void GridDelegate::OfferChoices(QLineEdit* editor, const QStringList& choices) {
  auto* completer = new QCompleter(choices, editor);
  completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  completer->setMaxVisibleItems(static_cast<int>(choices.size()));
  completer->popup()->setAccessibleName(editor->accessibleName());
  editor->setCompleter(completer);
  connect(completer, qOverload<const QString&>(&QCompleter::activated), editor,
          [this, editor](const QString& text) {
            editor->setText(text);
            emit commitData(editor);
            emit closeEditor(editor, NoHint);
          });
  QTimer::singleShot(0, completer, [completer] { completer->complete(); });
}

void GridDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
  if (editor == open_editor_) {
    open_editor_ = nullptr;
  }
  QStyledItemDelegate::destroyEditor(editor, index);
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* line = qobject_cast<QLineEdit*>(editor);
  if (!line) {
    return;
  }
  // Changes of the look alone come here as well and must not undo what was typed so far.
  const QString text = index.data(Qt::EditRole).toString();
  const QVariant loaded = line->property(kLoadedText);
  if (loaded.isValid() && loaded.toString() == text) {
    return;
  }
  line->setProperty(kLoadedText, text);
  line->setText(text);
}

void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                const QModelIndex& index) const {
  auto* line = qobject_cast<QLineEdit*>(editor);
  if (line && Settle(*line)) {
    model->setData(index, line->text(), Qt::EditRole);
  }
}

void GridDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& /*index*/) const {
  editor->setGeometry(option.rect);
}

QString GridDelegate::displayText(const QVariant& value, const QLocale& /*locale*/) const {
  return OneLine(value.toString());
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  cell.state &= ~QStyle::State_HasFocus;  // styles draw it too faintly, or not without focus
  QStyledItemDelegate::paint(painter, cell, index);

  const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
  if (!view || view->currentIndex() != index) {
    return;
  }
  const auto group = (option.state & QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  const QColor highlight = option.palette.color(group, QPalette::Highlight);
  const QColor color =
      selected ? BlackOrWhite(highlight) : option.palette.color(group, QPalette::Text);
  const int width = view->hasFocus() ? 2 : 1;
  const QRect& r = option.rect;
  painter->fillRect(r.left(), r.top(), r.width(), width, color);
  painter->fillRect(r.left(), r.bottom() - width + 1, r.width(), width, color);
  painter->fillRect(r.left(), r.top(), width, r.height(), color);
  painter->fillRect(r.right() - width + 1, r.top(), width, r.height(), color);
}

bool GridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                             const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (!event || !view || event->type() != QEvent::ToolTip) {
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  }
  QString tip = index.data(Qt::ToolTipRole).toString();
  const QRect shown = option.rect & view->viewport()->rect();
  if (tip.isEmpty() && sizeHint(option, index).width() > shown.width()) {
    tip = index.data(Qt::DisplayRole).toString();
  }
  QToolTip::showText(event->globalPos(), PlainToolTip(tip), view->viewport(), option.rect);
  return true;
}

bool GridDelegate::eventFilter(QObject* object, QEvent* event) {
  auto* editor = qobject_cast<QLineEdit*>(object);
  if (!editor || event->type() != QEvent::KeyPress) {
    return QStyledItemDelegate::eventFilter(object, event);
  }
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool leaves = key == Qt::Key_Tab || key == Qt::Key_Backtab;
  if (!leaves && key != Qt::Key_Return && key != Qt::Key_Enter) {
    return QStyledItemDelegate::eventFilter(object, event);
  }
  // Handled at once instead of through the event queue, and never passed on to a dialog.
  event->accept();
  if (!Settle(*editor)) {
    return true;
  }
  const QPointer<QWidget> view = editor->parentWidget()->parentWidget();
  emit commitData(editor);
  emit closeEditor(editor, NoHint);
  if (view) {
    emit editorLeft(static_cast<QKeyEvent*>(event));
  }
  event->accept();
  return true;
}

}  // namespace orvane

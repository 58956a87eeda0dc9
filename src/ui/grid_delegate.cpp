// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/grid_delegate.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCompleter>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStandardItemModel>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>
#include <algorithm>

#include "ui/byte_text.h"
#include "ui/grid_model.h"
#include "ui/plot_theme.h"
#include "ui/small_icons.h"

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

constexpr int kTextRole = Qt::UserRole;  // of a choice: what the cell gets
constexpr int kMostChoicesInSight = 12;

QStandardItemModel* ModelOf(const std::vector<GridChoice>& choices, QObject* parent) {
  auto* model = new QStandardItemModel(parent);
  for (const GridChoice& choice : choices) {
    auto* item = new QStandardItem(choice.label);
    item->setData(choice.text, kTextRole);
    model->appendRow(item);
  }
  return model;
}

const CGridCellBase* CellAt(const QModelIndex& index) {
  const auto* model = qobject_cast<const GridModel*>(index.model());
  return model == nullptr ? nullptr : model->GetCell(index.row(), index.column());
}

// Draws its own frame, whatever the style draws around editors.
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
  const CGridCellBase* cell = CellAt(index);
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
  if (!cell->GetChoices().empty()) {
    const_cast<GridDelegate*>(this)->OfferChoices(editor, *cell);
  }
  return editor;
}

// Choosing ends the edit. A list that does not open by itself stays out of the way of typing.
void GridDelegate::OfferChoices(QLineEdit* editor, const CGridCellBase& cell) {
  auto* completer = new QCompleter(editor);
  completer->setModel(ModelOf(cell.GetChoices(), completer));
  completer->setCompletionRole(kTextRole);
  completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  completer->setMaxVisibleItems(std::min(completer->model()->rowCount(), kMostChoicesInSight));
  completer->popup()->setAccessibleName(editor->accessibleName());
  connect(completer, qOverload<const QString&>(&QCompleter::activated), editor,
          [this, editor](const QString& text) {
            editor->setText(text);
            emit commitData(editor);
            emit closeEditor(editor, NoHint);
          });
  if (cell.OpensChoices()) {
    editor->setCompleter(completer);
    QTimer::singleShot(0, completer, [completer] { completer->complete(); });
  } else {
    completer->setWidget(editor);
    AddChoicesButton(editor);
  }
}

void GridDelegate::AddChoicesButton(QLineEdit* editor) const {
  QAction* open = editor->addAction(DownIcon(), QLineEdit::TrailingPosition);
  open->setToolTip(tr("Choose (F4)"));
  connect(open, &QAction::triggered, this, &GridDelegate::OpenChoices);
  for (auto* button : editor->findChildren<QToolButton*>()) {
    button->setAccessibleName(tr("Choose"));
  }
  editor->setAccessibleDescription(tr("F4 lists what its values mean"));
}

bool GridDelegate::IsKeyOfChoices(const QKeyEvent& event) {
  return (event.key() == Qt::Key_F4 && event.modifiers() == Qt::NoModifier) ||
         (event.key() == Qt::Key_Down && event.modifiers() == Qt::AltModifier);
}

void GridDelegate::OpenChoices() const {
  auto* completer = open_editor_ ? open_editor_->findChild<QCompleter*>() : nullptr;
  if (completer == nullptr) {
    return;
  }
  completer->complete();
  QAbstractItemView* list = completer->popup();
  list->setMinimumWidth(list->sizeHintForColumn(0) + 2 * list->frameWidth() +
                        list->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  for (int row = 0; row < list->model()->rowCount(); ++row) {
    const QModelIndex index = list->model()->index(row, 0);
    if (index.data(kTextRole).toString() == open_editor_->text()) {
      list->setCurrentIndex(index);
    }
  }
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

// The check state of a star is for assistive tools: what is drawn is the star.
void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const CGridCellBase* cell = CellAt(index);
  if (cell == nullptr) {
    return;
  }
  if (!cell->GetWarning().isEmpty()) {
    option->palette.setColor(QPalette::Text, WarningColor(option->palette));
  }
  if (const std::optional<bool> star = cell->GetStar()) {
    option->features.setFlag(QStyleOptionViewItem::HasCheckIndicator, false);
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon = StarIcon(*star);
    const int size = option->fontMetrics.ascent();
    option->decorationSize = QSize(size, size);
  }
}

// The base class lets Space toggle what is checkable.
bool GridDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                               const QStyleOptionViewItem& option, const QModelIndex& index) {
  const CGridCellBase* cell = CellAt(index);
  if (event->type() == QEvent::MouseButtonRelease && cell != nullptr && cell->GetStar()) {
    const auto* mouse = static_cast<const QMouseEvent*>(event);
    QStyleOptionViewItem drawn = option;
    initStyleOption(&drawn, index);
    const QRect star = option.widget->style()->subElementRect(QStyle::SE_ItemViewItemDecoration,
                                                              &drawn, option.widget);
    return mouse->button() == Qt::LeftButton && star.contains(mouse->position().toPoint()) &&
           model->setData(index, *cell->GetStar() ? Qt::Unchecked : Qt::Checked,
                          Qt::CheckStateRole);
  }
  return QStyledItemDelegate::editorEvent(event, model, option, index);
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
  if (sizeHint(option, index).width() > shown.width()) {
    const QString text = index.data(Qt::DisplayRole).toString();
    tip = tip.isEmpty() ? text : text + QLatin1Char('\n') + tip;
  }
  QToolTip::showText(event->globalPos(), PlainToolTip(tip), view->viewport(), option.rect);
  return true;
}

bool GridDelegate::eventFilter(QObject* object, QEvent* event) {
  auto* editor = qobject_cast<QLineEdit*>(object);
  if (!editor || event->type() != QEvent::KeyPress) {
    return QStyledItemDelegate::eventFilter(object, event);
  }
  if (IsKeyOfChoices(*static_cast<QKeyEvent*>(event)) && editor->findChild<QCompleter*>()) {
    OpenChoices();
    return true;
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/form_dialog.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "ui/field_tips.h"
#include "ui/form_texts.h"

namespace orvane {
namespace {

// Only moving by keys scrolls by itself.
void ShowInScrollArea(QWidget* widget) {
  for (QWidget* above = widget->parentWidget(); above != nullptr; above = above->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(above)) {
      area->ensureWidgetVisible(widget);
    }
  }
}

// The widgets that the tab key reaches, in the order in which they are laid out.
void CollectFocusable(QWidget* widget, std::vector<QWidget*>* found);

void CollectFocusable(QLayout* layout, std::vector<QWidget*>* found) {
  for (int i = 0; layout != nullptr && i < layout->count(); ++i) {
    QLayoutItem* item = layout->itemAt(i);
    if (item->widget() != nullptr) {
      CollectFocusable(item->widget(), found);
    } else {
      CollectFocusable(item->layout(), found);
    }
  }
}

void CollectFocusable(QWidget* widget, std::vector<QWidget*>* found) {
  // Any button of a group may become its tab stop.
  if ((widget->focusPolicy() & Qt::TabFocus) != 0 || qobject_cast<QRadioButton*>(widget)) {
    found->push_back(widget);
  } else if (auto* area = qobject_cast<QScrollArea*>(widget)) {
    CollectFocusable(area->widget(), found);
  } else {
    CollectFocusable(widget->layout(), found);
  }
}

}  // namespace

CFormDialog::CFormDialog(FormModel* model, Prompts* prompts, QWidget* parent)
    : QDialog(parent), model_(model), prompts_(prompts) {
  model_->SetListener([this](int control) { Refresh(control); });
}

CFormDialog::~CFormDialog() { model_->SetListener({}); }

QWidget* CFormDialog::Control(int control) {
  QWidget*& widget = controls_[control];
  if (widget == nullptr) {
    const Field& field = model_->FieldOf(control);
    switch (field.widget) {
      case Widget::kCheck:
        widget = MakeCheck(field);
        break;
      case Widget::kCombo:
        widget = MakeList(field);
        break;
      case Widget::kRadios:
        widget = MakeRadios(field);
        break;
      default:
        widget = MakeLine(field);
        break;
    }
    if (field.widget != Widget::kRadios) {  // there each button has a name of its own
      Name(widget, field);
    }
    ShowTip(widget, field);
    Refresh(control);
  }
  return widget;
}

// Of a group each button has it.
void CFormDialog::ShowTip(QWidget* widget, const Field& field) {
  if (const auto group = groups_.find(field.control); group != groups_.end()) {
    for (QAbstractButton* button : group->second->buttons()) {
      ShowFieldTip(field, button);
    }
  } else {
    ShowFieldTip(field, widget);
  }
}

QAbstractButton* CFormDialog::Button(int control) {
  return findChild<QAbstractButton*>(QString::number(control));
}

QWidget* CFormDialog::Buttons(int control, int columns) {
  QWidget* widget = Control(control);
  delete widget->layout();
  auto* grid = new QGridLayout(widget);
  grid->setContentsMargins(0, 0, 0, 0);
  int at = 0;
  for (QAbstractButton* button : groups_[control]->buttons()) {
    grid->addWidget(button, at / columns, at % columns);
    ++at;
  }
  return widget;
}

QLabel* CFormDialog::LabelOf(int control) {
  QLabel*& label = labels_[control];
  if (label == nullptr) {
    label = new QLabel(MarkedText(model_->Caption(control)), this);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(Control(control));
    label->setEnabled(Control(control)->isEnabled());
  }
  return label;
}

void CFormDialog::AddRow(QFormLayout* form, int control) {
  if (model_->FieldOf(control).widget == Widget::kPassword) {
    form->addRow(LabelOf(control), WithShowButton(control));
  } else {
    form->addRow(LabelOf(control), Control(control));
  }
  rows_[control] = form;
  Refresh(control);
}

QGroupBox* CFormDialog::Group(const char* title, std::initializer_list<int> controls) {
  auto* box = new QGroupBox(QString::fromLatin1(title), this);
  auto* rows = new QFormLayout(box);
  for (const int control : controls) {
    const Field& field = model_->FieldOf(control);
    const bool is_free_text =
        (field.widget == Widget::kText || field.widget == Widget::kPassword) &&
        (field.codec.kind != CodecKind::kPlain || field.limits.max_length == 0);
    if (is_free_text) {
      AddCountedRow(rows, control);
    } else {
      AddRow(rows, control);
    }
  }
  return box;
}

void CFormDialog::AlignLabels(std::initializer_list<const QGroupBox*> boxes) {
  std::vector<QWidget*> labels;
  int width = 0;
  for (const QGroupBox* box : boxes) {
    const auto* rows = qobject_cast<const QFormLayout*>(box->layout());
    for (int row = 0; row < rows->rowCount(); ++row) {
      if (const QLayoutItem* item = rows->itemAt(row, QFormLayout::LabelRole); item != nullptr) {
        labels.push_back(item->widget());
        width = std::max(width, item->widget()->sizeHint().width());
      }
    }
  }
  for (QWidget* label : labels) {
    label->setMinimumWidth(width);
  }
}

QLayout* CFormDialog::WithShowButton(int control) {
  auto* line = qobject_cast<QLineEdit*>(Control(control));
  auto* show = new QToolButton(this);
  show->setText(QStringLiteral("Show"));
  show->setCheckable(true);
  show->setFocusPolicy(Qt::StrongFocus);
  show->setObjectName(QStringLiteral("show%1").arg(control));
  show->setAccessibleName(QStringLiteral("Show ") + line->accessibleName());
  show->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  connect(show, &QToolButton::toggled, line, [line](bool is_shown) {
    line->setEchoMode(is_shown ? QLineEdit::Normal : QLineEdit::Password);
  });
  auto* row = new QHBoxLayout;
  row->addWidget(line, 1);
  row->addWidget(show);
  return row;
}

void CFormDialog::AddCountedRow(QFormLayout* form, int control) {
  auto* count = new QLabel(this);
  count->setObjectName(QStringLiteral("count%1").arg(control));
  count->setAlignment(Qt::AlignRight);
  QFont small = count->font();
  small.setPointSizeF(small.pointSizeF() * 0.85);
  count->setFont(small);
  counts_[control] = count;
  auto* column = new QVBoxLayout;
  column->setSpacing(0);
  if (model_->FieldOf(control).widget == Widget::kPassword) {
    column->addLayout(WithShowButton(control));
  } else {
    column->addWidget(Control(control));
  }
  column->addWidget(count);
  form->addRow(LabelOf(control), column);
  Refresh(control);
}

QDialogButtonBox* CFormDialog::OkAndCancel() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("1"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("2"));
  connect(buttons, &QDialogButtonBox::accepted, this, &CFormDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &CFormDialog::reject);
  return buttons;
}

void CFormDialog::showEvent(QShowEvent* event) {
  if (!is_ordered_) {
    is_ordered_ = true;
    std::vector<QWidget*> widgets;
    CollectFocusable(layout(), &widgets);
    for (std::size_t i = 1; i < widgets.size(); ++i) {
      setTabOrder(widgets[i - 1], widgets[i]);
    }
    const auto first = std::find_if(widgets.begin(), widgets.end(),
                                    [](const QWidget* widget) { return widget->isEnabled(); });
    if (focusWidget() == nullptr && first != widgets.end()) {
      const auto* button = qobject_cast<QAbstractButton*>(*first);
      QButtonGroup* group = button == nullptr ? nullptr : button->group();
      QWidget* checked = group == nullptr ? nullptr : group->checkedButton();
      (checked != nullptr ? checked : *first)->setFocus(Qt::TabFocusReason);
    }
  }
  QDialog::showEvent(event);
}

bool CFormDialog::IsAcceptable() {
  const auto fault = Fault();
  if (!fault) {
    return true;
  }
  prompts_->ShowWarning("Orvane", model_->NameOf(fault->control) + ": " + fault->message);
  if (QWidget* widget = Control(fault->control); auto* line = qobject_cast<QLineEdit*>(widget)) {
    line->setFocus();
    line->selectAll();
    ShowInScrollArea(line);
  }
  return false;
}

void CFormDialog::accept() {
  if (IsAcceptable()) {
    Commit();
    QDialog::accept();
  }
}

}  // namespace orvane

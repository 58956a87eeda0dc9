// SPDX-License-Identifier: GPL-3.0-or-later
// The widgets of CFormDialog: how they are made, and what changes in them means to the form.
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/byte_text.h"
#include "ui/form_dialog.h"
#include "ui/form_texts.h"
#include "ui/line_marks.h"

namespace orvane {

void CFormDialog::Name(QWidget* widget, const Field& field) {
  widget->setObjectName(QString::number(field.control));
  widget->setAccessibleName(LabelText(model_->NameOf(field.control)));
}

QWidget* CFormDialog::MakeLine(const Field& field) {
  auto* line = new QLineEdit(this);
  if (field.widget != Widget::kPath) {
    line->setValidator(new ByteTextValidator(line));
  }
  if (field.widget == Widget::kPassword) {
    line->setEchoMode(QLineEdit::Password);
  }
  if (field.widget == Widget::kShown) {
    line->setReadOnly(true);
    QPalette colors = line->palette();
    colors.setColor(QPalette::Base, Qt::transparent);  // no place to type, in any theme
    line->setPalette(colors);
  }
  LimitTyping(line, field.limits.max_length);
  connect(line, &QLineEdit::inputRejected, this, [line] { TellWhyRejected(line); });
  connect(line, &QLineEdit::textChanged, this,
          [this, line, control = field.control] { OnLineChanged(control, line); });
  return line;
}

// Whatever changed the line: keys, an input method, an assistive tool, a script.
void CFormDialog::OnLineChanged(int control, QLineEdit* line) {
  if (is_refreshing_) {
    return;
  }
  const Field& field = model_->FieldOf(control);
  QString text = line->text();
  int position = 0;
  // Only keys and the clipboard ask the validator.
  const bool is_typeable = line->validator() == nullptr ||
                           line->validator()->validate(text, position) == QValidator::Acceptable;
  if (line->isReadOnly() || !model_->IsEnabled(control) || !is_typeable) {
    Refresh(control);
    if (!is_typeable) {
      TellNotLatin1(line);
    }
    return;
  }
  LimitTyping(line, field.limits.max_length);
  model_->SetText(control, StoredText(field, text));
  OnEdited(control);
  ShowFaults();
}

// Of a check box, a list or a group: whatever changed it.
void CFormDialog::OnChosen(int control, int index) {
  if (!is_refreshing_) {
    model_->SetIndex(control, index);
    OnEdited(control);
    ShowFaults();
  }
}

QWidget* CFormDialog::MakeCheck(const Field& field) {
  auto* check = new QCheckBox(MarkedText(field.label), this);
  connect(check, &QCheckBox::toggled, this, [this, control = field.control](bool is_checked) {
    OnChosen(control, is_checked ? 1 : 0);
  });
  return check;
}

QWidget* CFormDialog::MakeList(const Field& field) {
  auto* list = new QComboBox(this);
  for (const Choice& choice : field.choices) {
    list->addItem(LabelText(choice.label));
  }
  connect(list, &QComboBox::currentIndexChanged, this,
          [this, control = field.control](int index) { OnChosen(control, index); });
  return list;
}

QWidget* CFormDialog::MakeRadios(const Field& field) {
  auto* widget = new QWidget(this);
  auto* layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* group = new QButtonGroup(widget);
  groups_[field.control] = group;
  for (const Choice& choice : field.choices) {
    auto* button = new QRadioButton(MarkedText(choice.label), widget);
    button->setObjectName(QString::number(choice.control));
    button->installEventFilter(this);
    group->addButton(button, static_cast<int>(group->buttons().size()));
    layout->addWidget(button);
  }
  ConnectRadios(field.control, group);
  return widget;
}

// A button that is checked already can be pressed again, which applies its rule again; whatever
// checks another one sends no click. A click that checks is to count once.
void CFormDialog::ConnectRadios(int control, QButtonGroup* group) {
  connect(group, &QButtonGroup::idPressed, this, [this] { toggled_ = nullptr; });
  connect(group, &QButtonGroup::idToggled, this, [this, control, group](int index, bool is_on) {
    if (is_on && !is_refreshing_) {
      toggled_ = group->button(index);
      OnChosen(control, index);
    }
  });
  connect(group, &QButtonGroup::idClicked, this, [this, control, group](int index) {
    if (std::exchange(toggled_, nullptr) != group->button(index)) {
      OnChosen(control, index);
    }
  });
}

// The tab key enters a group at the checked button, else at the first that can be chosen.
void CFormDialog::SetTabStop(QButtonGroup* group) {
  const auto buttons = group->buttons();
  const auto can_choose = [](const QAbstractButton* button) { return button->isEnabled(); };
  const auto first = std::find_if(buttons.begin(), buttons.end(), can_choose);
  QAbstractButton* stop = group->checkedButton();
  if (stop == nullptr || !stop->isEnabled()) {
    stop = first == buttons.end() ? nullptr : *first;
  }
  for (QAbstractButton* button : buttons) {
    button->setFocusPolicy(button == stop ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

// Where nothing is chosen yet, arrow keys choose the next button, as they do by themselves from a
// chosen one. False where the key is none of them.
bool CFormDialog::ChooseByArrow(QRadioButton* button, int key) {
  const bool is_back = key == Qt::Key_Up || key == Qt::Key_Left;
  if ((!is_back && key != Qt::Key_Down && key != Qt::Key_Right) ||
      button->group()->checkedButton() != nullptr) {
    return false;
  }
  const auto buttons = button->group()->buttons();
  const auto step = is_back ? buttons.size() - 1 : 1;
  auto at = buttons.indexOf(button);
  do {
    at = (at + step) % buttons.size();
  } while (!buttons[at]->isEnabled());
  buttons[at]->setFocus(Qt::OtherFocusReason);
  buttons[at]->click();
  return true;
}

bool CFormDialog::eventFilter(QObject* watched, QEvent* event) {
  auto* button = qobject_cast<QRadioButton*>(watched);
  if (button != nullptr && event->type() == QEvent::FocusOut) {
    SetTabStop(button->group());  // where it had the focus last says nothing
  }
  if (button != nullptr && event->type() == QEvent::KeyPress &&
      ChooseByArrow(button, static_cast<QKeyEvent*>(event)->key())) {
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace orvane

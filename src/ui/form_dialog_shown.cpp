// SPDX-License-Identifier: GPL-3.0-or-later
// What the widgets of CFormDialog show of the form: values, faults, cautions, counts.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTimer>

#include "ui/byte_text.h"
#include "ui/form_dialog.h"
#include "ui/form_texts.h"
#include "ui/line_marks.h"
#include "ui/plot_theme.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

constexpr int kAnyLength = 32767;  // Qt's own limit

}  // namespace

QString CFormDialog::FaultText(int control, const std::optional<FormModel::Fault>& first) const {
  const std::string own = model_->FaultAt(control);
  return TextFromBytes(own.empty() && first && first->control == control ? first->message : own);
}

void CFormDialog::ShowFaults() {
  const auto first = Fault();
  for (const auto& [control, widget] : controls_) {
    if (auto* line = qobject_cast<QLineEdit*>(widget); line != nullptr) {
      const QString fault = FaultText(control, first);
      FrameLine(line, !fault.isEmpty());
      if (!fault.isEmpty()) {
        MarkLine(line, fault);
      }
      ShowCaution(control, fault);
    }
  }
}

// Once the layouts know of a new line. What has grown stays so: nothing moves under the pointer.
void CFormDialog::GrowToFit() {
  QTimer::singleShot(0, this, [this] {
    if (isVisible()) {
      ResizeWithinScreen(this, sizeHint().expandedTo(size()));
    }
  });
}

QLabel* CFormDialog::CautionOf(int control) {
  QLabel*& label = cautions_[control];
  if (label == nullptr) {
    label = new QLabel(this);
    label->setObjectName(QStringLiteral("caution%1").arg(control));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->hide();
  }
  return label;
}

// Where a form has its row, its line is made when there is something to say first.
void CFormDialog::ShowCaution(int control, const QString& fault) {
  const QString caution = fault.isEmpty() ? TextFromBytes(model_->Caution(control)) : fault;
  if (!cautions_.contains(control)) {
    const auto form = rows_.find(control);
    if (form == rows_.end() || caution.isEmpty()) {
      return;
    }
    int row = 0;
    form->second->getWidgetPosition(LabelOf(control), &row, nullptr);
    form->second->insertRow(row + 1, CautionOf(control));  // as wide as the row: narrow fields
  }
  QLabel* label = CautionOf(control);
  QPalette colors = palette();
  colors.setColor(QPalette::WindowText, WarningColor(colors));
  label->setPalette(colors);
  label->setText(caution);
  if (label->isHidden() == !caution.isEmpty()) {
    label->setVisible(!caution.isEmpty());
    GrowToFit();
  }
  if (isVisible() && !caution.isEmpty()) {
    layout()->activate();
    const int needed = layout()->totalMinimumHeightForWidth(width());
    resize(width(), std::max(height(), needed));  // a wrapped text is not cut
  }
}

// What is beyond the capacity is cut when it is stored.
bool CFormDialog::UpdateCount(int control) {
  const std::size_t length = model_->Text(control).size();
  const std::size_t capacity = model_->CapacityOf(control);
  const bool is_cut = length > capacity && model_->IsEdited(control);
  QLabel* count = counts_.at(control);
  count->setText(QStringLiteral("%1 of %2%3")
                     .arg(length)
                     .arg(capacity)
                     .arg(is_cut ? QStringLiteral(", will be cut") : QString()));
  QFont font = count->font();
  font.setBold(is_cut);
  count->setFont(font);
  return is_cut;
}

void CFormDialog::RefreshRadios(const Field& field) {
  QButtonGroup* group = groups_[field.control];
  const int index = model_->Index(field.control);
  const QString name = LabelText(field.group.empty() ? field.label : field.group);
  // An exclusive group keeps its last button checked.
  group->setExclusive(false);
  for (QAbstractButton* button : group->buttons()) {
    const int at = group->id(button);
    button->setChecked(at == index);
    const int control = field.choices[static_cast<std::size_t>(at)].control;
    button->setEnabled(model_->IsEnabled(control));
    const std::string_view caption = model_->ButtonCaption(control);
    button->setText(MarkedText(caption));
    button->setAccessibleName(name + QStringLiteral(": ") + LabelText(caption).trimmed());
  }
  group->setExclusive(true);
  SetTabStop(group);
}

void CFormDialog::Refresh(int control) {
  const auto found = controls_.find(control);
  if (found == controls_.end() || found->second == nullptr) {
    return;
  }
  const Field& field = model_->FieldOf(control);
  QWidget* widget = found->second;
  const QScopedValueRollback<bool> guard(is_refreshing_, true);
  widget->setEnabled(model_->IsEnabled(control) || field.widget == Widget::kRadios);
  if (auto* line = qobject_cast<QLineEdit*>(widget)) {
    if (const QString text = ShownText(field, model_->Text(control));
        line->text() != text && !IsNumberAmidBlanks(field, line->text(), model_->Text(control))) {
      line->setMaxLength(kAnyLength);  // what is stored is shown whole
      line->setText(text);             // not while typing: the cursor would jump
      LimitTyping(line, field.limits.max_length);
      if (line->isReadOnly()) {
        line->setCursorPosition(0);  // the beginning of what is too long says most
      }
    }
    QString warning = TextFromBytes(model_->Warning(control));
    if (counts_.contains(control) && UpdateCount(control)) {
      warning = QStringLiteral("The text is too long for the table and will be cut");
    }
    const QString fault = TextFromBytes(model_->FaultAt(control));
    MarkLine(line, fault.isEmpty() ? warning : fault);
    FrameLine(line, !fault.isEmpty());
    ShowCaution(control, fault);
  } else if (auto* check = qobject_cast<QCheckBox*>(widget)) {
    check->setChecked(model_->Index(control) == 1);
  } else if (auto* list = qobject_cast<QComboBox*>(widget)) {
    list->setCurrentIndex(model_->Index(control));
  } else {
    RefreshRadios(field);
  }
  if (qobject_cast<QLineEdit*>(widget) == nullptr) {
    ShowCaution(control, {});
  }
  if (const auto label = labels_.find(control); label != labels_.end() && label->second) {
    label->second->setText(MarkedText(model_->Caption(control)));
    if (field.widget != Widget::kRadios) {
      Name(widget, field);  // captions change
    }
    label->second->setEnabled(widget->isEnabled());
  }
}

}  // namespace orvane

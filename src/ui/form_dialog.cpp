// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/form_dialog.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>
#include <vector>

#include "core/ascii.h"
#include "ui/byte_text.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr int kAnyLength = 32767;  // Qt's own limit

// Typing is limited, but a longer text that is there may stay and be shortened.
void LimitTyping(QLineEdit* line, int max_length) {
  if (max_length > 0) {
    line->setMaxLength(std::max(max_length, static_cast<int>(line->text().size())));
  }
}

const QString kWarningMark = QStringLiteral("warning");
const QString kFaultFrame = QStringLiteral("fault");

void MarkLine(QLineEdit* line, const QString& warning) {
  auto* mark = line->findChild<QAction*>(kWarningMark);
  if (mark == nullptr) {
    const QIcon icon = line->style()->standardIcon(QStyle::SP_MessageBoxWarning);
    mark = line->addAction(icon, QLineEdit::TrailingPosition);
    mark->setObjectName(kWarningMark);
  }
  mark->setVisible(!warning.isEmpty());
  mark->setToolTip(warning);
  line->setAccessibleDescription(warning);
}

// Around a line whose text OK would refuse. A style sheet would change the whole line's look.
class FaultFrame : public QWidget {
 public:
  explicit FaultFrame(QLineEdit* line) : QWidget(line) {
    setObjectName(kFaultFrame);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    line->installEventFilter(this);
    resize(line->size());
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    constexpr int kWidth = 2;
    QPainter painter(this);
    painter.setPen(QPen(WarningColor(palette()), kWidth));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) {
      resize(static_cast<QResizeEvent*>(event)->size());
    }
    return QWidget::eventFilter(watched, event);
  }
};

void FrameLine(QLineEdit* line, bool is_wrong) {
  auto* frame = line->findChild<QWidget*>(kFaultFrame);
  if (frame == nullptr && is_wrong) {
    frame = new FaultFrame(line);
  }
  if (frame != nullptr) {
    frame->setVisible(is_wrong);
  }
}

// Only moving by keys scrolls by itself.
void ShowInScrollArea(QWidget* widget) {
  for (QWidget* above = widget->parentWidget(); above != nullptr; above = above->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(above)) {
      area->ensureWidgetVisible(widget);
    }
  }
}

QString LabelText(std::string_view label) {
  return QString::fromUtf8(label.data(), static_cast<qsizetype>(label.size()));
}
// On a button or before a field, where one '&' would mark a key.
QString MarkedText(std::string_view label) {
  return LabelText(label).replace(QLatin1Char('&'), QLatin1String("&&"));
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

// Values of tables are bytes; paths are texts of this computer.
QString ShownText(const Field& field, const std::string& text) {
  return field.widget == Widget::kPath ? QString::fromStdString(text) : TextFromBytes(text);
}
std::string StoredText(const Field& field, const QString& text) {
  return field.widget == Widget::kPath ? text.toStdString() : BytesFromText(text);
}

// As somebody may be typing it.
bool IsNumberAmidBlanks(const Field& field, const QString& text, std::string_view number) {
  const bool is_number = field.widget == Widget::kInteger || field.widget == Widget::kReal;
  return is_number && Trimmed(StoredText(field, text)) == number;
}

}  // namespace

CFormDialog::CFormDialog(FormModel* model, Prompts* prompts, QWidget* parent)
    : QDialog(parent), model_(model), prompts_(prompts) {
  model_->SetListener([this](int control) { Refresh(control); });
}

CFormDialog::~CFormDialog() { model_->SetListener({}); }

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
    Refresh(control);
  }
  return widget;
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

// Its line is made when there is something to say first.
void CFormDialog::ShowCaution(int control, const QString& fault) {
  const auto form = rows_.find(control);
  const QString caution = fault.isEmpty() ? TextFromBytes(model_->Caution(control)) : fault;
  QLabel*& label = cautions_[control];
  if (form == rows_.end() || (label == nullptr && caution.isEmpty())) {
    return;
  }
  if (label == nullptr) {
    int row = 0;
    form->second->getWidgetPosition(LabelOf(control), &row, nullptr);
    label = new QLabel(this);
    label->setObjectName(QStringLiteral("caution%1").arg(control));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    form->second->insertRow(row + 1, label);  // as wide as the row: some fields are narrow
  }
  QPalette colors = palette();
  colors.setColor(QPalette::WindowText, WarningColor(colors));
  label->setPalette(colors);
  label->setText(caution);
  label->setVisible(!caution.isEmpty());
  if (isVisible() && !caution.isEmpty()) {
    layout()->activate();
    const int needed = layout()->totalMinimumHeightForWidth(width());
    resize(width(), std::max(height(), needed));  // a wrapped text is not cut
  }
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

QDialogButtonBox* CFormDialog::OkAndCancel() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("1"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("2"));
  connect(buttons, &QDialogButtonBox::accepted, this, &CFormDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &CFormDialog::reject);
  return buttons;
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
    SetTabStop(button->group());  // where it had the focus last tells nothing
  }
  if (button != nullptr && event->type() == QEvent::KeyPress &&
      ChooseByArrow(button, static_cast<QKeyEvent*>(event)->key())) {
    return true;
  }
  return QDialog::eventFilter(watched, event);
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
        line->setCursorPosition(0);  // the beginning of what is too long tells most
      }
    }
    QString warning = TextFromBytes(model_->Warning(control));
    if (counts_.contains(control) && UpdateCount(control)) {
      warning = QStringLiteral("The text is longer than the table's room for it and will be cut");
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

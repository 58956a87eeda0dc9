// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/acq_param_dlg.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>
#include <map>
#include <utility>

#include "ui/byte_text.h"
#include "ui/content_scroll_area.h"
#include "ui/field_tips.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

constexpr int kFunctionColumns = 2;

QGroupBox* NewBox(const char* title, QLayout* layout) {
  auto* box = new QGroupBox(QString::fromLatin1(title));
  box->setLayout(layout);
  return box;
}

QWidget* NewColumn(std::initializer_list<QWidget*> boxes) {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  for (QWidget* box : boxes) {
    layout->addWidget(box);
  }
  layout->addStretch();
  return column;
}

// Wide enough for what it usually holds, and no wider.
QWidget* Sized(QWidget* line, const char* sample) {
  constexpr int kFrame = 24;
  line->setFixedWidth(line->fontMetrics().horizontalAdvance(QLatin1String(sample)) + kFrame);
  return line;
}

}  // namespace

CAcqParamDlg::CAcqParamDlg(AcqForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent),
      form_(form),
      site_setup_button_(NewButton(acq::kSiteSetup, "Site Setup...")),
      same_times_(NewButton(acq::kSameTimes, "Set Hi. freq. Acq. Time Same As Low Freq.")),
      calc_space_(NewButton(acq::kCalcSpace, "Calc. Space")),
      coupling_note_(new QLabel(this)),
      space_note_(new QLabel(this)),
      timeline_(new TimelineBar(this)) {
  setWindowTitle(TextFromBytes(acq::kTitle));
  setObjectName(QStringLiteral("130"));
  CreateButtons();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new ContentScrollArea(NewContent(), this), 1);
  layout->addWidget(OkAndCancel());
  ShowState();
  ResizeWithinScreen(this, sizeHint());
}

QPushButton* CAcqParamDlg::NewButton(int number, const char* text) {
  auto* button = new QPushButton(QString::fromLatin1(text), this);
  button->setObjectName(QString::number(number));
  return button;
}

void CAcqParamDlg::CreateButtons() {
  site_setup_button_->setEnabled(false);
  site_setup_button_->setToolTip(
      QStringLiteral("Describes the site and the spread; stores the function at once"));
  same_times_->setToolTip(
      QStringLiteral("Sets the high-frequency times to those of the whole recording"));
  calc_space_->setToolTip(
      QStringLiteral("Stores the schedule at once, with the times as they are shown: without the "
                     "hours of the time zone. OK stores them with the hours."));
  coupling_note_->setObjectName(QStringLiteral("coupling-note"));
  space_note_->setObjectName(QStringLiteral("space-note"));
  space_note_->setToolTip(
      QStringLiteral("The space is counted in 32 bits; this is the true value"));
  connect(site_setup_button_, &QPushButton::clicked, this, &CAcqParamDlg::OnSiteSetup);
  connect(same_times_, &QPushButton::clicked, this, &CAcqParamDlg::OnSameTimes);
  connect(calc_space_, &QPushButton::clicked, this, &CAcqParamDlg::OnCalcSpace);
}

// Columns from left to right and downwards in each: the order of the tab key.
QWidget* CAcqParamDlg::NewContent() {
  auto* content = new QWidget;
  auto* columns = new QHBoxLayout;
  columns->addWidget(NewMethodColumn());
  columns->addWidget(NewFrontEndColumn());
  columns->addWidget(NewColumn({NewScheduleBox(), NewTimeZoneBox()}));
  auto* layout = new QVBoxLayout(content);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(columns);
  layout->addWidget(timeline_);
  return content;
}

QWidget* CAcqParamDlg::NewMethodColumn() {
  auto* function = new QVBoxLayout;
  function->addWidget(NewFunctionButtons());
  function->addWidget(site_setup_button_);
  auto* request = new QVBoxLayout;
  request->addWidget(Buttons(acq::kRequest, 2));
  return NewColumn({NewBox("Function", function), NewBox("Mode request", request), NewCoilBox(),
                    NewReceiverBox()});
}

// A function changes other settings, some of them for good: arrow keys go to it, Space chooses it.
QWidget* CAcqParamDlg::NewFunctionButtons() {
  QWidget* buttons = Buttons(acq::kFunction, kFunctionColumns);
  for (QAbstractButton* button : buttons->findChildren<QAbstractButton*>()) {
    AddToTip(QStringLiteral("Arrow keys go to a method, Space chooses it"), button);
    button->installEventFilter(this);
  }
  return buttons;
}

bool CAcqParamDlg::eventFilter(QObject* watched, QEvent* event) {
  static const std::map<int, int> steps = {{Qt::Key_Left, -1},
                                           {Qt::Key_Right, 1},
                                           {Qt::Key_Up, -kFunctionColumns},
                                           {Qt::Key_Down, kFunctionColumns}};
  const bool is_key = event->type() == QEvent::KeyPress;
  const auto step = is_key ? steps.find(static_cast<QKeyEvent*>(event)->key()) : steps.end();
  const auto buttons = Control(acq::kFunction)->findChildren<QAbstractButton*>();
  const auto at = buttons.indexOf(qobject_cast<QAbstractButton*>(watched));
  if (step == steps.end() || at < 0) {
    return CFormDialog::eventFilter(watched, event);
  }
  if (QAbstractButton* next = buttons.value(at + step->second); next != nullptr) {
    next->setFocus(Qt::OtherFocusReason);
  }
  return true;
}

QWidget* CAcqParamDlg::NewCoilBox() {
  auto* form = new QFormLayout;
  for (const int control : {acq::kHxSerial, acq::kHySerial, acq::kHzSerial}) {
    AddRow(form, control);
  }
  return NewBox("Coils", form);
}

QWidget* CAcqParamDlg::NewReceiverBox() {
  auto* layout = new QVBoxLayout;
  auto* form = new QFormLayout;
  AddRow(form, acq::kFileClose);
  layout->addLayout(form);
  layout->addWidget(Control(acq::kPowerUpWindow));
  return NewBox("Receiver", layout);
}

QLayout* CAcqParamDlg::NewChannelForm(int coupling, int gain) {
  auto* layout = new QVBoxLayout;
  layout->addWidget(Buttons(coupling, 4));
  layout->addWidget(Buttons(gain, 4));
  return layout;
}

QWidget* CAcqParamDlg::NewFrontEndColumn() {
  QWidget* e_box = NewBox("E channels", NewChannelForm(acq::kECoupling, acq::kEGain));
  QWidget* h_box = NewBox("H channels", NewChannelForm(acq::kHCoupling, acq::kHGain));
  return NewColumn({e_box, h_box, coupling_note_, NewFilterBox()});
}

QWidget* CAcqParamDlg::NewFilterBox() {
  auto* low_pass = new QVBoxLayout;
  low_pass->addWidget(Buttons(acq::kFilter, 3));
  low_pass->addWidget(Control(acq::kVlfTrap));
  auto* line = new QVBoxLayout;
  line->addWidget(Buttons(acq::kLineFrequency, 2));
  line->addWidget(Control(acq::kCombFilter));
  auto* drift = new QFormLayout;
  Sized(Control(acq::kDrift), "0000.0000");
  AddRow(drift, acq::kDrift);
  line->addLayout(drift);
  return NewColumn({NewBox("Low-pass filter", low_pass), NewBox("Line frequency", line)});
}

QWidget* CAcqParamDlg::NewScheduleBox() {
  auto* layout = new QVBoxLayout;
  layout->addWidget(Buttons(acq::kSampling, 3));
  auto* times = new QFormLayout;
  for (const int control : {acq::kStart, acq::kEnd, acq::kHighStart, acq::kHighEnd}) {
    AddRow(times, control);
  }
  layout->addLayout(times);
  layout->addWidget(same_times_);
  auto* amounts = new QFormLayout;
  for (const int control :
       {acq::kBand2, acq::kBand3, acq::kBand4, acq::kSlotLength, acq::kChannels}) {
    AddRow(amounts, control);
  }
  layout->addLayout(amounts);
  layout->addLayout(NewSpaceRow());
  layout->addWidget(space_note_);
  return NewBox("MT/AMT recording", layout);
}

QLayout* CAcqParamDlg::NewSpaceRow() {
  auto* row = new QHBoxLayout;
  row->addWidget(calc_space_);
  row->addWidget(LabelOf(acq::kSpace));
  row->addWidget(Control(acq::kSpace), 1);
  return row;
}

QWidget* CAcqParamDlg::NewTimeZoneBox() {
  auto* layout = new QVBoxLayout;
  layout->addWidget(Buttons(acq::kZoneKind, 2));
  layout->addWidget(Control(acq::kZone));
  return NewBox("Times shown in", layout);
}

void CAcqParamDlg::SetSiteSetup(std::function<void()> handler) {
  site_setup_ = std::move(handler);
  site_setup_button_->setEnabled(static_cast<bool>(site_setup_));
}

void CAcqParamDlg::SetSchedule(ScheduleFile file) {
  schedule_ = std::move(file);
  ShowState();
}

void CAcqParamDlg::OnEdited(int control) {
  form_->OnEdited(control);
  ShowState();
}

void CAcqParamDlg::ShowState() {
  same_times_->setEnabled(form_->HasSchedule());
  calc_space_->setEnabled(form_->HasSchedule());
  coupling_note_->setText(TextFromBytes(form_->CouplingNote()));
  space_note_->setText(TextFromBytes(form_->SpaceNote()));
  timeline_->SetTimeline(form_->Recording(schedule_ ? &*schedule_ : nullptr));
}

void CAcqParamDlg::OnCalcSpace() {
  if (IsAcceptable()) {
    form_->CalculateSpace();
    ShowState();
  }
}

void CAcqParamDlg::OnSameTimes() { form_->CopyTimesToHighRates(); }

void CAcqParamDlg::OnSiteSetup() {
  if (form_->ChosenTech() != kNoTech) {
    site_setup_();
  }
}

}  // namespace orvane

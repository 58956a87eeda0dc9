// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/widgets/freq_stepping_dlg.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "stepping/widgets/stepping_cycle_dlg.h"
#include "stepping/widgets/tfs_dialog.h"
#include "ui/byte_text.h"
#include "ui/content_scroll_area.h"
#include "ui/qt_path.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

QGroupBox* NewBox(const char* title, QLayout* layout) {
  auto* box = new QGroupBox(QString::fromLatin1(title));
  box->setLayout(layout);
  return box;
}

}  // namespace

CFreqSteppingDlg::CFreqSteppingDlg(SteppingForm* form, Prompts* prompts, QString folder,
                                   QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent),
      form_(form),
      prompts_(prompts),
      folder_(std::move(folder)),
      note_(new QLabel(this)) {
  setObjectName(QStringLiteral("frequency-stepping"));
  setWindowTitle(TextFromBytes(form->Title()));
  note_->setObjectName(QStringLiteral("note"));
  note_->setTextFormat(Qt::PlainText);
  note_->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new ContentScrollArea(NewContent(), this), 1);
  layout->addLayout(NewBottomRow());
  ShowAll();
  frequencies_->SetFocusCell(1, 1);
  schedule_->SetFocusCell(1, 1);
  Control(stepping::kAuto)->setFocus();
  ResizeWithinScreen(this, sizeHint().expandedTo(QSize(1340, 680)));
}

QPushButton* CFreqSteppingDlg::NewButton(const char* name, const char* text,
                                         void (CFreqSteppingDlg::*handler)()) {
  auto* button = new QPushButton(QString::fromLatin1(text), this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, handler);
  return button;
}

// Columns from left to right and downwards in each: the order of the tab key.
QWidget* CFreqSteppingDlg::NewContent() {
  auto* content = new QWidget;
  auto* columns = new QHBoxLayout(content);
  columns->setContentsMargins(0, 0, 0, 0);
  QWidget* parameters = NewParameterColumn();
  MakeGrids();
  columns->addWidget(parameters);
  auto* grids = new QVBoxLayout;
  auto* upper = new QHBoxLayout;
  upper->addWidget(NewListBox());
  upper->addWidget(NewScheduleBox(), 1);
  grids->addLayout(upper, 3);
  grids->addWidget(NewWindowBox(), 2);
  columns->addLayout(grids, 1);
  columns->addWidget(NewPictureBox(), 2);
  return content;
}

QWidget* CFreqSteppingDlg::NewParameterColumn() {
  auto* stepping = new QFormLayout;
  for (const int control :
       {stepping::kAuto, stepping::kRequested, stepping::kLowest, stepping::kPerOctave,
        stepping::kCycles, stepping::kSeconds, stepping::kTotal}) {
    AddRow(stepping, control);
  }
  auto* transmitter = new QFormLayout;
  for (const int control : {stepping::kCurrent, stepping::kCorner}) {
    AddRow(transmitter, control);
  }
  auto* recording = new QFormLayout;
  for (const int control : {stepping::kWaveform, stepping::kRepeat, stepping::kItems}) {
    AddRow(recording, control);
  }
  // kept: the hints as the users know them.
  for (const char* hint : {"(21 >=TDEM, TDIP >= 5 )", "( CSAMT ,SIP = 1 )"}) {
    auto* label = new QLabel(QString::fromLatin1(hint));
    label->setAlignment(Qt::AlignRight);
    recording->addRow(label);
  }
  AddRow(recording, stepping::kDrift);
  for (const Field& field : Model().Fields()) {
    // Ten digits and no more: the grids need the room.
    Control(field.control)->setFixedWidth(fontMetrics().horizontalAdvance("0.12345678901") + 8);
  }
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  QGroupBox* const boxes[] = {NewBox("Stepping", stepping), NewBox("Transmitter", transmitter),
                              NewBox("Recording", recording)};
  AlignLabels({boxes[0], boxes[1], boxes[2]});
  for (QGroupBox* box : boxes) {
    layout->addWidget(box);
  }
  layout->addStretch();
  return column;
}

QWidget* CFreqSteppingDlg::NewListBox() {
  auto* layout = new QVBoxLayout;
  layout->addWidget(frequencies_);
  return NewBox("Frequency List", layout);
}

QWidget* CFreqSteppingDlg::NewScheduleBox() {
  calculate_ = NewButton("calculate", "Calculate Step(Wnd) Table", &CFreqSteppingDlg::OnCalculate);
  open_file_ = NewButton("open-file", "Open Schedule File...", &CFreqSteppingDlg::OnOpenFile);
  auto* layout = new QVBoxLayout;
  layout->addWidget(schedule_, 1);
  auto* buttons = new QGridLayout;
  buttons->addWidget(calculate_, 0, 0, 1, 2);
  buttons->addWidget(open_file_, 1, 0);
  buttons->addWidget(
      NewButton("export-file", "Export Schedule File...", &CFreqSteppingDlg::OnExportFile), 1, 1);
  buttons->addWidget(NewButton("insert-row", "Insert Row", &CFreqSteppingDlg::OnInsertRow), 2, 0);
  buttons->addWidget(NewButton("delete-row", "Delete Row", &CFreqSteppingDlg::OnDeleteRow), 2, 1);
  layout->addLayout(buttons);
  return NewBox("Frequency Stepping Schedule Table", layout);
}

QWidget* CFreqSteppingDlg::NewWindowBox() {
  auto* layout = new QVBoxLayout;
  layout->addWidget(windows_);
  QGroupBox* box = NewBox("TDEM/TDIP Window Table", layout);
  box->setVisible(form_->IsTimeDomain());
  return box;
}

QWidget* CFreqSteppingDlg::NewPictureBox() {
  picture_ = new SchedulePlot(this);
  auto* layout = new QVBoxLayout;
  layout->addWidget(picture_);
  picture_box_ = NewBox("Schedule", layout);
  return picture_box_;
}

QLayout* CFreqSteppingDlg::NewBottomRow() {
  default_ = NewButton("default", "Default", &CFreqSteppingDlg::OnDefault);
  default_->setToolTip(QStringLiteral("Writes the method's usual values at once"));
  auto* close = new QPushButton(QStringLiteral("Close"), this);
  close->setObjectName(QStringLiteral("1"));
  close->setDefault(true);
  close->setToolTip(QStringLiteral("Writes the values; Escape leaves without writing"));
  connect(close, &QPushButton::clicked, this, &CFreqSteppingDlg::accept);
  auto* row = new QHBoxLayout;
  row->addWidget(default_);
  row->addWidget(note_, 1);
  row->addWidget(close);
  return row;
}

void CFreqSteppingDlg::ShowAll() {
  ShowFrequencies();
  ShowSchedule();
  ShowWindows();
  note_->setText(QString::fromStdString(form_->Note()));
  ShowState();
}

void CFreqSteppingDlg::ShowState() {
  calculate_->setEnabled(form_->CanCalculate());
  open_file_->setEnabled(form_->CanOpenFile());
  default_->setEnabled(form_->HasDefaults());
}

void CFreqSteppingDlg::OnEdited(int control) {
  form_->OnEdited(control);
  ShowState();
}

void CFreqSteppingDlg::OnCalculate() {
  if (CommitGrids() && IsAcceptable() && MayDropSteps()) {
    form_->Calculate();
    ShowAll();
  }
}

void CFreqSteppingDlg::OnOpenFile() {
  if (!CommitGrids() || !MayDropSteps()) {
    return;
  }
  const QString path =
      AskForSchedule(this, QFileDialog::AcceptOpen, QStringLiteral("Open Schedule File"), folder_);
  if (!path.isEmpty()) {
    form_->OpenFile(PathFromText(path));
    ShowAll();
  }
}

bool CFreqSteppingDlg::Export() {
  if (!CommitGrids()) {
    return false;
  }
  const QString path =
      AskForSchedule(this, QFileDialog::AcceptSave, QStringLiteral("Export Schedule File"), folder_,
                     TextFromBytes(form_->ScheduleName()));
  if (path.isEmpty()) {
    return false;
  }
  const bool is_written = form_->ExportFile(PathFromText(path));
  ShowAll();
  return is_written;
}

bool CFreqSteppingDlg::MayDropSteps() {
  const Answer answer = form_->AskToExportSteps();
  return answer == Answer::kYes ? Export() : answer == Answer::kNo;
}

void CFreqSteppingDlg::OnInsertRow() {
  if (const int step = FocusStep(); CommitGrids() && step >= 0) {
    const std::string reason = form_->InsertStep(step);
    ShowSchedule();
    note_->setText(TextFromBytes(reason));
  }
}

void CFreqSteppingDlg::OnDeleteRow() {
  if (const int step = FocusStep(); CommitGrids() && step >= 0) {
    form_->DeleteStep(step);
    ShowSchedule();
    note_->clear();
  }
}

void CFreqSteppingDlg::OnDefault() {
  if (!CommitGrids() || !MayDropSteps()) {
    return;
  }
  std::int32_t seconds = 0;
  if (HasCycles(form_->Method())) {
    CycleForm cycle(&Model().Table(), &form_->Early(), form_->Method(), form_->Limits());
    cycle.Open();
    CSteppingCycleDlg dialog(&cycle, prompts_, this);
    if (dialog.exec() != QDialog::Accepted) {
      return;
    }
    form_->Limits() = cycle.Limits();
    seconds = cycle.Seconds();
  }
  form_->ApplyDefaults(seconds);
  ShowAll();
}

void CFreqSteppingDlg::accept() {
  if (CommitGrids() && IsAcceptable() && MayDropSteps()) {
    CFormDialog::accept();
  }
}

void CFreqSteppingDlg::reject() {
  if (MayDropSteps()) {
    CFormDialog::reject();
  }
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/widgets/fdem_schedule_dlg.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "files/path_text.h"
#include "stepping/widgets/tfs_dialog.h"
#include "ui/window_size.h"

namespace orvane {

CFdemScheduleDlg::CFdemScheduleDlg(FdemForm* form, Prompts* prompts, QString folder,
                                   QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form), folder_(std::move(folder)) {
  setObjectName(QStringLiteral("fdem-schedule"));
  // kept: the title as the users know it.
  setWindowTitle(QStringLiteral("Creat TFS File for Dr. Halvo FDEM"));
  auto* steps = new QGroupBox(QStringLiteral("Steps"), this);
  auto* rows = new QFormLayout;
  steps->setLayout(rows);
  for (const int control : {FdemForm::kSeconds, FdemForm::kCycles, FdemForm::kCurrent}) {
    AddRow(rows, control);
  }
  auto* sets = new QGroupBox(QStringLiteral("Frequencies"), this);
  auto* set_layout = new QVBoxLayout(sets);
  set_layout->addWidget(Buttons(FdemForm::kSet, 1));
  set_layout->addStretch();
  auto* upper = new QHBoxLayout;
  upper->addWidget(steps, 1);
  upper->addWidget(sets, 1);

  auto* browse = new QPushButton(QStringLiteral("..."), this);
  browse->setObjectName(QStringLiteral("browse"));
  browse->setAccessibleName(QStringLiteral("Browse for the file"));
  browse->setAutoDefault(false);
  browse->setFixedWidth(browse->fontMetrics().horizontalAdvance(QStringLiteral("..........")));
  connect(browse, &QPushButton::clicked, this, &CFdemScheduleDlg::OnBrowse);
  auto* file = new QHBoxLayout;
  file->addWidget(LabelOf(FdemForm::kPath));
  file->addWidget(Control(FdemForm::kPath), 1);
  file->addWidget(browse);

  path_ = new QLabel(this);
  path_->setObjectName(QStringLiteral("path"));
  path_->setTextFormat(Qt::PlainText);
  path_->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(upper);
  layout->addLayout(file);
  layout->addWidget(path_);
  layout->addStretch();
  layout->addWidget(OkAndCancel());
  ShowPath();
  ResizeWithinScreen(this, sizeHint().expandedTo(QSize(520, 0)));
}

void CFdemScheduleDlg::OnEdited(int control) {
  if (control == FdemForm::kPath) {
    ShowPath();
  }
}

void CFdemScheduleDlg::ShowPath() {
  const std::string path = PathText(form_->Path());
  path_->setText(path.empty() ? QString()
                              : QStringLiteral("Will be written: ") + QString::fromStdString(path));
}

void CFdemScheduleDlg::OnBrowse() {
  const QString path =
      AskForSchedule(this, QFileDialog::AcceptSave, QStringLiteral("File To Be Save"), folder_);
  if (!path.isEmpty()) {
    form_->Choose(path.toStdString());
    ShowPath();
  }
}

void CFdemScheduleDlg::accept() {
  if (IsAcceptable() && form_->Save()) {
    QDialog::accept();  // NOLINT(bugprone-parent-virtual-call): the table gets nothing of the form
  }
}

}  // namespace orvane

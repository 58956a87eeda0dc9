// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/ftp_dlg.h"

#include <QVBoxLayout>

#include "editors/widgets/scrolled_groups.h"
#include "ui/byte_text.h"

namespace orvane {

CFtpDlg::CFtpDlg(FtpForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("174"));
  setWindowTitle(TextFromBytes(FtpForm::kTitle));
  auto* server =
      Group("Server", {FtpForm::kServer, FtpForm::kPort, FtpForm::kUser, FtpForm::kPassword});
  auto* data_files = FilesGroup("Data files", {FtpForm::kUploadsData, FtpForm::kDeletesData},
                                FtpForm::kDataFolder);
  auto* calibration =
      FilesGroup("Calibration files", {FtpForm::kUploadsCalibration}, FtpForm::kCalibrationFolder);
  LayOutScrolled(this, Column({ScheduleGroup(), server, data_files, calibration}), OkAndCancel(),
                 680);
}

QGroupBox* CFtpDlg::ScheduleGroup() {
  auto* box = new QGroupBox(QStringLiteral("Schedule"), this);
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(Buttons(FtpForm::kSchedule, 1));
  auto* minutes = new QFormLayout;
  AddRow(minutes, FtpForm::kMinutes);
  layout->addLayout(minutes);
  return box;
}

QGroupBox* CFtpDlg::FilesGroup(const char* title, std::initializer_list<int> checks, int folder) {
  auto* box = new QGroupBox(QString::fromLatin1(title), this);
  auto* layout = new QVBoxLayout(box);
  for (const int check : checks) {
    layout->addWidget(Control(check));
  }
  auto* rows = new QFormLayout;
  AddCountedRow(rows, folder);
  layout->addLayout(rows);
  return box;
}

}  // namespace orvane

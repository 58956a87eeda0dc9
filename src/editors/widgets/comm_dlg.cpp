// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/comm_dlg.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/byte_text.h"
#include "ui/content_scroll_area.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

// The groups scroll where the screen is smaller, the buttons stay.
void LayOut(QDialog* dialog, QWidget* content, QDialogButtonBox* buttons, int width) {
  auto* layout = new QVBoxLayout(dialog);
  layout->addWidget(new ContentScrollArea(content, dialog), 1);
  layout->addWidget(buttons);
  ResizeWithinScreen(dialog, dialog->sizeHint().expandedTo(QSize(width, 0)));
}

QWidget* Column(std::initializer_list<QWidget*> groups) {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  for (QWidget* group : groups) {
    layout->addWidget(group);
  }
  layout->addStretch();
  return column;
}

}  // namespace

CRadioDlg::CRadioDlg(RadioForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("131"));
  setWindowTitle(QStringLiteral("MHX Wireless Network Settings"));
  Buttons(RadioForm::kType, 2);
  Buttons(RadioForm::kFrequency, 2);
  auto* modem = Group("Radio", {RadioForm::kType, RadioForm::kFrequency, RadioForm::kPower});
  auto* hardware = new QLabel(this);
  hardware->setObjectName(QStringLiteral("hardware"));
  hardware->setTextFormat(Qt::PlainText);
  hardware->setWordWrap(true);
  const QString name = TextFromBytes(form->Hardware());
  hardware->setText(form->Model().Index(RadioForm::kFrequency) == kNothingChosen
                        ? QStringLiteral("Hardware %1 is not a known radio").arg(name)
                        : QStringLiteral("Hardware %1").arg(name));
  qobject_cast<QFormLayout*>(modem->layout())->addRow(QString(), hardware);
  auto* network = Group("Network", {RadioForm::kNetworkAddress, RadioForm::kEncryptionKey});
  AlignLabels({modem, network});
  auto* serials =
      Group("Boxes", {RadioForm::kLocalSerial, RadioForm::kRefSerial, RadioForm::kAux1Serial, 1012,
                      1013, 1014, RadioForm::kAux5Serial, RadioForm::kTxSerial});
  serials->setToolTip(QStringLiteral("0: no such box"));
  auto* content = new QWidget(this);
  auto* columns = new QHBoxLayout(content);
  columns->setContentsMargins(0, 0, 0, 0);
  columns->addWidget(Column({modem, network}));
  columns->addWidget(Column({serials}));
  LayOut(this, content, OkAndCancel(), 0);
}

CGsmDlg::CGsmDlg(PlainForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("171"));
  setWindowTitle(QStringLiteral("GSM Modem Settings"));
  auto* connection = Group("Data connection", {1239, 1240, 1241, 1242});
  auto* servers = Group("Servers", {1243, 1289, 1290});
  AlignLabels({connection, servers});
  LayOut(this, Column({connection, servers}), OkAndCancel(), 620);
}

CFtpDlg::CFtpDlg(FtpForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("174"));
  setWindowTitle(QStringLiteral("FTP Client Setup"));
  auto* server =
      Group("Server", {FtpForm::kServer, FtpForm::kPort, FtpForm::kUser, FtpForm::kPassword});
  auto* data_files = FilesGroup("Data files", {FtpForm::kUploadsData, FtpForm::kDeletesData},
                                FtpForm::kDataFolder);
  auto* calibration =
      FilesGroup("Calibration files", {FtpForm::kUploadsCalibration}, FtpForm::kCalibrationFolder);
  LayOut(this, Column({ScheduleGroup(), server, data_files, calibration}), OkAndCancel(), 680);
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

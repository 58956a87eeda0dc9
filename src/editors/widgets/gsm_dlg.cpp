// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/gsm_dlg.h"

#include "editors/widgets/scrolled_groups.h"
#include "ui/byte_text.h"

namespace orvane {

CGsmDlg::CGsmDlg(PlainForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("171"));
  setWindowTitle(TextFromBytes(gsm::kTitle));
  auto* connection =
      Group("Data connection", {gsm::kAccessNumber, gsm::kUser, gsm::kPassword, gsm::kAccessPoint});
  auto* servers = Group("Servers", {gsm::kServer, gsm::kFtpUser, gsm::kFtpPassword});
  AlignLabels({connection, servers});
  LayOutScrolled(this, Column({connection, servers}), OkAndCancel(), 620);
}

}  // namespace orvane

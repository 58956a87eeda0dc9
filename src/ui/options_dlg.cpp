// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/options_dlg.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/folder_dialog.h"
#include "ui/window_size.h"

namespace orvane {

COptionsDlg::COptionsDlg(FormModel* model, Prompts* prompts, QWidget* parent)
    : CFormDialog(model, prompts, parent) {}

// Label, field, button, hint; what is wrong below.
void COptionsDlg::LayOut(std::span<const OptionRow> rows) {
  auto* grid = new QGridLayout;
  int line = 0;
  for (const OptionRow& row : rows) {
    const QString hint =
        QString::fromUtf8(row.hint.data(), static_cast<qsizetype>(row.hint.size()));
    QWidget* field = Control(row.control);
    field->setAccessibleDescription(hint);
    if (Form().FieldOf(row.control).widget != Widget::kCheck) {
      grid->addWidget(LabelOf(row.control), line, 0);
    }
    grid->addWidget(field, line, 1);
    if (row.browse != nullptr) {
      grid->addWidget(MakeBrowse(row), line, 2);
    }
    grid->addWidget(new QLabel(hint, this), line, 3);
    grid->addWidget(CautionOf(row.control), line + 1, 1, 1, 3);
    line += 2;
  }
  grid->setColumnStretch(1, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addStretch();
  layout->addWidget(OkAndCancel());
  ResizeWithinScreen(this, sizeHint().expandedTo(QSize(880, 0)));
}

QWidget* COptionsDlg::MakeBrowse(const OptionRow& row) {
  auto* browse = new QPushButton(QStringLiteral("..."), this);
  browse->setObjectName(QStringLiteral("browse"));
  browse->setAccessibleName(QStringLiteral("Browse for the ") +
                            QString::fromStdString(Form().NameOf(row.control)).toLower());
  browse->setAutoDefault(false);
  browse->setMaximumWidth(40);
  connect(browse, &QPushButton::clicked, this, [this, row] {
    const QString chosen = CFolderDialog::AskForFolder(
        this, QString::fromLatin1(row.browse), QString::fromStdString(Model().Text(row.control)));
    if (!chosen.isEmpty()) {
      Model().SetText(row.control, chosen.toStdString());
    }
  });
  return browse;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/printer_choice.h"

#include <QMessageBox>
#include <QPrintDialog>

namespace orvane {

bool AskForPrinter(QPrinter* printer, const QString& title, int pages, QWidget* parent) {
#ifdef Q_OS_WIN
  if (printer->outputFormat() != QPrinter::NativeFormat) {
    QMessageBox::information(parent, QStringLiteral("Orvane"),
                             QStringLiteral("No printer is installed"));
    return false;
  }
#endif
  QPrintDialog dialog(printer, parent);
  if (!title.isEmpty()) {
    dialog.setWindowTitle(title);
  }
  if (pages > 0) {
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setMinMax(1, pages);
  }
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace orvane

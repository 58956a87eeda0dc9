// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_PRINTER_CHOICE_H_
#define ORVANE_UI_PRINTER_CHOICE_H_

#include <QPrinter>
#include <QString>
#include <QWidget>

namespace orvane {

/// Asks on which printer and which of so many pages (0: always all), by the system's dialog. False
/// where the user does not print, or cannot: that of Windows shows nothing where no printer is
/// installed, so a message says it.
bool AskForPrinter(QPrinter* printer, const QString& title, int pages, QWidget* parent);

}  // namespace orvane

#endif  // ORVANE_UI_PRINTER_CHOICE_H_

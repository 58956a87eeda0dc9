// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_FOLDER_DIALOG_H_
#define ORVANE_UI_FOLDER_DIALOG_H_

#include <QFileDialog>
#include <QString>

namespace orvane {

// Names the lists of Qt's own dialog by the labels beside them. The system's own has none.
void NameFileLists(QFileDialog* dialog);

// Asks for a folder that exists; files are not shown.
class CFolderDialog : public QFileDialog {
  Q_OBJECT

 public:
  // Begins at `start`, or at the nearest folder above it that exists; if it is empty, at the
  // current folder.
  CFolderDialog(const QString& prompt, const QString& start, QWidget* parent = nullptr);

  // The chosen folder: absolute, with the separators of the system. Empty until accepted.
  QString Folder() const;

  // The chosen folder, empty if the user cancelled.
  static QString AskForFolder(QWidget* parent, const QString& prompt, const QString& start);

 protected:
  void accept() override;  // refuses a name with bytes that are not UTF-8
};

}  // namespace orvane

#endif  // ORVANE_UI_FOLDER_DIALOG_H_

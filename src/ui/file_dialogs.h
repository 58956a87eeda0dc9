// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_FILE_DIALOGS_H_
#define ORVANE_UI_FILE_DIALOGS_H_

#include <QFileDialog>
#include <QLineEdit>
#include <QStringList>
#include <string_view>
#include <vector>

namespace orvane {

/// The filters of a text such as "Tbl Files (*.tbl)|*.tbl|All Files (*.*)|*.*||", pairs of a label
/// and a pattern, as a dialog takes them that shows the label alone: "Tbl Files (*.tbl) (*.tbl)".
/// The pattern "*.*" becomes "*", which also shows names without a dot.
QStringList NameFilters(std::string_view pairs);

/// A file dialog that matches patterns in any case on every system: Qt's own but on Windows.
class CFileDialog : public QFileDialog {
  Q_OBJECT

 public:
  /// `folder`: where it begins; the current one where it is empty or does not exist.
  CFileDialog(const QString& title, std::string_view filters, const QString& folder,
              QWidget* parent);

  /// Shows the dialog, beginning in the folder that was last used for such files where that still
  /// exists. `key` is where the settings keep it. False where the user cancels.
  bool ExecRemembering(const QString& key);
  /// The file chosen; empty where the user cancelled.
  QString Chosen() const;

 protected:
  /// Refuses names with bytes that are not UTF-8.
  void accept() override;
};

/// Asks for files that exist, any number of them, and for the folder that what is made of them goes
/// into. Qt's own dialog on every system: others have no place for that folder.
class CFECFileDialog : public CFileDialog {
  Q_OBJECT

 public:
  CFECFileDialog(const QString& title, std::string_view filters, const QString& folder,
                 QWidget* parent);

  /// In the order of the dialog; empty until accepted.
  std::vector<std::filesystem::path> Paths() const;
  /// Where the new files go, whole; empty: beside each file.
  QString OutFolder() const;

 protected:
  /// Refuses a folder that does not exist.
  void accept() override;

 private:
  void AddOutFolder();

  QLineEdit* out_folder_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_UI_FILE_DIALOGS_H_

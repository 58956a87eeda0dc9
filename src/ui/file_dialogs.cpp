// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/file_dialogs.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QSettings>
#include <limits>

#include "ui/qt_path.h"

namespace orvane {

QStringList NameFilters(std::string_view pairs) {
  const QStringList parts =
      QString::fromUtf8(pairs.data(), static_cast<qsizetype>(pairs.size())).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size() && !parts[i].isEmpty(); i += 2) {
    QString pattern = parts[i + 1];
    if (pattern == QLatin1String("*.*")) {
      pattern = QStringLiteral("*");
    }
    filters << parts[i].trimmed() + QStringLiteral(" (") +
                   pattern.replace(QLatin1Char(';'), QLatin1Char(' ')) + QLatin1Char(')');
  }
  return filters;
}

CFileDialog::CFileDialog(const QString& title, std::string_view filters, const QString& folder,
                         QWidget* parent)
    : QFileDialog(parent, title) {
#ifndef Q_OS_WIN
  setOption(DontUseNativeDialog);
#endif
  setOption(HideNameFilterDetails);  // the labels tell them
  setNameFilters(NameFilters(filters));
  if (!folder.isEmpty() && QFileInfo(folder).isDir()) {
    setDirectory(folder);
  }
}

bool CFileDialog::ExecRemembering(const QString& key) {
  const QString last = QSettings().value(key).toString();
  if (!last.isEmpty() && QFileInfo(last).isDir()) {
    setDirectory(last);
  }
  if (exec() != Accepted) {
    return false;
  }
  QSettings().setValue(key, directory().absolutePath());
  return true;
}

void CFileDialog::accept() {
  for (const QString& file : selectedFiles()) {
    if (const QString fault = UnknownName(file); !fault.isEmpty()) {
      QMessageBox::warning(this, windowTitle(), fault);
      return;
    }
  }
  QFileDialog::accept();
}

QString CFileDialog::Chosen() const {
  return result() == Accepted ? selectedFiles().value(0) : QString();
}

CFECFileDialog::CFECFileDialog(const QString& title, std::string_view filters,
                               const QString& folder, QWidget* parent)
    : CFileDialog(title, filters, folder, parent) {
  setFileMode(ExistingFiles);
  // The line holds the names of all files chosen; its usual limit would cut them.
  for (QLineEdit* line : findChildren<QLineEdit*>()) {
    line->setMaxLength(std::numeric_limits<int>::max());
  }
}

std::vector<std::filesystem::path> CFECFileDialog::Paths() const {
  std::vector<std::filesystem::path> paths;
  if (result() == Accepted) {
    const QStringList files = selectedFiles();
    paths.reserve(static_cast<std::size_t>(files.size()));
    for (const QString& file : files) {
      paths.push_back(PathFromText(file));
    }
  }
  return paths;
}

}  // namespace orvane

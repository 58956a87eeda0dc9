// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/file_dialogs.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <limits>

#include "ui/folder_dialog.h"
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
  setOption(HideNameFilterDetails);  // the labels name them
  setNameFilters(NameFilters(filters));
  if (!folder.isEmpty() && QFileInfo(folder).isDir()) {
    setDirectory(folder);
  }
  NameFileLists(this);
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
  setOption(DontUseNativeDialog);
  NameFileLists(this);
  setFileMode(ExistingFiles);
  AddOutFolder();
  // The line holds the names of all files chosen; its usual limit would cut them.
  for (QLineEdit* line : findChildren<QLineEdit*>()) {
    line->setMaxLength(std::numeric_limits<int>::max());
  }
}

void CFECFileDialog::AddOutFolder() {
  out_folder_ = new QLineEdit(this);
  out_folder_->setObjectName(QStringLiteral("out-folder"));
  out_folder_->setAccessibleName(QStringLiteral("Folder for the new files"));
  out_folder_->setPlaceholderText(QStringLiteral("beside each file"));
  out_folder_->setClearButtonEnabled(true);
  auto* label = new QLabel(QStringLiteral("New files:"), this);
  label->setBuddy(out_folder_);
  auto* choose = new QPushButton(QStringLiteral("Into folder..."), this);
  choose->setObjectName(QStringLiteral("choose-out-folder"));
  choose->setAutoDefault(false);
  connect(choose, &QPushButton::clicked, this, [this] {
    const QString start = OutFolder().isEmpty() ? directory().absolutePath() : OutFolder();
    const QString folder =
        CFolderDialog::AskForFolder(this, QStringLiteral("Folder for the new files"), start);
    if (!folder.isEmpty()) {
      out_folder_->setText(folder);
    }
  });
  auto* grid = qobject_cast<QGridLayout*>(layout());
  const int row = grid->rowCount();
  grid->addWidget(label, row, 0);
  grid->addWidget(out_folder_, row, 1);
  grid->addWidget(choose, row, 2);
}

QString CFECFileDialog::OutFolder() const {
  const QString typed = out_folder_->text().trimmed();
  return typed.isEmpty() ? QString()
                         : QDir::toNativeSeparators(QDir::cleanPath(directory().filePath(typed)));
}

void CFECFileDialog::accept() {
  if (const QString folder = OutFolder(); !folder.isEmpty() && !QFileInfo(folder).isDir()) {
    QMessageBox::warning(this, windowTitle(),
                         QStringLiteral("The folder %1 does not exist.").arg(folder));
    out_folder_->setFocus();
    return;
  }
  CFileDialog::accept();
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

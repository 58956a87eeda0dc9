// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/field_folders.h"

#include <QFileInfo>

#include "editors/table_summary.h"

namespace orvane {

QString FieldFolders::Data(Tech method) const {
  const std::string_view name = MethodName(method);
  // "MT/AMT" is in the folder "MT".
  const std::string_view folder = name.substr(0, name.find('/'));
  return Usual(QStringLiteral("DATA/") +
               QString::fromLatin1(folder.data(), static_cast<qsizetype>(folder.size())));
}

QString FieldFolders::Data() const { return Data(TechOf(doc_->Table())); }

QString FieldFolders::Document() const {
  return doc_->Path().isEmpty() ? QString() : QFileInfo(doc_->Path()).absolutePath();
}

// Elsewhere than on Windows the root is no absolute path, and a folder that happens to be named so
// is another one.
QString FieldFolders::Usual(const QString& name) const {
  const QFileInfo usual(root_ + QLatin1Char('/') + name);
  return usual.isAbsolute() && usual.isDir() ? usual.filePath() : Document();
}

}  // namespace orvane

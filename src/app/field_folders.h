// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_FIELD_FOLDERS_H_
#define ORVANE_APP_FIELD_FOLDERS_H_

#include <QString>

#include "app/orvane_doc.h"
#include "table/tech.h"

namespace orvane {

/// Where the files of the field are on the crews' computers below `root`, which tests set: the
/// data of each method in a folder of its own, calibrations in another.
class FieldFolders {
 public:
  explicit FieldFolders(const COrvaneDoc* doc, QString root = QStringLiteral("C:/K3"))
      : doc_(doc), root_(std::move(root)) {}

  /// Each is the usual folder where that exists, else that of the document; empty without either.
  QString Calibrations() const { return Usual(QStringLiteral("CAL")); }
  QString Data(Tech method) const;
  /// For the method of the document.
  QString Data() const;
  QString Document() const;

 private:
  QString Usual(const QString& name) const;

  const COrvaneDoc* doc_;
  QString root_;
};

}  // namespace orvane

#endif  // ORVANE_APP_FIELD_FOLDERS_H_

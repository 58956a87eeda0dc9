// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of tables are bytes; on screen they are Latin-1.
#ifndef ORVANE_UI_BYTE_TEXT_H_
#define ORVANE_UI_BYTE_TEXT_H_

#include <QLineEdit>
#include <QString>
#include <QValidator>
#include <string>
#include <string_view>

namespace orvane {

inline QString TextFromBytes(std::string_view bytes) {
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

inline std::string BytesFromText(const QString& text) { return text.toLatin1().toStdString(); }

/// Says in a tip below a line why what was typed or pasted into it is not taken: it has as many
/// characters as it may, or a table cannot hold one of the new ones.
void TellWhyRejected(QLineEdit* line);
void TellNotLatin1(QLineEdit* line);

/// Refuses characters without a byte, and line breaks but for those at the end, which go.
class ByteTextValidator : public QValidator {
  Q_OBJECT

 public:
  using QValidator::QValidator;

  State validate(QString& text, int& position) const override;
};

}  // namespace orvane

#endif  // ORVANE_UI_BYTE_TEXT_H_

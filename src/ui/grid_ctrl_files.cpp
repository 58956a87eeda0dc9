// SPDX-License-Identifier: GPL-3.0-or-later
// The cells of CGridCtrl in files: what is saved, and what of a file is loaded.
#include <QPointer>
#include <array>
#include <filesystem>
#include <span>

#include "files/file_io.h"
#include "ui/grid_ctrl.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;

// False, as every failure; the reason is reported where it is wanted.
bool Fail(const std::filesystem::path& path, const std::string& why, QString* reason) {
  if (reason) {
    *reason = QString::fromStdString(FileMessage(path, why));
  }
  return false;
}

std::string ReadAll(const std::filesystem::path& path, QByteArray* bytes) {
  InFile file;
  if (std::string why = file.Open(path); !why.empty()) {
    return why;
  }
  std::vector<std::byte> piece(kPiece);
  std::size_t count = 0;
  do {
    count = file.Read(piece);
    bytes->append(reinterpret_cast<const char*>(piece.data()), static_cast<qsizetype>(count));
  } while (count == piece.size());
  return file.Error();
}

GridTexts TextsOf(const CGridCtrl& grid, int row_count) {
  GridTexts texts;
  for (int row = 0; row < row_count; ++row) {
    QStringList& cells = texts.emplace_back();
    for (int col = 0; col < grid.GetColumnCount(); ++col) {
      cells << grid.GetItemText(row, col);
    }
  }
  return texts;
}

}  // namespace

bool CGridCtrl::SaveCells(const QString& path, QString* reason) {
  CommitEdit();
  const std::filesystem::path file_path = PathFromText(path);
  const auto bytes = WriteGridTexts(TextsOf(*this, GetRowCount()));
  if (!bytes) {
    return Fail(file_path, "a cell holds no valid Unicode text", reason);
  }
  const std::span<const char> text(bytes->constData(), static_cast<std::size_t>(bytes->size()));
  const std::string why = WriteFile(file_path, std::as_bytes(text));
  return why.empty() || Fail(file_path, why, reason);
}

bool CGridCtrl::LoadCells(const QString& path, QString* reason) {
  const std::filesystem::path file_path = PathFromText(path);
  QByteArray bytes;
  if (const std::string why = ReadAll(file_path, &bytes); !why.empty()) {
    return Fail(file_path, why, reason);
  }
  QString why;
  const auto texts =
      ReadGridTexts(bytes, TextsOf(*this, GetFixedRowCount()), GetColumnCount(), &why);
  if (!texts) {
    return Fail(file_path, why.toStdString(), reason);
  }
  const QPointer<CGridCtrl> self(this);
  CommitEdit();
  if (self) {
    EnterTexts(model_.index(GetFixedRowCount(), 0), *texts, true);
  }
  return true;
}

}  // namespace orvane

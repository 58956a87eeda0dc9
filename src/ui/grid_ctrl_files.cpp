// SPDX-License-Identifier: GPL-3.0-or-later
// The cells of CGridCtrl in files: what is saved, and what of a file is loaded.
#include <QPointer>
#include <filesystem>
#include <span>

#include "base/number_text.h"
#include "files/file_io.h"
#include "ui/grid_ctrl.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;
// The cells of a whole table with its meanings take a tenth of it.
constexpr qsizetype kLargestFile = qsizetype{4} << 20;

Result<> ReadAll(const std::filesystem::path& path, QByteArray* bytes) {
  InFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    return opened;
  }
  std::vector<std::byte> piece(kPiece);
  std::size_t count = 0;
  do {
    count = file.Read(piece);
    bytes->append(reinterpret_cast<const char*>(piece.data()), static_cast<qsizetype>(count));
    if (bytes->size() > kLargestFile) {
      return Failure("is larger than 4 MB: these are no cells of a grid");
    }
  } while (count == piece.size());
  return file.Outcome();
}

// The columns before the first that is edited anywhere: they name a row.
int NamingColumns(const CGridCtrl& grid) {
  for (int col = 0; col < grid.GetColumnCount(); ++col) {
    for (int row = grid.GetFixedRowCount(); row < grid.GetRowCount(); ++row) {
      if (grid.model()->flags(grid.model()->index(row, col)).testFlag(Qt::ItemIsEditable)) {
        return col;
      }
    }
  }
  return grid.GetColumnCount();
}

// Whether the rows are those of the grid: a value must not reach the row of another.
Result<> AreRowsOf(const CGridCtrl& grid, const GridTexts& texts) {
  const int first = grid.GetFixedRowCount();
  if (const auto rows = static_cast<std::size_t>(grid.GetRowCount() - first);
      texts.size() != rows) {
    return Failure("the number of rows is " + FormatInt(texts.size()) + " and not " +
                   FormatInt(rows));
  }
  const int columns = NamingColumns(grid);
  for (std::size_t row = 0; row < texts.size(); ++row) {
    for (int col = 0; col < columns; ++col) {
      const QString text = grid.GetItemText(first + static_cast<int>(row), col);
      if (texts[row][col] != text) {
        return Failure("row " + FormatInt(row + 1) + " is \"" + texts[row][col].toStdString() +
                       "\" and not \"" + text.toStdString() + "\"; nothing was loaded");
      }
    }
  }
  return {};
}

GridTexts TextsOf(const CGridCtrl& grid, int row_count, const QString& owner) {
  GridTexts texts;
  for (int row = 0; row < row_count; ++row) {
    QStringList& cells = texts.emplace_back();
    for (int col = 0; col < grid.GetColumnCount(); ++col) {
      cells << grid.GetItemText(row, col);
    }
  }
  if (!owner.isEmpty() && !texts.empty()) {
    texts.front().front() += QStringLiteral(" of ") + owner;
  }
  return texts;
}

}  // namespace

Result<> CGridCtrl::SaveCells(const QString& path) {
  CommitEdit();
  const std::filesystem::path file_path = PathFromText(path);
  const auto bytes = WriteGridTexts(TextsOf(*this, GetRowCount(), owner_of_cells_));
  if (!bytes) {
    return Failure(FileMessage(file_path, "a cell holds no valid Unicode text"));
  }
  const std::span<const char> text(bytes->constData(), static_cast<std::size_t>(bytes->size()));
  const Result<> written = WriteFile(file_path, std::as_bytes(text));
  return written ? written : Failure(FileMessage(file_path, written.Message()));
}

Result<> CGridCtrl::LoadCells(const QString& path) {
  const std::filesystem::path file_path = PathFromText(path);
  QByteArray bytes;
  if (const Result<> read = ReadAll(file_path, &bytes); !read) {
    return Failure(FileMessage(file_path, read.Message()));
  }
  const auto texts =
      ReadGridTexts(bytes, TextsOf(*this, GetFixedRowCount(), owner_of_cells_), GetColumnCount());
  if (!texts) {
    return Failure(FileMessage(file_path, texts.Message()));
  }
  const QPointer<CGridCtrl> self(this);
  CommitEdit();
  if (const Result<> rows = self ? AreRowsOf(*this, *texts) : Result<>(); !rows) {
    return Failure(FileMessage(file_path, rows.Message()));
  }
  if (self) {
    EnterTexts(model_.index(GetFixedRowCount(), 0), *texts, true);
  }
  return {};
}

}  // namespace orvane

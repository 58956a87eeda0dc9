// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_GRID_CELL_H_
#define ORVANE_UI_GRID_CELL_H_

#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

namespace orvane {

// What the list of an editor offers: a text for the cell, and how the list shows it.
struct GridChoice {
  QString text;
  QString label;
};

// One cell of a grid: what it says and how it looks. Changing a cell directly does not repaint the
// grid; the setters of CGridCtrl do.
class CGridCellBase {
 public:
  CGridCellBase() = default;
  virtual ~CGridCellBase() = default;
  CGridCellBase(const CGridCellBase&) = delete;
  CGridCellBase& operator=(const CGridCellBase&) = delete;
  CGridCellBase(CGridCellBase&&) = delete;
  CGridCellBase& operator=(CGridCellBase&&) = delete;

  virtual QString GetText() const = 0;
  virtual void SetText(const QString& text) = 0;

  // Shown on hovering in place of the title tip; empty: the title tip alone.
  virtual QString GetTipText() const = 0;
  virtual bool IsReadOnly() const = 0;
  virtual Qt::Alignment GetAlignment() const = 0;

  // The longest text that may be typed, in UTF-16 code units. Does not bind SetText().
  virtual int GetTextLimit() const = 0;

  // Texts that the editor offers as a list; others may be typed all the same.
  virtual std::vector<GridChoice> GetChoices() const { return {}; }
  // Whether the list opens with the editor; else F4, Alt+Down and a button open it.
  virtual bool OpensChoices() const { return false; }

  bool IsMarked() const { return marked_; }
  void SetMarked(bool marked) { marked_ = marked; }

  // What is wrong with the text: it is drawn in the colour of warnings and so described to
  // assistive tools. Empty: nothing.
  const QString& GetWarning() const { return warning_; }
  void SetWarning(const QString& warning) { warning_ = warning; }

  // A star in front of the text, full for what the user wants at hand; none at first.
  std::optional<bool> GetStar() const { return star_; }
  void SetStar(bool is_full) { star_ = is_full; }

 private:
  bool marked_ = false;
  QString warning_;
  std::optional<bool> star_;
};

// What the cells of one grid fall back on. It is not itself in the grid.
class CGridDefaultCell final : public CGridCellBase {
 public:
  static constexpr int kNoTextLimit = 32767;

  QString GetText() const override { return text_; }
  void SetText(const QString& text) override { text_ = text; }
  QString GetTipText() const override { return {}; }
  bool IsReadOnly() const override { return read_only_; }
  void SetReadOnly(bool read_only) { read_only_ = read_only; }
  Qt::Alignment GetAlignment() const override { return alignment_; }
  void SetAlignment(Qt::Alignment alignment) { alignment_ = alignment; }
  int GetTextLimit() const override { return text_limit_; }
  void SetTextLimit(int limit) { text_limit_ = limit; }

 private:
  QString text_;  // the text of cells that were never filled
  Qt::Alignment alignment_ = Qt::AlignLeft | Qt::AlignVCenter;
  int text_limit_ = kNoTextLimit;
  bool read_only_ = false;
};

// An ordinary cell. Whatever was not set comes from the default cell, which must outlive it.
class CGridCell final : public CGridCellBase {
 public:
  explicit CGridCell(const CGridDefaultCell& fallback) : fallback_(fallback) {}
  CGridCell(const CGridDefaultCell& fallback, QString text);

  QString GetText() const override { return text_.value_or(fallback_.GetText()); }
  void SetText(const QString& text) override { text_ = text; }
  QString GetTipText() const override { return tip_text_; }
  void SetTipText(const QString& text) { tip_text_ = text; }
  bool IsReadOnly() const override { return read_only_.value_or(fallback_.IsReadOnly()); }
  void SetReadOnly(bool read_only) { read_only_ = read_only; }
  Qt::Alignment GetAlignment() const override;
  void SetAlignment(Qt::Alignment alignment) { alignment_ = alignment; }
  int GetTextLimit() const override { return fallback_.GetTextLimit(); }
  std::vector<GridChoice> GetChoices() const override { return choices_; }
  bool OpensChoices() const override { return opens_choices_; }
  // The texts of most edits: the list opens with the editor.
  void SetChoices(const QStringList& texts);
  // Codes and what they stand for, for whom does not know them.
  void SetCodes(std::vector<GridChoice> codes) { choices_ = std::move(codes); }

 private:
  const CGridDefaultCell& fallback_;
  std::optional<QString> text_;
  QString tip_text_;
  std::vector<GridChoice> choices_;
  bool opens_choices_ = false;
  std::optional<Qt::Alignment> alignment_;
  std::optional<bool> read_only_;
};

}  // namespace orvane

#endif  // ORVANE_UI_GRID_CELL_H_

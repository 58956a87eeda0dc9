// SPDX-License-Identifier: GPL-3.0-or-later
#include "changes/widgets/apply_values_dlg.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "files/file_io.h"
#include "table/values_text.h"
#include "ui/file_dialogs.h"
#include "ui/list_view.h"
#include "ui/qt_path.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

constexpr std::array<const char*, ValueLinesModel::kColumns> kTitles = {"Line", "Code", "Value",
                                                                        "State", "Meaning"};

const char* StateText(LineState state) {
  switch (state) {
    case LineState::kNew:
      return "new";
    case LineState::kSame:
      return "same";
    case LineState::kUnknownKey:
      return "unknown key";
    case LineState::kNotParsable:
      return "not parsable";
    case LineState::kReadOnly:
      return "read-only";
  }
  return "";
}

bool CanTick(const ValueLine& line) { return line.state == LineState::kNew; }

}  // namespace

void ValueLinesModel::SetLines(std::vector<ValueLine> lines, bool are_ticked) {
  beginResetModel();
  lines_ = std::move(lines);
  ticks_.assign(lines_.size(), are_ticked);
  endResetModel();
  emit ticked();
}

void ValueLinesModel::TickAll(bool are_ticked) {
  ticks_.assign(lines_.size(), are_ticked);
  if (!lines_.empty()) {
    emit dataChanged(index(0, kLine), index(rowCount() - 1, kLine), {Qt::CheckStateRole});
  }
  emit ticked();
}

std::vector<ValueLine> ValueLinesModel::Ticked() const {
  std::vector<ValueLine> ticked;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (ticks_[i] && CanTick(lines_[i])) {
      ticked.push_back(lines_[i]);
    }
  }
  return ticked;
}

int ValueLinesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

int ValueLinesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kColumns);
}

// As the raw parameters say it.
QString ValueLinesModel::MeaningOf(const ParamEntry& entry) const {
  const std::string line = meanings_->Line(entry);
  const std::string caution = meanings_->Caution(entry);
  const bool is_said = caution.empty() || line.find(caution) != std::string::npos;
  return QString::fromStdString(is_said ? line : line + "; " + caution);
}

QString ValueLinesModel::TextOf(const ValueLine& line, int column) const {
  switch (column) {
    case kLine:
      return QString::number(line.number);
    case kState:
      return QString::fromLatin1(StateText(line.state)) +
             (line.reason.empty() ? QString()
                                  : QStringLiteral(": ") + QString::fromStdString(line.reason));
    default:
      break;
  }
  const ParamEntry* entry = table_->FindParam(line.key);
  if (line.IsBad() || entry == nullptr) {
    return {};
  }
  ParamEntry changed = *entry;
  changed.value = line.value;
  switch (column) {
    case kCode:
      return QString::fromStdString(line.key.Text());
    case kMeaning:
      return MeaningOf(changed);
    default:
      return IsSecretKey(line.key) ? QStringLiteral("(not shown)")
                                   : QString::fromStdString(ValueAsText(changed));
  }
}

QVariant ValueLinesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const auto at = static_cast<std::size_t>(index.row());
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
    return TextOf(lines_[at], index.column());
  }
  if (role == Qt::CheckStateRole && index.column() == kLine && CanTick(lines_[at])) {
    return static_cast<int>(ticks_[at] ? Qt::Checked : Qt::Unchecked);
  }
  return {};
}

bool ValueLinesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const auto at = static_cast<std::size_t>(index.row());
  if (role != Qt::CheckStateRole || index.column() != kLine || !CanTick(lines_[at])) {
    return false;
  }
  ticks_[at] = value.toInt() == Qt::Checked;
  emit dataChanged(index, index, {role});
  emit ticked();
  return true;
}

QVariant ValueLinesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < kColumns) {
    return QString::fromLatin1(kTitles[static_cast<std::size_t>(section)]);
  }
  return {};
}

Qt::ItemFlags ValueLinesModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (index.isValid() && index.column() == kLine &&
      CanTick(lines_[static_cast<std::size_t>(index.row())])) {
    flags |= Qt::ItemIsUserCheckable;
  }
  return flags;
}

ApplyValuesDlg::ApplyValuesDlg(const ParamTable* table, const Meanings* meanings, QWidget* parent)
    : QDialog(parent),
      table_(table),
      model_(new ValueLinesModel(table, meanings, this)),
      source_(new QLabel(QStringLiteral("Lines KEY=VALUE of a file or the clipboard"), this)),
      note_(new QLabel(this)) {
  setObjectName(QStringLiteral("apply-values"));
  setWindowTitle(QStringLiteral("Apply Values"));
  source_->setTextFormat(Qt::PlainText);
  note_->setObjectName(QStringLiteral("note"));
  note_->setTextFormat(Qt::PlainText);
  note_->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(MakeTop());
  layout->addWidget(MakeList(), 1);
  layout->addWidget(note_);
  layout->addWidget(MakeButtons());
  connect(model_, &ValueLinesModel::ticked, this, &ApplyValuesDlg::Follow);
  ResizeWithinScreen(this, QSize(900, 460));
  Follow();
}

QLayout* ApplyValuesDlg::MakeTop() {
  auto* top = new QHBoxLayout;
  top->addWidget(source_, 1);
  const auto add = [&](const char* text, const char* name, void (ApplyValuesDlg::*handler)()) {
    auto* button = new QPushButton(QString::fromLatin1(text), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, handler);
    top->addWidget(button);
  };
  add("&File...", "file", &ApplyValuesDlg::AskForFile);
  add("&Clipboard", "clipboard", &ApplyValuesDlg::TakeClipboard);
  return top;
}

QWidget* ApplyValuesDlg::MakeList() {
  auto* list = new CListView(QStringLiteral("lines"), QStringLiteral("Lines"), model_, this);
  const int width = fontMetrics().averageCharWidth();
  list->setColumnWidth(ValueLinesModel::kLine, 12 * width);
  list->setColumnWidth(ValueLinesModel::kCode, 12 * width);
  list->setColumnWidth(ValueLinesModel::kValue, 20 * width);
  list->setColumnWidth(ValueLinesModel::kState, 40 * width);
  return list;
}

QWidget* ApplyValuesDlg::MakeButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  apply_ = buttons->addButton(QStringLiteral("&Apply"), QDialogButtonBox::AcceptRole);
  apply_->setObjectName(QStringLiteral("1"));
  apply_->setDefault(true);
  auto* all = buttons->addButton(QStringLiteral("&Tick All"), QDialogButtonBox::ActionRole);
  auto* none = buttons->addButton(QStringLiteral("Tick &None"), QDialogButtonBox::ActionRole);
  all->setObjectName(QStringLiteral("tick-all"));
  none->setObjectName(QStringLiteral("tick-none"));
  connect(all, &QPushButton::clicked, model_, [this] { model_->TickAll(true); });
  connect(none, &QPushButton::clicked, model_, [this] { model_->TickAll(false); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return buttons;
}

void ApplyValuesDlg::Warn(const std::string& message) {
  QMessageBox::warning(this, QStringLiteral("Orvane"), QString::fromStdString(message));
}

void ApplyValuesDlg::AskForFile() {
  CFileDialog dialog(windowTitle(), "Values (*.txt)|*.txt|All Files (*.*)|*.*||", QString(), this);
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (dialog.ExecRemembering(QStringLiteral("Folders/Values")) && !dialog.Chosen().isEmpty()) {
    LoadFile(dialog.Chosen());
  }
}

bool ApplyValuesDlg::LoadFile(const QString& path) {
  const auto text = LoadValuesText(PathFromText(path));
  if (!text) {
    Warn(text.Message());
    return false;
  }
  return Load(*text, QFileInfo(path).fileName());
}

void ApplyValuesDlg::TakeClipboard() {
  Load(QApplication::clipboard()->text().toStdString(), QStringLiteral("Clipboard"));
}

// Where a line is bad the user decides which of the others count.
bool ApplyValuesDlg::Load(const std::string& text, const QString& name) {
  auto read = ReadValueLines(text, *table_);
  if (!read) {
    Warn(FileMessage(PathFromText(name), read.Message()));
    return false;
  }
  source_->setText(name);
  QString note = read->lines.empty() ? QStringLiteral("There is no line with a value") : QString();
  if (read->bad > 0) {
    note = QStringLiteral("%1 of %2 lines cannot be used: nothing is applied but what you tick")
               .arg(read->bad)
               .arg(read->lines.size() - std::min(read->bad, ValueLines::kMostBad) + read->bad);
  }
  note_->setText(note);
  model_->SetLines(std::move(read->lines), read->bad == 0);
  return true;
}

void ApplyValuesDlg::Follow() {
  const std::size_t count = model_->Ticked().size();
  apply_->setEnabled(count > 0);
  apply_->setText(count == 0 ? QStringLiteral("&Apply") : QStringLiteral("&Apply (%1)").arg(count));
}

}  // namespace orvane

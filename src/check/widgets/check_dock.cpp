// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/widgets/check_dock.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QSettings>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "check/widgets/cards_dlg.h"
#include "table/clock.h"
#include "ui/content_scroll_area.h"
#include "ui/list_item.h"
#include "ui/named_button.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

const QString kCalibrations = QStringLiteral("Morning Check/Calibrations");
const QString kDismissed = QStringLiteral("Morning Check/Dismissed");
constexpr int kMostDismissed = 500;  // the oldest go
constexpr int kPause = 300;          // ms without a change before files are looked at

QString Counted(int count, const char* one, const char* several) {
  return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

QString TextOf(const FindingCounts& counts) {
  QStringList parts;
  for (const auto& [count, one, several] : {std::tuple(counts.errors, "error", "errors"),
                                            {counts.warnings, "warning", "warnings"},
                                            {counts.hints, "hint", "hints"}}) {
    if (count > 0) {
      parts << Counted(count, one, several);
    }
  }
  return parts.isEmpty() ? QStringLiteral("Nothing found") : parts.join(QStringLiteral(", "));
}

}  // namespace

CheckDock::CheckDock(const ParamTable* table, QWidget* parent)
    : QDockWidget(QStringLiteral("Morning Check"), parent),
      now([] { return UtcClock().Now(); }),
      table_(table),
      files_(new FileCheck(this)),
      model_(new FindingsModel(this)) {
  setObjectName(QStringLiteral("morning-check"));
  setWidget(new ContentScrollArea(MakeContent(), this));
  later_.setSingleShot(true);
  later_.setInterval(kPause);
  connect(&later_, &QTimer::timeout, this, &CheckDock::LookAtFiles);
  connect(files_, &FileCheck::done, this, &CheckDock::TakeFiles);
  connect(list_, &CListView::opened, this, &CheckDock::Mend);
  setFocusProxy(list_);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &CheckDock::EnableButtons);
  connect(show_dismissed_, &QCheckBox::toggled, this, &CheckDock::ShowFindings);
  EnableButtons();
}

CListView* CheckDock::MakeFindings() {
  list_ = new CListView(QStringLiteral("findings"), QStringLiteral("Findings"), model_, this);
  list_->setSelectionMode(QAbstractItemView::SingleSelection);
  list_->setAlternatingRowColors(false);
  list_->setShowGrid(false);
  list_->setWordWrap(true);
  list_->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list_->horizontalHeader()->setSectionResizeMode(FindingsModel::kSeverity,
                                                  QHeaderView::ResizeToContents);
  list_->horizontalHeader()->setSectionResizeMode(FindingsModel::kSentence, QHeaderView::Stretch);
  return list_;
}

QLayout* CheckDock::MakeFindingButtons() {
  mend_ = NewNamedButton("&Mend...", "mend", "Open the dialog where this is mended", this,
                         &CheckDock::Mend);
  dismiss_ = NewNamedButton("&Dismiss", "dismiss", "Say no more of this hint for this table", this,
                            &CheckDock::Dismiss);
  show_dismissed_ = new QCheckBox(QStringLiteral("Sho&w dismissed"), this);
  show_dismissed_->setObjectName(QStringLiteral("show-dismissed"));
  auto* row = new QHBoxLayout;
  row->addWidget(mend_);
  row->addWidget(dismiss_);
  row->addWidget(show_dismissed_);
  row->addStretch(1);
  return row;
}

CFolderLine* CheckDock::AddFolder(QFormLayout* form, const char* label, const char* name,
                                  const char* tip) {
  auto* line = new CFolderLine(QString::fromLatin1(label), QString::fromLatin1(name), this);
  line->Line()->setToolTip(QString::fromLatin1(tip));
  line->Line()->setAccessibleDescription(QString::fromLatin1(tip));
  connect(line->Line(), &QLineEdit::textChanged, &later_, qOverload<>(&QTimer::start));
  auto* caption = new QLabel(QString::fromLatin1(label), this);
  caption->setBuddy(line->Line());
  form->addRow(caption, line);
  return line;
}

QWidget* CheckDock::MakeFolders() {
  auto* folders = new QWidget(this);
  auto* form = new QFormLayout(folders);
  form->setContentsMargins(0, 0, 0, 0);
  calibrations_ =
      AddFolder(form, "Calibrations", "calibrations",
                "Folder of the boxes' and sensors' calibrations: says which are missing");
  calibrations_->Line()->setText(QSettings().value(kCalibrations).toString());
  connect(calibrations_->Line(), &QLineEdit::editingFinished, this,
          [this] { QSettings().setValue(kCalibrations, calibrations_->Text()); });
  set_ = AddFolder(form, "Boxes' files", "set",
                   "Folder of the boxes' start-up files: that of the table, unless named");
  card_ = AddFolder(form, "Card to record on", "card",
                    "Folder on the card that will be recorded on: says whether it has room");
  return folders;
}

QWidget* CheckDock::MakeSpread() {
  constexpr std::array<const char*, 6> kTitles = {"Box",   "There",  "Channels",
                                                  "Radio", "Serial", "File"};
  boxes_ = new QTableWidget(0, static_cast<int>(kTitles.size()), this);
  boxes_->setTabKeyNavigation(false);
  boxes_->setObjectName(QStringLiteral("set-boxes"));
  boxes_->setAccessibleName(QStringLiteral("Boxes and their files"));
  QStringList titles;
  for (const char* title : kTitles) {
    titles << QString::fromLatin1(title);
  }
  boxes_->setHorizontalHeaderLabels(titles);
  boxes_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  boxes_->setSelectionBehavior(QAbstractItemView::SelectRows);
  boxes_->setTabKeyNavigation(false);
  boxes_->setWordWrap(false);
  boxes_->verticalHeader()->hide();
  boxes_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  boxes_->horizontalHeader()->setHighlightSections(false);
  boxes_->horizontalHeader()->setStretchLastSection(true);
  return boxes_;
}

QWidget* CheckDock::MakeContent() {
  auto* content = new QWidget(this);
  auto* layout = new QVBoxLayout(content);
  count_ = new QLabel(this);
  count_->setObjectName(QStringLiteral("finding-count"));
  layout->addWidget(count_);
  layout->addWidget(MakeFindings(), 3);
  layout->addLayout(MakeFindingButtons());
  layout->addWidget(MakeFolders());
  layout->addWidget(MakeSpread(), 2);
  auto* row = new QHBoxLayout;
  row->addWidget(NewNamedButton("Write &All Start-up Files", "write-all",
                                "Write the file of each box with the values as they are", this,
                                &CheckDock::writeWanted));
  row->addWidget(NewNamedButton("With Dialo&gs...", "write-guided",
                                "Ask for each box before its file", this,
                                &CheckDock::guidedWriteWanted));
  row->addWidget(NewNamedButton("Copy To &Cards...", "copy-to-cards",
                                "Copy the boxes' files to their cards and read them back", this,
                                &CheckDock::CopyToCards));
  row->addStretch(1);
  layout->addLayout(row);
  return content;
}

void CheckDock::SetFile(const QString& path) {
  if (file_ != path) {
    file_ = path;
    later_.start();
  }
}

void CheckDock::SetUsualFolders(const QString& calibrations, const QString& set) {
  calibrations_->Line()->setPlaceholderText(calibrations);
  set_->Line()->setPlaceholderText(set);
}

Places CheckDock::PlacesNow() const {
  const auto path = [](const CFolderLine* line) {
    const QString text = line->Text().isEmpty() ? line->Line()->placeholderText() : line->Text();
    return text.isEmpty() ? std::filesystem::path() : PathFromText(text);
  };
  return {file_.isEmpty() ? std::filesystem::path() : PathFromText(file_), path(calibrations_),
          path(card_), path(set_)};
}

void CheckDock::Follow() {
  of_table_ = CheckTable(*table_, now());
  ShowFindings();
  later_.start();
}

void CheckDock::LookAtFiles() {
  later_.stop();
  files_->Start({*table_, now(), PlacesNow()});
}

void CheckDock::TakeFiles(const FileCheck::Outcome& outcome) {
  of_files_ = outcome.findings;
  ShowFindings();
  ShowBoxes(outcome.boxes);
}

QString CheckDock::DismissedAs(const Finding& finding) const {
  return QStringLiteral("%1|%2|%3")
      .arg(QString::fromLatin1(finding.id.data(), static_cast<qsizetype>(finding.id.size())),
           QString::fromStdString(finding.box), file_);
}

QStringList CheckDock::Dismissed() const { return QSettings().value(kDismissed).toStringList(); }

void CheckDock::ShowFindings() {
  findings_ = of_table_;
  findings_.insert(findings_.end(), of_files_.begin(), of_files_.end());
  const QStringList dismissed = Dismissed();
  const auto is_dismissed = [&](const Finding& finding) {
    return finding.severity == Severity::kHint && dismissed.contains(DismissedAs(finding));
  };
  std::vector<Finding> shown = findings_;
  findings_.erase(std::remove_if(findings_.begin(), findings_.end(), is_dismissed),
                  findings_.end());
  const bool has_dismissed = shown.size() != findings_.size();
  model_->SetFindings(show_dismissed_->isChecked() ? std::move(shown) : findings_);
  show_dismissed_->setEnabled(has_dismissed);
  const QString text = TextOf(CountFindings(findings_));
  count_->setText(text);
  if (text != count_text_) {
    count_text_ = text;
    emit countChanged(text);
  }
  emit found();
  EnableButtons();
}

void CheckDock::ShowBoxes(const std::vector<SetRow>& boxes) {
  boxes_->setRowCount(static_cast<int>(boxes.size()));
  for (int row = 0; row < boxes_->rowCount(); ++row) {
    const SetRow& box = boxes[static_cast<std::size_t>(row)];
    int column = 0;
    for (const std::string* text :
         {&box.box, &box.there, &box.channels, &box.radio, &box.serial, &box.target}) {
      auto* item = OnlyShown(new QTableWidgetItem(QString::fromStdString(*text)));
      item->setToolTip(item->text());
      boxes_->setItem(row, column++, item);
    }
  }
  boxes_->resizeColumnsToContents();
}

void CheckDock::CopyToCards() {
  // As it is at this moment: the list below may be older than the files.
  CCardsDlg(SetRowsOf(*table_, PlacesNow().set, PlacesNow().table), this).exec();
}

void CheckDock::EnableButtons() {
  const int row = list_->currentIndex().row();
  const bool has_row = row >= 0 && row < model_->rowCount();
  mend_->setEnabled(has_row && !model_->At(row).keys.empty());
  dismiss_->setEnabled(has_row && model_->At(row).severity == Severity::kHint);
}

void CheckDock::Mend() {
  const int row = list_->currentIndex().row();
  if (row >= 0 && row < model_->rowCount() && !model_->At(row).keys.empty()) {
    emit mendWanted(model_->At(row).keys.front());
  }
}

void CheckDock::Dismiss() {
  const int row = list_->currentIndex().row();
  QStringList dismissed = Dismissed();
  const QString as = DismissedAs(model_->At(row));
  if (dismissed.removeAll(as) == 0) {  // again: it counts as before
    dismissed << as;
  }
  while (dismissed.size() > kMostDismissed) {
    dismissed.removeFirst();
  }
  QSettings().setValue(kDismissed, dismissed);
  ShowFindings();
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/widgets/cards_dlg.h"

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QSettings>
#include <QVBoxLayout>
#include <map>
#include <utility>

#include "editors/startup_cautions.h"
#include "files/card_copy.h"
#include "files/path_text.h"
#include "ui/batch_progress_dlg.h"
#include "ui/batch_result_dlg.h"
#include "ui/content_scroll_area.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

QString SettingOf(const SetRow& box) {
  return QStringLiteral("Cards/") + QString::fromStdString(box.serial);
}

std::filesystem::path CopyOf(const SetRow& box, const CFolderLine& card) {
  return PathFromText(card.Text()) / box.path.filename();
}

}  // namespace

CCardsDlg::CCardsDlg(std::vector<SetRow> boxes, QWidget* parent)
    : QDialog(parent), state_(new QLabel(this)) {
  setWindowTitle(QStringLiteral("Copy To Cards"));
  auto* content = new QWidget(this);
  auto* grid = new QGridLayout(content);
  int column = 0;
  for (const char* title : {"Box", "File", "What it holds", "Card"}) {
    grid->addWidget(new QLabel(QStringLiteral("<b>%1</b>").arg(QLatin1String(title)), content), 0,
                    column++);
  }
  for (const SetRow& box : boxes) {
    if (!box.path.empty()) {
      AddRow(grid, box);
    }
  }
  grid->setColumnStretch(3, 1);
  grid->setRowStretch(grid->rowCount(), 1);
  state_->setObjectName(QStringLiteral("cards-state"));
  state_->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  copy_ = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::AcceptRole);
  copy_->setObjectName(QStringLiteral("copy"));
  connect(buttons, &QDialogButtonBox::accepted, this, &CCardsDlg::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &CCardsDlg::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new ContentScrollArea(content, this), 1);
  layout->addWidget(state_);
  layout->addWidget(buttons);
  may_copy = [this](const QString& text) {
    return QMessageBox::question(this, windowTitle(), text) == QMessageBox::Yes;
  };
  ShowWhatIsCopied();
  resize(sizeHint().expandedTo({640, 200}));
}

void CCardsDlg::AddRow(QGridLayout* grid, const SetRow& box) {
  const int row = grid->rowCount();
  const QString name = QString::fromStdString(box.box);
  auto* caption = new QLabel(name, this);
  auto* file = new QLabel(TextFromPath(box.path.filename()), this);
  file->setToolTip(QString::fromStdString(box.target));
  auto* there = new QLabel(
      box.is_same ? QStringLiteral("as the table says") : QString::fromStdString(box.there), this);
  auto* card = new CFolderLine(QStringLiteral("Card of ") + name,
                               QStringLiteral("card-") + QString::fromStdString(box.serial), this);
  card->Line()->setAccessibleDescription(file->text() + QStringLiteral(": ") + there->text());
  card->Line()->setMinimumWidth(fontMetrics().averageCharWidth() * 28);
  card->Line()->setText(QSettings().value(SettingOf(box)).toString());
  card->setEnabled(box.is_there);
  caption->setBuddy(card->Line());
  connect(card->Line(), &QLineEdit::textChanged, this, &CCardsDlg::ShowWhatIsCopied);
  connect(card->Line(), &QLineEdit::editingFinished, this,
          [box, card] { QSettings().setValue(SettingOf(box), card->Text()); });
  grid->addWidget(caption, row, 0);
  grid->addWidget(file, row, 1);
  grid->addWidget(there, row, 2);
  grid->addWidget(card, row, 3);
  rows_.push_back({box, card});
}

std::vector<const CCardsDlg::Row*> CCardsDlg::Chosen() const {
  std::vector<const Row*> chosen;
  for (const Row& row : rows_) {
    if (row.box.is_there && !row.card->Text().isEmpty()) {
      chosen.push_back(&row);
    }
  }
  return chosen;
}

QString CCardsDlg::Clash() const {
  std::map<std::string, const Row*> copies;
  for (const Row* row : Chosen()) {
    if (std::string fault = CardFault(PathFromText(row->card->Text()), 0); !fault.empty()) {
      return QString::fromStdString(row->box.box) + QStringLiteral(": ") +
             QString::fromStdString(fault);
    }
  }
  for (const Row* row : Chosen()) {
    const auto [other, is_new] = copies.emplace(PathText(CopyOf(row->box, *row->card)), row);
    if (!is_new) {
      return QStringLiteral("%1 and %2 would get the same file")
          .arg(QString::fromStdString(other->second->box.box),
               QString::fromStdString(row->box.box));
    }
  }
  return {};
}

void CCardsDlg::ShowWhatIsCopied() {
  const QString clash = Clash();
  const auto chosen = Chosen();
  QStringList missing;
  for (const Row& row : rows_) {
    if (!row.box.is_there) {
      missing << QString::fromStdString(row.box.box);
    }
  }
  QString text = !clash.isEmpty() ? clash + QLatin1Char('.')
                                  : QStringLiteral(
                                        "%1 of %2 files will be copied, under their "
                                        "names, and read back.")
                                        .arg(chosen.size())
                                        .arg(rows_.size());
  if (!missing.isEmpty()) {
    text += QStringLiteral(" Write the start-up files first: there is none for %1.")
                .arg(missing.join(QStringLiteral(", ")));
  }
  state_->setText(text);
  copy_->setEnabled(clash.isEmpty() && !chosen.empty());
}

QStringList CCardsDlg::Doubts() const {
  QStringList doubts;
  std::map<QString, QString> boxes;  // of a card
  for (const Row* row : Chosen()) {
    const auto [other, is_first] =
        boxes.emplace(row->card->Text(), QString::fromStdString(row->box.box));
    if (!is_first) {
      doubts << QStringLiteral("%1 and %2 have one card")
                    .arg(other->second, QString::fromStdString(row->box.box));
    }
    const QString name = QString::fromStdString(row->box.box);
    if (!row->box.is_same) {
      doubts << QStringLiteral("%1: its file is not what the table says (%2)")
                    .arg(name, QString::fromStdString(row->box.there));
    }
    const std::filesystem::path copy = CopyOf(row->box, *row->card);
    const std::string foreign = ForeignFile(copy, QString::fromStdString(row->box.serial).toInt());
    if (!foreign.empty()) {
      doubts << QStringLiteral("%1: %2 is %3 and will be overwritten")
                    .arg(name, TextFromPath(copy), QString::fromStdString(foreign));
    }
  }
  return doubts;
}

void CCardsDlg::accept() {
  const QStringList doubts = Doubts();
  if (!doubts.isEmpty() &&
      !may_copy(doubts.join(QLatin1Char('\n')) + QStringLiteral("\nCopy all the same?"))) {
    return;
  }
  std::vector<std::filesystem::path> files;
  std::map<std::string, std::filesystem::path> cards;
  for (const Row* row : Chosen()) {
    files.push_back(row->box.path);
    cards.emplace(PathText(row->box.path), PathFromText(row->card->Text()));
  }
  Batch batch({CardConversion(std::move(cards)), std::move(files), {}, 1});
  CBatchProgressDlg(&batch, windowTitle(), this).Run();
  if (ShowResults(batch)) {
    QDialog::accept();
  }
}

bool CCardsDlg::ShowResults(const Batch& batch) {
  std::size_t copied = 0;
  for (std::size_t i = 0; i < batch.Count(); ++i) {
    copied += batch.Result(i)->IsDone() ? 1U : 0U;
  }
  const QString message =
      QStringLiteral("%1 of %2 files are on their cards").arg(copied).arg(batch.Count());
  CBatchResultDlg(batch, message, nullptr, this).exec();
  return copied == batch.Count();
}

}  // namespace orvane

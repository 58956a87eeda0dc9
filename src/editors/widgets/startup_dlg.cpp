// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/startup_dlg.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "files/path_text.h"
#include "ui/byte_text.h"
#include "ui/content_scroll_area.h"
#include "ui/field_tips.h"
#include "ui/folder_dialog.h"
#include "ui/plot_theme.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

constexpr int kGainColumn = 2;

bool IsFileControl(int control) {
  return control == StartupForm::kFixedName || control == StartupForm::kLocation;
}

}  // namespace

CStartupDlg::CStartupDlg(StartupForm* form, StartupRun* run, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form), run_(run), prompts_(prompts) {
  setObjectName(QString::number(form->DialogNumber()));
  setWindowTitle(TextFromBytes(form->Title()));
  auto* content = new QWidget(this);
  auto* upper = new QHBoxLayout;
  upper->addWidget(SettingsGroup(), 1);
  if (!form->Box().IsTransmitter()) {
    upper->addWidget(ChannelGroup(), 1);
  }
  auto* groups = new QVBoxLayout(content);
  groups->setContentsMargins(0, 0, 0, 0);
  groups->addLayout(upper, 1);
  groups->addWidget(FileGroup());
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(HeadingLabel());
  layout->addWidget(DoubtsLabel());
  layout->addWidget(new ContentScrollArea(content, this), 1);
  layout->addWidget(WarningLabel());  // always in sight
  layout->addWidget(ButtonRow());
  UpdateWarning();
  // A path may take a second line, which the hint does not know of.
  const QSize hint = sizeHint() + QSize(0, 2 * fontMetrics().lineSpacing());
  ResizeWithinScreen(this, hint.expandedTo(QSize(form->Box().IsTransmitter() ? 560 : 900, 0)));
}

QWidget* CStartupDlg::HeadingLabel() {
  heading_ = new QLabel(this);
  heading_->setObjectName(QStringLiteral("heading"));
  heading_->setTextFormat(Qt::PlainText);
  QFont bold = heading_->font();
  bold.setBold(true);
  heading_->setFont(bold);
  return heading_;
}

QWidget* CStartupDlg::WarningLabel() {
  warning_ = new QLabel(this);
  warning_->setObjectName(QStringLiteral("warning"));
  warning_->setTextFormat(Qt::PlainText);
  warning_->setWordWrap(true);
  return warning_;
}

void CStartupDlg::TellDoubts(const std::string& lines) {
  constexpr qsizetype kMostLines = 4;
  QStringList doubts = QString::fromStdString(lines).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  QPalette colors = palette();
  colors.setColor(QPalette::WindowText, WarningColor(colors));
  doubts_->setPalette(colors);
  doubts_->setVisible(!doubts.isEmpty());
  doubts_->setToolTip(doubts.join(QLatin1Char('\n')));
  if (doubts.size() > kMostLines) {
    const QString rest = QStringLiteral("and %1 more").arg(doubts.size() - kMostLines + 1);
    doubts = doubts.first(kMostLines - 1) << rest;
  }
  doubts_->setText(doubts.join(QLatin1Char('\n')));
  setAccessibleDescription(doubts_->text());
  ResizeWithinScreen(this, size() + QSize(0, doubts_->sizeHint().height()));
}

QWidget* CStartupDlg::DoubtsLabel() {
  doubts_ = new QLabel(this);
  doubts_->setObjectName(QStringLiteral("doubts"));
  doubts_->setTextFormat(Qt::PlainText);
  doubts_->setWordWrap(true);
  doubts_->hide();
  return doubts_;
}

QWidget* CStartupDlg::ButtonRow() {
  QDialogButtonBox* buttons = OkAndCancel();
  buttons->button(QDialogButtonBox::Ok)->setToolTip(QStringLiteral("Write the file of this box"));
  buttons->button(QDialogButtonBox::Cancel)
      ->setToolTip(QStringLiteral("Write no file for this box and go on to the next"));
  auto* stop = buttons->addButton(QStringLiteral("Stop"), QDialogButtonBox::ActionRole);
  stop->setObjectName(QStringLiteral("stop"));
  stop->setToolTip(QStringLiteral("Write no file for this box and none for the boxes after it"));
  stop->setAutoDefault(false);
  connect(stop, &QPushButton::clicked, this, [this] { done(kStop); });
  return buttons;
}

QWidget* CStartupDlg::SettingsGroup() {
  auto* group = new QGroupBox(QStringLiteral("Box"), this);
  auto* rows = new QFormLayout;
  group->setLayout(rows);
  for (const Field& field : Model().Fields()) {
    if (!IsFileControl(field.control)) {
      AddRow(rows, field.control);
    }
  }
  return group;
}

QWidget* CStartupDlg::FileGroup() {
  auto* group = new QGroupBox(QStringLiteral("File"), this);
  auto* rows = new QFormLayout;
  group->setLayout(rows);
  AddRow(rows, StartupForm::kFixedName);
  auto* browse = new QPushButton(QStringLiteral("..."), group);
  browse->setObjectName(QString::number(kBrowse));
  browse->setAccessibleName(QStringLiteral("Browse for the location"));
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, &CStartupDlg::OnBrowse);
  auto* location = new QHBoxLayout;
  location->addWidget(Control(StartupForm::kLocation), 1);
  location->addWidget(browse);
  rows->addRow(LabelOf(StartupForm::kLocation), location);
  qobject_cast<QLineEdit*>(Control(StartupForm::kLocation))
      ->setPlaceholderText(QString::fromStdString(PathText(run_->DefaultFolder())));
  path_ = new QLabel(group);
  path_->setObjectName(QStringLiteral("path"));
  path_->setTextFormat(Qt::PlainText);
  path_->setWordWrap(true);
  rows->addRow(QString(), path_);
  return group;
}

QWidget* CStartupDlg::ChannelGroup() {
  auto* group = new QGroupBox(QStringLiteral("Channel Definition"), this);
  channels_ = new CGridCtrl(group);
  channels_->setObjectName(QString::number(kChannelGrid));
  channels_->setAccessibleName(QStringLiteral("Channel Definition"));
  std::vector<std::vector<QString>> texts = {{QStringLiteral("Channel"),
                                              QStringLiteral("Channel Definition"),
                                              QStringLiteral("Loop Effective Area (m^2)")}};
  int number = 0;
  for (const StartupForm::Channel& channel : form_->Channels()) {
    texts.push_back({QString::number(++number), TextFromBytes(channel.definition),
                     TextFromBytes(channel.gain)});
  }
  channels_->SetTexts(texts);
  channels_->SetFixedRowCount(1);
  number = 0;
  for (const StartupForm::Channel& channel : form_->Channels()) {
    ++number;
    const auto show_tip = [&](int column, const std::string& key) {
      static_cast<CGridCell*>(channels_->GetCell(number, column))
          ->SetTipText(CellTip(key, BytesFromText(texts[0][static_cast<std::size_t>(column)])));
    };
    show_tip(kGainColumn - 1, channel.definition_key);
    show_tip(kGainColumn, channel.gain_key);
  }
  const auto fit = [this](const QString& text) {
    return channels_->fontMetrics().horizontalAdvance(text) + 24;
  };
  int width = 0;
  for (int column = 0; column <= kGainColumn; ++column) {
    channels_->SetColumnWidth(column, fit(texts[0][static_cast<std::size_t>(column)]));
    width += channels_->columnWidth(column);
  }
  channels_->setMinimumWidth(width + 24);
  channels_->ExpandColumnsToFit();
  channels_->SetFocusCell(1, kGainColumn);
  channels_->SetEditValidator(new ByteTextValidator(this));
  channels_->SetBeginEdit(
      [this](int, int column) { return form_->CanEditGains() && column == kGainColumn; });
  channels_->SetDragEnabled(form_->CanEditGains());
  connect(channels_, &CGridCtrl::cellEdited, this, &CStartupDlg::OnGainEdited);
  auto* layout = new QVBoxLayout(group);
  layout->addWidget(channels_);
  return group;
}

void CStartupDlg::OnGainEdited(int row, int column) {
  const int channel = row - 1;
  const std::string reason =
      form_->EditGain(channel, BytesFromText(channels_->GetItemText(row, column)));
  if (!reason.empty()) {
    is_refused_ = true;
    const QString text =
        channels_->GetItemText(0, column) + QStringLiteral(": ") + TextFromBytes(reason);
    if (!channels_->RefuseEdit(text)) {
      prompts_->ShowWarning("Orvane", BytesFromText(text));
    }
    channels_->SetItemText(
        row, column, TextFromBytes(form_->Channels()[static_cast<std::size_t>(channel)].gain));
  }
}

void CStartupDlg::OnEdited(int) { UpdateWarning(); }

void CStartupDlg::UpdateWarning() {
  heading_->setText(QString::fromStdString(run_->Heading(*form_)));
  path_->setText(QString::fromStdString(run_->FileText(*form_)));
  const QString warning = QString::fromStdString(run_->WarningFor(*form_));
  QPalette colors = palette();
  colors.setColor(QPalette::WindowText, WarningColor(colors));
  warning_->setPalette(colors);
  warning_->setText(warning);
  warning_->setVisible(!warning.isEmpty());
  Control(StartupForm::kLocation)->setAccessibleDescription(warning);
}

void CStartupDlg::OnBrowse() {
  const QString folder = CFolderDialog::AskForFolder(
      this, QStringLiteral("Select the folder to save TBL file:"),
      QString::fromStdString(PathText(run_->PathOf(*form_).parent_path())));
  if (!folder.isEmpty()) {
    Model().SetText(StartupForm::kLocation, folder.toStdString());
    UpdateWarning();
  }
}

void CStartupDlg::accept() {
  is_refused_ = false;
  if (channels_ != nullptr) {
    channels_->CommitEdit();
  }
  if (!is_refused_) {
    CFormDialog::accept();
  }
}

}  // namespace orvane

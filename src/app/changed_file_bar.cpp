// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/changed_file_bar.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>

namespace orvane {

ChangedFileBar::ChangedFileBar(COrvaneDoc* doc, QWidget* parent)
    : QFrame(parent),
      doc_(doc),
      text_(new QLabel(this)),
      compare_(new QPushButton(QStringLiteral("Co&mpare"), this)),
      load_(new QPushButton(QStringLiteral("&Load it"), this)),
      keep_(new QPushButton(QStringLiteral("&Keep mine"), this)) {
  setObjectName(QStringLiteral("changed-file"));
  setAccessibleName(QStringLiteral("File changed on disk"));
  setFrameShape(QFrame::Box);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  text_->setForegroundRole(QPalette::ToolTipText);
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  load_->setToolTip(QStringLiteral("Take the table as it is on disk"));
  keep_->setToolTip(QStringLiteral("Keep the table as it is here; Save overwrites the file"));
  compare_->setToolTip(QStringLiteral("Show what differs between the table and the file"));
  for (QPushButton* button : {compare_, load_, keep_}) {
    button->setAccessibleDescription(button->toolTip());
    button->setAutoDefault(true);  // Return presses it
  }
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(text_, 1);
  layout->addWidget(compare_);
  layout->addWidget(load_);
  layout->addWidget(keep_);
  hide();
  connect(load_, &QPushButton::clicked, this, [this] {
    doc_->OnReload();
    Look();
  });
  connect(compare_, &QPushButton::clicked, this, &ChangedFileBar::compareWanted);
  connect(keep_, &QPushButton::clicked, this, [this] {
    doc_->KeepMine();
    Look();
  });
  connect(doc_, &COrvaneDoc::modifiedChanged, this, &ChangedFileBar::Look);
}

void ChangedFileBar::Look() {
  const auto change = doc_->LookAtFile();
  if (change == FileChange::kChanged) {
    ShowText(doc_->Title() + QStringLiteral(" has changed on disk"), true);
  } else if (change == FileChange::kGone) {
    ShowText(doc_->Title() + QStringLiteral(" is no longer on disk; Save writes it again"), false);
  } else {
    HideBar();  // also where it cannot be read: a disk may be away for a moment; saving reports it
  }
}

void ChangedFileBar::ShowText(const QString& text, bool can_load) {
  load_->setVisible(can_load);
  compare_->setVisible(can_load);
  if (!isHidden() && text_->text() == text) {
    return;
  }
  text_->setText(text);
  text_->setAccessibleName(text);
  show();
  QAccessibleEvent alert(text_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void ChangedFileBar::HideBar() {
  const QWidget* focused = QApplication::focusWidget();
  const bool had_focus = focused != nullptr && isAncestorOf(focused);
  hide();
  if (had_focus) {
    emit focusLeft();
  }
}

}  // namespace orvane

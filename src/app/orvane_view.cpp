// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/orvane_view.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>

#include "table/param_dictionary.h"
#include "ui/byte_text.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

QLabel* NewValueLabel(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  return label;
}

}  // namespace

COrvaneView::COrvaneView(COrvaneDoc* doc, QWidget* parent) : QScrollArea(parent), doc_(doc) {
  setObjectName(QStringLiteral("view"));
  setAccessibleName(QStringLiteral("Table at a glance"));
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  Build();
  OnUpdate();
  connect(doc_, &COrvaneDoc::changed, this, &COrvaneView::OnUpdate);
  connect(&minute_, &QTimer::timeout, this, &COrvaneView::OnUpdate);
  constexpr std::chrono::minutes kMinute{1};
  minute_.start(kMinute);
}

void COrvaneView::Build() {
  auto* page = new QWidget(this);
  name_ = new QLabel(page);
  name_->setTextFormat(Qt::PlainText);
  name_->setObjectName(QStringLiteral("name"));
  QFont font = name_->font();
  font.setPointSizeF(font.pointSizeF() * 1.5);
  font.setBold(true);
  name_->setFont(font);
  file_ = NewValueLabel(page);
  file_->setObjectName(QStringLiteral("file"));

  // Two columns of groups, the survey's texts at the right, where they have room.
  auto* left = new QVBoxLayout;
  auto* right = new QVBoxLayout;
  const auto summary = SummarizeTable(doc_->Table(), UtcClock());
  for (std::size_t i = 0; i < summary.size(); ++i) {
    auto* group = new QGroupBox(TextFromBytes(summary[i].title), page);
    auto* form = new QFormLayout(group);
    form->setHorizontalSpacing(16);
    for (const SummaryLine& line : summary[i].lines) {
      QLabel* value = NewValueLabel(group);
      form->addRow(TextFromBytes(line.label) + QStringLiteral(":"), value);
      values_.push_back(value);
    }
    (i < 3 ? left : right)->addWidget(group);
  }
  left->addStretch();
  right->addStretch();

  auto* columns = new QHBoxLayout;
  columns->setSpacing(16);
  columns->addLayout(left, 1);
  columns->addLayout(right, 1);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(16, 12, 16, 12);
  layout->addWidget(name_);
  layout->addWidget(file_);
  layout->addSpacing(8);
  layout->addLayout(columns);
  timeline_ = new TimelineBar(page);
  layout->addWidget(timeline_);
  layout->addStretch();
  setWidget(page);
}

void COrvaneView::changeEvent(QEvent* event) {
  QScrollArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && name_ != nullptr) {
    OnUpdate();
  }
}

bool COrvaneView::IsNotInFile(const SummaryLine& line) const {
  const auto& all = doc_->NotInFile();
  return std::find_first_of(line.keys.begin(), line.keys.end(), all.begin(), all.end()) !=
         line.keys.end();
}

QString COrvaneView::NotInFileText() const {
  const std::size_t count = doc_->NotInFile().size();
  return count == 0 ? QString()
                    : QStringLiteral("; %1 of %2 values are not in the file")
                          .arg(count)
                          .arg(kDictionarySize);
}

void COrvaneView::OnUpdate() {
  name_->setText(doc_->Title() + (doc_->IsModified() ? QStringLiteral(" (changed)") : QString()));
  name_->setToolTip(doc_->Path().isEmpty()
                        ? QString()
                        : QDir::toNativeSeparators(QFileInfo(doc_->Path()).path()));
  file_->setText(doc_->Path().isEmpty() ? QStringLiteral("New table, not saved yet")
                                        : QStringLiteral("%1, TBL version %2%3")
                                              .arg(QDir::toNativeSeparators(doc_->Path()))
                                              .arg(doc_->FileVersion())
                                              .arg(NotInFileText()));
  timeline_->SetTimeline(TimelineOf(doc_->Table(), UtcClock(), 0));
  std::size_t at = 0;
  for (const SummaryGroup& group : SummarizeTable(doc_->Table(), UtcClock())) {
    for (const SummaryLine& line : group.lines) {
      QLabel* label = values_[at++];
      QString value = line.value.empty() ? QStringLiteral("not set") : TextFromBytes(line.value);
      const bool is_not_in_file = IsNotInFile(line);
      if (is_not_in_file) {
        value += QStringLiteral(" (not in the file)");
      }
      if (!line.caution.empty()) {
        value += QStringLiteral(", ") + TextFromBytes(line.caution);
      }
      label->setText(value);
      QPalette colors = palette();
      if (line.value.empty() || is_not_in_file) {
        colors.setColor(QPalette::WindowText, StandOut(Qt::gray, palette()));
      }
      if (!line.caution.empty()) {
        colors.setColor(QPalette::WindowText, WarningColor(palette()));
      }
      label->setPalette(colors);
      label->setAccessibleName(TextFromBytes(group.title) + QStringLiteral(": ") +
                               TextFromBytes(line.label) + QStringLiteral(": ") + value);
    }
  }
}

}  // namespace orvane

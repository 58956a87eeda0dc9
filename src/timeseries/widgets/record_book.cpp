// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/record_book.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "files/path_text.h"
#include "timeseries/leave_out.h"
#include "timeseries/leave_out_file.h"
#include "ui/byte_text.h"

namespace orvane {
namespace {

constexpr std::chrono::milliseconds kLook{100};

}  // namespace

RecordBook::RecordBook(QObject* parent) : QObject(parent) {
  timer_.setInterval(kLook);
  connect(&timer_, &QTimer::timeout, this, &RecordBook::Look);
}

void RecordBook::Follow(const TsFile& file) {
  run_.reset();
  waiting_.reset();
  path_ = file.Path();
  const auto size = file.Bytes().Size();
  size_ = size ? *size : 0;
  records_ = file.Count();
  list_ = RecordList(file.HeaderSize());
  note_.clear();
  ReadBeside(file);
  header_size_ = file.HeaderSize();
  end_ = file.End();
  next_ = {};
  if (records_ > 0) {
    Run(file.Next());
  }
  emit restarted();
  emit leftOutChanged();
}

// Up to the end that is known; the next ones go on from `after`.
void RecordBook::Run(TsStart after) {
  run_ = std::make_unique<RecordStatsRun>(path_, header_size_, next_, end_);
  next_ = after;
  timer_.start();
}

void RecordBook::FollowAgain(const TsFile& file) {
  const RecordNumbers before = path_ == file.Path() ? left_out_ : RecordNumbers();
  Follow(file);
  if (left_out_.Count() == 0 && before.Count() > 0) {
    AddKnown(before);
    emit leftOutChanged();
  }
}

// Those that the file has.
void RecordBook::AddKnown(const RecordNumbers& numbers) {
  for (const auto& [first, last] : numbers.Ranges()) {
    if (first <= records_) {
      left_out_.Add(first, std::min(last, records_));
    }
  }
}

void RecordBook::Grow(const TsFile& file) {
  const auto size = file.Bytes().Size();
  size_ = size ? *size : size_;
  records_ = file.Count();
  end_ = file.End();
  kept_ = {};  // for the file as it was
  if (run_ == nullptr) {
    Run(file.Next());
  } else {
    waiting_ = file.Next();
  }
  emit grown();
  emit leftOutChanged();
}

void RecordBook::ReadBeside(const TsFile& file) {
  left_out_ = {};
  kept_ = {};
  const LeaveOutChoice beside{.kind = LeaveOutChoice::Kind::kBeside};
  const auto found = LeaveOutOf(beside, path_, file.Bytes(), file.HeaderSize(), file.Count());
  if (found) {
    AddKnown(found->numbers);
    kept_ = left_out_;
  }
  note_ = found ? found->note : found.Message();
}

// What is done is asked first: what came before its end is then taken.
void RecordBook::Look() {
  const bool is_done = run_->IsDone();
  const std::vector<RecordStats> more = run_->Take();
  for (const RecordStats& record : more) {
    list_.Add(record);
  }
  if (is_done) {
    timer_.stop();
    if (!run_->Outcome()) {
      note_.append(note_.empty() ? "" : "; ").append(run_->Outcome().Message());
    }
    run_.reset();
    if (waiting_) {
      Run(*std::exchange(waiting_, std::nullopt));
    }
  }
  if (is_done || !more.empty()) {
    emit grown();
  }
}

void RecordBook::SetLeftOut(std::uint64_t number, bool is_left_out) {
  if (is_left_out) {
    left_out_.Add(number);
  } else {
    left_out_.Remove(number);
  }
  emit leftOutChanged();
}

void RecordBook::LeaveOutBad() {
  for (std::size_t row = 0; row < list_.Size(); ++row) {
    if (list_.IsBad(row)) {
      left_out_.Add(list_.Number(row));
    }
  }
  emit leftOutChanged();
}

void RecordBook::TakeAll() {
  left_out_ = {};
  emit leftOutChanged();
}

Result<> RecordBook::Keep() {
  Result<> kept = SaveLeaveOut(path_, {.size = size_, .records = records_, .numbers = left_out_});
  if (kept) {
    kept_ = left_out_;
    note_.clear();
    emit leftOutChanged();
  }
  return kept;
}

QString RecordBook::LeftOutText() const {
  QStringList parts;
  if (!left_out_.IsEmpty()) {
    parts << TextFromBytes(LeaveOutNote({.numbers = left_out_}, left_out_.Count()));
  }
  if (!note_.empty()) {
    parts << TextFromBytes(note_);
  }
  return parts.join(QStringLiteral("; "));
}

QString RecordBook::Summary() const {
  QStringList parts;
  if (!IsDone()) {
    parts << QStringLiteral("reading records: %1 %").arg(Percent());
  }
  if (left_out_.IsEmpty()) {
    parts << QStringLiteral("no record left out");
  }
  const QString left_out = LeftOutText();
  parts << (left_out.isEmpty() ? QStringList() : QStringList{left_out});
  if (!IsKept()) {
    parts << QStringLiteral("not kept beside the file");
  }
  if (list_.Records() > list_.Size()) {
    parts << QStringLiteral("only the first %1 records are listed").arg(list_.Size());
  }
  return parts.join(QStringLiteral("; "));
}

QString RecordBook::Describe(std::uint64_t number) const {
  QString text = QStringLiteral("Record %1 of %2").arg(number).arg(records_);
  const auto row = static_cast<std::size_t>(number) - 1;
  if (number > 0 && row < list_.Size()) {
    const std::string status = list_.Text(row, RecordColumn{.kind = RecordColumn::Kind::kStatus});
    text += status.empty() ? QString() : QStringLiteral(", ") + TextFromBytes(status);
    text += list_.IsSaturated(row) ? QStringLiteral(", saturated") : QString();
  }
  return left_out_.Has(number) ? text + QStringLiteral(", left out") : text;
}

}  // namespace orvane

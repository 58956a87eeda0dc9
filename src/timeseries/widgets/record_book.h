// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_RECORD_BOOK_H_
#define ORVANE_TIMESERIES_WIDGETS_RECORD_BOOK_H_

#include <QObject>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <optional>

#include "timeseries/record_list.h"
#include "timeseries/record_numbers.h"
#include "timeseries/record_stats.h"
#include "timeseries/ts_file.h"

namespace orvane {

/// What is known of the records of the file shown: their statistics, made while the user works,
/// and which of them results are to do without. Its end, or another file, cancels the making.
class RecordBook : public QObject {
  Q_OBJECT

 public:
  explicit RecordBook(QObject* parent);

  /// Starts again for a file as it is now. What the list beside it leaves out is left out.
  void Follow(const TsFile& file);
  /// The same for the file read again: ticks that the list beside it does not tell stay.
  void FollowAgain(const TsFile& file);
  /// More records were written behind those known.
  void Grow(const TsFile& file);

  const RecordList& List() const { return list_; }
  /// Of the file, by its headers.
  std::uint64_t Records() const { return records_; }
  /// All statistics are there, or something ended their making.
  bool IsDone() const { return run_ == nullptr; }
  int Percent() const { return run_ == nullptr ? 100 : run_->Percent(); }

  const RecordNumbers& LeftOut() const { return left_out_; }
  void SetLeftOut(std::uint64_t number, bool is_left_out);
  /// Adds the bad records to those that are left out.
  void LeaveOutBad();
  void TakeAll();
  /// Whether the list beside the file says the same.
  bool IsKept() const { return left_out_ == kept_; }
  /// Writes the list beside the file, or removes it where nothing is left out. Fails as
  /// `SaveLeaveOut()`.
  Result<> Keep();

  /// For the user: how many are left out, whether that is kept, what is still read, why a list
  /// beside is not used, why statistics are missing.
  QString Summary() const;
  /// How many are left out, and what is wrong with a list beside; mostly empty.
  QString LeftOutText() const;
  /// "Record 12 of 300, bad, saturated, left out".
  QString Describe(std::uint64_t number) const;

 signals:
  /// Another file, or from its beginning.
  void restarted();
  /// There are more rows, or the last has come.
  void grown();
  void leftOutChanged();

 private:
  void Look();
  void ReadBeside(const TsFile& file);
  void AddKnown(const RecordNumbers& numbers);
  void Run(TsStart start);

  std::filesystem::path path_;
  std::uint64_t size_ = 0;
  std::uint64_t records_ = 0;
  TsHeaderSize header_size_ = TsHeaderSize::kFull;
  std::uint64_t end_ = 0;  // of the records that are known
  TsStart next_;           // of those without statistics
  RecordList list_{TsHeaderSize::kFull};
  RecordNumbers left_out_;
  RecordNumbers kept_;
  std::string note_;
  std::unique_ptr<RecordStatsRun> run_;
  std::optional<TsStart> waiting_;  // for the run to end: what comes after the records known
  QTimer timer_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_RECORD_BOOK_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WAVEFORM_VIEW_H_
#define ORVANE_TIMESERIES_WAVEFORM_VIEW_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "table/box_keys.h"
#include "timeseries/record_shape.h"
#include "timeseries/trace_lines.h"
#include "timeseries/ts_file.h"
#include "timeseries/waveform_channels.h"

namespace orvane {

/// How records are shown and stepped through; the dialog "Wavefrom Display Parameters" edits it.
struct WaveformSettings {
  double timer_seconds = 2;  ///< between records while auto play is on
  double zoom = 1;           ///< of the traces, vertically
  bool auto_scale = true;    ///< each trace fills its place; off: the scales stay as they are
  bool auto_play = false;
  bool has_clock = false;   ///< times of day along the axis, where records tell them
  bool has_counts = false;  ///< values as the box's counts, whatever their unit

  static constexpr double kMinZoom = 0.01;
  static constexpr double kMaxZoom = 1e6;
  static constexpr double kMinTimer = 0.1;
  static constexpr double kMaxTimer = 3600;
};

struct ValueRange {
  double low = 0;
  double high = 0;
};

/// A line to draw: times in seconds from the start of the record and values in the label's unit.
struct WaveformTrace {
  std::vector<double> times;
  std::vector<double> values;
};

/// What a cursor reads: the scan nearest to it.
struct WaveformReading {
  std::size_t scan = 0;
  double time = 0;
  std::vector<double> values;  ///< one for each trace
};

/// A waveform on display, all but the drawing: an open file, the record shown, the part of it that
/// is visible, cursors, texts. Times are seconds from the record's start; without a sample rate a
/// scan counts as one. At most 12 channels are drawn.
class WaveformView {
 public:
  static constexpr std::size_t kMaxTraces = kMostBoxChannels;
  enum Cursor { kFirstCursor, kSecondCursor };

  /// Opens a file and shows its first record. Fails as `TsFile::Open()`; then the view is
  /// empty. Settings stay.
  Result<> Open(const std::filesystem::path& path, const TsFile::Options& options);
  Result<> Open(const std::filesystem::path& path) { return Open(path, {}); }
  /// The same with a file that is open, by these options.
  void Take(std::unique_ptr<TsFile> file, const TsFile::Options& options);
  /// Reads the file again and keeps record, visible times and cursors as far as they still exist.
  /// All stays as it was where the file cannot be opened any more.
  Result<> Reload();
  /// The same with the file already opened again.
  void TakeAgain(std::unique_ptr<TsFile> fresh);
  /// Takes over whole records that were written behind those known, at most so many, and shows the
  /// record again that was cut until now.
  TsIndex::Growth Extend(std::uint64_t most);
  const TsFile::Options& Options() const { return options_; }
  void Close();
  bool IsOpen() const { return is_open_; }
  const TsFile& File() const { return *file_; }

  /// Paging goes through all records, bad ones included. False, and nothing changes, where there is
  /// no such record.
  bool GoTo(std::uint64_t number);
  bool Next() { return GoTo(number_ + 1); }
  bool Previous() { return number_ > 0 && GoTo(number_ - 1); }
  bool First() { return GoTo(1); }
  bool Last() { return GoTo(file_->Count()); }
  bool NextBad() { return GoTo(file_->NextBad(number_)); }
  /// Number of the record shown, from 1; 0: none.
  std::uint64_t Number() const { return number_; }
  std::uint64_t Count() const { return file_->Count(); }
  const CTsRec& Record() const { return record_; }
  /// Why the record shown could not be read, or not whole; empty if it could.
  const std::string& Problem() const { return problem_; }

  const WaveformSettings& Settings() const { return settings_; }
  /// Values out of their limits are brought to the nearest allowed.
  void SetSettings(const WaveformSettings& settings);
  void ZoomValues(double factor);
  /// Moves what is visible of all traces up by a share of their strips' height, by a negative one
  /// down; at most so far that a trace is just out of sight.
  void PanValues(double share);
  /// As after opening: the whole record, zoom factor 1, no pan, scales that fit.
  void ResetViews();
  bool HasSmallUnit() const { return units_.has_small_unit; }
  void SetSmallUnit(bool has_small_unit);
  /// Whether there are gains to divide by: without a companion table counts are shown as they are.
  bool HasGains() const { return number_ > 0 && file_->Companion().IsLoaded(); }
  /// Why there are none; empty where there are.
  std::string WhyNoGains() const;
  /// Of the record shown: its own, else the companion table's.
  WaveformGains Gains() const;
  /// Those that were entered for all records of the file.
  const std::optional<WaveformGains>& GainsOfAll() const { return gains_of_all_; }
  /// Whether some were entered for single records.
  bool HasGainsOfSingle() const { return !gains_.empty(); }
  /// Gives the record `number`, which is shown, or all of them gains of their own until another
  /// file is opened. When the file is read again, a record with another header has none.
  void SetGains(std::uint64_t number, const WaveformGains& gains, bool for_all);

  /// What is done to records before they are shown; another file is shown as it is.
  const RecordShape& Shape() const { return shape_; }
  void SetShape(const RecordShape& shape);
  const ShapedRecord& Shaped() const { return shaped_; }
  /// Why the record shown cannot be folded; empty where it can, or is.
  const std::string& WhyNoFold() const { return why_no_fold_; }
  /// Every value of a trace of the record, as it is shown.
  std::vector<double> Values(std::size_t trace) const;
  double Value(std::size_t scan, std::size_t trace) const;
  double SecondsPerScan() const { return seconds_per_scan_; }

  std::string TitleText() const;
  /// "3 / 300", where there are bad records "first bad at 3", and what is missing without a
  /// companion table.
  std::string StatusBarText() const;
  std::size_t TraceCount() const { return channels_.size(); }
  const WaveformChannel& Channel(std::size_t trace) const { return channels_[trace]; }
  /// The status line under the label; begins with a newline.
  std::string StatusText(std::size_t trace) const;
  /// Beside the title: that the record is bad, why there is nothing to draw, and gains that are not
  /// the companion table's.
  std::string NoteText() const;
  /// Why there is nothing to draw; empty where there is.
  std::string EmptyText() const;
  /// Of the channels after the last that is drawn.
  const std::vector<std::string>& NamesBeyond() const { return beyond_; }
  bool IsBad() const { return !file_->IsBandFile() && record_.Header().IsBad(); }

  /// "Time (s)", "Time of day", or "Scan" without a sample rate.
  std::string TimeLabel() const;
  /// Whether times are those of day: wanted, and the record has a time and is not folded.
  bool ShowsClock() const;
  double TimeOf(std::size_t scan) const { return static_cast<double>(scan) * seconds_per_scan_; }
  /// Time of the last scan; for fewer than two scans that of one.
  double EndTime() const;
  ValueRange VisibleTimes() const { return visible_; }
  /// Shows a part of the record, moved and narrowed so that it lies in it; never less than one
  /// scan's time.
  void ShowTimes(double from, double to);
  /// Those at or between these times.
  ScanRange VisibleScans() const;
  void ShowAllTimes() { ShowTimes(0, EndTime()); }
  /// Narrows by a factor above 1, widens by one below; `center` keeps its place.
  void ZoomTimes(double factor, double center);
  void PanTimes(double seconds);

  /// The value axis of a trace. With auto scale it fits what is visible of the trace; without, it
  /// is what it was when that was switched off, and traces of one unit span the same. The zoom
  /// factor narrows it around its middle.
  ValueRange ValuesOf(std::size_t trace) const;

  /// Where the limits of the box's converter are, as shown values: those that some scan of the
  /// record comes within 2 % of. None for samples of other than 3 bytes.
  std::vector<double> FullScaleLines(std::size_t trace) const;

  /// The visible part of every trace as lines for so many pixels: every scan where there is room,
  /// else least and greatest value of each pixel's scans, where they are. A record of one scan is
  /// a line that lasts for that scan's time.
  std::vector<WaveformTrace> Traces(int pixels) const;
  /// Whether so few scans are visible that each can have a dot.
  bool HasDots(int pixels) const;

  void SetCursor(Cursor cursor, std::optional<double> time) { cursors_[cursor] = time; }
  /// None without a cursor or without scans.
  std::optional<WaveformReading> Reading(Cursor cursor) const;

 private:
  struct Extremes {
    double low = 0;  // held values
    double high = 0;
  };

  void ShowRecord(std::uint64_t number);
  void UpdateChannels();
  std::optional<WaveformGains> OwnGains() const;
  void UpdateScales();
  bool HasSameChannels(const std::vector<WaveformChannel>& before) const;
  std::vector<Extremes> ExtremesOf(ScanRange scans) const;

  TsFile::Options options_;
  std::unique_ptr<TsFile> file_ = std::make_unique<TsFile>();
  bool is_open_ = false;
  std::uint64_t number_ = 0;
  CTsRec record_;
  std::string problem_;
  RecordShape shape_;
  ShapedRecord shaped_;
  std::string why_no_fold_;
  WaveformSettings settings_;
  WaveformUnits units_;
  struct RecordGains {
    TsHeader header;  // of the record that they were entered for
    WaveformGains gains;
  };
  std::map<std::uint64_t, RecordGains> gains_;  // of single records, which go before
  std::optional<WaveformGains> gains_of_all_;
  std::vector<WaveformChannel> channels_;
  std::vector<std::string> beyond_;
  std::vector<Extremes> whole_;   // of the record
  std::vector<Extremes> scales_;  // what the value axes fit
  double pan_ = 0;                // of the values, in spans of a trace
  double seconds_per_scan_ = 1;
  ValueRange visible_;
  std::array<std::optional<double>, 2> cursors_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WAVEFORM_VIEW_H_

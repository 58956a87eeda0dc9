// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/time_series_text.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/number_format.h"
#include "base/number_text.h"
#include "files/path_names.h"
#include "files/path_text.h"
#include "files/random_file.h"
#include "table/param_time.h"
#include "timeseries/sample_decoder.h"
#include "timeseries/sample_text.h"
#include "timeseries/ts_walker.h"

namespace orvane {
namespace {

// Less than elsewhere: the text is six times as long and should find room in the cache beside it. A
// scan, of at most 255 x 255 bytes, fits.
constexpr std::size_t kReadPiece = std::size_t{64} * 1024;

// "%-{width}s\n"
void AppendLeft(std::string_view value, std::size_t width, std::string* text) {
  text->append(value);
  text->append(width > value.size() ? width - value.size() : 0, ' ').append("\n");
}

void AppendFixed(double value, int precision, std::size_t width, std::string* text) {
  std::array<char, kMaxNumberText> number{};
  const char* end = WriteFixed(number.data(), value, precision);
  AppendLeft({number.data(), static_cast<std::size_t>(end - number.data())}, width, text);
}

std::string HeaderText(const TsHeader& header, bool is_band) {
  std::string text = " Time:                ";
  AppendLeft(FormatParamTime(header.time), 27, &text);
  text += " Box S/N:             ";
  AppendLeft(FormatInt(header.box), 4, &text);
  text += " Number of Channels:  ";
  AppendLeft(FormatInt(header.channels), 8, &text);
  text += " Number of Scans:     ";
  AppendLeft(FormatInt(header.scans), 8, &text);
  text += " Sampling Rate (Hz):  ";
  AppendFixed(SampleRate(header), 2, 12, &text);
  if (!is_band) {
    text += " Frequency (Hz):      ";
    AppendFixed(header.frequency, 6, 16, &text);
  }
  return text;
}

class TextExport {
 public:
  TextExport(BatchTask* task, OutFile* out, TsHeaderSize header_size, LeaveOut leave_out)
      : task_(task),
        header_size_(header_size),
        leave_out_(std::move(leave_out)),
        text_(out, task->Threads() > 1) {}

  BatchResult Run(const RandomFile& in) {
    TsWalker walker(&in, header_size_);
    TsPlace place;
    std::uint64_t cut_record = 0;
    std::uint64_t whole = 0;
    std::uint64_t left_out = 0;
    while (!task_->Stopped() && !text_.HasFailed() && reading_ && walker.Next(&place)) {
      if (leave_out_.Has(place)) {
        ++left_out;
        task_->Advance(place.next - place.offset);
        continue;
      }
      text_.Text(HeaderText(place.header, header_size_ == TsHeaderSize::kBand));
      const bool is_whole = PutSamples(in, place);
      task_->Advance(place.next - place.offset);
      if (!is_whole) {
        cut_record = place.number;
        break;
      }
      ++whole;
    }
    const Result<> written = text_.Finish();
    reading_ = reading_ ? walker.Outcome() : reading_;
    if (task_->Stopped()) {
      return BatchCancelled();
    }
    if (!reading_) {
      return BatchFailed(reading_.Message());
    }
    if (!written) {
      return BatchFailed(FileMessage(task_->Outputs()[0], written.Message()));
    }
    std::string note = LeaveOutNote(leave_out_, left_out);
    if (whole == 0 && left_out > 0) {
      return BatchFailed("no record: " + note);
    }
    if (whole == 0) {
      return BatchFailed(cut_record == 0 ? "no record"
                                         : "no record: the file ends within the first");
    }
    if (cut_record > 0) {
      note.append(note.empty() ? "" : "; ").append(CutNote(cut_record, place.offset));
    }
    return BatchDone(task_->Outputs(), note);
  }

 private:
  static std::string CutNote(std::uint64_t number, std::uint64_t offset) {
    return "the file ends within the samples of record " + FormatInt(number) + " at byte " +
           FormatInt(offset) + "; the text has those that are there";
  }

  // The scans of a record. False where the file ends within them: the samples that are there have
  // been put, the last line perhaps shorter.
  bool PutSamples(const RandomFile& in, const TsPlace& place) {
    const int width = place.header.sample_width;
    const std::size_t channels = place.header.channels;
    const auto scan_bytes = static_cast<std::size_t>(ScanBytes(place.header));
    if (scan_bytes == 0) {
      if (!place.is_cut) {
        text_.Scans(nullptr, width, channels, place.header.scans);  // without channels: empty lines
      }
      return !place.is_cut;
    }
    const std::size_t piece_bytes = kReadPiece / scan_bytes * scan_bytes;
    piece_.resize(piece_bytes + kDecoderSlack);
    const std::uint64_t total = DataBytes(place.header);
    for (std::uint64_t done = 0; done < total && !text_.HasFailed() && !task_->Stopped();) {
      const auto wanted =
          static_cast<std::size_t>(std::min<std::uint64_t>(piece_bytes, total - done));
      const auto [read, outcome] = in.ReadAt(place.data + done, std::span(piece_).first(wanted));
      reading_ = outcome;
      text_.Scans(piece_.data(), width, channels, read / scan_bytes);
      if (read < wanted) {
        const std::size_t samples = read % scan_bytes / static_cast<std::size_t>(width);
        if (samples > 0) {
          text_.Scans(piece_.data() + read / scan_bytes * scan_bytes, width, samples, 1);
        }
        return false;
      }
      done += read;
    }
    return true;
  }

  BatchTask* task_;
  TsHeaderSize header_size_;
  LeaveOut leave_out_;
  SampleText text_;
  std::vector<std::byte> piece_;
  Result<> reading_;
};

BatchResult ConvertFile(BatchTask& task, TsHeaderSize header_size, const LeaveOutChoice& choice) {
  RandomFile in;
  if (const Result<> opened = in.Open(task.Input()); !opened) {
    return BatchFailed(opened.Message());
  }
  const bool is_band = BandNumber(PathText(task.Input())) > 0;
  header_size = is_band ? TsHeaderSize::kBand : header_size;
  const auto leave_out = LeaveOutOf(choice, task.Input(), in, header_size);
  if (!leave_out) {
    return BatchFailed(leave_out.Message());
  }
  const auto& path = task.Outputs()[0];
  OutFile out;
  if (const Result<> opened = out.Open(path); !opened) {
    return BatchFailed(FileMessage(path, opened.Message()));
  }
  BatchResult result = TextExport(&task, &out, header_size, *leave_out).Run(in);
  if (result.IsDone()) {
    if (const Result<> committed = out.Commit(); !committed) {
      return BatchFailed(FileMessage(path, committed.Message()));
    }
  }
  return result;
}

}  // namespace

std::string TsTextName(std::string_view path) {
  std::string name = WithExtension(LowerCasedPath(path), "");
  if (const int band = BandNumber(path); band > 0) {
    name.append("_TS").append(FormatInt(band));
  }
  return name.append(".txt");
}

Conversion TimeSeriesText(TsHeaderSize header_size, LeaveOutChoice leave_out) {
  Conversion conversion;
  conversion.outputs_of = [](const std::string& path) {
    return std::vector<std::string>{TsTextName(path)};
  };
  conversion.job = [header_size, choice = std::move(leave_out)](BatchTask& task) {
    return ConvertFile(task, header_size, choice);
  };
  return conversion;
}

}  // namespace orvane

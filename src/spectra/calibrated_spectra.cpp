// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/calibrated_spectra.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <system_error>
#include <utility>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/file_io.h"
#include "files/find_file.h"
#include "files/path_names.h"
#include "files/path_text.h"
#include "files/text_file.h"
#include "spectra/spectra_file.h"
#include "timeseries/ts_listing.h"

namespace orvane {
namespace {

BatchResult FailedWithBox(const std::string& text, const std::string& reason) {
  BatchResult result = BatchFailed(text + " " + reason);
  result.box = text;
  return result;
}

// What all files of a batch share.
struct Shared {
  explicit Shared(SpectraOptions given) : options(std::move(given)) {}

  // The user's answer about a sensor, the same for all files of the batch.
  Answer Ask(const SensorNeed& need, const std::string& question, BatchTask* task) {
    const std::lock_guard lock(asking_);
    if (task->Stopped()) {
      return Answer::kCancel;
    }
    const auto [place, is_new] = answers_.try_emplace({need.kind, need.unit}, Answer::kNo);
    if (is_new && options.ask) {
      place->second = options.ask(question, *task);
    }
    if (place->second == Answer::kCancel) {
      task->StopAll();
    }
    return task->Stopped() ? Answer::kCancel : place->second;
  }

  // Whether a missing calibration of a box has not been reported yet.
  bool IsNewsOf(const std::string& box_path) {
    const std::lock_guard lock(asking_);
    return missing_boxes_.insert(box_path).second;
  }

  SpectraOptions options;
  CalLibrary library;

 private:
  std::mutex asking_;
  std::map<std::pair<int, std::string>, Answer> answers_;  // by kind and unit
  std::set<std::string> missing_boxes_;
};

// An answer counts for the whole batch.
std::string AskedFor(std::size_t files) {
  return files > 1 ? " (for all " + FormatInt(files) + " files)" : "";
}

// One file from beginning to end.
class SpectraJob {
 public:
  SpectraJob(BatchTask* task, Shared* shared) : task_(*task), shared_(*shared) {}

  BatchResult Run() {
    if (!OpenRecording() || !LoadBox() || !MakeChannels()) {
      return result_;
    }
    const auto out = shared_.options.writer();
    const auto& path = task_.Outputs()[0];
    if (const Result<> opened = out->Open(path); !opened) {
      return FailedWithBox(OpenFailureText(path), opened.Message());
    }
    SpectraFile spectra(&source_, &task_);
    const SpectraFile::Written written = spectra.Write(out.get());
    if (task_.Stopped()) {
      return BatchCancelled();
    }
    if (!written.outcome) {
      return BatchFailed(written.outcome.Message(), written.status);
    }
    if (const Result<> committed = out->Commit(); !committed) {
      return BatchFailed(FileMessage(path, committed.Message()));
    }
    return BatchDone(task_.Outputs(), written.note);
  }

 private:
  bool Stop(BatchResult result) {
    result_ = std::move(result);
    return false;
  }

  bool OpenRecording() {
    const std::string path = PathText(task_.Input());
    source_.band = SpectraBand(path);
    const TsFile::Options options{source_.band > 0 ? std::optional(TsHeaderSize::kBand)
                                                   : std::nullopt};
    if (const Result<> opened = source_.file.Open(task_.Input(), options); !opened) {
      return Stop(FailedWithBox(source_.file.FailureText(), opened.Message()));
    }
    const auto companion = FindInAnyCase(PathOf(WithExtension(path, ".TBL")));
    if (!companion) {
      return Stop(BatchFailed(companion.Message()));
    }
    TblReport report;
    if (source_.header.settings.Load(*companion, &report) != kOk) {
      return Stop(FailedWithBox(OpenFailureText(*companion), report.message));
    }
    const std::string& unread = source_.file.ReadError();
    if (source_.file.Count() == 0) {
      return Stop(BatchFailed(unread.empty() ? "no record" : unread));
    }
    const auto first = source_.file.Find(1);
    if (!first || !unread.empty()) {
      return Stop(BatchFailed(first ? unread : first.Message()));
    }
    auto leave_out = LeaveOutOf(shared_.options.leave_out, task_.Input(), source_.file.Bytes(),
                                source_.file.HeaderSize());
    if (!leave_out) {
      return Stop(BatchFailed(leave_out.Message()));
    }
    source_.leave_out = *leave_out;
    source_.first = first->header;
    source_.header.channels = first->header.channels;
    source_.base_frequency = shared_.options.base_frequency;
    source_.most_harmonics = shared_.options.most_harmonics;
    source_.reversed = shared_.options.reversed;
    return true;
  }

  std::filesystem::path CalFolder() const {
    return shared_.options.calibration_folder.empty() ? task_.Input().parent_path()
                                                      : shared_.options.calibration_folder;
  }

  bool LoadBox() {
    source_.box_path = BoxCalPath(CalFolder(), source_.header, source_.first.box);
    const auto box = shared_.library.Get(kBoxCal, source_.box_path);
    if (box) {
      source_.box = *box;
      return true;
    }
    const std::string text = " Failed to open box calibration file of " + source_.box_path +
                             ".CLB,  " + PathText(task_.Input()) + " cannot be converted";
    BatchResult failed = FailedWithBox(text, box.Message());
    failed.box_caption = "Warning";
    if (!shared_.IsNewsOf(source_.box_path)) {
      failed.box.clear();  // the list of results has them all
    }
    return Stop(std::move(failed));
  }

  bool MakeChannels() {
    if (static_cast<std::size_t>(source_.header.channels) != source_.box->Channels()) {
      return Stop(BatchFailed(std::string(StatusText(kChannelsDiffer)), kChannelsDiffer));
    }
    const AllChannelSettings settings = FillChannelSettings(source_.header);
    for (int c = 1; c <= source_.header.channels; ++c) {
      CalibratedChannel& channel = source_.channels.emplace_back();
      std::shared_ptr<const CalData> sensor;
      if (!LoadSensor(c, &sensor, &channel.sensor_name)) {
        return false;
      }
      channel.is_reversed = shared_.options.reversed.contains(c);
      const Status status =
          MakeCalibratedChannel(source_.header, settings[static_cast<std::size_t>(c - 1)], c,
                                std::move(sensor), &channel);
      if (status != kOk) {
        return Stop(BatchFailed("channel " + FormatInt(c) + ", " + channel.sensor_name + ": " +
                                    std::string(StatusText(status)),
                                status));
      }
    }
    return true;
  }

  bool LoadSensor(int channel, std::shared_ptr<const CalData>* sensor, std::string* name) {
    *name = "none";
    const SensorNeed need = SensorNeedOf(source_.header, channel);
    if (need.kind == 0) {
      return true;
    }
    const std::string path = CalBasePath(CalFolder(), need.unit);
    const auto found = need.has_number ? shared_.library.Get(need.kind, path)
                                       : Failure("the recording has no serial number");
    if (found) {
      *sensor = *found;
      *name = need.unit + ".CLC";
      return true;
    }
    // kept: misspelled, as users know it
    const std::string question = "Failed to open coil calibration file of " + path +
                                 ".CLC for channel " + FormatInt(channel) +
                                 ", Do you want to continue wothout it?" +
                                 AskedFor(task_.FilesInBatch());
    switch (shared_.Ask(need, question, &task_)) {
      case Answer::kYes:
        return true;
      case Answer::kNo:
        return Stop(BatchLeftAlone("the calibration of channel " + FormatInt(channel) +
                                   " is missing: " + found.Message()));
      default:
        return Stop(BatchCancelled());
    }
  }

  BatchTask& task_;
  Shared& shared_;
  SpectraSource source_;
  BatchResult result_;
};

}  // namespace

int SpectraBand(std::string_view path) {
  const std::string_view name = LastComponent(path);
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || !EqualsWithoutCase(name.substr(dot + 1, 2), "TS")) {
    return 0;
  }
  const std::string_view digits = name.substr(dot + 3);
  const bool is_number =
      !digits.empty() && digits.size() <= 2 && std::all_of(digits.begin(), digits.end(), IsDigit);
  const int band = is_number ? ParseIntPrefix(digits) : 0;
  return band <= kLastBand ? band : 0;
}

std::optional<std::set<int>> ChannelsIn(std::string_view text) {
  std::set<int> channels;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(','), text.size());
    const int channel = ParseInt(text.substr(0, end)).value_or(0);
    if (channel < 1 || channel > kMostChannels) {
      return std::nullopt;
    }
    channels.insert(channel);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return channels;
}

std::filesystem::path UsualCalFolder() {
  const std::filesystem::path usual = "C:\\K3\\CAL";
  FileInfo info;
  const bool is_there = ReadInfo(usual, &info) && info.kind == FileKind::kFolder;
  return is_there ? usual : std::filesystem::path();
}

Conversion CalibratedSpectra(SpectraOptions options) {
  Conversion conversion;
  conversion.outputs_of = [suffix = options.suffix](const std::string& path) {
    return std::vector<std::string>{TsResultName(path, suffix)};
  };
  const auto shared = std::make_shared<Shared>(std::move(options));
  conversion.job = [shared](BatchTask& task) { return SpectraJob(&task, shared.get()).Run(); };
  return conversion;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/waveform_text.h"

#include <functional>

#include "base/number_text.h"
#include "files/file_io.h"
#include "files/path_text.h"
#include "table/param_time.h"
#include "timeseries/clock_time.h"

namespace orvane {
namespace {

// A line of labels, then one for each visible scan.
std::string Table(const WaveformView& view, const std::vector<std::size_t>& traces,
                  const char* between,
                  const std::function<std::string(const std::string& label)>& quoted) {
  std::string text = quoted(view.TimeLabel());
  for (const std::size_t trace : traces) {
    text.append(between).append(quoted(view.Channel(trace).Label()));
  }
  text.append("\n");
  const ScanRange scans = view.VisibleScans();
  for (std::size_t scan = scans.begin; scan < scans.end; ++scan) {
    text.append(TimeText(view, view.TimeOf(scan)));
    for (const std::size_t trace : traces) {
      text.append(between).append(FormatReal(view.Value(scan, trace)));
    }
    text.append("\n");
  }
  return text;
}

std::string QuotedForCsv(const std::string& label) {
  if (label.find_first_of(",\"\r\n") == std::string::npos) {
    return label;
  }
  std::string quoted = "\"";
  for (const char letter : label) {
    quoted.append(letter == '"' ? 2 : 1, letter);
  }
  return quoted.append("\"");
}

// One line, whatever it has.
std::string Comment(std::string text) {
  for (char& letter : text) {
    letter = letter == '\n' || letter == '\r' ? ' ' : letter;
  }
  return std::string("# ").append(text).append("\n");
}

}  // namespace

std::string TimeText(const WaveformView& view, double time) {
  return view.ShowsClock()
             ? ClockText(view.Record().Header().time, time, ClockDecimals(view.SecondsPerScan()))
             : FormatReal(time);
}

std::string CursorText(const WaveformView& view) {
  const auto first = view.Reading(WaveformView::kFirstCursor);
  const auto second = view.Reading(WaveformView::kSecondCursor);
  std::string text;
  const auto add_line = [&](const std::string& label, auto value_of, auto text_of) {
    text.append(label);
    for (const auto& reading : {first, second}) {
      if (reading) {
        text.append("\t").append(text_of(value_of(*reading)));
      }
    }
    if (first && second) {
      text.append("\t").append(FormatReal(value_of(*second) - value_of(*first)));
    }
    text.append("\n");
  };
  if (first || second) {
    add_line(
        view.TimeLabel(), [](const WaveformReading& reading) { return reading.time; },
        [&view](double time) { return TimeText(view, time); });
    for (std::size_t i = 0; i < view.TraceCount(); ++i) {
      add_line(
          view.Channel(i).Label(), [i](const WaveformReading& r) { return r.values[i]; },
          [](double value) { return FormatReal(value); });
    }
  }
  return text;
}

std::string VisibleText(const WaveformView& view) {
  std::vector<std::size_t> traces(view.TraceCount());
  for (std::size_t i = 0; i < traces.size(); ++i) {
    traces[i] = i;
  }
  return Table(view, traces, "\t", [](const std::string& label) { return label; });
}

std::string VisibleCsv(const WaveformView& view, const std::vector<std::size_t>& traces) {
  std::string text = Comment(PathText(view.File().Path().filename())
                                 .append(", record ")
                                 .append(FormatInt(view.Number()))
                                 .append(" of ")
                                 .append(FormatInt(view.Count()))
                                 .append(", began ")
                                 .append(FormatParamTime(view.Record().Header().time)));
  if (const std::string note = view.NoteText(); !note.empty()) {
    text.append(Comment(note));
  }
  return text.append(Table(view, traces, ",", QuotedForCsv));
}

Result<> SaveVisibleCsv(const WaveformView& view, const std::vector<std::size_t>& traces,
                        const std::filesystem::path& path) {
  for (const std::filesystem::path& input : {view.File().Path(), view.File().CompanionPath()}) {
    if (input.empty() || Exists(input) == Existence::kNotThere) {
      continue;
    }
    const auto same = CompareFiles(path, input);
    if (!same || *same == Sameness::kSame) {
      return Failure(FileMessage(path, same ? "this is a file of the recording" : same.Message()));
    }
  }
  const std::string text = VisibleCsv(view, traces);
  const Result<> written = WriteFile(path, std::as_bytes(std::span(text)));
  return written ? written : Failure(FileMessage(path, written.Message()));
}

}  // namespace orvane

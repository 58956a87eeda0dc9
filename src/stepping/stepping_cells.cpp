// SPDX-License-Identifier: GPL-3.0-or-later
// The cells of the stepping dialog's lists.
#include <algorithm>
#include <optional>

#include "base/ascii.h"
#include "base/number_text.h"
#include "stepping/stepping_form.h"

namespace orvane {
namespace {

constexpr int kCurrentDigits = 4;  // no transmitter is set more finely

std::string Refusal(std::string_view text, std::string_view what) {
  std::string refusal = "\"";
  return refusal.append(text).append("\" is not ").append(what);
}

// An empty cell is a zero.
std::optional<double> RealIn(std::string_view text) {
  text = Trimmed(text);
  return text.empty() ? 0 : ParseReal(text);
}
std::optional<std::int32_t> IntIn(std::string_view text) {
  text = Trimmed(text);
  return text.empty() ? 0 : ParseInt(text);
}

std::optional<std::int16_t> WaveformIn(std::string_view text) {
  text = Trimmed(text);
  const auto* name = std::find_if(kWaveforms.begin(), kWaveforms.end(), [text](auto waveform) {
    return EqualsWithoutCase(waveform, text);
  });
  const auto code = name != kWaveforms.end() ? static_cast<std::int32_t>(name - kWaveforms.begin())
                                             : IntIn(text).value_or(-1);
  if (code < 0 || code >= static_cast<std::int32_t>(kWaveforms.size())) {
    return std::nullopt;
  }
  return static_cast<std::int16_t>(code);
}

}  // namespace

std::string SteppingForm::FrequencyText(int row) const {
  const auto* const first = frequencies_.begin() + row;
  const bool is_used = std::any_of(first, frequencies_.end(), [](double f) { return f != 0; });
  return is_used ? FormatReal(*first) : std::string();
}

std::string SteppingForm::EditFrequency(int row, std::string_view text) {
  if (text == FrequencyText(row)) {
    return {};
  }
  const auto frequency = RealIn(text);
  if (!frequency) {
    return Refusal(text, "a frequency in Hz such as 85.3333");
  }
  frequencies_[static_cast<std::size_t>(row)] = *frequency;
  is_list_edited_ = true;
  return {};
}

std::string SteppingForm::StepText(int row, StepColumn column) const {
  const ScheduleRow& step = schedule_[static_cast<std::size_t>(row)];
  if (IsEmpty(step)) {
    return {};
  }
  switch (column) {
    case kFrequency:
      return FormatReal(step.frequency);
    case kCurrent:
      return FormatReal(step.current, kCurrentDigits);
    case kEndTime:
      return FormatInt(step.end_time);
    case kWaveform:
      return WaveformName(step.waveform);
  }
  return {};
}

std::string SteppingForm::EditStep(int row, StepColumn column, std::string_view text) {
  if (text == StepText(row, column)) {
    return {};
  }
  ScheduleRow& step = schedule_[static_cast<std::size_t>(row)];
  if (column == kWaveform) {
    const auto code = WaveformIn(text);
    if (!code) {
      return Refusal(text, "a waveform: a name from NONE to EXTCLK or a code from 0 to 12");
    }
    step.waveform = *code;
  } else if (column == kEndTime) {
    const auto seconds = IntIn(text);
    if (!seconds) {
      return Refusal(text, "an end time in whole seconds");
    }
    step.end_time = *seconds;
  } else {
    const auto number = RealIn(text);
    if (!number) {
      return Refusal(text, column == kFrequency ? "a frequency in Hz such as 85.3333"
                                                : "a current in A such as 2.5");
    }
    (column == kFrequency ? step.frequency : step.current) = *number;
  }
  has_edited_steps_ = true;
  return {};
}

std::string SteppingForm::InsertStep(int row) {
  auto* const end = schedule_.begin() + kMostSteps;
  if (!IsEmpty(*(end - 1))) {
    return "All 200 rows are in use";
  }
  std::move_backward(schedule_.begin() + row, end - 1, end);
  schedule_[static_cast<std::size_t>(row)] = {};
  has_edited_steps_ = true;
  return {};
}

void SteppingForm::DeleteStep(int row) {
  auto* const end = schedule_.begin() + kMostSteps;
  std::move(schedule_.begin() + row + 1, end, schedule_.begin() + row);
  *(end - 1) = {};
  has_edited_steps_ = true;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/decay_run.h"

#include <algorithm>
#include <exception>
#include <new>
#include <system_error>

#include "spectra/decay_plan.h"

namespace orvane {
namespace {

DecayOutcome Refused(const std::string& reason) { return {{}, {}, reason}; }

}  // namespace

DecayRun::DecayRun(DecayChoice choice) : choice_(std::move(choice)) {
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    outcome_ = Refused("no thread to be had, or no memory for one");
    is_done_ = true;
  }
}

DecayRun::~DecayRun() {
  opening_.stop = true;
  if (thread_.joinable()) {
    thread_.join();
  }
}

int DecayRun::Percent() const {
  constexpr double kWhole = 100;
  const auto end = static_cast<double>(end_.load());
  return end > 0 ? static_cast<int>(kWhole * std::min(1.0, static_cast<double>(at_) / end)) : 0;
}

DecayOutcome DecayRun::Work() {
  TsFile file;
  if (const Result<> opened = file.Open(choice_.path, choice_.headers, &opening_); !opened) {
    return Refused(opened.Message());
  }
  if (!file.Companion().IsLoaded()) {
    return Refused("Without the table of the recording method, waveform and gains are not known");
  }
  end_ = file.Walk().End();
  const LeaveOut leave_out{.bad = false, .numbers = choice_.left_out, .note = {}};
  const PassOptions pass{.threads = 1, .stopped = [this] { return opening_.stop.load(); }};
  const auto advance = [this](std::uint64_t bytes) { at_ += bytes; };
  const Tech tech = TechOf(file.Companion().Table());
  if (HasFrequencies(tech)) {
    auto points =
        FrequencyPointsOf(file, {leave_out, 0, choice_.reference, 1, choice_.units, pass, advance});
    return points ? DecayOutcome{{}, std::move(*points), {}} : Refused(points.Message());
  }
  if (!HasDecay(tech)) {
    return Refused("The method (TECH) has no transmitter, or is not known");
  }
  const auto first = FirstForDecay(file, leave_out, 0);
  const auto plan = first ? DecayPlanOf(file.Companion(), first->header.frequency, choice_.windows)
                          : Failure(first.Message());
  if (!plan) {
    return Refused(plan.Message());
  }
  auto decay = DecayOfFile(file, {*plan, leave_out, 0, 0, choice_.units, pass, advance});
  return decay ? DecayOutcome{std::move(*decay), {}, {}} : Refused(decay.Message());
}

void DecayRun::Run() {
  try {
    outcome_ = Work();
  } catch (const std::bad_alloc&) {
    // as it was made
  } catch (const std::exception& error) {
    outcome_ = Refused(error.what());
  }
  is_done_ = true;
}

}  // namespace orvane

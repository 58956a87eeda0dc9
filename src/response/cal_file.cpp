// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/cal_file.h"

#include <new>
#include <utility>

#include "files/file_io.h"
#include "files/find_file.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr std::size_t kMaxBasePath = 256;
constexpr std::size_t kPassesForModel = 3;

bool GetsModel(const CalRecords& cal) {
  return cal.header.ctyp == kBoxCal && cal.PassCount() >= kPassesForModel;
}

std::unique_ptr<CalData> WithModel(CalRecords records) {
  auto cal = std::make_unique<CalData>();
  static_cast<CalRecords&>(*cal) = std::move(records);
  cal->channel_flags = ModelFlagsOf(*cal);
  if (GetsModel(*cal)) {
    cal->model = FitBoxModel(*cal, cal->channel_flags);
  }
  return cal;
}

}  // namespace

ChannelModelFlags ModelFlagsOf(const CalRecords& cal) {
  return GetsModel(cal) ? ChannelModelFlagsOf(CalText(cal.header.hw)) : ChannelModelFlags{};
}

std::unique_ptr<CalData> ReadCalFileAt(int kind, const std::filesystem::path& path,
                                       CalReport* report) {
  const auto records = ReadCalRecordsAt(kind, path, report);
  if (records == nullptr) {
    return nullptr;
  }
  try {
    return WithModel(std::move(*records));
  } catch (const std::bad_alloc&) {
    if (report != nullptr) {
      *report = NoMemoryForCal(path);
    }
    return nullptr;
  }
}

std::unique_ptr<CalData> ReadCalFile(int kind, const std::string& base_path, CalReport* report) {
  if (base_path.size() > kMaxBasePath) {
    if (report != nullptr) {
      *report = {kCalPathTooLong, FileMessage(PathOf(base_path), StatusText(kCalPathTooLong))};
    }
    return nullptr;
  }
  const auto path = PathOf(base_path + (kind == kBoxCal ? ".CLB" : ".CLC"));
  const auto found = FindInAnyCase(path);
  auto cal = ReadCalFileAt(kind, found ? *found : path, report);
  if (!found && report != nullptr && report->status == kCalNotOpened) {
    report->message = found.Message();
  }
  return cal;
}

FrontEndParameters ParametersOf(const CalData& cal, std::size_t channel) {
  if (cal.model.parameter_count == 0) {
    return NominalParameters(cal.channel_flags[channel]);
  }
  FrontEndParameters parameters{};
  for (std::size_t k = 0; k < parameters.size(); ++k) {
    parameters[k] = cal.model.parameters[k * cal.Channels() + channel];
  }
  return parameters;
}

}  // namespace orvane

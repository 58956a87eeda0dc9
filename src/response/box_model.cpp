// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/box_model.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <span>

#include "response/channel_fit.h"

namespace orvane {
namespace {

// The last but two are replaced by what the calibration measured.
constexpr FrontEndParameters kStart = {0,       0,      0,   3.3e-9, 1e-8, 3.3e-8, 1e-7,
                                       3.3e-7,  0.001,  55,  0.01,   137,  424,    0.00022,
                                       3.3e-10, 5.6e-9, 100, 2,      600,  297};

// The passes whose first records hold delay and drive resistors as their fourth value.
constexpr std::size_t kPassOfDelay = 0;
constexpr std::size_t kPassOfDrive = 9;

// A calibration without that many passes leaves the parameter as it is.
void TakeFourthValue(const CalRecords& cal, std::size_t pass, std::size_t channel,
                     double* parameter) {
  if (pass < cal.PassCount() && !cal.Pass(pass).empty()) {
    *parameter = cal.Pass(pass).front().channels[channel].values[3];
  }
}

// Whether a record comes before another: those with a frequency first, rising. Among equal ones the
// values decide, so that the order in the file never counts.
bool ComesBefore(const CalFileRecord* a, const CalFileRecord* b, std::size_t channels) {
  const float one = a->frequency;
  const float other = b->frequency;
  const auto has_place = [](float frequency) { return frequency > 0 && std::isfinite(frequency); };
  if (has_place(one) != has_place(other)) {
    return has_place(one);
  }
  auto order = std::strong_order(one, other);
  for (std::size_t c = 0; c < channels && order == 0; ++c) {
    order = std::strong_order(float{a->channels[c].real}, float{b->channels[c].real});
    if (order == 0) {
      order = std::strong_order(float{a->channels[c].imaginary}, float{b->channels[c].imaginary});
    }
  }
  return order < 0;
}

std::vector<const CalFileRecord*> Ascending(std::span<const CalFileRecord> pass,
                                            std::size_t channels) {
  std::vector<const CalFileRecord*> records;
  for (const CalFileRecord& record : pass) {
    records.push_back(&record);
  }
  std::stable_sort(records.begin(), records.end(),
                   [channels](const CalFileRecord* a, const CalFileRecord* b) {
                     return ComesBefore(a, b, channels);
                   });
  return records;
}

// One entry at 0 Hz, that of the lowest frequency, then one for each record, frequencies rising. A
// pass that is missing, or finds no room, leaves its slot empty.
void CopyPass(const CalRecords& cal, std::size_t pass, BoxModel* model) {
  std::size_t end = model->entries;
  model->slot_starts.push_back(end);
  if (pass >= cal.PassCount() || cal.Pass(pass).empty() ||
      end + cal.Pass(pass).size() + 1 > BoxModel::kSlotEntries) {
    return;
  }
  const auto put = [&](const CalFileRecord& record, bool is_zero) {
    model->frequencies[end] = is_zero ? 0 : static_cast<double>(record.frequency);
    for (std::size_t c = 0; c < cal.Channels(); ++c) {
      const CalBlock& block = record.channels[c];
      model->responses[c * BoxModel::kSlotEntries + end] = {
          block.real, is_zero ? 0 : static_cast<double>(block.imaginary)};
    }
    ++end;
  };
  const auto records = Ascending(cal.Pass(pass), cal.Channels());
  put(*records.front(), true);
  for (const CalFileRecord* record : records) {
    put(*record, false);
  }
  model->entries = end;
}

struct Pass {
  FrontEndSetting setting;
  bool is_through_resistors = false;
};

constexpr std::size_t kFirstPass = 3;
const auto kPasses = std::to_array<Pass>({
    {{0, 16, 0, {}}},
    {{-1, 16, 0, {}}},
    {{1, 16, 0, {}}},
    {{2, 16, 0, {}}},
    {{0, 17, 0, {}}},
    {{0, 18, 0, {}}},
    {{0, 16, 0, {}}, true},
    {{0, 0, 0, {}}, true},
    {{0, 80, 0, {}}, true},
    {{0, 16, 1, {}}, true},
    {{0, 19, 0, {}}},
    {{0, 20, 0, {}}},
});

}  // namespace

FrontEndParameters NominalParameters(std::uint32_t flags) {
  FrontEndParameters parameters = kStart;
  if ((flags & kSecondVariant) != 0) {
    for (std::size_t k = kLowPass + 1; k < kChokeA; ++k) {
      parameters[k] = 0;
    }
    parameters[kChokeB] = 0.001;
    parameters[kChokeBWire] = 55;
    parameters[kTrapSwitch] = 1e9;
  }
  if ((flags & kFirstVariant) != 0) {
    parameters[kSeries] = 332;
  }
  return parameters;
}

bool IsModelPass(std::size_t pass) {
  return pass >= kFirstPass && pass < kFirstPass + kPasses.size();
}

FrontEndSetting PassSetting(std::size_t pass, double drive) {
  constexpr double kUsualDrive = 600;  // where the stored one cannot be
  FrontEndSetting setting = kPasses[pass - kFirstPass].setting;
  if (kPasses[pass - kFirstPass].is_through_resistors) {
    setting.source = (drive >= 1 && drive <= 1e6 ? drive : kUsualDrive) / 2;
  }
  return setting;
}

BoxModel FitBoxModel(const CalRecords& cal, const ChannelModelFlags& flags) {
  BoxModel model;
  const std::size_t channels = cal.Channels();
  model.frequencies.assign(BoxModel::kSlotEntries, 0);
  model.responses.assign(channels * BoxModel::kSlotEntries, 0);
  model.parameter_count = BoxModel::kParameters;
  for (const std::size_t pass : kSlotPasses) {
    CopyPass(cal, pass, &model);
  }
  for (std::size_t c = 0; c < channels; ++c) {
    FrontEndParameters parameters = NominalParameters(flags[c]);
    TakeFourthValue(cal, kPassOfDelay, c, &parameters[kDelay]);
    TakeFourthValue(cal, kPassOfDrive, c, &parameters[kDrive]);
    ChannelFit fit(model, c, flags[c], parameters);
    model.fits[c] = fit.Run();
    for (std::size_t k = 0; k < parameters.size(); ++k) {
      model.parameters[k * channels + c] = fit.Parameters()[k];
    }
  }
  return model;
}

}  // namespace orvane

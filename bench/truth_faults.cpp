// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth_faults.h"

#include <algorithm>

namespace orvane::bench {
namespace {

void KeepPasses(TruthBox* box, std::size_t count) { box->passes.resize(count); }

void Scale(TruthPass* pass, std::size_t channel, double factor, std::size_t last = 1000) {
  auto& responses = pass->responses[channel];
  for (std::size_t i = responses.size() - std::min(last, responses.size()); i < responses.size();
       ++i) {
    responses[i] *= factor;
  }
}

void Flatten(TruthBox* box) {
  for (TruthPass& pass : box->passes) {
    for (std::size_t i = 1; i < pass.frequencies.size(); ++i) {
      for (auto& responses : pass.responses) {
        responses[i] = pass.frequencies[i] > 10000 ? responses[i - 1] : responses[i];
      }
    }
  }
}

// A pass that was switched as another, or driven as it should not be.
TruthSetting As(std::size_t pass, std::size_t other) {
  return [=](std::size_t swept, double drive) {
    return PassSetting(swept == pass ? other : swept, drive);
  };
}

FrontEndSetting Direct10(std::size_t pass, double drive) {
  FrontEndSetting setting = PassSetting(pass, drive);
  setting.source = pass == 10 ? 0 : setting.source;
  return setting;
}

using Parts = std::set<std::size_t>;
const Parts kTrap = {kChokeB, kChokeBWire, kTank};
// All that the level of the impedances is divided upon.
const Parts kLevel = {kDrive, kSeries, 3, 4, 5, 6, 7};

}  // namespace

std::span<const TruthFault> TruthFaults() {
  static const std::vector<TruthFault> kFaults = {
      {"passes 0 to 12 only", {13, 14}, {}, false, [](TruthBox* b) { KeepPasses(b, 13); }, {}},
      {"passes 0 to 11 only", {12}, {}, false, [](TruthBox* b) { KeepPasses(b, 12); }, {}},
      {"passes 0 to 8 only", {9}, {}, false, [](TruthBox* b) { KeepPasses(b, 9); }, {}},
      {"sweep 13 lost",
       {13, 14},
       {6},
       false,
       [](TruthBox* b) { b->passes.erase(b->passes.begin() + 13); },
       {}},
      {"7 and 8 swapped",
       {7, 8},
       {4, 5},
       false,
       [](TruthBox* b) { std::swap(b->passes[7], b->passes[8]); },
       {}},
      {"13 and 14 swapped",
       {13, 14},
       {6, 7},
       false,
       [](TruthBox* b) { std::swap(b->passes[13], b->passes[14]); },
       {}},
      {"trap not switched in 11", {11}, kTrap, false, nullptr, As(11, 9)},
      {"12 not coupled", {12}, {kCoupling}, true, nullptr, As(12, 9)},
      {"drive resistors halved",
       {9, 10, 11, 12},
       kLevel,
       false,
       [](TruthBox* b) { b->stored_drive /= 2; },
       {}},
      {"last two of 11 20 % high",
       {11},
       kTrap,
       false,
       [](TruthBox* b) { Scale(&b->passes[11], 0, 1.2, 2); },
       {}},
      {"5 x 1.1", {5}, {}, true, [](TruthBox* b) { Scale(&b->passes[5], 0, 1.1); }, {}},
      {"7 again for 8", {8}, {5}, false, [](TruthBox* b) { b->passes[8] = b->passes[7]; }, {}},
      {"14 reversed", {14}, {}, false, [](TruthBox* b) { Scale(&b->passes[14], 0, -1); }, {}},
      {"9 reversed", {9}, {}, true, [](TruthBox* b) { Scale(&b->passes[9], 0, -1); }, {}},
      {"10 with the capacitor", {10}, {kInput}, false, nullptr, As(10, 9)},
      {"channels swapped in 9",
       {9},
       {},
       true,
       [](TruthBox* b) { std::swap(b->passes[9].responses[0], b->passes[9].responses[1]); },
       {}},
      {"flat above 10 kHz", {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}, {}, false, Flatten, {}},
      {"13 again for 14", {14}, {7}, false, [](TruthBox* b) { b->passes[14] = b->passes[13]; }, {}},
      {"channel x 1.3",
       {},
       {kBaseGain},
       false,
       [](TruthBox* b) {
         for (TruthPass& pass : b->passes) {
           Scale(&pass, 0, 1.3);
         }
       },
       {}},
      {"10 driven directly", {10}, {}, false, nullptr, Direct10},
      {"frequencies of 9 x 1000",
       {9},
       {},
       false,
       [](TruthBox* b) {
         for (double& frequency : b->passes[9].frequencies) {
           frequency *= 1000;
         }
       },
       {}},
  };
  return kFaults;
}

}  // namespace orvane::bench

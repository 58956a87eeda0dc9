// SPDX-License-Identifier: GPL-3.0-or-later
// What an MT/AMT schedule records, and the room that it takes.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <system_error>

#include "base/latin1.h"
#include "base/number_text.h"
#include "check/rule.h"
#include "editors/schedule_cautions.h"
#include "files/file_system.h"
#include "files/path_text.h"
#include "table/param_time.h"

namespace orvane {
namespace {

constexpr double kMegabyte = 1048576;
constexpr int kAmtSampling = 0;
constexpr int kMtSampling = 1;
constexpr int kDamtSampling = 2;
constexpr int kLongestSlot = 3600;  // seconds

std::int32_t Sampling(const Situation& situation) { return situation.Int("MTSR"); }

// A recording that has a window of high rates.
bool HasHighRates(const Situation& situation) {
  return situation.IsMt() && situation.recording.Seconds() > 0 &&
         (Sampling(situation) == kAmtSampling || Sampling(situation) == kMtSampling);
}

HighRateSpan Window(const Situation& situation) {
  return HighRateWindow(situation.table, situation.recording, situation.now);
}

void HighWindowEmpty(const Situation& situation, const Teller& tell) {
  if (HasHighRates(situation) && Window(situation).IsEmpty()) {
    tell({"ETMH", "HTIM"}, "The window of high rates lies outside the recording");
  }
}

void HighWindowCut(const Situation& situation, const Teller& tell) {
  if (!HasHighRates(situation)) {
    return;
  }
  const HighRateSpan window = Window(situation);
  if (!window.IsEmpty() && window.kept != window.asked) {
    const bool is_start = window.kept.start != window.asked.start;
    tell(is_start ? std::vector<ParamKey>{"HTIM", "ETMH"} : std::vector<ParamKey>{"ETMH", "HTIM"},
         "The window of high rates reaches beyond the recording and is cut to it");
  }
}

struct Amount {
  std::string_view key;
  std::int32_t most;
};
constexpr std::array<Amount, 3> kAmounts = {{{"L2NS", 4}, {"L3NS", 2}, {"L4NS", 16}}};

// The amounts that a sampling uses.
std::span<const Amount> AmountsOf(std::int32_t sampling) {
  const std::span<const Amount> all = kAmounts;
  return sampling == kAmtSampling  ? all.first(2)
         : sampling == kMtSampling ? all.last(2)
                                   : all.first(0);
}

void SlotRange(const Situation& situation, const Teller& tell) {
  if (!situation.IsMt()) {
    return;
  }
  const std::int32_t slot = situation.Int("HSMP");
  const bool is_slot = slot >= 1 && slot <= kLongestSlot;
  std::vector<ParamKey> keys;
  std::vector<std::string> faults;
  if (!is_slot) {
    keys.emplace_back("HSMP");
    faults.push_back("the slot of " + FormatInt(slot) + " s is not from 1 to 3600 s");
  }
  for (const Amount& amount : AmountsOf(Sampling(situation))) {
    const std::int32_t seconds = situation.Int(amount.key);
    if (seconds < 0 || seconds > amount.most || (is_slot && seconds > slot)) {
      keys.emplace_back(amount.key);
      faults.push_back(std::string(amount.key) + " is " + FormatInt(seconds) + ", not from 0 to " +
                       FormatInt(is_slot ? std::min(amount.most, slot) : amount.most));
    }
  }
  if (!keys.empty()) {
    tell(std::move(keys), "The slots of high rates cannot be as set: " + Listed(faults));
  }
}

void SamplingCode(const Situation& situation, const Teller& tell) {
  if (situation.IsMt() &&
      (Sampling(situation) < kAmtSampling || Sampling(situation) > kDamtSampling)) {
    tell({"MTSR"}, "The sampling " + FormatInt(Sampling(situation)) + " is none that boxes know");
  }
}

// Megabytes that the local box records; 0 where there is no estimate.
double Estimate(const Situation& situation) {
  const auto channels = static_cast<int>(situation.LocalBox().channels.size());
  return situation.IsMt() ? EstimateRecordingSize(situation.table, channels, situation.now).exact
                          : 0;
}

std::string TooMuch(double megabytes, double room) {
  return "The recording takes about " + FormatFixed(megabytes, 0) + " MB, but " +
         FormatFixed(room, 0) + " MB are free";
}

void SpaceCard(const Situation& situation, const Teller& tell) {
  const std::filesystem::path& card = situation.places.card;
  if (card.empty()) {
    return;
  }
  if (!IsFolder(card)) {
    tell({"SNUM"}, "There is no card, or no folder of one, at " + PrintableUtf8(PathText(card)),
         situation.LocalBox().name);
    return;
  }
  if (!situation.IsMt()) {
    return;
  }
  std::error_code error;
  const std::filesystem::space_info space = std::filesystem::space(card, error);
  const std::string box = situation.LocalBox().name;
  const std::string name = PrintableUtf8(PathText(card));
  if (error) {
    tell({"ETIM"}, "The free space of " + name + " cannot be known", box);
    return;
  }
  const double room = static_cast<double>(space.available) / kMegabyte;
  if (const double megabytes = Estimate(situation); megabytes > room) {
    tell({"ETIM"}, TooMuch(megabytes, room) + " on " + name, box);
  }
}

void SpaceDisk(const Situation& situation, const Teller& tell) {
  const double room = situation.Int("DISK") / kMegabyte;
  const bool is_reported = situation.Int("TOTL") != 0 || !IsUnset(situation.Time("LTIM"));
  if (room <= 0 || !is_reported) {
    return;
  }
  if (const double megabytes = Estimate(situation); megabytes > room) {
    tell({"ETIM", "DISK"}, TooMuch(megabytes, room) + " as the box reported last",
         situation.LocalBox().name);
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"high-window-empty", Severity::kError,
     "MT and AMT sampling: nothing of the window of high rates lies in the recording. Equal times "
     "mean the whole recording.",
     HighWindowEmpty},
    {"high-window-cut", Severity::kWarning,
     "MT and AMT sampling: the window of high rates reaches beyond the recording.", HighWindowCut},
    {"slot-range", Severity::kWarning,
     "MT/AMT: the slot is not from 1 to 3600 s, or an amount that the sampling uses (AMT: L2NS and "
     "L3NS; MT: L3NS and L4NS) is not from 0 to 4, 2 or 16 or is longer than the slot.",
     SlotRange},
    {"sampling-code", Severity::kWarning, "MT/AMT: MTSR is not 0, 1 or 2.", SamplingCode},
    {"space-card", Severity::kWarning,
     "MT/AMT, with a card: the estimate of the recording is above the card's free space, or that "
     "cannot be known; other methods have no estimate. All methods: there is no such card.",
     SpaceCard, Needs::kFiles},
    {"space-disk", Severity::kHint,
     "MT/AMT: the estimate is above the free space that a box has reported. A table that no box "
     "has reported into (TOTL 0, LTIM not set) has only the default there.",
     SpaceDisk},
});

}  // namespace

std::span<const Rule> SpaceRules() { return kRules; }

}  // namespace orvane

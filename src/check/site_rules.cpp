// SPDX-License-Identifier: GPL-3.0-or-later
// Where the electrodes and the loop are, and the time zone there.
#include <algorithm>
#include <cmath>
#include <optional>

#include "base/number_text.h"
#include "check/rule.h"
#include "table/geo_text.h"

namespace orvane {
namespace {

constexpr double kLongestInLengths = 10;
constexpr int kFirstZone = -12;
constexpr int kLastZone = 13;

// The electrodes of a channel, in metres.
struct Dipole {
  const CheckedBox* box;
  const CheckedChannel* channel;
  std::array<double, 4> ends;  // N+, E+, N-, E-

  bool IsPlaced() const { return ends != std::array<double, 4>{}; }
  double Length() const { return std::hypot(ends[0] - ends[2], ends[1] - ends[3]); }
  bool HasEndsOf(const Dipole& other) const {
    return ends == other.ends ||
           ends == std::array{other.ends[2], other.ends[3], other.ends[0], other.ends[1]};
  }
  ParamKey Key() const { return box->Key(*channel, kPositiveNorth); }
};

// Of the recorded E channels of methods whose dipoles have places.
std::vector<Dipole> DipolesOf(const Situation& situation) {
  std::vector<Dipole> dipoles;
  if (!situation.HasDipoles()) {
    return dipoles;
  }
  situation.ForEachRecorded([&](const CheckedBox& box, const CheckedChannel& channel) {
    if (channel.letter == 'E') {
      const auto at = [&](ChannelColumn column) {
        return situation.Real(box.Key(channel, column));
      };
      dipoles.push_back(
          {&box,
           &channel,
           {at(kPositiveNorth), at(kPositiveEast), at(kNegativeNorth), at(kNegativeEast)}});
    }
  });
  return dipoles;
}

// Tells of each box's placed dipoles that `is_named` picks.
template <typename IsNamed>
void TellDipoles(const Situation& situation, const Teller& tell, const std::string& sentence,
                 const IsNamed& is_named) {
  const std::vector<Dipole> dipoles = DipolesOf(situation);
  for (const CheckedBox& box : situation.boxes) {
    NamedChannels named;
    for (const Dipole& dipole : dipoles) {
      if (dipole.box == &box && dipole.IsPlaced() && is_named(dipole)) {
        named.numbers.push_back(dipole.channel->number);
        named.keys.push_back(dipole.Key());
      }
    }
    if (!named.IsEmpty()) {
      tell(named.keys, sentence + ": " + named.Text(), box.name);
    }
  }
}

void PositionsUnset(const Situation& situation, const Teller& tell) {
  const std::vector<Dipole> dipoles = DipolesOf(situation);
  const bool is_any_placed = std::any_of(dipoles.begin(), dipoles.end(),
                                         [](const Dipole& dipole) { return dipole.IsPlaced(); });
  if (!dipoles.empty() && !is_any_placed) {
    tell({dipoles.front().Key()}, "No electrode of the recorded E channels has a position");
  }
}

void DipoleZero(const Situation& situation, const Teller& tell) {
  TellDipoles(situation, tell, "Both electrodes are at one place",
              [](const Dipole& dipole) { return dipole.Length() == 0; });
}

void DipoleLong(const Situation& situation, const Teller& tell) {
  const double length = situation.Real("RXLEN");
  const std::vector<Dipole> dipoles = DipolesOf(situation);
  if (length == 0 && std::any_of(dipoles.begin(), dipoles.end(),
                                 [](const Dipole& dipole) { return dipole.IsPlaced(); })) {
    tell({"RXLEN"}, "The electrodes have positions, but the dipole length is 0 m");
  } else if (length > 0) {
    TellDipoles(
        situation, tell,
        "The electrodes are more than ten dipole lengths of " + FormatReal(length, 6) + " m apart",
        [length](const Dipole& dipole) { return dipole.Length() > kLongestInLengths * length; });
  }
}

void DipoleTwice(const Situation& situation, const Teller& tell) {
  const std::vector<Dipole> dipoles = DipolesOf(situation);
  TellDipoles(situation, tell, "Another channel has the same electrodes",
              [&dipoles](const Dipole& dipole) {
                return dipole.Length() > 0 &&
                       std::any_of(dipoles.begin(), dipoles.end(), [&](const Dipole& other) {
                         return other.channel != dipole.channel && other.HasEndsOf(dipole);
                       });
              });
}

void MtLength(const Situation& situation, const Teller& tell) {
  std::vector<ParamKey> keys;
  for (const std::string_view key : {"EXLN", "EYLN"}) {
    if (situation.IsMt() && !(situation.Real(key) > 0)) {
      keys.emplace_back(key);
    }
  }
  if (!keys.empty()) {
    tell(std::move(keys), "The length of an E dipole is not set", situation.LocalBox().name);
  }
}

void LoopSize(const Situation& situation, const Teller& tell) {
  constexpr std::array kArraysWithoutLoop = {13, 16};
  const std::int32_t array = situation.Int("ARRYTYP");
  if ((situation.tech != kTdem && situation.tech != kFdem) ||
      std::count(kArraysWithoutLoop.begin(), kArraysWithoutLoop.end(), array) > 0) {
    return;
  }
  std::vector<ParamKey> keys;
  for (const std::string_view key : {"LLENGTH", "LWIDTH"}) {
    if (situation.Real(key) == 0) {
      keys.emplace_back(key);
    }
  }
  if (situation.Int("TXTURN") < 1) {
    keys.emplace_back("TXTURN");
  }
  if (!keys.empty()) {
    tell(std::move(keys), "The transmitter loop has no length, no width or no turns");
  }
}

void Zone(const Situation& situation, const Teller& tell) {
  constexpr double kMostHours = 3;
  constexpr double kDegreesPerHour = 15;
  const std::int32_t kind = situation.Int("TMZONE");
  const std::int32_t hours = situation.Int("TMDIFF");
  if (kind != 0 && kind != 1) {
    tell({"TMZONE"},
         "Times are shown neither in UTC nor in local time: TMZONE is " + FormatInt(kind));
  } else if (hours < kFirstZone || hours > kLastZone) {
    tell({"TMDIFF"}, "There is no time zone of " + FormatInt(hours) + " hours");
  } else if (const auto longitude = LongitudeFrom(situation.Text("LNGG"));
             kind == 1 && longitude &&
             std::abs(std::remainder(hours - *longitude / kDegreesPerHour, 24.0)) > kMostHours) {
    tell.As(Severity::kHint, {"TMDIFF", "LNGG"},
            "The time zone of " + FormatInt(hours) +
                " hours is far from the sun's at the box's longitude of " +
                FormatFixed(*longitude, 1) + " degrees");
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"positions-unset", Severity::kHint,
     "SIP, TDIP, CSAMT: no electrode of the recorded E channels has a position. Said once.",
     PositionsUnset},
    {"dipole-zero", Severity::kError,
     "SIP, TDIP, CSAMT: both electrodes of a recorded E channel are at one place.", DipoleZero},
    {"dipole-long", Severity::kWarning,
     "SIP, TDIP, CSAMT: the electrodes of a recorded E channel are more than 10 times RXLEN apart; "
     "or electrodes have positions and RXLEN is 0.",
     DipoleLong},
    {"dipole-twice", Severity::kWarning,
     "SIP, TDIP, CSAMT: two recorded E channels have the same pair of electrodes.", DipoleTwice},
    {"mt-length", Severity::kWarning, "MT/AMT: EXLN or EYLN is not above 0.", MtLength},
    {"loop-size", Severity::kError,
     "TDEM, FDEM, but for the arrays 13 and 16: the loop's length or width is 0, or it has less "
     "than one turn.",
     LoopSize},
    {"zone", Severity::kWarning,
     "TMZONE is not 0 or 1, or TMDIFF is not from -12 to 13; as a hint, times are local, the "
     "longitude can be read, and TMDIFF is more than 3 hours from it at 15 degrees an hour. With "
     "UTC any TMDIFF is right: the dialog always stores it.",
     Zone, Needs::kNothing, "warning or hint"},
});

}  // namespace

std::span<const Rule> SiteRules() { return kRules; }

}  // namespace orvane

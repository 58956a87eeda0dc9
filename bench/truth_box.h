// SPDX-License-Identifier: GPL-3.0-or-later
// Calibrations of drawn boxes whose parts are known.
#ifndef ORVANE_BENCH_TRUTH_BOX_H_
#define ORVANE_BENCH_TRUTH_BOX_H_

#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "response/cal_file.h"

namespace orvane::bench {

/// How boxes are built and swept.
struct TruthCondition {
  const char* name = "";
  double full_scale = 0;  ///< noise of real and imaginary part, of the full scale
  double of_value = 0;    ///< the same, of the value
  int records = 33;       ///< in a pass
  double lowest = 0.05;   ///< Hz; the highest is 20 kHz
  double farthest = 0;    ///< parts lie within this factor of paper; 0: within their tolerances
  double wild = 0;        ///< share of records that are wild: 2 % to 100 % off in any direction
  double drift = 0;       ///< of the gain from pass to pass, one standard deviation
  double drive = 0;       ///< by how much the stored drive resistors are off, either way
};

/// One swept pass of a box: its frequencies and the responses of each channel.
struct TruthPass {
  std::vector<double> frequencies;
  std::vector<std::vector<Complex>> responses;  ///< of a channel, a record
};

/// A box as it is, and what was measured of it.
struct TruthBox {
  std::vector<FrontEndParameters> parts;  ///< of each channel
  std::uint32_t flags = 0;
  double stored_drive = 600;
  std::vector<TruthPass> passes;  ///< counted from 0; the first three say nothing

  /// What its calibration file holds, with the fitted model.
  CalData Fitted() const;
};

/// How a pass of a channel answers; `PassSetting()` unless a fault switches the box otherwise.
using TruthSetting = std::function<FrontEndSetting(std::size_t pass, double drive)>;

class TruthShop {
 public:
  explicit TruthShop(std::uint64_t seed) : random_(seed) {}

  TruthBox Build(const TruthCondition& condition, std::size_t channels = 1,
                 const TruthSetting& setting = {});

 private:
  double Draw(double reach);
  Complex Noise(double deviation);
  FrontEndParameters DrawParts(const TruthCondition& condition, std::uint32_t flags);
  TruthPass Sweep(const TruthCondition& condition, const TruthBox& box, std::size_t pass,
                  const TruthSetting& setting);

  std::mt19937_64 random_;
};

}  // namespace orvane::bench

#endif  // ORVANE_BENCH_TRUTH_BOX_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_FIT_STEP_H_
#define ORVANE_RESPONSE_FIT_STEP_H_

#include <span>
#include <vector>

#include "response/front_end.h"
#include "response/least_squares.h"

namespace orvane {

/// One measured point. Its error is |model - measured| times its weight.
struct FitPoint {
  double frequency = 0;
  Complex measured;
  double weight = 0;  ///< 0: it does not take part
};

/// The points of one slot and the setting that they were measured in.
struct FitSlot {
  std::span<FitPoint> points;
  FrontEndSetting setting;
};

/// What a step of a channel's fit starts from.
struct FitStart {
  const FrontEndParameters& nominal;  ///< what the adjusted parameters are drawn to
  const FrontEndParameters& parameters;
  double polarity;
  double prior_weight;  ///< of a deviation by a part's tolerance, in units of a point's error
  double highest_frequency;
  double width;  ///< errors of this size count half, as `CauchyWeight()` says
};

/// How much a point with such a squared error counts: 1 where it is small, 0 where it is large.
inline double CauchyWeight(double squared_error, double width) {
  return 1 / (1 + squared_error / (width * width));
}

/// By which part of itself a part may deviate, gains and delay in their variables' own units.
double PartTolerance(std::size_t part);
/// The most that the logarithm of a part may be off.
extern const double kMostPartLog;
/// How fast a part with this value moves with the variable that is searched for it.
double PartSlope(std::size_t part, double value);

/// Adjusts some parameters of the circuit to the points of some slots. Values of parts are searched
/// by their logarithms, at most a factor of 3 from the nominal ones. What the points do not show
/// stays near nominal, by the tolerance of the part. A point's loss is Cauchy's, width^2 log(1 +
/// error^2 / width^2), so that wild ones hardly count.
class FitStep final : public LeastSquaresProblem {
 public:
  FitStep(std::span<const FitSlot> chosen, std::span<const std::size_t> parts,
          const FitStart& start);

  bool HasPoints() const;
  /// The variables of the parameters that the step starts from.
  Variables Start() const;
  /// What a deviation by a variable weighs.
  double PriorOf(std::size_t variable) const { return unknowns_[variable].prior; }
  /// J'r for residuals that change as a slot's response does by `scale` times a part.
  Variables Pull(const FitSlot& slot, const Variables& at, std::size_t part, double scale) const;
  /// Returns the number of iterations.
  int Run(int most_iterations, double least_fall, FrontEndParameters* parameters);

  double Cost(const Variables& at) const override;
  NormalEquations Linearize(const Variables& at) const override;

 private:
  struct Unknown {
    std::size_t part = 0;
    double nominal = 0;
    double centre = 0;
    double prior = 0;  // weight of the distance from the centre
  };

  bool TakesPart(const FitPoint& point) const {
    return point.weight > 0 && point.frequency <= highest_frequency_;
  }
  /// The parameters at a place, and how fast each one moves with its variable.
  FrontEndParameters ParametersAt(const Variables& at, Variables* slopes) const;
  void AddSlot(const FitSlot& slot, const FrontEndParameters& parameters, const Variables& slopes,
               NormalEquations* eq) const;

  std::span<const FitSlot> slots_;
  std::vector<Unknown> unknowns_;
  FrontEndParameters fixed_;
  double highest_frequency_;
  double width_;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_FIT_STEP_H_

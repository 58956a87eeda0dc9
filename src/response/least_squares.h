// SPDX-License-Identifier: GPL-3.0-or-later
// Least squares with bounds for a handful of variables.
#ifndef ORVANE_RESPONSE_LEAST_SQUARES_H_
#define ORVANE_RESPONSE_LEAST_SQUARES_H_

#include <array>
#include <cstddef>

namespace orvane {

inline constexpr std::size_t kMaxVariables = 20;
using Variables = std::array<double, kMaxVariables>;

/// For residuals r with the Jacobian J: J'J (its lower triangle), J'r and the sum of squares.
struct NormalEquations {
  std::array<Variables, kMaxVariables> matrix{};
  Variables gradient{};
  double cost = 0;
};

class LeastSquaresProblem {
 public:
  LeastSquaresProblem() = default;
  LeastSquaresProblem(const LeastSquaresProblem&) = delete;
  LeastSquaresProblem& operator=(const LeastSquaresProblem&) = delete;
  virtual ~LeastSquaresProblem() = default;

  /// The sum of squares alone.
  virtual double Cost(const Variables& at) const = 0;
  virtual NormalEquations Linearize(const Variables& at) const = 0;

  std::size_t count = 0;  ///< of variables
  Variables low{};
  Variables high{};
};

/// Solves (A + damping diag A) step = -gradient, A the matrix with its upper triangle as well;
/// false where A is not positive.
bool SolveNormalEquations(const NormalEquations& eq, std::size_t count, double damping,
                          Variables* step);

/// The method of Levenberg and Marquardt from `at` on, which becomes the best place found. The
/// bounds hold. Ends where an iteration lessens the cost by less than `least_fall` of it. Returns
/// the number of iterations.
int Minimize(LeastSquaresProblem* problem, int most_iterations, double least_fall, Variables* at);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_LEAST_SQUARES_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/least_squares.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr double kFirstDamping = 1e-3;
constexpr double kLeastDamping = 1e-12;
constexpr double kMostDamping = 1e10;
constexpr double kLongestStep = 0.5;
constexpr double kShortestStep = 1e-9;
constexpr double kAtBound = 1e-9;
constexpr double kLeastDiagonal = 1e-12;

// A variable that lies at a bound and wants to go beyond takes no part.
void HoldAtBounds(const LeastSquaresProblem& problem, const Variables& at, NormalEquations* eq) {
  for (std::size_t i = 0; i < problem.count; ++i) {
    const bool is_low = at[i] <= problem.low[i] + kAtBound && eq->gradient[i] > 0;
    const bool is_high = at[i] >= problem.high[i] - kAtBound && eq->gradient[i] < 0;
    if (!is_low && !is_high) {
      continue;
    }
    for (std::size_t k = 0; k < problem.count; ++k) {
      eq->matrix[i][k] = eq->matrix[k][i] = 0;
    }
    eq->matrix[i][i] = 1;
    eq->gradient[i] = 0;
  }
}

// Where the step leads; returns the length of the longest coordinate really gone.
double Go(const LeastSquaresProblem& problem, const Variables& from, const Variables& step,
          Variables* to) {
  double longest = 0;
  for (std::size_t i = 0; i < problem.count; ++i) {
    const double wanted = from[i] + std::clamp(step[i], -kLongestStep, kLongestStep);
    (*to)[i] = std::clamp(wanted, problem.low[i], problem.high[i]);
    longest = std::max(longest, std::abs((*to)[i] - from[i]));
  }
  return longest;
}

}  // namespace

// By Cholesky.
bool SolveNormalEquations(const NormalEquations& eq, std::size_t count, double damping,
                          Variables* step) {
  auto l = eq.matrix;
  for (std::size_t i = 0; i < count; ++i) {
    l[i][i] += damping * std::max(l[i][i], kLeastDiagonal);
    for (std::size_t j = 0; j <= i; ++j) {
      double sum = l[i][j];
      for (std::size_t k = 0; k < j; ++k) {
        sum -= l[i][k] * l[j][k];
      }
      if (i != j) {
        l[i][j] = sum / l[j][j];
      } else if (sum > 0) {
        l[i][i] = std::sqrt(sum);
      } else {
        return false;  // also where it is no number
      }
    }
  }
  Variables& x = *step;
  for (std::size_t i = 0; i < count; ++i) {
    double sum = -eq.gradient[i];
    for (std::size_t k = 0; k < i; ++k) {
      sum -= l[i][k] * x[k];
    }
    x[i] = sum / l[i][i];
  }
  for (std::size_t i = count; i-- > 0;) {
    double sum = x[i];
    for (std::size_t k = i + 1; k < count; ++k) {
      sum -= l[k][i] * x[k];
    }
    x[i] = sum / l[i][i];
  }
  return true;
}

int Minimize(LeastSquaresProblem* problem, int most_iterations, double least_fall, Variables* at) {
  double damping = kFirstDamping;
  int iterations = 0;
  while (iterations < most_iterations) {
    ++iterations;
    NormalEquations eq = problem->Linearize(*at);
    HoldAtBounds(*problem, *at, &eq);
    bool is_accepted = false;
    while (!is_accepted && damping < kMostDamping) {
      Variables step{};
      Variables to{};
      if (SolveNormalEquations(eq, problem->count, damping, &step)) {
        const double length = Go(*problem, *at, step, &to);
        const double cost = problem->Cost(to);
        is_accepted = cost < eq.cost;
        if (is_accepted) {
          *at = to;
        }
        if (length < kShortestStep || (is_accepted && eq.cost - cost < least_fall * eq.cost)) {
          return iterations;
        }
      }
      damping = is_accepted ? std::max(damping / 10, kLeastDamping) : damping * 10;
    }
    if (!is_accepted) {
      break;
    }
  }
  return iterations;
}

}  // namespace orvane

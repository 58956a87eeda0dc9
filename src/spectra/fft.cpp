// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/fft.h"

#include <fftw3.h>

#include <algorithm>
#include <mutex>
#include <new>

namespace orvane {
namespace {

// Plans are made and destroyed by one thread at a time, as the library wants it.
std::mutex& Planning() {
  static std::mutex planning;
  return planning;
}

}  // namespace

struct RealFft::Plan {
  explicit Plan(std::size_t count)
      : length(count), input(fftw_alloc_real(count)), output(fftw_alloc_complex(count / 2 + 1)) {
    const std::lock_guard lock(Planning());
    // Estimated, not measured: what is measured differs from run to run, and so would the rounding.
    plan = input == nullptr || output == nullptr
               ? nullptr
               : fftw_plan_dft_r2c_1d(static_cast<int>(count), input, output,
                                      FFTW_ESTIMATE | FFTW_PRESERVE_INPUT);
    if (plan == nullptr) {
      Free();
      throw std::bad_alloc();
    }
    std::fill_n(input, count, 0.0);
  }
  Plan(const Plan&) = delete;
  Plan& operator=(const Plan&) = delete;
  ~Plan() {
    const std::lock_guard lock(Planning());
    fftw_destroy_plan(plan);
    Free();
  }
  void Free() const {
    fftw_free(input);
    fftw_free(output);
  }

  std::size_t length;
  double* input;
  fftw_complex* output;
  fftw_plan plan = nullptr;
};

RealFft::RealFft(std::size_t length) : plan_(std::make_unique<Plan>(length)) {}
RealFft::~RealFft() = default;
RealFft::RealFft(RealFft&&) noexcept = default;
RealFft& RealFft::operator=(RealFft&&) noexcept = default;

std::size_t RealFft::Length() const { return plan_->length; }

std::span<double> RealFft::Input() { return {plan_->input, plan_->length}; }

std::span<const Complex> RealFft::Transform() {
  fftw_execute(plan_->plan);
  // Two doubles each, as the library promises of its numbers and the standard of these.
  return {reinterpret_cast<const Complex*>(plan_->output), plan_->length / 2 + 1};
}

std::size_t QuickLength(std::size_t most) {
  std::size_t best = 0;
  for (std::size_t fives = 1; fives <= most; fives *= 5) {
    for (std::size_t threes = fives; threes <= most; threes *= 3) {
      std::size_t length = threes;
      while (length <= most / 2) {
        length *= 2;
      }
      best = std::max(best, length);
    }
  }
  return best;
}

}  // namespace orvane

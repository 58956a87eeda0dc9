// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_FFT_H_
#define ORVANE_SPECTRA_FFT_H_

#include <cstddef>
#include <memory>
#include <span>

#include "response/complex.h"

namespace orvane {

/// The discrete Fourier transform of so many real numbers, without a factor:
///   X(k) = sum over n of x(n) exp(-2 pi i k n / N), k = 0 ... N / 2.
/// Any length from 1 on is right, lengths 2^a 3^b 5^c are quick. The same numbers give the same
/// result, bit by bit, on one kind of processor. Each thread needs one of its own; they may be made
/// and destroyed at the same time.
class RealFft {
 public:
  explicit RealFft(std::size_t length);
  ~RealFft();
  RealFft(RealFft&&) noexcept;
  RealFft& operator=(RealFft&&) noexcept;

  std::size_t Length() const;
  /// Where the numbers go.
  std::span<double> Input();
  /// N / 2 + 1 values for what `Input()` holds; valid until the next call.
  std::span<const Complex> Transform();

 private:
  struct Plan;
  std::unique_ptr<Plan> plan_;
};

/// The largest 2^a 3^b 5^c that is at most `most`; 0 for 0.
std::size_t QuickLength(std::size_t most);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_FFT_H_

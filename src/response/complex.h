// SPDX-License-Identifier: GPL-3.0-or-later
// Products and quotients of complex numbers without the detours that the standard operators take
// for infinities: several times as fast.
#ifndef ORVANE_RESPONSE_COMPLEX_H_
#define ORVANE_RESPONSE_COMPLEX_H_

#include <cmath>
#include <complex>

namespace orvane {

using Complex = std::complex<double>;

inline Complex Times(const Complex& a, const Complex& b) {
  return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

inline Complex Inverse(const Complex& a) {
  const double scale = 1 / (a.real() * a.real() + a.imag() * a.imag());
  return {a.real() * scale, -a.imag() * scale};
}

inline bool IsFinite(const Complex& a) {
  return std::isfinite(a.real()) && std::isfinite(a.imag());
}

/// exp(j angle)
inline Complex UnitAt(double angle) { return {std::cos(angle), std::sin(angle)}; }

}  // namespace orvane

#endif  // ORVANE_RESPONSE_COMPLEX_H_

// SPDX-License-Identifier: GPL-3.0-or-later
// What a function returns that may fail and has no fixed number for that (those have status.h).
#ifndef ORVANE_BASE_RESULT_H_
#define ORVANE_BASE_RESULT_H_

#include <concepts>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace orvane {

/// Why something failed, in words for the user. Never empty.
struct [[nodiscard]] Failure {
  explicit Failure(std::string why) : message(why.empty() ? "unknown error" : std::move(why)) {}
  std::string message;
};

/// A value, or why there is none. `Result<>` has no value: it is done or has failed.
template <typename T = std::monostate>
class [[nodiscard]] Result {
 public:
  Result() requires std::same_as<T, std::monostate> : value_(T()) {}
  Result(T value) : value_(std::move(value)) {}                      // NOLINT: implicit
  Result(Failure failure) : message_(std::move(failure.message)) {}  // NOLINT: implicit

  explicit operator bool() const { return value_.has_value(); }
  const T& operator*() const { return *value_; }
  T& operator*() { return *value_; }
  const T* operator->() const { return &*value_; }
  T* operator->() { return &*value_; }
  /// A failure equals no value.
  bool operator==(const T& value) const { return value_ == value; }

  /// Why it failed; empty where it did not.
  const std::string& Message() const { return message_; }

 private:
  std::optional<T> value_;
  std::string message_;
};

}  // namespace orvane

#endif  // ORVANE_BASE_RESULT_H_

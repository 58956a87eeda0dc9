// SPDX-License-Identifier: GPL-3.0-or-later
// Objects that write themselves to bytes and are made again from them by the name of their class.
#ifndef ORVANE_CALIBRATION_ARCHIVE_ARCHIVE_H_
#define ORVANE_CALIBRATION_ARCHIVE_ARCHIVE_H_

#include <QByteArray>
#include <QDataStream>
#include <complex>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/result.h"

namespace orvane::calobj {

/// Fields on their way to or from bytes: little-endian, 32-bit integers, 64-bit doubles, texts as a
/// byte count and their bytes. After the first fault nothing more is read and every value stays as
/// it is.
class Archive {
 public:
  static Archive Storing(QByteArray* bytes);
  static Archive Loading(const QByteArray& bytes);

  bool IsStoring() const { return is_storing_; }
  /// Whether the bytes are right so far. A failure names the place too.
  const Result<>& Outcome() const { return outcome_; }
  void Refuse(std::string_view reason);

  Archive& operator&(std::int32_t& value);
  Archive& operator&(double& value);
  Archive& operator&(std::complex<double>& value);
  Archive& operator&(std::string& text);
  /// A count, then the elements; each one that is read starts out as its class makes it. A class
  /// says with `kLeastBytes` how many bytes one of it takes without the elements of its own lists.
  template <typename Element>
  Archive& operator&(std::vector<Element>& list) {
    auto count = static_cast<std::int32_t>(list.size());
    *this& count;
    if (is_storing_) {
      for (Element& element : list) {
        Exchange(element);
      }
      return *this;
    }
    std::vector<Element> read;
    if (IsPossible(count, LeastBytes<Element>())) {
      read.reserve(static_cast<std::size_t>(count));
    }
    for (; count > 0 && outcome_; --count) {
      Exchange(read.emplace_back());
    }
    if (outcome_) {
      list = std::move(read);
    }
    return *this;
  }

  /// Bytes not yet read.
  std::int64_t Left() const;

 private:
  explicit Archive(bool is_storing) : is_storing_(is_storing) {}

  void Exchange(double& value) { *this& value; }
  template <typename Object>
  void Exchange(Object& object) {
    object.Serialize(*this);
  }
  template <typename Element>
  static constexpr std::int64_t LeastBytes() {
    if constexpr (std::is_arithmetic_v<Element>) {
      return sizeof(Element);
    } else {
      return Element::kLeastBytes;
    }
  }
  /// Refuses a count that is negative or of more elements than the bytes left can hold.
  bool IsPossible(std::int32_t count, std::int64_t least_bytes);
  template <typename Value>
  Archive& Number(Value& value);

  bool is_storing_;
  std::unique_ptr<QDataStream> stream_;
  Result<> outcome_;
};

/// What can be archived.
class Object {
 public:
  virtual ~Object() = default;

  virtual std::string_view ClassName() const = 0;
  /// Writes or reads the object's own fields, in a fixed order. A reading that fails may leave the
  /// object half read: `FromBytes()` throws it away.
  virtual void Serialize(Archive& archive) = 0;

 protected:
  Object() = default;
  Object(const Object&) = default;
  Object& operator=(const Object&) = default;
};

/// The schema number of all classes. Bytes of another are refused.
inline constexpr std::int32_t kSchema = 1;

using Maker = std::unique_ptr<Object> (*)();

/// Lets objects of a class be made by its name; a later maker of the same name takes its place. The
/// classes of `cal_objects.h` are there from the start.
void RegisterClass(std::string_view name, Maker maker);

/// A fresh object of a class by its name; null where nobody registered it.
std::unique_ptr<Object> MakeObject(std::string_view name);

/// The class name and the schema number as text and integer, then the object's fields.
QByteArray ToBytes(const Object& object);

/// The object that the bytes hold, and nothing after it. Fails where they are not wholly right.
Result<std::unique_ptr<Object>> FromBytes(const QByteArray& bytes);

}  // namespace orvane::calobj

#endif  // ORVANE_CALIBRATION_ARCHIVE_ARCHIVE_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstring>
#include <type_traits>

#include "base/wire.h"
#include "survey/file_facts.h"

namespace orvane {
namespace {

constexpr std::uint32_t kMostItems = 1U << 20U;  // of a list or a text

class Writing {
 public:
  template <typename T>
  requires std::is_arithmetic_v<T>
  void operator()(const T& number) {
    const Le<T> stored = number;
    const auto bytes = BytesOf(stored);
    image_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  }
  void operator()(const std::string& text) {
    (*this)(static_cast<std::uint32_t>(text.size()));
    image_ += text;
  }
  template <typename T>
  bool Count(const std::vector<T>& items) {
    (*this)(static_cast<std::uint32_t>(items.size()));
    return true;
  }
  template <typename T>
  void Presence(const std::optional<T>& value) {
    (*this)(static_cast<std::uint8_t>(value.has_value()));
  }
  void Role(BoxRole role) { (*this)(static_cast<std::uint8_t>(role)); }
  std::string Image() { return std::move(image_); }

 private:
  std::string image_;
};

class Reading {
 public:
  explicit Reading(std::span<const char> image) : image_(image) {}

  template <typename T>
  requires std::is_arithmetic_v<T>
  void operator()(T& number) {
    if (image_.size() < sizeof(T)) {
      is_good_ = false;
      return;
    }
    number = RecordFrom<Le<T>>(std::as_bytes(image_));
    image_ = image_.subspan(sizeof(T));
  }
  void operator()(std::string& text) {
    std::uint32_t size = 0;
    (*this)(size);
    if (!is_good_ || size > image_.size()) {
      is_good_ = false;
      return;
    }
    text.assign(image_.data(), size);
    image_ = image_.subspan(size);
  }
  template <typename T>
  bool Count(std::vector<T>& items) {
    std::uint32_t count = 0;
    (*this)(count);
    is_good_ = is_good_ && count <= kMostItems && count <= image_.size();
    items.resize(is_good_ ? count : 0);
    return is_good_;
  }
  template <typename T>
  void Presence(std::optional<T>& value) {
    std::uint8_t has_value = 0;
    (*this)(has_value);
    if (has_value != 0) {
      value.emplace();
    }
  }
  void Role(BoxRole& role) {
    std::uint8_t number = 0;
    (*this)(number);
    is_good_ = is_good_ && number <= static_cast<std::uint8_t>(BoxRole::kReference);
    role = static_cast<BoxRole>(number);
  }
  bool IsWhole() const { return is_good_ && image_.empty(); }

 private:
  std::span<const char> image_;
  bool is_good_ = true;
};

template <typename Io, typename Table>
void TableFields(Io& io, Table& table) {
  io(table.version), io(table.firmware), io(table.is_old), io(table.serial), io(table.method);
  io(table.hardware), io(table.line), io(table.site), io(table.counted), io(table.channels);
  io(table.plan_start), io(table.plan_end), io(table.recorded), io(table.first), io(table.fix);
  io(table.has_status), io(table.clock), io(table.disk);
  io.Count(table.boxes);
  for (auto& box : table.boxes) {
    io(box.serial), io(box.channels), io.Role(box.role);
  }
  io.Count(table.sensors);
  for (auto& sensor : table.sensors) {
    io(sensor.channel), io(sensor.kind), io(sensor.unit);
  }
  io.Presence(table.place);
  if (table.place) {
    io(table.place->east), io(table.place->north);
  }
  io.Presence(table.geo);
  if (table.geo) {
    io(table.geo->latitude), io(table.geo->longitude);
  }
}

// The fields in the order of the bytes, the same for both ways.
template <typename Io, typename Facts>
void Fields(Io& io, Facts& facts) {
  io(facts.failure), io(facts.is_cut), io(facts.serial), io(facts.start), io(facts.end);
  io(facts.channels), io(facts.rate), io(facts.records), io(facts.bad), io(facts.header_size);
  io(facts.kind), io(facts.is_deep), io(facts.is_guessed), io(facts.other_serial);
  io(facts.odd_dates), io(facts.odd_date), io(facts.blank), io(facts.scans);
  io.Count(facts.stretches);
  for (auto& stretch : facts.stretches) {
    io(stretch.start), io(stretch.end);
  }
  io.Count(facts.frequencies);
  for (auto& frequency : facts.frequencies) {
    io(frequency);
  }
  io.Count(facts.samples);
  for (auto& channel : facts.samples) {
    io(channel.samples), io(channel.saturated), io(channel.least), io(channel.most),
        io(channel.sum);
  }
  io.Presence(facts.table);
  if (facts.table) {
    TableFields(io, *facts.table);
  }
}

}  // namespace

std::string FactsImage(const FileFacts& facts) {
  Writing writing;
  Fields(writing, facts);
  return writing.Image();
}

bool FactsFrom(std::span<const char> image, FileFacts* facts) {
  *facts = {};
  Reading reading(image);
  Fields(reading, *facts);
  return reading.IsWhole();
}

}  // namespace orvane

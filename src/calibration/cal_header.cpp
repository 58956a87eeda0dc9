// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/cal_header.h"

#include <algorithm>
#include <cstring>

#include "base/ascii.h"

namespace orvane {
namespace {

constexpr CalFieldDef Field(std::string_view key, ValueType type, std::uint8_t offset,
                            std::uint8_t length) {
  CalFieldDef field{{}, type, offset, length};
  std::copy(key.begin(), key.end(), field.key.begin());
  return field;
}

constexpr auto kSensorFields = std::to_array<CalFieldDef>({
    Field("UTC", AmxPT, 0, 8),
    Field("SNUM", IntPT, 8, 2),
    Field("NCHN", IntPT, 10, 2),
    Field("STAT", IntPT, 14, 2),
    Field("CTYP", IntPT, 16, 1),
    Field("HW", StrPT, 20, 12),
    Field("VER", StrPT, 32, 12),
    Field("TCMB", IntPT, 44, 4),
    Field("TALS", IntPT, 48, 4),
    Field("LFRQ", IntPT, 52, 4),
    Field("Q2SR", IntPT, 56, 4),
    Field("LPFR", IntPT, 60, 4),
    Field("HSN", StrPT, 64, 12),
    Field("HATT", FltPT, 76, 8),
    Field("HNOM", FltPT, 84, 8),
    Field("CPHC", FltPT, 92, 8),
});

// Those of a box: the fields before "HSN", and "HATT".
constexpr auto kBoxFields = [] {
  std::array<CalFieldDef, 13> fields{};
  std::copy_n(kSensorFields.begin(), 12, fields.begin());
  fields.back() = kSensorFields[13];
  return fields;
}();
static_assert(kBoxFields[11].Key() == "LPFR" && kBoxFields[12].Key() == "HATT");

}  // namespace

std::string_view CalText(const std::array<char, 12>& text) {
  return {text.data(), strnlen(text.data(), text.size())};
}

std::span<const CalFieldDef> CalFields(int ctyp) {
  switch (ctyp) {
    case kBoxCal:
      return kBoxFields;
    case kSensorCal:
    case kCurrentSensorCal:
      return kSensorFields;
    default:
      return {};
  }
}

Status GetCalField(const CalHeader* header, std::string_view key, ValueType type, void* out) {
  if (header == nullptr) {
    return kNoCalibration;
  }
  const auto fields = CalFields(header->ctyp);
  if (fields.empty()) {
    return kCalKindMismatch;
  }
  const auto field = std::find_if(fields.begin(), fields.end(), [key](const CalFieldDef& def) {
    return EqualsWithoutCase(def.Key(), key);
  });
  if (field == fields.end()) {
    return kFieldNotFound;
  }
  if (field->type != type) {
    return kFieldTypeMismatch;
  }
  ParamValue value{};
  std::memcpy(value.data(), BytesOf(*header).subspan(field->offset).data(), field->length);
  if (type == StrPT) {
    const std::size_t length = strnlen(reinterpret_cast<const char*>(value.data()), kMaxTextLength);
    std::memcpy(out, value.data(), length);
    static_cast<char*>(out)[length] = '\0';
    return kOk;
  }
  std::memcpy(out, value.data(), type == IntPT ? 4 : 8);
  return kOk;
}

}  // namespace orvane

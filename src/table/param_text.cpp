// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/param_text.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "base/number_text.h"
#include "table/param_time.h"

namespace orvane {
namespace {

template <typename T>
T Read(const ParamValue& value) {
  T result;
  std::memcpy(&result, value.data(), sizeof result);
  return result;
}

template <typename T>
void Write(const T& number, ParamValue* value) {
  std::memcpy(value->data(), &number, sizeof number);
}

// At most `limit` characters, the rest of the value zero.
void PutText(std::string_view text, std::size_t limit, ParamValue* value) {
  text = text.substr(0, std::min(text.find('\0'), limit));
  value->fill(0);
  std::copy(text.begin(), text.end(), value->begin());
}

// "%u" as scanf reads it, from the front of `text`, which loses what was read.
std::optional<std::uint32_t> TakeOctet(std::string_view* text) {
  std::string_view rest = SkipBlanks(*text);
  const bool negative = !rest.empty() && rest[0] == '-';
  if (!rest.empty() && (negative || rest[0] == '+')) {
    rest.remove_prefix(1);
  }
  if (rest.empty() || !IsDigit(rest[0])) {
    return std::nullopt;
  }
  std::uint32_t octet = 0;
  while (!rest.empty() && IsDigit(rest[0])) {
    octet = std::min(octet * 10 + static_cast<std::uint32_t>(rest[0] - '0'), 256U);
    rest.remove_prefix(1);
  }
  *text = rest;
  return negative && octet != 0 ? 256U : octet;  // a negative number wraps far above 255
}

// Four octets divided by dots; `text` is left with what follows them.
std::optional<std::array<std::uint8_t, 4>> TakeAddress(std::string_view* text) {
  std::array<std::uint8_t, 4> address{};
  for (std::size_t i = 0; i < address.size(); ++i) {
    if (i > 0) {
      if (text->empty() || text->front() != '.') {
        return std::nullopt;
      }
      text->remove_prefix(1);
    }
    const auto octet = TakeOctet(text);
    if (!octet || *octet > 255) {
      return std::nullopt;
    }
    address[i] = static_cast<std::uint8_t>(*octet);
  }
  return address;
}

std::string FormatAddress(const ParamValue& value) {
  std::string text;
  for (std::size_t i = 0; i < 4; ++i) {
    text += i > 0 ? "." : "";
    text += FormatInt(value[i]);
  }
  return text;
}

}  // namespace

std::int32_t IntOf(const ParamValue& value) { return Read<Le<std::int32_t>>(value); }
double RealOf(const ParamValue& value) { return Read<Le<double>>(value); }
ParamTime TimeOf(const ParamValue& value) { return Read<ParamTime>(value); }
void PutInt(std::int32_t number, ParamValue* value) { Write(Le<std::int32_t>(number), value); }
void PutReal(double number, ParamValue* value) { Write(Le<double>(number), value); }
void PutTime(const ParamTime& time, ParamValue* value) { Write(time, value); }

std::string_view CharactersOf(const ParamValue& value, std::size_t limit) {
  const std::string_view all(reinterpret_cast<const char*>(value.data()), value.size());
  return all.substr(0, std::min(all.find('\0'), limit));
}

void FormatParamValue(ValueType type, const ParamValue& value, std::string* text) {
  switch (type) {
    case IntPT:
      *text = FormatInt(IntOf(value));
      return;
    case FltPT:
      *text = FormatReal(RealOf(value));
      return;
    case StrPT:
    case PosPT:
      *text = CharactersOf(value, kMaxTextLength);
      return;
    case IPAPT:
      *text = FormatAddress(value);
      return;
    case AmxPT:
      *text = FormatParamTime(TimeOf(value));
      return;
    case RawPT:
      return;
    case LStPT:
      *text = CharactersOf(value, kValueSize);
      return;
  }
  text->clear();
}

void ParseParamValue(std::string_view text, ValueType type, ParamValue* value) {
  text = text.substr(0, text.find('\0'));
  switch (type) {
    case IntPT:
      PutInt(ParseIntPrefix(text), value);
      return;
    case FltPT:
      PutReal(ParseRealPrefix(text), value);
      return;
    case StrPT:
    case PosPT:
      PutText(text, kMaxTextLength, value);
      return;
    case IPAPT: {
      const auto address = TakeAddress(&text).value_or(std::array<std::uint8_t, 4>{});
      std::copy(address.begin(), address.end(), value->begin());
      return;
    }
    case AmxPT:
      PutTime(ParseParamTime(text), value);
      return;
    case RawPT:
      return;
    case LStPT:
      PutText(text, kValueSize, value);
      return;
  }
  value->fill(0);
}

Result<ParamValue> ParseParamValueStrictly(std::string_view text, ValueType type) {
  ParamValue value{};
  switch (type) {
    case IntPT: {
      const auto number = ParseInt(text);
      if (!number) {
        return Failure("is not an integer from -2147483648 to 2147483647");
      }
      PutInt(*number, &value);
      return value;
    }
    case FltPT: {
      const auto number = ParseReal(text);
      if (!number) {
        return Failure("is not a number that fits");
      }
      PutReal(*number, &value);
      return value;
    }
    case StrPT:
    case PosPT:
    case LStPT: {
      const std::size_t limit = type == LStPT ? kValueSize : kMaxTextLength;
      if (text.size() > limit) {
        return Failure("is longer than " + FormatInt(limit) + " characters");
      }
      if (text.find('\0') != std::string_view::npos) {
        return Failure("contains a NUL");
      }
      PutText(text, limit, &value);
      return value;
    }
    case IPAPT: {
      const bool plain = text.find_first_not_of("0123456789.") == std::string_view::npos;
      const auto address = TakeAddress(&text);
      if (!plain || !address || !text.empty()) {
        return Failure("is not an address of four numbers from 0 to 255");
      }
      std::copy(address->begin(), address->end(), value.begin());
      return value;
    }
    case AmxPT: {
      ParamTime time;
      if (!ParseParamTimeStrictly(text, &time)) {
        return Failure("is not a time such as 2009/06/30 14:05:00 or 14:05:00");
      }
      PutTime(time, &value);
      return value;
    }
    case RawPT:
      break;
  }
  return Failure("has a type that cannot be given as text");
}

std::string_view ValueTypeName(std::uint8_t type) {
  switch (type) {
    case IntPT:
      return "IntPT";
    case FltPT:
      return "FltPT";
    case StrPT:
      return "StrPT";
    case IPAPT:
      return "IPAPT";
    case PosPT:
      return "PosPT";
    case AmxPT:
      return "AmxPT";
    case LStPT:
      return "LStPT";
    default:
      return {};
  }
}

}  // namespace orvane

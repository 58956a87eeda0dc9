// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/json_reading.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <span>
#include <vector>

#include "base/latin1.h"
#include "base/number_text.h"
#include "files/file_io.h"

namespace orvane {
namespace {

constexpr int kMostDepth = 4;
constexpr std::int64_t kMostExact = std::int64_t{1} << 53U;  // whole numbers that a real can hold

std::string Quoted(std::string_view text) {
  return std::string("\"").append(PrintableUtf8(text.substr(0, 40))).append("\"");
}

// Looks at everything that is parsed, while it is.
class Watcher {
 public:
  bool Sees(int depth, Json::parse_event_t event, const Json& parsed) {
    const auto level = static_cast<std::size_t>(std::max(depth, 0));
    if (level > kMostDepth) {
      fault_ = "is nested too deep";
    } else if (event == Json::parse_event_t::object_start) {
      names_.resize(std::max(names_.size(), level + 2));
      names_[level + 1].clear();
    } else if (event == Json::parse_event_t::key) {
      const auto& name = parsed.get_ref<const std::string&>();
      if (!names_.at(level).insert(name).second) {
        fault_ = "names " + Quoted(name) + " twice";
      }
    }
    return fault_.empty();
  }
  const std::string& Fault() const { return fault_; }

 private:
  std::vector<std::set<std::string>> names_;  // of the objects that are open, by their depth
  std::string fault_;
};

bool IsAmong(std::initializer_list<std::string_view> names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

Result<Json> ReadJsonObject(std::string_view text) {
  if (text.size() > kMostJsonBytes) {
    return Failure("is larger than 1 MiB");
  }
  Watcher watcher;
  Json json;
  try {
    json = Json::parse(text, [&](int depth, Json::parse_event_t event, Json& parsed) {
      return watcher.Sees(depth, event, parsed);
    });
  } catch (const Json::parse_error& error) {
    if (!watcher.Fault().empty()) {
      return Failure(watcher.Fault());
    }
    return Failure("is not JSON: at byte " + FormatInt(static_cast<std::uint64_t>(error.byte)));
  } catch (const Json::exception&) {
    return Failure("is not JSON: a number is too large");
  }
  if (!watcher.Fault().empty()) {
    return Failure(watcher.Fault());
  }
  return json.is_object() ? Result<Json>(std::move(json)) : Failure("is no JSON object");
}

Result<std::string> LoadJsonText(const std::filesystem::path& path) {
  InFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    return Failure(opened.Message());
  }
  std::string text(kMostJsonBytes + 1, '\0');
  text.resize(file.Read(std::as_writable_bytes(std::span(text))));
  return file.Outcome() ? Result<std::string>(std::move(text)) : Failure(file.Outcome().Message());
}

Result<> CheckJsonFormat(const Json& object, std::string_view format,
                         std::initializer_list<std::string_view> needed,
                         std::initializer_list<std::string_view> optional) {
  if (!object.contains("format") || object["format"] != format) {
    return Failure("its \"format\" is not " + Quoted(format));
  }
  if (!object.contains("format_version") || !object["format_version"].is_number_integer() ||
      object["format_version"] != 1) {
    return Failure("its \"format_version\" is not 1");
  }
  for (const std::string_view name : needed) {
    if (!object.contains(name)) {
      return Failure("has no " + Quoted(name));
    }
  }
  for (const auto& member : object.items()) {
    if (!IsAmong({"format", "format_version"}, member.key()) && !IsAmong(needed, member.key()) &&
        !IsAmong(optional, member.key())) {
      return Failure("unknown member " + Quoted(member.key()));
    }
  }
  return {};
}

Json JsonOfReal(double value) {
  if (std::isfinite(value)) {
    return value;
  }
  if (std::isnan(value)) {
    return "nan";
  }
  return value > 0 ? "inf" : "-inf";
}

Result<double> RealFromJson(const Json& value) {
  if (value.is_string()) {
    const auto& text = value.get_ref<const std::string&>();
    for (const double one :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
      if (text == JsonOfReal(one)) {
        return one;
      }
    }
  } else if (value.is_number_float()) {
    return value.get<double>();
  } else if (const auto whole = IntFromJson(value, -kMostExact, kMostExact)) {
    return static_cast<double>(*whole);
  }
  return Failure("is no real number");
}

Result<std::int64_t> IntFromJson(const Json& value, std::int64_t least, std::int64_t most) {
  const bool is_whole =
      value.is_number_integer() &&
      (!value.is_number_unsigned() ||
       value.get<std::uint64_t>() <= std::uint64_t{std::numeric_limits<std::int64_t>::max()});
  if (is_whole && value.get<std::int64_t>() >= least && value.get<std::int64_t>() <= most) {
    return value.get<std::int64_t>();
  }
  return Failure("is no whole number from " + FormatInt(least) + " to " + FormatInt(most));
}

std::string JsonText(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace).append("\n");
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/table_json.h"

#include <algorithm>

#include "base/latin1.h"
#include "export/json_reading.h"
#include "table/param_access.h"
#include "table/values_text.h"

namespace orvane {
namespace {

constexpr std::string_view kFormat = "orvane-table";

Result<ParamTable> Defaults() {
  ParamTable table;
  const Status built = table.BuildParamIndex();
  return built == kOk ? Result<ParamTable>(std::move(table))
                      : Failure(std::string(StatusText(built)));
}

Json NaturalValue(const ParamEntry& entry) {
  switch (entry.type) {
    case IntPT:
      return IntOf(entry.value);
    case FltPT:
      return JsonOfReal(RealOf(entry.value));
    default:
      return ValueAsText(entry);
  }
}

Result<ParamValue> ValueFromJson(const Json& json, ValueType type) {
  ParamValue value{};
  const bool is_text = json.is_string() && json.get_ref<const std::string&>().starts_with("hex:");
  if (type == IntPT && !is_text) {
    const auto number = IntFromJson(json, INT32_MIN, INT32_MAX);
    if (!number) {
      return Failure(number.Message());
    }
    PutInt(static_cast<std::int32_t>(*number), &value);
    return value;
  }
  if (type == FltPT && !is_text) {
    const auto number = RealFromJson(json);
    if (!number) {
      return Failure(number.Message());
    }
    PutReal(*number, &value);
    return value;
  }
  return json.is_string() ? ValueFromText(json.get_ref<const std::string&>(), type)
                          : Failure("is no text");
}

// As a number or text that gives the same 16 bytes, else as "hex:" and its bytes.
Json JsonOfValue(const ParamEntry& entry) {
  Json natural = NaturalValue(entry);
  const auto back = ValueFromJson(natural, static_cast<ValueType>(entry.type));
  return back == entry.value ? natural : Json(ValueAsHex(entry.value));
}

// Whether the bytes of the file are those that a box writes: without what it keeps to itself.
bool IsFiltered(const std::filesystem::path& file, const ParamTable& table, const TblReport& read) {
  if (read.version != 2 || read.missing.empty()) {
    return false;
  }
  const auto image = TblImage(table, {2, true, IntParam(table, "TBVO", 2)});
  std::vector<std::byte> bytes(image.size() + 1);
  InFile in;
  return in.Open(file) && in.Read(bytes) == image.size() &&
         std::equal(image.begin(), image.end(), bytes.begin());
}

Result<> TakeSave(const Json& json, TblSaveOptions* save) {
  const auto version = IntFromJson(json.value("file_version", Json(2)), 1, 2);
  const Json filtered = json.value("filtered", Json(false));
  if (!version) {
    return Failure("\"file_version\" " + version.Message());
  }
  if (!filtered.is_boolean() || (filtered.get<bool>() && *version == 1)) {
    return Failure("\"filtered\" is no true or false of a table of version 2");
  }
  save->version = static_cast<std::uint32_t>(*version);
  save->filtered = filtered.get<bool>();
  return {};
}

Result<> TakeValue(const std::string& name, const Json& json, ParamTable* table) {
  const std::string shown = PrintableUtf8(std::string_view(name).substr(0, 40)) + ": ";
  const ParamEntry* entry = name.size() <= kKeySize && name.find('\0') == std::string::npos
                                ? table->FindParam(ParamKey(name))
                                : nullptr;
  if (entry == nullptr || ParamKey(name).Text() != name) {
    return Failure(shown + "no such parameter");
  }
  if (IsReadOnlyKey(ParamKey(name))) {
    return Failure(shown + "is set by saving only");
  }
  const auto value = ValueFromJson(json, static_cast<ValueType>(entry->type));
  if (!value) {
    return Failure(shown + value.Message());
  }
  const Status stored = table->SetStoredValue(ParamKey(name), *value);
  return stored == kOk ? Result<>() : Failure(shown + std::string(StatusText(stored)));
}

Result<> TakeLeftOut(const Json& names, std::vector<std::string>* left_out) {
  if (!names.is_array()) {
    return Failure("\"left_out\" is no list");
  }
  for (const Json& name : names) {
    if (!name.is_string() || !IsSecretKey(ParamKey(name.get_ref<const std::string&>()))) {
      return Failure("\"left_out\" has what is no secret key");
    }
    left_out->push_back(name.get<std::string>());
  }
  return {};
}

}  // namespace

Result<TableJson> WriteTableJson(const std::filesystem::path& file, bool with_secrets) {
  TableJson written;
  auto table = Defaults();
  if (!table) {
    return Failure(table.Message());
  }
  if (LoadParamFile(&*table, file, &written.report) != kOk) {
    return Failure(written.report.message);
  }
  Json json = {{"format", kFormat},
               {"format_version", 1},
               {"file_version", written.report.version},
               {"filtered", IsFiltered(file, *table, written.report)}};
  Json values = Json::object();
  Json left_out = Json::array();
  for (const ParamKey key : AllKeys(*table)) {
    if (IsSecretKey(key) && !with_secrets) {
      written.left_out.push_back(key);
      left_out.push_back(key.Text());
    } else if (!IsReadOnlyKey(key)) {
      values[key.Text()] = JsonOfValue(*table->FindParam(key));
    }
  }
  json["left_out"] = std::move(left_out);
  json["values"] = std::move(values);
  written.text = JsonText(json);
  return written;
}

Result<TableFromJson> ReadTableJson(std::string_view text) {
  const auto json = ReadJsonObject(text);
  auto table = Defaults();
  if (!json || !table) {
    return Failure(json ? table.Message() : json.Message());
  }
  TableFromJson read{std::move(*table), {}, {}};
  Result<> taken =
      CheckJsonFormat(*json, kFormat, {"values"}, {"file_version", "filtered", "left_out"});
  taken = taken ? TakeSave(*json, &read.save) : taken;
  taken = taken && json->contains("left_out") ? TakeLeftOut((*json)["left_out"], &read.left_out)
                                              : taken;
  if (taken && !(*json)["values"].is_object()) {
    taken = Failure("\"values\" is no object");
  }
  if (!taken) {
    return Failure(taken.Message());
  }
  for (const auto& [key, value] : (*json)["values"].items()) {
    if (const Result<> stored = TakeValue(key, value, &read.table); !stored) {
      return Failure(stored.Message());
    }
  }
  read.save.output_version = IntParam(read.table, "TBVO", 2);
  return read;
}

}  // namespace orvane

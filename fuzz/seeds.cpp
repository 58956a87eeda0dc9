// SPDX-License-Identifier: GPL-3.0-or-later
// Makes first inputs for the fuzzers of the files of a survey:
//
//   orvane-fuzz-seeds SURVEY FOLDER     FOLDER/TARGET/...
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/ascii.h"
#include "files/file_io.h"
#include "support.h"
#include "table/param_table.h"
#include "table/param_text.h"
#include "table/tbl_file.h"
#include "table/values_text.h"

namespace {

using orvane::EndsWithoutCase;
using orvane::fuzz::FileText;

constexpr std::size_t kLargest = 4000;

class Seeds {
 public:
  explicit Seeds(std::filesystem::path folder) : folder_(std::move(folder)) {}

  void Put(std::string_view target, std::string_view bytes) {
    const auto folder = folder_ / target;
    std::error_code error;  // told with the file
    std::filesystem::create_directories(folder, error);
    const auto path = folder / ("survey-" + std::to_string(++count_));
    if (const orvane::Result<> written =
            orvane::WriteFile(path, std::as_bytes(std::span(bytes.substr(0, kLargest))));
        !written) {
      std::fprintf(stderr, "%s\n", orvane::FileMessage(path, written.Message()).c_str());
      has_failed_ = true;
    }
  }
  bool HasFailed() const { return has_failed_; }

 private:
  std::filesystem::path folder_;
  int count_ = 0;
  bool has_failed_ = false;
};

// The records of a table that belong to the settings of a waveform, to leave room for samples.
std::string ShortCompanion(const std::filesystem::path& path) {
  const std::string table = FileText(path);
  constexpr std::size_t kRecord = 32;
  std::string companion = table.substr(0, kRecord);
  for (std::size_t at = kRecord; at + kRecord <= table.size(); at += kRecord) {
    const std::string key = table.substr(at, table.find('\0', at) - at);
    for (const std::string_view used : {"VER", "EGN", "HGN", "FSCV", "CHEX", "CHHX", "EXLN"}) {
      if (key.starts_with(used)) {
        companion.append(table, at, kRecord);
      }
    }
  }
  return companion;
}

void PutWaveform(const std::filesystem::path& path, Seeds* seeds) {
  const std::string bytes = FileText(path).substr(0, kLargest);
  const bool is_band = !EndsWithoutCase(path.string(), "S") && !EndsWithoutCase(path.string(), "K");
  auto table = path;
  table.replace_extension(".TBL");
  const std::string companion = is_band ? std::string() : ShortCompanion(table);
  const std::string front = {static_cast<char>(is_band ? 2 : 0),
                             static_cast<char>(companion.size() % 256),
                             static_cast<char>(companion.size() / 256)};
  seeds->Put("time-series", front + companion + bytes);
  // One file of a survey.
  const std::string part = bytes.substr(0, 1500);
  const std::string size =
      std::string(1, static_cast<char>(part.size() & 0xFFU)) + static_cast<char>(part.size() >> 8U);
  seeds->Put("survey", (is_band ? '\2' : '\1') + size + part);
  seeds->Put("decay", std::string("\2\1\x10\0", 4) + bytes.substr(0, 2000));
  seeds->Put("decay", std::string("\1\4\1\x68", 4) + bytes.substr(0, 2000));
  seeds->Put("restack", '\0' + bytes.substr(0, 2000));
  seeds->Put("time-series-text", static_cast<char>(is_band ? 3 : 0) + bytes.substr(0, 2000));
}

// The values that the rules of the check read most.
void PutCheck(const std::filesystem::path& path, Seeds* seeds) {
  orvane::ParamTable table;
  if (table.BuildParamIndex() != orvane::kOk || LoadParamFile(&table, path) != orvane::kOk) {
    return;
  }
  const std::vector<orvane::ParamKey> keys = AllKeys(table);
  std::string bytes(8, '\0');
  for (const orvane::ParamKey key : KeysNotDefault(table)) {
    const auto place = std::find(keys.begin(), keys.end(), key) - keys.begin();
    bytes += {static_cast<char>(place % 256), static_cast<char>(place / 256)};
    const orvane::ParamValue& value = table.FindParam(key)->value;
    bytes.append(value.begin(), value.end());
  }
  seeds->Put("check", bytes.substr(0, 2042));
}

void PutFile(const std::filesystem::path& path, Seeds* seeds) {
  const std::string name = path.filename().string();
  const std::string bytes = FileText(path);
  if (EndsWithoutCase(name, ".tbl")) {
    seeds->Put("tbl", bytes);
    seeds->Put("tbl-round-trip", bytes);
    PutCheck(path, seeds);
    seeds->Put("unsaved", std::string(1, '\0') + bytes.substr(0, 1000));
  } else if (EndsWithoutCase(name, ".tfs")) {
    seeds->Put("tfs", bytes);
    seeds->Put("tfs-round-trip", bytes);
  } else if (EndsWithoutCase(name, ".trs")) {
    seeds->Put("stack", bytes);
    seeds->Put("stack-view", bytes);
  } else if (EndsWithoutCase(name, ".clb") || EndsWithoutCase(name, ".clc")) {
    seeds->Put("calibration", bytes);
    seeds->Put("calibration-view", bytes);
  } else if (name.find(".TS") != std::string::npos) {
    PutWaveform(path, seeds);
  }
}

// Every value of the dictionary as text.
void PutTexts(Seeds* seeds) {
  orvane::ParamTable table;
  if (table.BuildParamIndex() != orvane::kOk) {
    return;
  }
  orvane::ParamKey key;
  for (int position = 0; table.GetParamKey(position, &key) == orvane::kOk; position += 20) {
    const orvane::ParamEntry* entry = table.FindParam(key);
    std::string text;
    FormatParamValue(static_cast<orvane::ValueType>(entry->type), entry->value, &text);
    seeds->Put("assignment", '\1' + key.Text() + "=" + text);
    seeds->Put("value-text", static_cast<char>(entry->type) + text);
  }
  const std::string lines = WriteValues(table, AllKeys(table), {true, {}}).text;
  for (std::size_t at = 0; at < lines.size(); at += 1000) {
    seeds->Put("value-lines", '\0' + lines.substr(at, 1000));
  }
  for (const char* time : {"2026/11/21 07:00:00", "2009-06-30 14:5", "14:05:00"}) {
    seeds->Put("time-text", time);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: orvane-fuzz-seeds SURVEY FOLDER\n", stderr);
    return 2;
  }
  Seeds seeds(argv[2]);
  std::error_code error;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[1], error)) {
    if (entry.is_regular_file(error)) {
      PutFile(entry.path(), &seeds);
    }
  }
  PutTexts(&seeds);
  return error || seeds.HasFailed() ? 1 : 0;
}

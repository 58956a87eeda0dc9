// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/set_files.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/number_text.h"
#include "check/check_memory.h"
#include "editors/spread.h"
#include "editors/startup_cautions.h"
#include "editors/startup_files.h"
#include "files/file_system.h"
#include "files/find_file.h"
#include "files/path_text.h"
#include "table/box_keys.h"
#include "table/table_diff.h"
#include "table/tbl_file.h"
#include "table/values_text.h"

namespace orvane {
namespace {

constexpr std::uint64_t kLargestTable = 1U << 20U;  // those of either version have a few kilobytes

bool IsThere(const std::filesystem::path& path) { return Exists(path) == Existence::kThere; }

// SERIAL.tbl or SERIAL/StartUp.tbl in any case; the first where there is neither.
std::filesystem::path TargetOf(const StartupForm& form, const std::filesystem::path& folder) {
  const std::filesystem::path by_serial = form.Path(folder);
  const auto found = FindInAnyCase(by_serial);
  const std::filesystem::path path = found ? *found : by_serial;
  const auto startup =
      FindInAnyCase(folder / PathOf(FormatInt(form.Serial())) / PathOf("StartUp.tbl"));
  return !IsThere(path) && startup && IsThere(*startup) ? *startup : path;
}

CheckMemory::Table ReadTable(const std::filesystem::path& path) {
  FileInfo info;
  ParamTable table;
  TblReport report;
  CheckMemory::Table read;
  if (ReadInfo(path, &info) && info.kind == FileKind::kRegular && info.size <= kLargestTable &&
      table.BuildParamIndex() == kOk && LoadParamFile(&table, path, &report) == kOk) {
    read = {std::move(table), std::move(report.missing), report.version};
  }
  return read;
}

void Load(CheckMemory* memory, SetFile* file) {
  file->is_there = IsThere(file->target);
  file->recording = file->is_there ? RecordingBeside(file->target) : std::string();
  if (!file->recording.empty()) {
    file->is_there = false;
  }
  if (!file->is_there) {
    return;
  }
  const auto read = [file] { return ReadTable(file->target); };
  CheckMemory::Table held = memory != nullptr ? memory->tables.Get(file->target, read) : read();
  file->table = std::move(held.table);
  file->missing = std::move(held.missing);
  file->is_version_1 = held.version == 1;
}

// All keys that a dialog may write into the file only.
std::vector<ParamKey> OfferedBy(const StartupForm& form) {
  // Request, serial numbers and texts of channels go by rule; counters and channel names of the
  // transmitter are set once a file is written.
  std::vector<ParamKey> keys = {"RQST", "SNUM",    "SNTX",    "GFC1",   "GFC2",
                                "GFC3", "LIFESTN", "LIFESTK", "CHDEFTX"};
  for (const Field& field : form.Model().Fields()) {
    if (!field.key.empty()) {
      keys.emplace_back(field.key);
    }
  }
  return keys;
}

SetFile FileOf(const StartupForm& form, const std::filesystem::path& folder, CheckMemory* memory) {
  const StartupBox box = form.Box();
  const BoxKind kind = box.IsTransmitter() ? kTransmitterBox
                       : box.IsAuxiliary() ? kAuxiliaryBox
                                           : kLocalBox;
  SetFile file;
  file.serial = form.Serial();
  file.box_name = std::string(Trimmed(Spread::LabelOf(kind))) + " " + FormatInt(file.serial);
  file.serial_key = box.IsTransmitter() ? ParamKey("SNTX")
                    : box.IsAuxiliary()
                        ? ParamKey(kAuxiliaryKeys[static_cast<std::size_t>(box.number) - 1].serial)
                        : ParamKey("SNUM");
  file.target = TargetOf(form, folder);
  file.meant = form.Derive();
  file.offered = OfferedBy(form);
  Load(memory, &file);
  return file;
}

bool Has(const std::vector<ParamKey>& keys, ParamKey key) {
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

// Version 1 cuts texts.
bool IsComparable(const SetFile& file, ParamKey key) {
  const std::uint8_t type = file.meant.FindParam(key)->type;
  return !file.is_version_1 || type == IntPT || type == FltPT || type == AmxPT;
}

}  // namespace

std::vector<SetFile> SetFilesOf(const ParamTable& table, const std::filesystem::path& folder,
                                CheckMemory* memory) {
  std::vector<SetFile> files;
  if (folder.empty()) {
    return files;
  }
  ParamTable copy = table;  // which a run changes
  SetDefaultResistances(&copy);
  for (const StartupBox box : StartupBoxes(copy)) {
    const StartupForm form(&copy, box, {});
    if (form.Serial() != 0) {
      files.push_back(FileOf(form, folder, memory));
    }
    form.ApplyLasting(&copy);
  }
  return files;
}

std::vector<SetFile> LeftOutFilesOf(const ParamTable& table, const std::filesystem::path& folder,
                                    CheckMemory* memory) {
  std::vector<SetFile> files;
  if (folder.empty()) {
    return files;
  }
  ParamTable copy = table;
  std::vector<StartupBox> left_out;
  static_cast<void>(StartupBoxes(copy, &left_out));
  for (const StartupBox box : left_out) {
    files.push_back(FileOf(StartupForm(&copy, box, {}), folder, memory));
  }
  return files;
}

std::vector<ParamKey> OtherDifferences(const SetFile& file) {
  std::vector<ParamKey> keys;
  if (!file.table || IntParam(*file.table, "SNUM") != file.serial) {
    return keys;
  }
  for (const ParamKey key : DifferingKeys(file.meant, *file.table)) {
    if (!IsReadOnlyKey(key) && !Has(file.offered, key) && !Has(file.missing, key) &&
        IsComparable(file, key)) {
      keys.push_back(key);
    }
  }
  return keys;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/tbl_file.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "files/path_text.h"
#include "table/param_access.h"
#include "table/tbl_record.h"

namespace orvane {
namespace {

std::string WithStatus(const std::filesystem::path& path, std::string_view reason, Status status) {
  return FileMessage(path, reason) + " (" + FormatInt(status) + ")";
}

ValueType TypeOf(const ParamEntry& entry) { return static_cast<ValueType>(entry.type); }

Status StoreRecord(ParamTable* table, const ParamEntry& entry, bool check_permission) {
  return table->SetParam(ParamKey(entry.key), TypeOf(entry), entry.value.data(), check_permission);
}

void Append(std::span<const std::byte> bytes, std::vector<std::byte>* image) {
  image->insert(image->end(), bytes.begin(), bytes.end());
}

std::size_t CountOf(const ParamTable& table) {
  int count = 0;
  for (ParamKey key; table.GetParamKey(count, &key) == kOk;) {
    ++count;
  }
  return static_cast<std::size_t>(count);
}

bool IsLeftOutOfFiltered(const ParamEntry& entry) {
  return entry.write_mask == 0 || (entry.write_mask & kMaskNotFiltered) != 0;
}

// Calls `write` with the entry of every position. A duplicate key comes twice, both times with the
// entry that is found by it.
template <typename Write>
void ForEachEntry(const ParamTable& table, Write write) {
  ParamKey key;
  ParamEntry entry;
  for (int position = 0; table.GetParamKey(position, &key) == kOk; ++position) {
    if (table.GetParamEntry(key, &entry) == kOk) {
      write(entry);
    }
  }
}

constexpr std::size_t kRoomForImage = 32768;  // the built-in dictionary fits

std::vector<std::byte> ImageV1(const ParamTable& table) {
  std::vector<std::byte> image;
  TblRecordV1 record;
  ForEachEntry(table, [&](const ParamEntry& entry) {
    if (FitsTblV1Key(entry)) {
      // Values that are too long are cut; the formats leave no other way.
      static_cast<void>(MakeTblRecordV1(entry, &record));
      Append(BytesOf(record), &image);
    }
  });
  Append(BytesOf(EndRecordAfter(record)), &image);
  return image;
}

std::vector<std::byte> ImageV2(const ParamTable& table, bool filtered) {
  std::vector<std::byte> image;
  image.reserve(kRoomForImage);
  Append(BytesOf(TblHeader{}), &image);
  bool is_first_start_time = true;
  ForEachEntry(table, [&](ParamEntry entry) {
    if (filtered && IsLeftOutOfFiltered(entry)) {
      return;
    }
    if (filtered && is_first_start_time && ParamKey(entry.key) == "STIM") {
      std::fill(entry.value.begin() + 3, entry.value.begin() + 8, std::uint8_t{0});
      is_first_start_time = false;
    }
    Append(BytesOf(entry), &image);
  });
  return image;
}

}  // namespace

std::size_t TblReport::RecordsOfWhole() const {
  constexpr std::size_t kVersion1 = 285;
  return version == 1 ? kVersion1 : held + missing.size();
}

bool TblReport::IsMostlyMissing() const { return std::min(held, records) * 2 < RecordsOfWhole(); }

void BroughtKeys::Add(ParamKey key) {
  keys_.push_back(key.Word());
  if (keys_.size() > most_) {  // a damaged file may repeat a record for ever
    std::sort(keys_.begin(), keys_.end());
    keys_.erase(std::unique(keys_.begin(), keys_.end()), keys_.end());
    most_ = std::max(most_, 2 * keys_.size());
  }
}

std::vector<ParamKey> BroughtKeys::MissingFrom(const ParamTable& table) {
  std::sort(keys_.begin(), keys_.end());
  std::vector<ParamKey> missing;
  ParamKey key;
  for (int position = 0; table.GetParamKey(position, &key) == kOk; ++position) {
    if (!std::binary_search(keys_.begin(), keys_.end(), key.Word())) {
      missing.push_back(key);
    }
  }
  return missing;
}

std::string HoldsText(std::size_t held, std::size_t missing) {
  return "holds " + FormatInt(held) + " of " + FormatInt(held + missing) + " parameters";
}

Status TblReader::Open(const std::filesystem::path& path, TblReport* report) {
  path_ = path;
  if (const Result<> opened = file_.Open(path); !opened) {
    report->message = WithStatus(path, opened.Message(), kTblUnreadable);
    return kTblUnreadable;
  }
  const auto start = file_.Peek(sizeof(TblHeader));
  if (start.size() < sizeof(TblHeader)) {
    report->read_error = file_.Outcome().Message();
    report->message = WithStatus(
        path, file_.Outcome() ? "too short for a TBL file" : report->read_error, kTblUnreadable);
    return kTblUnreadable;
  }
  version_ = RecogniseTblVersion(start.first<sizeof(TblHeader)>());
  report->version = version_;
  if (version_ == 0) {
    report->message = WithStatus(path, StatusText(kTblNotRecognised), kTblNotRecognised);
    return kTblNotRecognised;
  }
  if (version_ == 2) {
    Take(start.first(sizeof(TblHeader)));
    offset_ = sizeof(TblHeader);
  }
  return kOk;
}

void TblReader::Take(std::span<const std::byte> bytes) {
  if (keeps_sum_) {
    sum_ = Checksum(bytes, sum_);
    size_ += bytes.size();
  }
  file_.Skip(bytes.size());
}

RememberedFile TblReader::Memory() {
  for (auto rest = file_.Peek(InFile::kMostPeeked); !rest.empty();
       rest = file_.Peek(InFile::kMostPeeked)) {
    Take(rest);
  }
  return file_.Outcome() ? RememberedFile(file_.Info(), size_, sum_) : RememberedFile();
}

template <typename Record>
bool TblReader::NextRecord(Record* record) {
  static_assert(sizeof(Record) <= InFile::kMostPeeked);
  const auto bytes = file_.Peek(sizeof(Record));
  if (bytes.size() < sizeof(Record)) {
    return false;
  }
  *record = RecordFrom<Record>(bytes);
  Take(bytes.first(sizeof(Record)));
  record_offset_ = offset_;
  offset_ += sizeof(Record);
  return true;
}

bool TblReader::Next(ParamEntry* entry) {
  if (version_ == 2) {
    return NextRecord(entry);
  }
  TblRecordV1 record;
  if (!NextRecord(&record)) {
    return false;
  }
  if (IsEndRecord(record)) {
    ended_ = true;
    return false;
  }
  *entry = EntryFrom(record);
  return true;
}

Status TblReader::End(TblReport* report) {
  if (const auto rest = file_.Peek(sizeof(ParamEntry)); !ended_ && !rest.empty()) {
    report->cut_at = offset_;
    report->cut.assign(rest.begin(), rest.end());
  }
  report->read_error = file_.Outcome().Message();
  if (report->read_error.empty()) {
    return kOk;
  }
  report->message = WithStatus(path_, "at offset " + FormatInt(offset_) + ": " + report->read_error,
                               kTblUnreadable);
  return kTblUnreadable;
}

Status LoadParamFile(ParamTable* table, const std::filesystem::path& path, TblReport* report,
                     RememberedFile* memory) {
  TblReport own;
  report = report == nullptr ? &own : report;
  *report = {};
  TblReader reader;
  if (memory != nullptr) {
    reader.KeepSum();
  }
  if (const Status status = reader.Open(path, report); status != kOk) {
    return status;
  }
  ParamTable loaded = *table;
  ParamEntry entry;
  BroughtKeys brought;
  while (reader.Next(&entry)) {
    ++report->records;
    if (const Status status = StoreRecord(&loaded, entry, false); status != kOk) {
      report->left_out.Add(entry, reader.RecordOffset(), StatusText(status));
      continue;
    }
    ++report->loaded;
    brought.Add(ParamKey(entry.key));
  }
  if (const Status status = reader.End(report); status != kOk) {
    return status;
  }
  report->missing = brought.MissingFrom(loaded);
  report->held = CountOf(loaded) - report->missing.size();
  PutInt(&loaded, "TBVI", report->version);
  *table = std::move(loaded);
  if (memory != nullptr) {
    *memory = reader.Memory();
  }
  return kOk;
}

std::vector<std::byte> TblImage(const ParamTable& table, const TblSaveOptions& options) {
  return options.version == 1 ? ImageV1(table) : ImageV2(table, options.filtered);
}

bool LoadTblImage(ParamTable* table, std::span<const std::byte> image) {
  if (image.size() < sizeof(TblHeader) ||
      RecogniseTblVersion(image.first<sizeof(TblHeader)>()) != 2) {
    return false;
  }
  for (image = image.subspan(sizeof(TblHeader)); image.size() >= sizeof(ParamEntry);
       image = image.subspan(sizeof(ParamEntry))) {
    // What the table has no place for is left out, as from a file.
    static_cast<void>(StoreRecord(table, RecordFrom<ParamEntry>(image), false));
  }
  return true;
}

Status SaveParamFile(ParamTable* table, const std::filesystem::path& path,
                     const TblSaveOptions& options, TblReport* report, RememberedFile* memory) {
  OutFile file;
  // Alone, so that no program's change is lost which reads the same file, changes and writes it.
  // Where that fails, so does writing.
  static_cast<void>(file.OpenAlone(path));
  return SaveParamFile(table, path, &file, options, report, memory);
}

Status SaveParamFile(ParamTable* table, const std::filesystem::path& path, OutFile* file,
                     const TblSaveOptions& options, TblReport* report, RememberedFile* memory) {
  const auto store_versions = [&options](ParamTable* target) {
    PutInt(target, "TBVI", options.version == 1 ? 1 : 2);
    PutInt(target, "TBVO", options.output_version);
  };
  ParamTable written = *table;
  store_versions(&written);
  const std::vector<std::byte> image = TblImage(written, options);
  Result<> done = file->Write(image);
  done = done ? file->Commit() : done;
  if (!done) {
    if (report != nullptr) {
      report->reason = done.Message();
      report->has_touched = file->HasTouchedTarget();
      report->message = WithStatus(path, report->reason, kTblWriteFailed);
    }
    return kTblWriteFailed;
  }
  store_versions(table);
  if (memory != nullptr) {
    FileInfo info;
    *memory = ReadInfo(path, &info) ? RememberedFile(info, image.size(), Checksum(image))
                                    : RememberedFile();
  }
  return kOk;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
// Parameter table files (*.tbl), versions 1 and 2.
#ifndef ORVANE_TABLE_TBL_FILE_H_
#define ORVANE_TABLE_TBL_FILE_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/checksum.h"
#include "base/status.h"
#include "files/file_io.h"
#include "files/file_memory.h"
#include "table/left_out.h"
#include "table/param_table.h"

namespace orvane {

/// What came of reading or writing a file, beside the status.
struct TblReport {
  int version = 0;                ///< 1 or 2 as recognised; 0: none
  std::size_t records = 0;        ///< whole records in the file
  std::size_t loaded = 0;         ///< of them stored
  LeftOutRecords left_out;        ///< the others: unknown keys, other types
  std::size_t held = 0;           ///< parameters of the table that a record brought
  std::vector<ParamKey> missing;  ///< the keys of the others, in the order of the table
  std::uint64_t cut_at = 0;       ///< offset of a last record that is cut; 0: none is
  std::vector<std::byte> cut;     ///< the bytes of that record
  std::string read_error;         ///< why the records could not be read to their end; mostly empty
  std::string reason;             ///< on a failed save: why
  bool has_touched = false;       ///< on a failed save: the file may hold other bytes than before
  std::string message;            ///< on failure "PATH: reason (status)"

  /// Records of a whole table of its version.
  std::size_t RecordsOfWhole() const;
  /// The file holds less than half of a table: it is damaged, or made for other purposes.
  bool IsMostlyMissing() const;
};

/// Which parameters the records of a file bring.
class BroughtKeys {
 public:
  void Add(ParamKey key);
  /// The keys of a table that none brought, in its order.
  std::vector<ParamKey> MissingFrom(const ParamTable& table);

 private:
  std::vector<std::uint64_t> keys_;
  std::size_t most_ = 4096;  // before repeated ones go
};

/// "holds 285 of 719 parameters".
std::string HoldsText(std::size_t held, std::size_t missing);

/// Reads the records of a file one by one.
class TblReader {
 public:
  /// 0, 173 or 174; `report` gets version and message.
  Status Open(const std::filesystem::path& path, TblReport* report);

  /// The next whole record; false at the end record, at the end of the file, and where the last
  /// record is cut: nothing of it is used.
  bool Next(ParamEntry* entry);

  /// Where the record begins that `Next()` has brought.
  std::uint64_t RecordOffset() const { return record_offset_; }

  /// Once `Next()` has returned false: 0 and where a cut record begins, or 173 where it was not the
  /// file that ended but a read that failed; the records before it are not a whole table.
  Status End(TblReport* report);

  /// Before `Open()`: the checksum of all bytes is to be known.
  void KeepSum() { keeps_sum_ = true; }
  /// After `End()`: the file whose bytes were read, also those after the last record. Nothing
  /// where they could not be read to the end.
  RememberedFile Memory();

 private:
  template <typename Record>
  bool NextRecord(Record* record);
  void Take(std::span<const std::byte> bytes);

  InFile file_;
  std::filesystem::path path_;
  int version_ = 0;
  std::uint64_t offset_ = 0;
  std::uint64_t record_offset_ = 0;
  bool ended_ = false;  // by an end record
  bool keeps_sum_ = false;
  std::uint64_t size_ = 0;  // of what the sum is of
  std::uint64_t sum_ = kEmptyChecksum;
};

/// Stores the values of all records in the table (types must match, masks in the file are ignored,
/// nothing is protected) and the version in "TBVI". 0, or 173 or 174 and the table is as before;
/// values without a record keep what they were. `memory` gets the file that was read.
Status LoadParamFile(ParamTable* table, const std::filesystem::path& path,
                     TblReport* report = nullptr, RememberedFile* memory = nullptr);

struct TblSaveOptions {
  std::uint32_t version = 2;        ///< of the file, 1 or 2
  bool filtered = false;            ///< version 2: only what a box hands on, see the format's page
  std::int32_t output_version = 2;  ///< goes into "TBVO"
};

/// The whole file as bytes. `table` must already hold the "TBVI" and "TBVO" to write.
std::vector<std::byte> TblImage(const ParamTable& table, const TblSaveOptions& options);

/// The way back for a version-2 image: stores every record, "TBVI" and "TBVO" as they are in it.
/// False, and nothing done, where the bytes do not begin as one.
[[nodiscard]] bool LoadTblImage(ParamTable* table, std::span<const std::byte> image);

/// Writes the table and stores the file's version in "TBVI" and the output version in "TBVO". 0, or
/// 172: then the table is as before and so is an old file. `memory` gets the file that was written.
Status SaveParamFile(ParamTable* table, const std::filesystem::path& path,
                     const TblSaveOptions& options, TblReport* report = nullptr,
                     RememberedFile* memory = nullptr);
/// The same into a file that `OutFile::OpenAlone()` or `OpenToUpdate()` has opened under that path.
Status SaveParamFile(ParamTable* table, const std::filesystem::path& path, OutFile* file,
                     const TblSaveOptions& options, TblReport* report = nullptr,
                     RememberedFile* memory = nullptr);

}  // namespace orvane

#endif  // ORVANE_TABLE_TBL_FILE_H_

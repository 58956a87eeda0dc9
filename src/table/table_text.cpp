// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/table_text.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/file_io.h"
#include "files/path_names.h"
#include "files/path_text.h"
#include "files/text_file.h"
#include "table/param_dictionary.h"
#include "table/param_text.h"
#include "table/tbl_file.h"
#include "table/tbl_record.h"

namespace orvane {
namespace {

constexpr std::array<std::string_view, 8> kTypeNames = {"Int", "Flt", "Str", "IPA",
                                                        "Pos", "UTC", "StP", "LSt"};

void ListRecord(const ParamEntry& entry, TextFile* out) {
  const std::string_view key(entry.key.data(), strnlen(entry.key.data(), kKeySize));
  std::string value;  // stays empty for a type without text form
  FormatParamValue(static_cast<ValueType>(entry.type), entry.value, &value);
  // The empty columns line the listing up with the other text files.
  out->TextLeft(key, 8).Text(",     ,    ,    ,    ,  ");
  out->TextRight(entry.type < kTypeNames.size() ? kTypeNames[entry.type] : "NONE", 3);
  out->Text(",  ").Text(value).Text(",\n");
}

// Reads and lists records up to the end of the file.
class Listing {
 public:
  Listing(BatchTask* task, TextFile* out) : task_(*task), out_(*out) {}

  BatchResult Run() {
    if (const Status status = dictionary_.BuildParamIndex(); status != kOk) {
      return BatchFailed(std::string(StatusText(status)));
    }
    if (const Result<> opened = in_.Open(task_.Input()); !opened) {
      return BatchFailed(opened.Message());
    }
    const auto start = in_.Peek(sizeof(TblHeader));
    if (start.size() < sizeof(TblHeader)) {
      return BatchFailed(in_.Outcome() ? "too short for a TBL file" : in_.Outcome().Message(),
                         kListingTooShort);
    }
    const int version = RecogniseTblVersion(start.first<sizeof(TblHeader)>());
    if (version == 0) {
      return BatchFailed("not a TBL file", kListingNotRecognised);
    }
    if (const Result<> opened = out_.Open(task_.Outputs()[0]); !opened) {
      return BatchFailed(FileMessage(task_.Outputs()[0], opened.Message()));
    }
    if (version == 2) {
      Take(sizeof(TblHeader));
      ListAll<ParamEntry>([](const ParamEntry& entry) { return entry; });
    } else {
      ListAll<TblRecordV1>([](const TblRecordV1& record) { return EntryFrom(record); });
    }
    return End();
  }

 private:
  void Take(std::size_t size) {
    in_.Skip(size);
    task_.Advance(size);
    offset_ += size;
  }

  // Records that begin with no letter or digit are padding, or the end record.
  template <typename Record, typename Convert>
  void ListAll(Convert convert) {
    for (auto bytes = in_.Peek(sizeof(Record)); bytes.size() == sizeof(Record) && !task_.Stopped();
         bytes = in_.Peek(sizeof(Record))) {
      if (IsAlphanumeric(static_cast<char>(bytes[0]))) {
        const ParamEntry entry = convert(RecordFrom<Record>(bytes));
        ListRecord(entry, &out_);
        const ParamEntry* known = dictionary_.FindParam(ParamKey(entry.key));
        if (known != nullptr && known->type == entry.type) {
          brought_.Add(ParamKey(entry.key));
        }
      }
      Take(sizeof(Record));
      ++records_;
    }
  }

  BatchResult End() {
    if (task_.Stopped()) {
      return BatchCancelled();
    }
    if (!in_.Outcome()) {
      return BatchFailed(in_.Outcome().Message());
    }
    if (records_ == 0) {
      return NoRecord(in_.Peek(1).empty() ? 0 : offset_);
    }
    if (const Result<> committed = out_.Commit(); !committed) {
      return BatchFailed(FileMessage(task_.Outputs()[0], committed.Message()));
    }
    std::string note;
    if (const auto missing = brought_.MissingFrom(dictionary_).size(); missing > 0) {
      note.append(note.empty() ? "" : ", ").append(HoldsText(kDictionarySize - missing, missing));
    }
    if (!in_.Peek(1).empty()) {
      note.append(note.empty() ? "" : ", ").append(CutRecordNote(offset_));
    }
    return BatchDone(task_.Outputs(), note);
  }

  BatchTask& task_;
  TextFile& out_;
  InFile in_;
  std::uint64_t offset_ = 0;
  std::size_t records_ = 0;
  ParamTable dictionary_;
  BroughtKeys brought_;
};

}  // namespace

Conversion TableText() {
  Conversion listing;
  listing.input_of = [](const std::string& path) {
    std::string with_extension = WithDefaultExtension(path, ".tbl");
    return Exists(PathOf(with_extension)) == Existence::kNotThere ? path : with_extension;
  };
  listing.outputs_of = [](const std::string& path) {
    return std::vector<std::string>{WithExtension(path, ".txt")};
  };
  listing.job = [](BatchTask& task) {
    TextFile out;
    return Listing(&task, &out).Run();
  };
  listing.counts_every_file = true;
  return listing;
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/survey_index.h"

#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <span>
#include <string_view>
#include <system_error>

#include "base/checksum.h"
#include "base/wire.h"
#include "files/file_io.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr int kMostWait = 1000;  // milliseconds

constexpr const char* kLayout =
    "CREATE TABLE IF NOT EXISTS files (path BLOB PRIMARY KEY, device INTEGER, number INTEGER,"
    " size INTEGER, written INTEGER, changed INTEGER, facts BLOB, seen INTEGER) WITHOUT ROWID";
constexpr const char* kFind =
    "SELECT facts, seen FROM files WHERE path=?1 AND device=?2 AND number=?3 AND size=?4 AND "
    "written=?5"
    " AND changed=?6";
constexpr const char* kPut = "INSERT OR REPLACE INTO files VALUES (?1,?2,?3,?4,?5,?6,?7,?8)";
constexpr const char* kSee = "UPDATE files SET seen=?2 WHERE path=?1";
// Paths from the first to before the second are those below a folder.
constexpr const char* kForgetGone = "DELETE FROM files WHERE path>=?1 AND path<?2 AND seen<?3";
constexpr const char* kForgetUnseen = "DELETE FROM files WHERE seen<?1";
constexpr const char* kForgetOldest =
    "DELETE FROM files WHERE path IN (SELECT path FROM files ORDER BY seen LIMIT"
    " (SELECT count(*)/4 FROM files))";

// A statement that is compiled once and used again and again.
class Statement {
 public:
  Statement() = default;
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement() { sqlite3_finalize(handle_); }

  bool Compile(sqlite3* database, const char* text) {
    return sqlite3_prepare_v3(database, text, -1, SQLITE_PREPARE_PERSISTENT, &handle_, nullptr) ==
           SQLITE_OK;
  }
  void Bind(int place, const std::string& bytes) {
    sqlite3_bind_blob64(handle_, place, bytes.data(), bytes.size(), SQLITE_STATIC);
  }
  void Bind(const std::string& path, const FileInfo& info) {
    Bind(1, path);
    int place = 2;
    for (const auto number :
         {static_cast<std::int64_t>(info.device), static_cast<std::int64_t>(info.number),
          static_cast<std::int64_t>(info.size), info.written, info.changed}) {
      Bind(place++, number);
    }
  }
  void Bind(int place, std::int64_t number) { sqlite3_bind_int64(handle_, place, number); }
  int Step() { return sqlite3_step(handle_); }
  std::int64_t Number(int column) { return sqlite3_column_int64(handle_, column); }
  std::span<const char> Bytes() {
    const void* const bytes = sqlite3_column_blob(handle_, 0);
    return {static_cast<const char*>(bytes),
            static_cast<std::size_t>(sqlite3_column_bytes(handle_, 0))};
  }
  void Reset() {
    sqlite3_reset(handle_);
    sqlite3_clear_bindings(handle_);
  }

 private:
  sqlite3_stmt* handle_ = nullptr;
};

bool Run(sqlite3* database, const char* text) {
  return sqlite3_exec(database, text, nullptr, nullptr, nullptr) == SQLITE_OK;
}

int NumberOf(sqlite3* database, const char* question) {
  Statement statement;
  int number = -1;
  const auto take = [](void* to, int /*columns*/, char** values, char** /*names*/) {
    *static_cast<int*>(to) = values[0] == nullptr ? -1 : std::atoi(values[0]);
    return 0;
  };
  return sqlite3_exec(database, question, take, &number, nullptr) == SQLITE_OK ? number : -1;
}

// Pages that are free are none.
std::uint64_t BytesIn(sqlite3* database) {
  const std::int64_t pages = std::int64_t{NumberOf(database, "PRAGMA page_count")} -
                             NumberOf(database, "PRAGMA freelist_count");
  const int size = NumberOf(database, "PRAGMA page_size");
  return pages > 0 && size > 0 ? static_cast<std::uint64_t>(pages) * static_cast<unsigned>(size)
                               : 0;
}

bool IsDamaged(int code) {
  const int kind = code & 0xFF;
  return kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB || kind == SQLITE_SCHEMA ||
         kind == SQLITE_ERROR || kind == SQLITE_MISMATCH;
}

constexpr std::size_t kSealBytes = 8;

// Over all that is kept of a file: a bit that changed on the disk must not become a finding.
std::string SealOf(const std::string& path, const FileInfo& info, std::string_view image) {
  const auto bytes = [](std::string_view text) { return std::as_bytes(std::span(text)); };
  std::uint64_t sum = Checksum(bytes(image), Checksum(bytes(path)));
  for (const auto number :
       {static_cast<std::int64_t>(info.device), static_cast<std::int64_t>(info.number),
        static_cast<std::int64_t>(info.size), info.written, info.changed}) {
    sum = Checksum(BytesOf(Le<std::int64_t>(number)), sum);
  }
  const Le<std::uint64_t> stored = sum;
  return {reinterpret_cast<const char*>(BytesOf(stored).data()), kSealBytes};
}

bool IsSealed(const std::string& path, const FileInfo& info, std::span<const char> stored) {
  if (stored.size() < kSealBytes) {
    return false;
  }
  const std::string_view all(stored.data(), stored.size());
  const std::string_view image = all.substr(0, all.size() - kSealBytes);
  return SealOf(path, info, image) == all.substr(image.size());
}

void RemoveDatabase(const std::filesystem::path& file) {
  for (const char* end : {"", "-wal", "-shm", "-journal"}) {
    std::error_code ignored;
    std::filesystem::remove(PathOf(PathText(file).append(end)), ignored);
  }
}

// A file may change once more within one tick of its disk's clock. A time that is still to come is
// that of another clock, which the next change would not leave.
bool IsFresh(const FileInfo& info) {
  constexpr std::chrono::seconds kTick{2};
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const std::chrono::nanoseconds written(info.written);
  return written > now - kTick && written < now + kTick;
}

}  // namespace

struct SurveyIndex::Database {
  Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database() {
    find.reset();
    put.reset();
    see.reset();
    sqlite3_close_v2(handle);
  }

  bool Open(const std::filesystem::path& file) {
    const bool is_local = IsOnLocalDisk(file.parent_path());
    return sqlite3_open_v2(PathText(file).c_str(), &handle,
                           SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                           nullptr) == SQLITE_OK &&
           sqlite3_busy_timeout(handle, kMostWait) == SQLITE_OK &&
           // Only before anything is written: what is forgotten makes the file smaller.
           Run(handle, "PRAGMA auto_vacuum=INCREMENTAL") &&
           // The log that lets readers and a writer work at once needs memory shared by all.
           Run(handle, is_local ? "PRAGMA journal_mode=WAL" : "PRAGMA journal_mode=DELETE") &&
           Run(handle, "PRAGMA synchronous=NORMAL") && Prepare();
  }

  bool Prepare() {
    const int version = NumberOf(handle, "PRAGMA user_version");
    if (version != kVersion) {
      is_other = version != 0 || NumberOf(handle, "SELECT count(*) FROM sqlite_master") != 0;
      const std::string number =
          std::string("PRAGMA user_version=").append(std::to_string(kVersion));
      if (is_other || !Run(handle, "BEGIN IMMEDIATE") || !Run(handle, kLayout) ||
          !Run(handle, number.c_str()) || !Run(handle, "COMMIT")) {
        return false;
      }
    }
    return find->Compile(handle, kFind) && put->Compile(handle, kPut) && see->Compile(handle, kSee);
  }

  sqlite3* handle = nullptr;
  bool is_other = false;  // of another version
  std::unique_ptr<Statement> find = std::make_unique<Statement>();
  std::unique_ptr<Statement> put = std::make_unique<Statement>();
  std::unique_ptr<Statement> see = std::make_unique<Statement>();
};

SurveyIndex::SurveyIndex(std::int64_t today) : today_(today) {}
SurveyIndex::~SurveyIndex() = default;

Result<> SurveyIndex::Open(const std::filesystem::path& file) {
  failure_.clear();
  file_ = file;
  if (const Result<> made = MakeFolders(file.parent_path()); !made) {
    failure_ = made.Message();
    return orvane::Failure(failure_);
  }
  for (int attempt = 0; attempt < 2; ++attempt) {
    database_ = std::make_unique<Database>();
    if (database_->Open(file)) {
      failure_.clear();  // of the one that was thrown away
      return {};
    }
    const int code = sqlite3_extended_errcode(database_->handle);
    failure_ = sqlite3_errmsg(database_->handle);
    const bool is_useless = database_->is_other || IsDamaged(code);
    database_.reset();
    if (!is_useless) {
      break;
    }
    RemoveDatabase(file);
  }
  failure_ = FileMessage(file, failure_);
  return orvane::Failure(failure_);
}

bool SurveyIndex::IsUsable() const { return database_ != nullptr; }

void SurveyIndex::Fail(const std::string& doing) {
  const bool is_damaged = IsDamaged(sqlite3_extended_errcode(database_->handle));
  failure_ = std::string(doing).append(": ").append(sqlite3_errmsg(database_->handle));
  database_.reset();
  kept_.clear();
  seen_.clear();
  if (is_damaged) {
    RemoveDatabase(file_);  // the next scan makes it again
  }
}

bool SurveyIndex::Find(const std::filesystem::path& path, const FileInfo& info, FileFacts* facts) {
  if (!IsUsable()) {
    return false;
  }
  Statement& find = *database_->find;
  const std::string text = PathText(path);
  find.Bind(text, info);
  const int step = find.Step();
  const bool is_found = step == SQLITE_ROW && IsSealed(text, info, find.Bytes()) &&
                        FactsFrom(find.Bytes().first(find.Bytes().size() - kSealBytes), facts);
  if (is_found && find.Number(1) != today_) {
    seen_.push_back(text);
  }
  find.Reset();
  if (step != SQLITE_ROW && step != SQLITE_DONE) {
    Fail("reading the index");
  }
  return is_found;
}

void SurveyIndex::Put(const std::filesystem::path& path, const FileInfo& info,
                      const FileFacts& facts) {
  constexpr std::size_t kMostKept = 1000;
  if (!IsUsable() || IsFresh(info)) {
    return;
  }
  std::string text = PathText(path);
  std::string image = FactsImage(facts);
  image += SealOf(text, info, image);
  kept_.push_back({std::move(text), info, std::move(image)});
  if (kept_.size() >= kMostKept) {
    Write();
  }
}

void SurveyIndex::Write() {
  if (!IsUsable() || (kept_.empty() && seen_.empty())) {
    return;
  }
  bool done = Run(database_->handle, "BEGIN IMMEDIATE");
  for (std::size_t i = 0; i < seen_.size() && done; ++i) {
    Statement& see = *database_->see;
    see.Bind(1, seen_[i]);
    see.Bind(2, today_);
    done = see.Step() == SQLITE_DONE;
    see.Reset();
  }
  for (std::size_t i = 0; i < kept_.size() && done; ++i) {
    Statement& put = *database_->put;
    put.Bind(kept_[i].path, kept_[i].info);
    put.Bind(7, kept_[i].image);
    put.Bind(8, today_);
    done = put.Step() == SQLITE_DONE;
    put.Reset();
  }
  if (!done || !Run(database_->handle, "COMMIT")) {
    Fail("writing the index");
  }
  kept_.clear();
  seen_.clear();
}

void SurveyIndex::Prune(const std::filesystem::path& root, std::uint64_t most_bytes) {
  if (!IsUsable()) {
    return;
  }
  const std::string first = PathText(root / "");  // with the system's separator at its end
  std::string last = first;
  ++last.back();
  sqlite3* const database = database_->handle;
  const auto forget = [database](const char* text, const auto& bind) {
    Statement statement;
    if (!statement.Compile(database, text)) {
      return false;
    }
    bind(&statement);
    return statement.Step() == SQLITE_DONE;
  };
  static_cast<void>(sqlite3_busy_timeout(database, 0));
  bool done =
      forget(kForgetGone,
             [&](Statement* gone) {
               gone->Bind(1, first);
               gone->Bind(2, last);
               gone->Bind(3, today_);
             }) &&
      forget(kForgetUnseen, [this](Statement* unseen) { unseen->Bind(1, today_ - kLongUnseen); });
  if (done && BytesIn(database) > most_bytes) {
    done = forget(kForgetOldest, [](Statement*) {});
  }
  done = done && Run(database, "PRAGMA incremental_vacuum");
  if (!done && IsDamaged(sqlite3_extended_errcode(database))) {
    Fail("tidying the index");
    return;
  }
  static_cast<void>(sqlite3_busy_timeout(database, kMostWait));
}

}  // namespace orvane

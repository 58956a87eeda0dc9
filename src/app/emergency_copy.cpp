// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/emergency_copy.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

#include "base/number_text.h"
#include "files/file_io.h"
#include "table/tbl_file.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

constexpr int kMostCopies = 100;
constexpr std::size_t kMostBytes = std::size_t{1} << 20U;  // far more than a copy has
constexpr std::chrono::milliseconds kPause{1000};

fs::path CopyPath(const fs::path& folder, int number) {
  return folder / ("unsaved-" + FormatInt(number) + ".orvane");
}

Result<UnsavedTable> ReadCopy(const fs::path& path) {
  InFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    return Failure(opened.Message());
  }
  std::vector<std::byte> bytes(kMostBytes);
  bytes.resize(file.Read(bytes));
  return file.Outcome() ? ReadUnsavedImage(bytes) : Failure(file.Outcome().Message());
}

// Whether a lock does not name its owner: it was cut short when the computer went off. One that a
// running program is just making cannot be removed.
bool IsTorn(const QLockFile& lock) {
  qint64 process = 0;
  QString host;
  QString program;
  return lock.error() == QLockFile::LockFailedError && !lock.getLockInfo(&process, &host, &program);
}

// Empty where this program cannot represent the path: then the document has none.
QString ShownPath(const std::string& bytes) {
  const QString path = QString::fromStdString(bytes);
  const bool is_whole = path.toStdString() == bytes && !path.contains(QChar(QChar::Null));
  return is_whole && QFileInfo(path).isAbsolute() ? path : QString();
}

std::string TimeText(const QDateTime& time) {
  return time.toString(QStringLiteral("yyyy/MM/dd HH:mm:ss")).toStdString();
}

// What happened to the file after the copy's table was read from it; empty: not known.
std::string FileStory(const RememberedFile& known, const QString& path) {
  if (!known.IsKnown()) {
    return {};
  }
  RememberedFile file = known;
  const auto change = file.Look(PathFromText(path));
  if (!change) {
    return "\n\nThe file cannot be read: " + change.Message() + ".";
  }
  switch (*change) {
    case FileChange::kChanged:
      return "\n\nThe file is newer: it was changed at " +
             TimeText(QFileInfo(path).lastModified()) +
             ",\nbut these changes were made to the file of " +
             TimeText(QDateTime::fromMSecsSinceEpoch(known.Written() / 1000000)) + ".";
    case FileChange::kGone:
      return "\n\nThe file is no longer on disk.";
    case FileChange::kUnchanged:
      break;
  }
  return {};
}

std::string Question(const UnsavedTable& unsaved, const fs::path& file) {
  const QString path = ShownPath(unsaved.path);
  return "Orvane ended without saving the changes to\n" +
         (path.isEmpty() ? "an untitled table" : QDir::toNativeSeparators(path).toStdString()) +
         "\n\nThey were kept at " + TimeText(QFileInfo(TextFromPath(file)).lastModified()) + "." +
         (path.isEmpty() ? std::string() : FileStory(unsaved.file, path)) +
         "\n\nOpen the unsaved table?";
}

}  // namespace

EmergencyCopy::EmergencyCopy(fs::path folder, COrvaneDoc* doc, Notices* notices)
    : folder_(std::move(folder)), doc_(doc), notices_(notices) {
  later_.setSingleShot(true);
  later_.setInterval(kPause);
  connect(&later_, &QTimer::timeout, this, &EmergencyCopy::Keep);
  connect(doc_, &COrvaneDoc::modifiedChanged, this, &EmergencyCopy::FollowMark);
  connect(doc_, &COrvaneDoc::changed, &later_, qOverload<>(&QTimer::start));
}

fs::path EmergencyCopy::UsersFolder() {
  return PathFromText(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)) /
         "Unsaved";
}

EmergencyCopy::Copy EmergencyCopy::Claimed(int number) const {
  fs::path file = CopyPath(folder_, number);
  fs::path lock_path = file;
  auto lock = std::make_unique<QLockFile>(TextFromPath(lock_path.replace_extension(".lock")));
  // A program may run for days; one that is gone is still noticed.
  lock->setStaleLockTime(0);
  if (!lock->tryLock(0) && !(IsTorn(*lock) && lock->removeStaleLockFile() && lock->tryLock(0))) {
    lock.reset();
  }
  return {std::move(file), std::move(lock)};
}

// The copies of programs that are gone, the newest first.
std::vector<EmergencyCopy::Copy> EmergencyCopy::Abandoned() const {
  std::vector<Copy> found;
  for (int i = 1; i <= kMostCopies; ++i) {
    if (Exists(CopyPath(folder_, i)) != Existence::kNotThere) {
      Copy copy = Claimed(i);
      if (copy.lock != nullptr && Exists(copy.file) != Existence::kNotThere) {
        found.push_back(std::move(copy));
      }
    }
  }
  const auto written = [](const Copy& copy) {
    std::error_code ignored;
    return fs::last_write_time(copy.file, ignored);
  };
  std::stable_sort(found.begin(), found.end(),
                   [&written](const Copy& a, const Copy& b) { return written(a) > written(b); });
  return found;
}

bool EmergencyCopy::Offer(Prompts* prompts) {
  std::string line;
  bool is_open = false;
  for (Copy& copy : Abandoned()) {
    const auto unsaved = ReadCopy(copy.file);
    if (!unsaved) {
      line = FileMessage(copy.file, "emergency copy ignored: " + unsaved.Message());
    } else if (!is_open && OpenIfWanted(&copy, *unsaved, prompts)) {
      is_open = true;
    }
  }
  if (!line.empty()) {
    notices_->ShowNotice(line);
  }
  return is_open;
}

bool EmergencyCopy::OpenIfWanted(Copy* copy, const UnsavedTable& unsaved, Prompts* prompts) {
  enum Choice : int { kOpen, kLater, kDiscard };
  const int choice = prompts->AskChoice("Orvane", Question(unsaved, copy->file),
                                        {"Open", "Later", "Discard..."}, kLater);
  if (choice == kDiscard &&
      prompts->AskToLose("Orvane", "Delete these unsaved changes? This cannot be undone.") ==
          Answer::kYes) {
    std::error_code error;
    fs::remove(copy->file, error);
    notices_->ShowNotice(error ? FileMessage(copy->file, "cannot be deleted: " + error.message())
                               : std::string("The unsaved changes were discarded"));
    return false;
  }
  if (choice != kOpen) {
    notices_->ShowNotice("The unsaved table is kept and will be offered at the next start");
    return false;
  }
  Remove();
  own_ = std::move(*copy);  // ours from now on: it goes when the document is saved
  const QString path = ShownPath(unsaved.path);
  doc_->OnOpenUnsaved(path, unsaved.table, unsaved.file);
  notices_->ShowNotice(path.isEmpty() ? "Opened the unsaved table; it has no name yet"
                       : doc_->LookAtFile() == FileChange::kUnchanged
                           ? "Opened the unsaved table; the file has not changed"
                           : "Opened the unsaved table; the file has changed since");
  return true;
}

// Fails where there is no place for a copy.
Result<> EmergencyCopy::ClaimOwn() {
  const bool is_new = Exists(folder_) == Existence::kNotThere;
  if (const Result<> made = MakeFolders(folder_); !made) {
    return made;
  }
  std::error_code error;
  if (is_new) {
    fs::permissions(folder_, fs::perms::owner_all, error);  // tables may hold passwords
  }
  if (error) {
    return Failure(FileMessage(folder_, SystemReason(error.default_error_condition().value())));
  }
  for (int i = 1; i <= kMostCopies && own_.lock == nullptr; ++i) {
    if (Copy copy = Claimed(i); copy.lock != nullptr && Exists(copy.file) == Existence::kNotThere) {
      own_ = std::move(copy);
    }
  }
  return own_.lock == nullptr ? Failure(FileMessage(folder_, "there are too many copies already"))
                              : Result<>();
}

void EmergencyCopy::FollowMark(bool is_modified) {
  if (is_modified) {
    Keep();
  } else {
    Remove();
  }
}

void EmergencyCopy::Keep() {
  later_.stop();
  if (!doc_->IsModified()) {
    Remove();  // the values are those of the file again
    return;
  }
  // Without a path the next save asks for one.
  const QString path = LooksLikeNoText(doc_->Path()) ? QString() : doc_->Path();
  const UnsavedTable unsaved{path.toStdString(), TblImage(doc_->Table(), {}), doc_->File()};
  std::vector<std::byte> image = UnsavedImage(unsaved);
  if (image == kept_) {
    return;
  }
  Result<> kept = own_.lock == nullptr ? ClaimOwn() : Result<>();
  if (kept) {
    const Result<> written = WriteFile(own_.file, image);
    kept = written ? written : Failure(FileMessage(own_.file, written.Message()));
  }
  if (!kept) {
    notices_->ShowNotice("No emergency copy of the unsaved changes: " + kept.Message());
    return;
  }
  kept_ = std::move(image);
}

void EmergencyCopy::Remove() {
  later_.stop();
  if (own_.lock != nullptr) {
    std::error_code ignored;  // what cannot be removed is offered once more
    fs::remove(own_.file, ignored);
  }
  kept_.clear();
}

}  // namespace orvane

// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/folder_walk.h"

#include <algorithm>
#include <array>
#include <deque>
#include <set>
#include <tuple>
#include <utility>

#include "base/ascii.h"
#include "base/latin1.h"
#include "base/number_text.h"
#include "files/path_text.h"
#include "spectra/calibrated_spectra.h"

namespace orvane {
namespace {

constexpr auto kTypes = std::to_array<std::pair<std::string_view, FileType>>({
    {".leave-out.txt", FileType::kOther},
    {".TBL", FileType::kTable},
    {".TSS", FileType::kWaveform},
    {".TS0", FileType::kWaveform},
    {".TSK", FileType::kStackedWaveform},
    {".TRS", FileType::kStackResult},
    {".TFS", FileType::kSchedule},
    {".CLB", FileType::kBoxCalibration},
    {".CLC", FileType::kSensorCalibration},
    {".TXT", FileType::kText},
    {".CSV", FileType::kText},
});

using Identity = std::pair<std::uint64_t, std::uint64_t>;
Identity IdentityOf(const FileInfo& info) { return {info.device, info.number}; }

// What desktops and wastebaskets leave on cards.
bool IsHidden(std::string_view name) {
  return name.starts_with('.') || EqualsWithoutCase(name, "$RECYCLE.BIN") ||
         EqualsWithoutCase(name, "System Volume Information");
}

class Walk {
 public:
  Walk(const std::filesystem::path& root, const std::function<bool()>& stopped)
      : stopped_(stopped) {
    tree_.root = root;
  }

  Result<FolderTree> Run() {
    FileInfo info;
    if (!ReadInfo(tree_.root, &info)) {
      return Failure(SystemReason(errno));
    }
    if (info.kind != FileKind::kFolder) {
      return Failure("not a folder");
    }
    std::vector<std::filesystem::path> names;
    if (!ReaderCalls().list(tree_.root, &names)) {
      return Failure(SystemReason(errno));
    }
    names = {};
    Enter({}, info);
    WorkOff();
    // A link counts where nothing else leads to the same folder, whatever the order of names.
    while (!links_.empty() && !stopped_()) {
      const std::filesystem::path link = std::move(links_.front());
      links_.pop_front();
      if (ReadInfo(tree_.root / link, &info)) {
        Enter(link, info);
        WorkOff();
      }
    }
    AddLinkedFiles();
    Sort();
    return std::move(tree_);
  }

 private:
  void WorkOff() {
    while (!waiting_.empty() && !stopped_()) {
      const auto [folder, info] = std::move(waiting_.back());
      waiting_.pop_back();
      Enter(folder, info);
    }
  }

  void Note(const std::filesystem::path& path, std::string reason) {
    constexpr std::size_t kMostNotes = 10'000;
    if (tree_.notes.size() < kMostNotes) {
      tree_.notes.push_back({ShownPath(path), std::move(reason)});
    }
  }

  bool IsFull() {
    const bool is_full = tree_.files.size() + tree_.folders.size() >= kMostSurveyFiles;
    if (is_full && !was_full_) {
      Note({},
           "more than " + FormatInt(kMostSurveyFiles) + " files and folders: the rest is left out");
    }
    was_full_ = was_full_ || is_full;
    return is_full;
  }

  void Enter(const std::filesystem::path& folder, const FileInfo& info) {
    if (!seen_.insert(IdentityOf(info)).second || IsFull()) {
      return;
    }
    std::vector<std::filesystem::path> names;
    if (!ReaderCalls().list(tree_.root / folder, &names)) {
      const std::string reason = SystemReason(errno);
      Note(folder, reason);
    }
    const auto number = static_cast<std::uint32_t>(tree_.folders.size());
    tree_.folders.push_back(folder);
    std::sort(names.begin(), names.end());
    for (const auto& name : names) {
      if (stopped_() || IsFull()) {
        return;
      }
      Look(number, name);
    }
  }

  void Look(std::uint32_t number, const std::filesystem::path& name) {
    const std::filesystem::path path = tree_.folders[number] / name;
    FoundFile file{number, FileTypeOf(PathText(name)), PathText(name), {}};
    if (IsHidden(file.name)) {
      ++tree_.hidden;
      return;
    }
    bool is_there = ReadLinkInfo(tree_.root / path, &file.info);
    const bool is_link = is_there && file.info.kind == FileKind::kLink;
    if (is_link) {
      is_there = ReadInfo(tree_.root / path, &file.info);
    }
    if (!is_there) {
      // Gone since its folder was listed, or a link that leads nowhere.
      Note(path, SystemReason(errno));
    } else if (file.info.kind == FileKind::kFolder) {
      if (is_link) {
        links_.push_back(path);
      } else {
        waiting_.emplace_back(path, file.info);
      }
    } else if (file.info.kind == FileKind::kRegular && file.type != FileType::kOther) {
      (is_link ? linked_files_ : tree_.files).push_back(std::move(file));
    } else if (file.info.kind != FileKind::kRegular && file.type != FileType::kOther) {
      Note(path, "no file of bytes: not looked at");
    } else {
      ++tree_.others;
    }
  }

  void AddLinkedFiles() {
    if (linked_files_.empty()) {
      return;
    }
    std::set<Identity> known;
    for (const FoundFile& file : tree_.files) {
      known.insert(IdentityOf(file.info));
    }
    for (FoundFile& file : linked_files_) {
      if (known.insert(IdentityOf(file.info)).second) {
        tree_.files.push_back(std::move(file));
      }
    }
  }

  // Folders by their names, and the files with them.
  void Sort() {
    std::vector<std::uint32_t> order(tree_.folders.size());
    for (std::uint32_t i = 0; i < order.size(); ++i) {
      order[i] = i;
    }
    std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
      return tree_.folders[a] < tree_.folders[b];
    });
    std::vector<std::uint32_t> place(order.size());
    std::vector<std::filesystem::path> folders;
    for (std::uint32_t i = 0; i < order.size(); ++i) {
      place[order[i]] = i;
      folders.push_back(std::move(tree_.folders[order[i]]));
    }
    tree_.folders = std::move(folders);
    for (FoundFile& file : tree_.files) {
      file.folder = place[file.folder];
    }
    std::sort(tree_.files.begin(), tree_.files.end(), [](const FoundFile& a, const FoundFile& b) {
      return std::tie(a.folder, a.name) < std::tie(b.folder, b.name);
    });
    std::sort(tree_.notes.begin(), tree_.notes.end(),
              [](const ScanNote& a, const ScanNote& b) { return a.path < b.path; });
  }

  const std::function<bool()>& stopped_;
  FolderTree tree_;
  std::vector<std::pair<std::filesystem::path, FileInfo>> waiting_;
  std::deque<std::filesystem::path> links_;
  std::vector<FoundFile> linked_files_;
  std::set<Identity> seen_;
  bool was_full_ = false;
};

}  // namespace

FileType FileTypeOf(std::string_view name) {
  if (SpectraBand(name) > 0) {
    return FileType::kBand;
  }
  for (const auto& [end, type] : kTypes) {
    if (EndsWithoutCase(name, end)) {
      return type;
    }
  }
  return FileType::kOther;
}

std::string ShownPath(const std::filesystem::path& path) {
  std::string text = PathText(path);
#ifdef _WIN32
  std::replace(text.begin(), text.end(), '\\', '/');
#endif
  return PrintableUtf8(text.empty() ? "." : text);
}

std::filesystem::path FolderTree::PathOfFile(const FoundFile& file) const {
  return root / folders[file.folder] / PathOf(file.name);
}

std::string FolderTree::ShownName(const FoundFile& file) const {
  return ShownPath(folders[file.folder] / PathOf(file.name));
}

Result<FolderTree> WalkFolders(const std::filesystem::path& root,
                               const std::function<bool()>& stopped) {
  return Walk(root, stopped).Run();
}

}  // namespace orvane

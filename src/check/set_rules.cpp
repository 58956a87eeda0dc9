// SPDX-License-Identifier: GPL-3.0-or-later
// The folder of the boxes' start-up files, and what is there.
#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>

#include "base/latin1.h"
#include "base/number_text.h"
#include "check/rule.h"
#include "check/set_files.h"
#include "editors/startup_cautions.h"
#include "files/path_text.h"

namespace orvane {
namespace {

void TargetFolder(const Situation& situation, const Teller& tell) {
  const std::filesystem::path& folder = situation.places.set;
  if (folder.empty()) {
    return;
  }
  if (const std::string fault = FolderFault(folder); !fault.empty()) {
    std::string sentence = PrintableUtf8(fault);
    sentence.pop_back();  // its full stop
    tell({"SNUM"}, std::move(sentence));
    return;
  }
  const std::vector<SetFile>& files = situation.set_files;
  for (auto file = files.begin(); file != files.end(); ++file) {
    const auto twin = std::find_if(files.begin(), file, [file](const SetFile& before) {
      return before.target == file->target || IsSameFile(before.target, file->target);
    });
    const std::string path = PrintableUtf8(PathText(file->target));
    if (twin != file) {
      tell({file->serial_key}, path + " is also the file of \"" + twin->box_name + "\"",
           file->box_name);
    } else if (const std::string other = ForeignFile(file->target, file->serial); !other.empty()) {
      tell.As(Severity::kWarning, {file->serial_key},
              path + " is " + PrintableUtf8(other) + " and would be replaced", file->box_name);
    }
  }
}

// The files that there are and that can be read.
std::vector<const SetFile*> Present(const std::vector<SetFile>& files) {
  std::vector<const SetFile*> present;
  for (const SetFile& file : files) {
    if (file.table) {
      present.push_back(&file);
    }
  }
  return present;
}

void TellMasters(const std::vector<const SetFile*>& files, const Teller& tell) {
  std::vector<std::string> masters;
  for (const SetFile* file : files) {
    if (IntParam(*file->table, "MSTR") == 1) {
      masters.push_back(file->box_name);
    }
  }
  if (masters.empty()) {
    tell({"MSTR"}, "No file of the set is of the radio's master");
  } else if (masters.size() > 1) {
    tell.As(Severity::kError, {"MSTR"}, "More than one radio master: " + Listed(masters));
  }
}

void SetRadio(const Situation& situation, const Teller& tell) {
  const std::vector<const SetFile*> files = Present(situation.set_files);
  if (files.size() < 2) {
    return;
  }
  TellMasters(files, tell);
  for (const SetFile* file : files) {
    std::vector<ParamKey> keys;
    std::vector<std::string> names;
    for (const ParamKey key : {"NADR", "EKEY", "TECH", "LFRQ", "STIM", "ETIM", "AUTO", "TTOT"}) {
      if (file->table->FindParam(key)->value != files.front()->table->FindParam(key)->value) {
        keys.push_back(key);
        names.push_back(key.Text());
      }
    }
    if (!keys.empty()) {
      tell.As(
          Severity::kError, keys,
          "The file differs from that of \"" + files.front()->box_name + "\" in " + Listed(names),
          file->box_name);
    }
  }
}

void SetOther(const Situation& situation, const Teller& tell) {
  constexpr std::size_t kMostNamed = 8;
  for (const SetFile& file : situation.set_files) {
    const std::vector<ParamKey> keys = OtherDifferences(file);
    if (keys.empty()) {
      continue;
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < std::min(keys.size(), kMostNamed); ++i) {
      names.push_back(keys[i].Text());
    }
    if (keys.size() > kMostNamed) {
      names.push_back(FormatInt(keys.size() - kMostNamed) + " more");
    }
    tell(keys,
         "The file there was made of another table: " + Listed(names) +
             (keys.size() == 1 ? " differs" : " differ"),
         file.box_name);
  }
}

void SetMissing(const Situation& situation, const Teller& tell) {
  constexpr std::ptrdiff_t kFewestOfASet = 2;
  const std::vector<SetFile>& files = situation.set_files;
  const auto is_there = [](const SetFile& file) { return file.is_there; };
  if (std::count_if(files.begin(), files.end(), is_there) < kFewestOfASet) {
    return;
  }
  for (const SetFile& file : files) {
    if (!file.is_there) {
      tell({file.serial_key}, "The set has files of other boxes, but none of this one",
           file.box_name);
    }
  }
}

void SetStray(const Situation& situation, const Teller& tell) {
  for (const SetFile& file :
       LeftOutFilesOf(situation.table, situation.places.set, situation.places.memory.get())) {
    if (file.is_there) {
      tell({file.serial_key},
           PrintableUtf8(PathText(file.target)) +
               " is there, but the box gets no file: it would leave with this one",
           file.box_name);
    }
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"target", Severity::kError,
     "With the folder of a set: it is missing or not yours to write in, or two boxes have one "
     "path; as a warning, what is there (in any case of letters) is no table or that of another "
     "serial number.",
     TargetFolder, Needs::kFiles, "error or warning"},
    {"set-radio", Severity::kWarning,
     "Of two or more files of a set none is of the radio's master; as an error, more than one is, "
     "or files differ in NADR, EKEY, TECH, LFRQ, STIM, ETIM, AUTO or TTOT.",
     SetRadio, Needs::kFiles, "warning or error"},
    {"set-other", Severity::kWarning,
     "A box's file in the set differs from what would be written for it in values that its dialog "
     "does not offer: it was made of another table, or of an older state of this one.",
     SetOther, Needs::kFiles},
    {"set-missing", Severity::kWarning,
     "The set has files of two or more boxes of the spread, but none of another that should have "
     "one. A folder with one file may be something else than a set.",
     SetMissing, Needs::kFiles},
    {"set-stray", Severity::kWarning,
     "The set has a file of a box that gets none, as it comes after an empty place: one of another "
     "day.",
     SetStray, Needs::kFiles},
});

}  // namespace

std::span<const Rule> SetRules() { return kRules; }

}  // namespace orvane

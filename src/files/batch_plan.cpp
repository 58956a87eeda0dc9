// SPDX-License-Identifier: GPL-3.0-or-later
// What a batch settles before work begins: which files are written, which of them are refused, and
// which inputs have to be done one after another.
#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "files/batch.h"
#include "files/file_io.h"
#include "files/follow_links.h"
#include "files/path_names.h"
#include "files/path_text.h"

namespace orvane {
namespace {

// Where a link that stands in an output's place leads, if that is a file with another ending: no
// earlier result, but something of the user's. Empty otherwise.
std::filesystem::path OtherKindBehind(const std::filesystem::path& output) {
  const auto ending = [](const std::filesystem::path& path) {
    return LowerCasedPath(PathText(path.extension()));
  };
  const auto end = FollowLinks(output);
  FileInfo info;
  return end && *end != output && ending(*end) != ending(output) && ReadInfo(*end, &info) &&
                 info.kind == FileKind::kRegular
             ? *end
             : std::filesystem::path();
}

}  // namespace

std::vector<Batch::Unit> Batch::PlanUnits() {
  NameOutputs();
  RefuseInputs();
  RefuseTakenOutputs();
  std::vector<Unit> units = GroupBySharedOutputs();
  if (plan_.conversion.in_order) {
    // A single worker does them: what shares an output comes one after another in any case.
    units.clear();
    for (std::size_t i = 0; i < items_.size(); ++i) {
      units.push_back({i});
    }
  }
  return units;
}

void Batch::NameOutputs() {
  FileIdentities identities;
  std::uint64_t total = 0;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    Item& item = items_[i];
    item.input = plan_.conversion.input_of
                     ? PathOf(plan_.conversion.input_of(PathText(plan_.inputs[i])))
                     : plan_.inputs[i];
    for (const std::string& output : plan_.conversion.outputs_of(PathText(plan_.inputs[i]))) {
      auto path = InFolder(plan_.out_folder, output);
      if (std::find(item.outputs.begin(), item.outputs.end(), path) == item.outputs.end()) {
        item.outputs.push_back(std::move(path));
      }
    }
    FileInfo info;
    item.size = ReadInfo(item.input, &info) ? info.size : 0;
    total += item.size;
    if (const auto identity = identities.Of(item.input)) {
      item.identity = *identity;
    } else {
      item.refused = identity.Message();
    }
    for (const auto& output : item.outputs) {
      const auto identity = identities.Of(output);
      item.output_identities.push_back(identity ? *identity : std::string());
      if (!identity) {
        item.refused = FileMessage(output, identity.Message());
      }
    }
  }
  bytes_total_ = total;
}

void Batch::RefuseInputs() {
  std::unordered_map<std::string, std::size_t> inputs;  // the first item of each file
  for (std::size_t i = 0; i < items_.size(); ++i) {
    inputs.try_emplace(items_[i].identity, i);
  }
  const bool may_replace = plan_.conversion.replaces_inputs && plan_.out_folder.empty();
  for (std::size_t i = 0; i < items_.size(); ++i) {
    Item& item = items_[i];
    if (item.refused) {
      continue;
    }
    if (may_replace && inputs.at(item.identity) != i) {
      item.refused = "is already in the list and is replaced by its conversion";
    }
    for (std::size_t k = 0; k < item.outputs.size(); ++k) {
      const auto& output = item.outputs[k];
      const std::string& identity = item.output_identities[k];
      if (identity == item.identity) {
        if (!may_replace) {
          item.refused = FileMessage(output, "is the input itself and was not overwritten");
          item.result.code = plan_.conversion.same_file_code;
        }
      } else if (inputs.contains(identity)) {
        item.refused =
            FileMessage(output, "is another input of this batch and was not overwritten");
      } else if (const auto other = OtherKindBehind(output); !other.empty()) {
        item.refused = FileMessage(output, "leads to ")
                           .append(PathText(other))
                           .append(", which is another kind of file; not overwritten");
      }
    }
  }
}

// In a folder for all outputs. A file that is listed twice loses nothing.
void Batch::RefuseTakenOutputs() {
  std::unordered_map<std::string, std::size_t> writers;  // the first item of each output
  for (std::size_t i = 0; i < items_.size() && !plan_.out_folder.empty(); ++i) {
    Item& item = items_[i];
    if (item.refused) {
      continue;
    }
    for (std::size_t k = 0; k < item.outputs.size(); ++k) {
      const auto found = writers.find(item.output_identities[k]);
      if (found != writers.end() && items_[found->second].identity != item.identity) {
        item.refused = FileMessage(item.outputs[k], "is the output of ")
                           .append(PathText(plan_.inputs[found->second]))
                           .append(", which came earlier in the list; not overwritten");
      }
    }
    if (item.refused) {
      item.outputs.clear();  // and no message box of its own: there may be hundreds
      item.output_identities.clear();
    }
    for (const std::string& identity : item.output_identities) {
      writers.try_emplace(identity, i);
    }
  }
}

// Inputs with an output in common form a unit, and so do all that such pairs connect.
std::vector<Batch::Unit> Batch::GroupBySharedOutputs() {
  std::vector<std::size_t> leader(items_.size());
  std::iota(leader.begin(), leader.end(), std::size_t{0});
  const auto leader_of = [&leader](std::size_t i) {
    while (leader[i] != i) {
      leader[i] = leader[leader[i]];
      i = leader[i];
    }
    return i;
  };
  std::unordered_map<std::string, std::size_t> writers;  // the last item so far of each output
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (items_[i].refused) {
      continue;
    }
    for (std::size_t k = 0; k < items_[i].outputs.size(); ++k) {
      const auto& output = items_[i].outputs[k];
      const auto [entry, is_new] = writers.try_emplace(items_[i].output_identities[k], i);
      if (is_new) {
        continue;
      }
      const std::size_t before = std::exchange(entry->second, i);
      // Whether the later one will really be written is not known yet.
      const auto note = [&output](const std::filesystem::path& other, std::string_view when) {
        return FileMessage(output, "also the output of ").append(PathText(other)).append(when);
      };
      items_[before].shared_note = note(plan_.inputs[i], ", which comes later in the list");
      items_[i].shared_note = note(plan_.inputs[before], ", which came earlier in the list");
      // The smaller number leads, so that units keep the order of the list.
      const std::size_t a = leader_of(before);
      const std::size_t b = leader_of(i);
      leader[std::max(a, b)] = std::min(a, b);
    }
  }
  std::vector<Unit> by_leader(items_.size());
  for (std::size_t i = 0; i < items_.size(); ++i) {
    by_leader[leader_of(i)].push_back(i);
  }
  std::erase_if(by_leader, [](const Unit& unit) { return unit.empty(); });
  return by_leader;
}

}  // namespace orvane

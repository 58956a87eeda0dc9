// SPDX-License-Identifier: GPL-3.0-or-later
// What every parameter means: names, units and coded values as the dialogs have them.
#ifndef ORVANE_MEANING_MEANINGS_H_
#define ORVANE_MEANING_MEANINGS_H_

#include <string>

#include "meaning/dialog_fields.h"
#include "meaning/key_meaning.h"
#include "meaning/meaning_list.h"
#include "table/param_entry.h"

namespace orvane {

/// The meanings of all keys that Orvane knows anything of. Making it goes through the fields of all
/// dialogs: one serves a whole table.
class Meanings {
 public:
  /// The transmitter types with their usual names.
  Meanings();
  explicit Meanings(const TransmitterNames& transmitters);

  /// Null where nothing of Orvane uses the key.
  const KeyMeaning* Find(ParamKey key) const { return list_.Find(key); }
  const MeaningList& List() const { return list_; }
  std::size_t Count() const { return list_.Count(); }

  /// What a stored value means, "SIP" of "TECH" 1: empty where the key has no coded values,
  /// "not a listed value" where this is none of them. A yes or no is yes for any number but 0.
  std::string ValueText(const ParamEntry& entry) const;

  /// What is wrong with a stored value that no dialog would accept: "out of range (0 to 100)", "not
  /// a listed value". Empty where nothing is known to be.
  std::string Caution(const ParamEntry& entry) const;

  /// What it means and what is wrong with it: "SIP", "out of range (0 to 100)"; mostly empty.
  std::string Remark(const ParamEntry& entry) const;

  /// Name, what the value means and unit in a line: "Survey method: SIP", "Ex dipole length
  /// (m)", "not used by Orvane".
  std::string Line(const ParamEntry& entry) const;

 private:
  MeaningList list_;
};

}  // namespace orvane

#endif  // ORVANE_MEANING_MEANINGS_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FORMS_FORM_MODEL_H_
#define ORVANE_FORMS_FORM_MODEL_H_

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "forms/codecs.h"
#include "forms/form_field.h"
#include "table/param_table.h"

namespace orvane {

/// The state of a dialog: what each control shows, whether it is enabled, what was read from the
/// table and what was edited since. Widgets only mirror it.
///
/// A field that neither the user nor a rule nor a button changed since it was read writes back the
/// bytes it was read from (but see `Codec::normalizes`): ten shown digits never cost a stored
/// number its last ones. Controls are named by their numbers; one that the form lacks is a
/// programming error, found by an assertion. A long text is written only where it was edited.
class FormModel {
 public:
  /// `fields` must outlive the model, as the constant table that it is.
  FormModel(ParamTable* table, std::span<const Field> fields);

  const std::span<const Field>& Fields() const { return fields_; }
  const Field& FieldOf(int control) const { return *StateOf(control).field; }
  ParamTable& Table() { return *table_; }

  const std::string& Text(int control) const { return StateOf(control).shown.text; }
  int Index(int control) const { return StateOf(control).shown.index; }
  bool IsEdited(int control) const { return StateOf(control).is_edited; }
  /// Of a control, or of one button of a group by its own number.
  bool IsEnabled(int control) const;
  const std::string& Caption(int control) const { return StateOf(control).caption; }
  /// The values as last read, one for each key; none where a key is missing.
  const std::vector<ParamValue>& Stored(int control) const { return StateOf(control).stored; }
  /// The caption as messages name it, without a colon at its end, and with the field's group.
  std::string NameOf(int control) const;
  /// Why OK would refuse what was entered; empty where it would not.
  std::string FaultAt(int control) const;
  /// What is wrong with a stored value that nobody touched, else the caution that a rule has set;
  /// empty where there is neither.
  std::string_view Warning(int control) const;
  /// Characters of a text that its keys hold; what is longer is cut when it is written.
  std::size_t CapacityOf(int control) const;
  /// Of one button of a group, by its own number.
  std::string_view ButtonCaption(int button) const;

  /// What a user, a rule or a button puts into a field; it counts as edited even where it is equal.
  /// A number loses the blanks around it.
  void SetText(int control, std::string text);
  void SetIndex(int control, int index);
  /// Of one button where the number is a button's, else of the whole control. A field that is
  /// disabled with an edit that is not acceptable shows its stored value again: nobody could mend
  /// it, and what is shown is what is written.
  void Enable(int control, bool is_enabled);
  /// Of all buttons of a group.
  void EnableGroup(int control, bool is_enabled);
  void SetCaption(int control, std::string caption);
  /// What the user should know of a value that is accepted all the same; empty: nothing.
  void SetCaution(int control, std::string caution);
  /// What sets the cautions: called after each change of what fields show.
  using CautionRule = std::function<void(FormModel*)>;
  void SetCautionRule(CautionRule rule);
  const std::string& Caution(int control) const { return StateOf(control).caution; }
  void SetButtonCaption(int button, std::string caption);

  /// Drops an edit: the field shows its stored value again.
  void ShowStored(int control);
  /// The same, but the edit can be brought back: for fields that do not count for a while.
  void SetAside(int control);
  void BringBack(int control);

  /// Hours added to stored times for display. Fields that are not edited are shown again; an edited
  /// time that parses moves along, one that does not stays as typed.
  void SetHourOffset(int hours);
  int HourOffset() const { return hours_; }

  /// Reads one field, or all in order, from the table again: none of them is edited then.
  void Read(int control);
  void ReadAll();

  /// The first field, in order, that is enabled, edited and not acceptable.
  struct Fault {
    int control;
    std::string message;
  };
  std::optional<Fault> Validate() const;

  /// Writes fields in the order given, without the permission check: what they show, enabled or
  /// not. A key that the table lacks is skipped.
  void Write(std::span<const int> controls) { WriteTo(table_, controls); }
  /// The same into another table, such as a copy for another box.
  void WriteTo(ParamTable* table, std::span<const int> controls) const;

  /// Called with the control number after each change of what it shows, and of its state.
  void SetListener(std::function<void(int)> listener) { listener_ = std::move(listener); }

 private:
  struct State {
    const Field* field = nullptr;
    Shown shown;
    std::vector<ParamValue> stored;  // as read, one for each key; empty where a key is missing
    std::string long_text;           // as read
    bool is_unreadable = false;      // a long text without an end
    bool is_enabled = true;
    bool is_edited = false;
    std::optional<Shown> aside;  // an edit that does not count for now
    std::string caption;
    std::string caution;
  };
  struct Button {
    bool is_enabled = true;
    std::string caption;  // empty: its own label
  };

  State& StateOf(int control);
  const State& StateOf(int control) const;
  void Show(State* state) const;
  void ShowStored(State* state) const;
  /// Moves what a user typed into a time from one hour offset to another.
  static void Shift(Shown* edit, std::int64_t hours);
  void ReadLongText(State* state) const;
  /// The group that a button belongs to; null where it is no button.
  const State* GroupOf(int button) const;
  void Changed(const State& state) const;
  /// The same where what the field shows has changed.
  void ChangedShown(const State& state);

  ParamTable* table_;
  std::span<const Field> fields_;
  std::map<int, State> states_;
  std::map<int, Button> buttons_;  // single buttons of groups that were changed
  int hours_ = 0;
  std::function<void(int)> listener_;
  CautionRule caution_rule_;
};

}  // namespace orvane

#endif  // ORVANE_FORMS_FORM_MODEL_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_OPTIONS_DLG_H_
#define ORVANE_UI_OPTIONS_DLG_H_

#include <span>
#include <string_view>

#include "ui/form_dialog.h"

namespace orvane {

/// A field of a dialog that asks how something is to be done.
struct OptionRow {
  int control;
  std::string_view hint;         ///< what the usual or the empty content means, shown beside it
  const char* browse = nullptr;  ///< of a folder: title of the dialog that asks for it
};

/// Asks how something is to be done: a field in each line, with a hint beside it. The caller takes
/// what was entered from the form.
class COptionsDlg : public CFormDialog {
  Q_OBJECT

 public:
  COptionsDlg(FormModel* model, Prompts* prompts, QWidget* parent);

 protected:
  void LayOut(std::span<const OptionRow> rows);
  void Commit() override {}

 private:
  QWidget* MakeBrowse(const OptionRow& row);
};

}  // namespace orvane

#endif  // ORVANE_UI_OPTIONS_DLG_H_

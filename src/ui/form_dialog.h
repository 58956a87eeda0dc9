// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_FORM_DIALOG_H_
#define ORVANE_UI_FORM_DIALOG_H_

#include <QButtonGroup>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <initializer_list>
#include <map>
#include <optional>

#include "forms/form_model.h"
#include "forms/prompts.h"

namespace orvane {

/// A dialog over a form model: makes the widgets of its fields and keeps both in step. A derived
/// class lays the widgets out, adds its buttons and says what an edit leads to.
///
/// Object names are control numbers, accessible names the labels, with the group in front where the
/// field names one.
class CFormDialog : public QDialog {
  Q_OBJECT

 public:
  /// Both must outlive the dialog.
  CFormDialog(FormModel* model, Prompts* prompts, QWidget* parent);
  ~CFormDialog() override;

  /// What the dialog shows.
  const FormModel& Form() const { return *model_; }

  /// OK: validates, and on the first fault reports it and puts the focus there; else commits.
  void accept() override;

 protected:
  /// The widget of a field, made at the first call: a line, a check box, a list, or a widget with
  /// all the buttons of a group.
  QWidget* Control(int control);
  /// One button of a group.
  QAbstractButton* Button(int control);
  /// A label with the field's caption that leads to its widget.
  QLabel* LabelOf(int control);
  /// A password gets a button that shows it; what OK would refuse, or a caution, is shown in a line
  /// below the field.
  void AddRow(QFormLayout* form, int control);
  /// The line of `AddRow()` for a layout of another kind: hidden while there is nothing to say.
  QLabel* CautionOf(int control);
  /// A row with a line below that counts how much of the text's room is used.
  void AddCountedRow(QFormLayout* form, int control);
  /// A titled group with a row for each control; texts that may be typed longer than
  /// their keys hold are counted.
  QGroupBox* Group(const char* title, std::initializer_list<int> controls);
  /// Gives the labels of groups below each other one width.
  static void AlignLabels(std::initializer_list<const QGroupBox*> boxes);
  /// A group with its buttons in so many columns, read row by row.
  QWidget* Buttons(int control, int columns);
  QDialogButtonBox* OkAndCancel();

  /// Whether everything entered can be accepted; reports the first fault and puts the focus there.
  bool IsAcceptable();

  /// The user changed a control; the model has it already.
  virtual void OnEdited(int control) { static_cast<void>(control); }
  /// What keeps OK from being accepted; a derived class may look at more than the fields.
  virtual std::optional<FormModel::Fault> Fault() const { return model_->Validate(); }
  /// OK was accepted: write.
  virtual void Commit() = 0;

  FormModel& Model() { return *model_; }

  /// Lets the tab key follow the layout, whatever order the widgets were made in.
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLayout* WithShowButton(int control);
  void ShowCaution(int control, const QString& fault);
  /// Of every line: an edit may put another one right or wrong.
  void ShowFaults();
  QString FaultText(int control, const std::optional<FormModel::Fault>& first) const;
  /// Whether the text will be cut.
  bool UpdateCount(int control);
  void GrowToFit();
  QWidget* MakeLine(const Field& field);
  QWidget* MakeCheck(const Field& field);
  QWidget* MakeList(const Field& field);
  QWidget* MakeRadios(const Field& field);
  void Name(QWidget* widget, const Field& field);
  void ShowTip(QWidget* widget, const Field& field);
  void OnLineChanged(int control, QLineEdit* line);
  void OnChosen(int control, int index);
  void ConnectRadios(int control, QButtonGroup* group);
  static void SetTabStop(QButtonGroup* group);
  static bool ChooseByArrow(QRadioButton* button, int key);
  void Refresh(int control);
  void RefreshRadios(const Field& field);

  FormModel* model_;
  Prompts* prompts_;
  bool is_ordered_ = false;
  bool is_refreshing_ = false;                // the model changes the widgets, not the user
  const QAbstractButton* toggled_ = nullptr;  // its click has counted
  std::map<int, QWidget*> controls_;
  std::map<int, QLabel*> labels_;
  std::map<int, QLabel*> counts_;
  std::map<int, QFormLayout*> rows_;  // where a caution has room
  std::map<int, QLabel*> cautions_;
  std::map<int, QButtonGroup*> groups_;
};

}  // namespace orvane

#endif  // ORVANE_UI_FORM_DIALOG_H_

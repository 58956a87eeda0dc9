// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_WIDGETS_FINDINGS_PANE_H_
#define ORVANE_SURVEY_WIDGETS_FINDINGS_PANE_H_

#include <QAbstractTableModel>
#include <QComboBox>
#include <QLineEdit>
#include <QTreeView>
#include <functional>

#include "survey/findings_list.h"

namespace orvane {

/// A list of findings for Qt's views.
class SurveyFindingsModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  const FindingsList& List() const { return list_; }
  void Change(const std::function<void(FindingsList*)>& change);
  const SurveyFinding& Of(const QModelIndex& index) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  FindingsList list_;
};

/// What is wrong with a survey, a row each. A click or Return chooses the file concerned.
class FindingsPane : public QTreeView {
  Q_OBJECT

 public:
  explicit FindingsPane(QWidget* parent);

  void SetFindings(const SharedFindings& findings, std::span<const ScanNote> notes);
  const FindingsList& List() const { return model_->List(); }
  /// Choice of severity and filter, to be put where there is room for them.
  QWidget* MakeTools(QWidget* parent);

 signals:
  /// By its name as `SurveyRow::name`; empty: none in particular.
  void chosen(const std::string& file);
  /// Others are shown.
  void filtered();

 private:
  void Refilter();
  void Choose(const QModelIndex& index);

  SurveyFindingsModel* model_;
  QComboBox* severity_ = nullptr;
  QLineEdit* filter_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_WIDGETS_FINDINGS_PANE_H_

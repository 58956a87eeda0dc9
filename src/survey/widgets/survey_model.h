// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_WIDGETS_SURVEY_MODEL_H_
#define ORVANE_SURVEY_WIDGETS_SURVEY_MODEL_H_

#include <QAbstractItemModel>
#include <functional>
#include <optional>

#include "survey/survey_list.h"

namespace orvane {

/// A survey's list as a tree: groups, and in them the rows. Without groups the rows alone.
class SurveyModel : public QAbstractItemModel {
  Q_OBJECT

 public:
  using QAbstractItemModel::QAbstractItemModel;

  const SurveyList& List() const { return list_; }
  /// Changes the list by `change`; selection and what is open are the view's to keep.
  void Change(const std::function<void(SurveyList*)>& change);
  /// The same, where rows stay where they are.
  void ChangeCells(const std::function<void(SurveyList*)>& change);
  /// A small picture of a row; asked for what is in view only.
  void SetPictures(std::function<QVariant(std::size_t row)> picture_of) {
    picture_of_ = std::move(picture_of);
  }
  /// The picture of a row is there now.
  void PictureCame(std::size_t row);

  /// The row's place in the survey; none for a group.
  std::optional<std::size_t> RowAt(const QModelIndex& index) const;
  QModelIndex IndexOf(std::size_t row) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  bool HasGroups() const { return list_.Grouping() != SurveyGrouping::kNone; }
  QVariant OfGroup(int group, int column, int role) const;
  QVariant OfRow(std::size_t row, SurveyColumn column, int role) const;

  SurveyList list_;
  std::function<QVariant(std::size_t)> picture_of_;
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_WIDGETS_SURVEY_MODEL_H_

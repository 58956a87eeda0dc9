// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_WIDGETS_TRACE_PICTURES_H_
#define ORVANE_SURVEY_WIDGETS_TRACE_PICTURES_H_

#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QSet>
#include <QThreadPool>
#include <atomic>
#include <filesystem>
#include <memory>

namespace orvane {

/// Small pictures of the first record of waveforms, made on a thread of their own as they are asked
/// for. Never of more files than a list shows at once, with some to spare.
class TracePictures : public QObject {
  Q_OBJECT

 public:
  explicit TracePictures(QObject* parent);
  ~TracePictures() override;

  /// The picture of a row's file; null, and made in the background, where there is none yet. A file
  /// that cannot be read has an empty one.
  QPixmap Of(std::size_t row, const std::filesystem::path& file);
  /// Other rows now; what is under way is of no use any more.
  void Clear();
  static QSize Size() { return {64, 18}; }

 signals:
  void came(std::size_t row);

 private:
  struct Stop {
    std::atomic<bool> is_set = false;
  };
  void Take(std::size_t row, const std::vector<double>& least, const std::vector<double>& most);

  QHash<quint64, QPixmap> pictures_;
  QSet<quint64> asked_;
  std::shared_ptr<Stop> stop_;
  QThreadPool pool_;
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_WIDGETS_TRACE_PICTURES_H_

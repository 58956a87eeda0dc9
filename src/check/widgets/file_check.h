// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHECK_WIDGETS_FILE_CHECK_H_
#define ORVANE_CHECK_WIDGETS_FILE_CHECK_H_

#include <QObject>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "check/check.h"
#include "check/set_rows.h"

namespace orvane {

/// Runs the rules that read files on a thread of its own, so that a slow card holds nobody up.
class FileCheck : public QObject {
  Q_OBJECT

 public:
  struct Job {
    ParamTable table;
    ParamTime now;
    Places places;
  };
  struct Outcome {
    std::vector<Finding> findings;
    std::vector<SetRow> boxes;
  };

  explicit FileCheck(QObject* parent);
  /// Waits for what is under way.
  ~FileCheck() override;

  /// Starts, or starts again once what is under way is done: of several the last one counts.
  void Start(Job job);
  bool IsRunning() const { return thread_.joinable(); }

 signals:
  /// Of the last job that was started.
  void done(const orvane::FileCheck::Outcome& outcome);

 private:
  void Run(Job job);
  void Finish(const Outcome& outcome);

  std::optional<Job> next_;
  std::shared_ptr<CheckMemory> memory_;  // of the thread that runs
  std::thread thread_;
};

}  // namespace orvane

#endif  // ORVANE_CHECK_WIDGETS_FILE_CHECK_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/widgets/file_check.h"

#include <QMetaObject>
#include <exception>
#include <utility>

#include "check/check_memory.h"

namespace orvane {

FileCheck::FileCheck(QObject* parent) : QObject(parent), memory_(std::make_shared<CheckMemory>()) {}

FileCheck::~FileCheck() {
  if (thread_.joinable()) {
    thread_.join();
  }
}

void FileCheck::Start(Job job) {
  if (thread_.joinable()) {
    next_ = std::move(job);
    return;
  }
  thread_ = std::thread([this, job = std::move(job)]() mutable { Run(std::move(job)); });
}

void FileCheck::Run(Job job) {
  Outcome outcome;
  job.places.memory = memory_;
  try {
    outcome = {CheckFiles(job.table, job.now, job.places),
               SetRowsOf(job.table, job.places.set, job.places.table, memory_.get())};
  } catch (const std::exception&) {
    outcome = {};  // without memory nothing can be said; the next look says it again
  }
  QMetaObject::invokeMethod(
      this, [this, outcome = std::move(outcome)] { Finish(outcome); }, Qt::QueuedConnection);
}

void FileCheck::Finish(const Outcome& outcome) {
  thread_.join();
  if (next_) {
    Start(*std::exchange(next_, std::nullopt));
  } else {
    emit done(outcome);
  }
}

}  // namespace orvane

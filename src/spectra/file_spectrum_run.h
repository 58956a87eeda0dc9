// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_FILE_SPECTRUM_RUN_H_
#define ORVANE_SPECTRA_FILE_SPECTRUM_RUN_H_

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <thread>

#include "spectra/file_spectrum.h"

namespace orvane {

/// The averaged spectrum of a file, made on a thread of its own, without some of its records. To be
/// used from one thread.
class FileSpectrumRun {
 public:
  FileSpectrumRun(std::filesystem::path path, TsFile::Options options, RecordNumbers left_out);
  FileSpectrumRun(const FileSpectrumRun&) = delete;
  FileSpectrumRun& operator=(const FileSpectrumRun&) = delete;
  /// Stops, and waits for the end: at most the work on a record.
  ~FileSpectrumRun();

  bool IsDone() const { return is_done_; }
  /// Of the file's bytes.
  int Percent() const;
  /// Once it is done: the spectrum in held values, or why there is none.
  const Result<FileSpectrum>& Outcome() const { return outcome_; }
  /// Once it is done: what a user should know; empty: nothing.
  const std::string& Note() const { return note_; }

 private:
  void Run();
  Result<FileSpectrum> Work();

  std::filesystem::path path_;
  TsFile::Options options_;
  RecordNumbers left_out_;
  TsProgress opening_;
  std::atomic<bool> is_done_ = false;
  std::atomic<std::uint64_t> at_ = 0;  // bytes
  std::atomic<std::uint64_t> end_ = 0;
  std::string note_;
  Result<FileSpectrum> outcome_ = Failure("not enough memory");
  std::thread thread_;  // the last: it uses the others
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_FILE_SPECTRUM_RUN_H_

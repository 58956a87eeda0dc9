// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/file_spectrum_run.h"

#include <algorithm>
#include <exception>
#include <new>
#include <system_error>

namespace orvane {

FileSpectrumRun::FileSpectrumRun(std::filesystem::path path, TsFile::Options options,
                                 RecordNumbers left_out)
    : path_(std::move(path)), options_(options), left_out_(std::move(left_out)) {
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    outcome_ = Failure("no thread to be had, or no memory for one");
    is_done_ = true;
  }
}

FileSpectrumRun::~FileSpectrumRun() {
  opening_.stop = true;
  if (thread_.joinable()) {
    thread_.join();
  }
}

int FileSpectrumRun::Percent() const {
  constexpr double kWhole = 100;
  const auto end = static_cast<double>(end_.load());
  return end > 0 ? static_cast<int>(kWhole * std::min(1.0, static_cast<double>(at_) / end)) : 0;
}

Result<FileSpectrum> FileSpectrumRun::Work() {
  TsFile file;
  if (const Result<> opened = file.Open(path_, options_, &opening_); !opened) {
    return Failure(opened.Message());
  }
  end_ = file.Walk().End();
  FileSpectrumOptions options;
  options.leave_out.numbers = left_out_;
  options.pass.stopped = [this] { return opening_.stop.load(); };
  options.advance = [this](std::uint64_t bytes) { at_ += bytes; };
  auto spectrum = SpectrumOfFile(file, options);
  note_ = spectrum ? spectrum->Note(options.leave_out) : std::string();
  return spectrum;
}

void FileSpectrumRun::Run() {
  try {
    outcome_ = Work();
  } catch (const std::bad_alloc&) {
    // as it was made
  } catch (const std::exception& error) {
    outcome_ = Failure(error.what());
  }
  is_done_ = true;
}

}  // namespace orvane

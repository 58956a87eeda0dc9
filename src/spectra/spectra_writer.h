// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_SPECTRA_WRITER_H_
#define ORVANE_SPECTRA_SPECTRA_WRITER_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/result.h"
#include "spectra/spectra_source.h"

namespace orvane {

/// The odd harmonics of one record.
struct SpectraRecord {
  std::uint64_t number = 0;  ///< in its file, from 1
  TsHeader header;
  double base_frequency = 0;                     ///< Hz
  double sample_rate = 0;                        ///< Hz
  std::vector<int> numbers;                      ///< of the harmonics
  std::vector<double> frequencies;               ///< of each, Hz
  std::vector<std::string> remarks;              ///< lines of text about this record
  std::vector<std::vector<SpectralLine>> lines;  ///< of each harmonic, each channel
};

/// What becomes of the spectra of one recording. The first failure is kept; after it nothing more
/// is done. Without `Commit()` nothing happened to the file.
class SpectraWriter {
 public:
  SpectraWriter() = default;
  SpectraWriter(const SpectraWriter&) = delete;
  SpectraWriter& operator=(const SpectraWriter&) = delete;
  virtual ~SpectraWriter() = default;

  virtual Result<> Open(const std::filesystem::path& path) = 0;
  virtual void Head(const SpectraSource& source, const std::filesystem::path& input) = 0;
  virtual void Put(const SpectraRecord& record) = 0;
  virtual bool HasFailed() const = 0;
  virtual Result<> Commit() = 0;
};

/// As text: docs/formats/calibrated-spectra.md.
std::shared_ptr<SpectraWriter> SpectraText();

}  // namespace orvane

#endif  // ORVANE_SPECTRA_SPECTRA_WRITER_H_

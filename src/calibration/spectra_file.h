// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CALIBRATION_SPECTRA_FILE_H_
#define ORVANE_CALIBRATION_SPECTRA_FILE_H_

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calibration/box_response.h"
#include "calibration/calibrated_channel.h"
#include "calibration/harmonics.h"
#include "core/batch.h"
#include "core/text_file.h"
#include "timeseries/ts_file.h"

namespace orvane {

/// A recording with everything that its calibration needs.
struct SpectraSource {
  TsFile file;
  int band = 0;  ///< of a band file; 0: each record's rate tells
  RecordingHeader header;
  TsHeader first;  ///< header of the first record
  std::string box_path;
  std::shared_ptr<const CalData> box;
  std::vector<CalibratedChannel> channels;
  double base_frequency = 0;
  int most_harmonics = 0;
};

/// Writes the spectra of a recording's records as text.
class SpectraFile {
 public:
  SpectraFile(const SpectraSource* source, BatchTask* task) : source_(*source), task_(*task) {}

  struct Result {
    std::string error;  ///< empty: all is written
    int status = 0;
    std::string note;
  };
  Result Write(TextFile* out);

 private:
  // What records of one rate, length and base frequency have in common.
  struct Plan {
    double base_frequency = 0;
    double sample_rate = 0;
    int band = 0;
    double looked_up_rate = 0;
    bool has_filter = true;
    std::vector<int> numbers;  // of the harmonics
    std::vector<double> frequencies;
    std::optional<HarmonicPlan> harmonics;
    std::vector<std::vector<Complex>> box;     // for each frequency, each channel
    std::vector<std::vector<Complex>> sensor;  // likewise
  };

  void WriteHead(TextFile* out) const;
  bool WriteRecord(const CTsRec& record, TextFile* out);
  bool UpdatePlan(const CTsRec& record);
  bool AddResponses();
  bool UpdateBox(double sample_rate);
  double BaseFrequency(const TsHeader& header) const;
  double SecondsFromOrigin(const TsHeader& header) const;
  std::vector<std::vector<Complex>> Transform(const CTsRec& record) const;
  std::string Note() const;

  const SpectraSource& source_;
  BatchTask& task_;
  Plan plan_;
  BoxResponse box_;
  Result result_;
  std::map<int, double> rates_left_out_;  // of bands whose filter is not divided out
  std::uint64_t written_ = 0;
  std::uint64_t without_harmonics_ = 0;
  std::uint64_t bad_ = 0;
  std::uint64_t other_channels_ = 0;
  std::optional<std::uint64_t> cut_;  // offset of a record that the file cuts
};

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_SPECTRA_FILE_H_

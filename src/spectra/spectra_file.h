// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_SPECTRA_FILE_H_
#define ORVANE_SPECTRA_SPECTRA_FILE_H_

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "files/batch.h"
#include "spectra/harmonics.h"
#include "spectra/recording_responses.h"
#include "spectra/spectra_source.h"
#include "spectra/spectra_writer.h"

namespace orvane {

/// Works out the spectra of a recording's records.
class SpectraFile {
 public:
  SpectraFile(const SpectraSource* source, BatchTask* task)
      : source_(*source), task_(*task), responses_(source), beyond_(source->channels.size()) {}

  struct Written {
    Result<> outcome;
    int status = 0;  ///< of a failure
    std::string note;
  };
  Written Write(SpectraWriter* out);

 private:
  // What records of one rate, length and base frequency have in common.
  struct Plan {
    double base_frequency = 0;
    double sample_rate = 0;
    bool has_own_rate = false;  // no band has it
    std::vector<int> numbers;   // of the harmonics
    std::vector<double> frequencies;
    std::string bin_note;
    std::vector<std::uint64_t> beyond;  // for each channel: lines beyond its sensor's records
    std::optional<HarmonicPlan> harmonics;
    std::vector<std::vector<Complex>> box;     // for each frequency, each channel
    std::vector<std::vector<Complex>> sensor;  // likewise
  };

  bool WriteRecord(const CTsRec& record, SpectraWriter* out);
  bool UpdatePlan(const CTsRec& record);
  bool AddResponses();
  bool UpdateBox(double sample_rate);
  double BaseFrequency(const TsHeader& header) const;
  double SecondsFromOrigin(const TsHeader& header) const;
  std::vector<std::vector<Complex>> Transform(const CTsRec& record) const;
  std::vector<std::string> Remarks() const;
  void CountNotes(std::uint64_t record);
  std::string Note() const;

  const SpectraSource& source_;
  BatchTask& task_;
  Plan plan_;
  RecordingResponses responses_;
  Written result_;
  std::set<double> own_rates_;         // that no band has
  std::vector<std::uint64_t> beyond_;  // as in the plan, of all records
  std::string bin_note_;               // of the first record that has one
  std::uint64_t off_bin_ = 0;          // records that have one
  std::uint64_t written_ = 0;
  std::uint64_t without_harmonics_ = 0;
  std::uint64_t chosen_ = 0;  // records that the user left out
  std::uint64_t bad_ = 0;
  std::uint64_t other_channels_ = 0;
  std::optional<std::uint64_t> cut_;  // offset of a record that the file cuts
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_SPECTRA_FILE_H_

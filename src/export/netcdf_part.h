// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXPORT_NETCDF_PART_H_
#define ORVANE_EXPORT_NETCDF_PART_H_

#include <cstdint>
#include <vector>

#include "export/channel_values.h"
#include "export/netcdf_file.h"
#include "timeseries/ts_rec.h"

namespace orvane {

/// The records of a recording that have rate, scans and channels in common, as a group of a file.
class NetcdfPart {
 public:
  NetcdfPart(const TsHeader& first, TsHeaderSize header_size)
      : first_(first), header_size_(header_size) {}

  bool Takes(const TsHeader& header) const;
  /// While headers are counted.
  void Count() { ++records_; }
  std::size_t Samples() const { return std::size_t{first_.scans} * first_.channels; }

  /// Dimensions, variables and attributes. At most `most_samples` wait to be written.
  void Define(NcFile* file, int group, const TsCompanion* companion, int deflate,
              std::size_t most_samples);
  void PutScanTimes(NcFile* file) const;
  /// The next record; scans that it lacks are filled.
  void Put(NcFile* file, const CTsRec& record);
  /// Writes what waits.
  void Flush(NcFile* file);
  std::uint64_t Missing() const { return records_ - written_ - rows_; }

 private:
  struct RecordVars {
    int time = -1, number = -1, rate = -1, frequency = -1, status = -1;
  };
  void DefineRecords(NcFile* file, int record_dim);
  void DefineChannels(NcFile* file, const TsCompanion* companion, const std::vector<int>& dims,
                      int deflate);
  void AddRow(const CTsRec& record);

  TsHeader first_;
  TsHeaderSize header_size_;
  std::size_t records_ = 0;
  int group_ = -1;
  int scan_time_ = -1;
  RecordVars vars_;
  std::vector<int> channels_;
  std::size_t block_ = 1;  // records that wait at most
  std::size_t rows_ = 0;   // that wait
  std::size_t written_ = 0;
  std::vector<std::vector<int>> samples_;  // of each channel, record after record
  std::vector<double> times_, rates_, frequencies_;
  std::vector<long long> numbers_;
  std::vector<signed char> statuses_;
};

}  // namespace orvane

#endif  // ORVANE_EXPORT_NETCDF_PART_H_

// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzzers run: for each reader a function that takes any bytes. It ends the program where
// a reader breaks a promise; the sanitizers do so where it does harm.
#ifndef ORVANE_FUZZ_TARGETS_H_
#define ORVANE_FUZZ_TARGETS_H_

#include <cstddef>
#include <span>
#include <string_view>

namespace orvane::fuzz {

using Bytes = std::span<const std::byte>;

/// A parameter table file: loaded, listed.
void FuzzTbl(Bytes input);
/// The same, saved as either version and loaded again.
void FuzzTblRoundTrip(Bytes input);
/// A schedule file: read, listed.
void FuzzTfs(Bytes input);
/// The same, written and read again.
void FuzzTfsRoundTrip(Bytes input);
/// A waveform with its companion table, shown. First a byte that chooses name and header, then the
/// size of the companion in two bytes, the companion, the waveform.
void FuzzTimeSeries(Bytes input);
/// A waveform as text; a first byte chooses the header.
void FuzzTimeSeriesText(Bytes input);
/// A waveform restacked; a first byte chooses whether in one pass.
void FuzzRestack(Bytes input);
/// A list of records to leave out: read, written and read again.
void FuzzLeaveOut(Bytes input);
/// Stack results: taken apart and put together again, as comma-separated text.
void FuzzStack(Bytes input);
/// Stack results on display, as either domain, and their statistics.
void FuzzStackView(Bytes input);
/// Decays of a waveform, its points in the frequency domain, and its first trace folded, measured
/// and filtered. First method, waveform and windows of its table, then a byte of choices.
void FuzzDecay(Bytes input);
/// A survey of a few files: scanned deep, its rows, findings and page. Each file is a byte that
/// chooses its name, two bytes of its size, and its bytes.
void FuzzSurvey(Bytes input);
/// What an index holds of a file.
void FuzzSurveyFacts(Bytes input);
/// A calibration without its front-end model: read, as text.
void FuzzCalibration(Bytes input);
/// A calibration shown with its model and itself as reference.
void FuzzCalibrationView(Bytes input);
/// The front-end model of a box of one channel.
void FuzzCalibrationFit(Bytes input);
/// Calibrated spectra. First companion, box calibration and sensor calibration, each behind its
/// size in two bytes, then the waveform.
void FuzzSpectra(Bytes input);
/// The copy of a table with unsaved changes; also one of the input as path and table, the length of
/// the path in a first byte.
void FuzzUnsaved(Bytes input);
/// An archived object: loaded and stored again.
void FuzzArchive(Bytes input);
/// The cells of a grid of three columns as a file, and pasted.
void FuzzGridText(Bytes input);
/// A time as text and back, and as 8 bytes.
void FuzzTimeText(Bytes input);
/// Values as the raw editor takes them, and as strict text; a first byte chooses the type.
void FuzzValueText(Bytes input);
/// KEY=VALUE; a first byte chooses the version of the table file.
void FuzzAssignment(Bytes input);
/// A file of KEY=VALUE lines: read, applied, written and read again. First how many values of 16
/// bytes the table has beforehand, then these.
void FuzzValueLines(Bytes input);
/// A schedule as JSON: read, written and read again; the same bytes as a table.
void FuzzJson(Bytes input);

/// The rules of a table: the present time in 8 bytes, then values, each behind two bytes that
/// choose its key.
void FuzzCheck(Bytes input);

struct Target {
  std::string_view name;
  void (*run)(Bytes input);
  std::size_t largest_input;  ///< bytes that the fuzzer tries at most
  int least_rate;             ///< executions a second that it should reach
};

}  // namespace orvane::fuzz

#endif  // ORVANE_FUZZ_TARGETS_H_

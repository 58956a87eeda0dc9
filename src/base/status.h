// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_BASE_STATUS_H_
#define ORVANE_BASE_STATUS_H_

#include <string_view>

namespace orvane {

/// Result of an operation on the table or a field file. The numbers are fixed: users, boxes and
/// log files know them. They are never renumbered.
enum [[nodiscard]] Status : int{
    kOk = 0,
    kKeyNotFound = 11,         ///< no such key, or a position past the end
    kTypeMismatch = 12,        ///< the entry has another type, or the key cannot serve the request
    kTblWriteFailed = 172,     ///< a parameter table file could not be written
    kTblUnreadable = 173,      ///< a parameter table file is missing, unreadable or too short
    kTblNotRecognised = 174,   ///< the first record is not a parameter table's
    kWriteNotPermitted = 183,  ///< the current "MODE" protects the entry
    kValueTooLong = 187,       ///< the value does not fit a version-1 record
    kLongTextTooLong = 188,    ///< a long string does not fit its chain or the buffer
    kFieldNotFound = 201,      ///< a header has no field of that key
    kFieldTypeMismatch = 202,  ///< the field has another type, or one that cannot be asked for
    kIndexNotAllocated = 999,  ///< no memory for the hash index
    kNoRecordingHeader = 1222,
    kBandInvalid = 1223,    ///< no such sample-rate band, or no key for it
    kCalPassBounds = 1227,  ///< over 100 records in a pass, or over 30 passes
    kNoCalibration = 1228,
    kNoRecordOfKind = 1229,     ///< no calibration record for the settings in use
    kCalKindMismatch = 1230,    ///< no such kind of calibration, or the file is of another
    kCalPathTooLong = 1231,     ///< over 256 characters
    kAmplitudeNegative = 1232,  ///< the response of a channel is worthless
    kRateIndexInvalid = 1233,   ///< the index into the table of sample rates is not 0 to 6
    kCalNoMemory = 1234,
    kCalNotOpened = 1239,         ///< the file cannot be opened, or not be read
    kCalHeaderUnreadable = 1240,  ///< no whole header, or one without a possible channel count
    kChannelsDiffer = 1246,       ///< calibration and recording have other numbers of channels
    kCalRecordCount = 1247,       ///< no record, or over 500
};

/// What a status means, in a few words.
constexpr std::string_view StatusText(Status status) {
  switch (status) {
    case kOk:
      return "done";
    case kKeyNotFound:
      return "no such parameter";
    case kTypeMismatch:
      return "the parameter has another type";
    case kTblWriteFailed:
      return "the TBL file could not be written";
    case kTblUnreadable:
      return "the TBL file is missing, unreadable or too short";
    case kTblNotRecognised:
      return "not a TBL file";
    case kWriteNotPermitted:
      return "writing is not permitted in the current mode";
    case kValueTooLong:
      return "the value does not fit a version-1 record";
    case kLongTextTooLong:
      return "the text does not fit its chain of parameters";
    case kIndexNotAllocated:
      return "no memory for the parameter index";
    case kFieldNotFound:
      return "the header has no such field";
    case kFieldTypeMismatch:
      return "the header's field has another type";
    case kNoRecordingHeader:
      return "no settings of a recording";
    case kBandInvalid:
      return "no such sample-rate band";
    case kCalPassBounds:
      return "more than 100 records in a pass, or more than 30 passes";
    case kNoCalibration:
      return "no calibration";
    case kNoRecordOfKind:
      return "no calibration record for the settings in use";
    case kAmplitudeNegative:
      return "the response of a channel is zero or not a number";
    case kRateIndexInvalid:
      return "the index of the sample rate is not 0 to 6";
    case kChannelsDiffer:
      return "the calibration and the recording differ in their number of channels";
    case kCalKindMismatch:
      return "not a calibration of the kind asked for";
    case kCalPathTooLong:
      return "the path is longer than 256 characters";
    case kCalNoMemory:
      return "no memory for the calibration";
    case kCalNotOpened:
      return "the calibration file cannot be read";
    case kCalHeaderUnreadable:
      return "no complete calibration header of 1 to 12 channels";
    case kCalRecordCount:
      return "the number of calibration records is not 1 to 500";
  }
  return "unknown status";
}

}  // namespace orvane

#endif  // ORVANE_BASE_STATUS_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CORE_STATUS_H_
#define ORVANE_CORE_STATUS_H_

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
    kTblNotRecognised = 174,   ///< the first record is no parameter table's
    kWriteNotPermitted = 183,  ///< the current "MODE" protects the entry
    kValueTooLong = 187,       ///< the value does not fit a version-1 record
    kLongTextTooLong = 188,    ///< a long string does not fit its chain or the buffer
    kIndexNotAllocated = 999,  ///< no memory for the hash index
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
  }
  return "unknown status";
}

}  // namespace orvane

#endif  // ORVANE_CORE_STATUS_H_

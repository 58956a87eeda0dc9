// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_EMERGENCY_COPY_H_
#define ORVANE_APP_EMERGENCY_COPY_H_

#include <QLockFile>
#include <QObject>
#include <QTimer>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/orvane_doc.h"
#include "table/unsaved_table.h"

namespace orvane {

/// Keeps a copy of unsaved edits on the disk while there are any, for the case that the program or
/// the computer ends without asking, and offers such copies at the next start. Every running
/// program has a copy of its own under a lock, so that none offers or overwrites another's.
class EmergencyCopy : public QObject {
  Q_OBJECT

 public:
  /// Follows `doc` from now on. The folder is made when it is needed.
  EmergencyCopy(std::filesystem::path folder, COrvaneDoc* doc, Notices* notices);

  /// Where the user's copies are kept.
  static std::filesystem::path UsersFolder();

  /// Asks about each copy of a program that is gone, the newest first, until one is opened as the
  /// document: true. Copies that are declined or of no use stay as they are.
  bool Offer(Prompts* prompts);

 private:
  /// A copy that nobody else has.
  struct Copy {
    std::filesystem::path file;
    std::unique_ptr<QLockFile> lock;
  };

  std::vector<Copy> Abandoned() const;
  Copy Claimed(int number) const;
  bool OpenIfWanted(Copy* copy, const UnsavedTable& unsaved, Prompts* prompts);
  Result<> ClaimOwn();
  void FollowMark(bool is_modified);
  void Keep();
  void Remove();

  std::filesystem::path folder_;
  COrvaneDoc* doc_;
  Notices* notices_;
  QTimer later_;                 // for edits in a dialog that is still open
  Copy own_;                     // no lock: none yet
  std::vector<std::byte> kept_;  // what the copy holds; empty: there is none
};

}  // namespace orvane

#endif  // ORVANE_APP_EMERGENCY_COPY_H_

// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/random_file.h"

#include <cerrno>

#include "files/file_system.h"

namespace orvane {

RandomFile::~RandomFile() { Close(); }

void RandomFile::Close() {
  if (handle_ >= 0) {
    CloseRead(handle_);
    handle_ = -1;
  }
}

Result<> RandomFile::Open(const std::filesystem::path& path) {
  Close();
  const int handle = OpenToRead(path);
  FileInfo info;
  if (handle < 0 || !ReadInfo(handle, &info)) {
    Failure failure(SystemReason(errno));
    if (handle >= 0) {
      CloseRead(handle);
    }
    return failure;
  }
  if (info.kind != FileKind::kRegular) {
    CloseRead(handle);
    return Failure(info.kind == FileKind::kFolder ? SystemReason(EISDIR)
                                                  : "not a file but a device or pipe");
  }
  handle_ = handle;
  return {};
}

Result<std::uint64_t> RandomFile::Size() const {
  FileInfo info;
  if (handle_ >= 0 && !ReadInfo(handle_, &info)) {
    return Failure(SystemReason(errno));
  }
  return info.size;
}

BytesRead RandomFile::ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const {
  BytesRead read;
  while (read.count < bytes.size()) {
    const auto some =
        ReaderCalls().some_at(handle_, offset + read.count, bytes.subspan(read.count));
    if (some < 0) {
      read.outcome = Failure(SystemReason(errno));
    }
    if (some <= 0) {
      break;
    }
    read.count += static_cast<std::size_t>(some);
  }
  return read;
}

}  // namespace orvane

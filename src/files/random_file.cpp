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

std::string RandomFile::Open(const std::filesystem::path& path) {
  Close();
  const int handle = OpenToRead(path);
  FileInfo info;
  if (handle < 0 || !ReadInfo(handle, &info)) {
    std::string reason = SystemReason(errno);
    if (handle >= 0) {
      CloseRead(handle);
    }
    return reason;
  }
  if (info.kind != FileKind::kRegular) {
    CloseRead(handle);
    return info.kind == FileKind::kFolder ? SystemReason(EISDIR)
                                          : "not a file but a device or pipe";
  }
  handle_ = handle;
  return {};
}

std::uint64_t RandomFile::Size(std::string* error) const {
  FileInfo info;
  if (handle_ >= 0 && !ReadInfo(handle_, &info)) {
    *error = SystemReason(errno);
    return 0;
  }
  return info.size;
}

std::size_t RandomFile::ReadAt(std::uint64_t offset, std::span<std::byte> bytes,
                               std::string* error) const {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const auto count = ReaderCalls().some_at(handle_, offset + done, bytes.subspan(done));
    if (count < 0 && error != nullptr) {
      *error = SystemReason(errno);
    }
    if (count <= 0) {
      break;
    }
    done += static_cast<std::size_t>(count);
  }
  return done;
}

}  // namespace orvane

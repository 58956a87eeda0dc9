// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/random_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>

#include "core/file_io.h"

namespace orvane {

RandomFile::~RandomFile() { Close(); }

void RandomFile::Close() {
  if (handle_ >= 0) {
    close(handle_);
    handle_ = -1;
  }
}

std::string RandomFile::Open(const std::filesystem::path& path) {
  Close();
  // A pipe without a writer must not hold us up; for a regular file the flag means nothing.
  const int handle = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat info {};
  if (handle < 0 || fstat(handle, &info) != 0) {
    std::string reason = SystemReason(errno);
    if (handle >= 0) {
      close(handle);
    }
    return reason;
  }
  if (!S_ISREG(info.st_mode)) {
    close(handle);
    return S_ISDIR(info.st_mode) ? SystemReason(EISDIR) : "not a file but a device or pipe";
  }
  handle_ = handle;
  return {};
}

std::uint64_t RandomFile::Size() const {
  struct stat info {};
  return handle_ >= 0 && fstat(handle_, &info) == 0 ? static_cast<std::uint64_t>(info.st_size) : 0;
}

std::size_t RandomFile::ReadAt(std::uint64_t offset, std::span<std::byte> bytes,
                               std::string* error) const {
  std::size_t done = 0;
  while (done < bytes.size()) {
    if (offset + done > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) {
      break;
    }
    const auto count =
        pread(handle_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) {
      continue;
    }
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

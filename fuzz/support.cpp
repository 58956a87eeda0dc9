// SPDX-License-Identifier: GPL-3.0-or-later
#include "support.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "files/file_io.h"

namespace orvane::fuzz {
namespace {

class Folder {
 public:
  Folder() {
    const std::filesystem::path memory = "/dev/shm";
    std::error_code error;
    std::string name =
        (std::filesystem::is_directory(memory, error) ? memory
                                                      : std::filesystem::temp_directory_path()) /
        "orvane-fuzz-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
      std::perror(name.c_str());
      std::abort();
    }
    path_ = name;
    // What is written here need not outlive the machine.
    WriterCalls().sync = [](int) { return 0; };
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace

void Require(bool holds, std::string_view promise) {
  if (!holds) {
    std::fprintf(stderr, "broken: %.*s\n", static_cast<int>(promise.size()), promise.data());
    std::abort();
  }
}

std::filesystem::path PathOf(std::string_view name) {
  static const Folder folder;
  return folder.Path() / name;
}

std::filesystem::path PutFile(std::string_view name, Bytes bytes) {
  std::filesystem::path path = PathOf(name);
  std::FILE* file = std::fopen(path.c_str(), "wb");
  const bool is_written =
      bytes.empty() ||
      (file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size());
  Require(file != nullptr && std::fclose(file) == 0 && is_written, "the input can be put down");
  return path;
}

std::string FileText(const std::filesystem::path& path) {
  std::error_code error;
  const auto size = std::filesystem::file_size(path, error);
  std::string text(error ? 0 : size, '\0');
  std::ifstream file(path, std::ios::binary);
  Require(text.empty() || file.read(text.data(), static_cast<std::streamsize>(text.size())),
          "a file can be read back");
  return text;
}

BatchResult Convert(const Conversion& conversion, const std::filesystem::path& input,
                    const std::filesystem::path& output) {
  std::atomic<bool> stop = false;
  std::atomic<std::uint64_t> bytes_done = 0;
  BatchTask task(input, {output}, true, &stop, &bytes_done);
  return conversion.job(task);
}

std::size_t TakeByte(Bytes* bytes) {
  const auto first = bytes->empty() ? std::byte{0} : bytes->front();
  *bytes = bytes->subspan(bytes->empty() ? 0 : 1);
  return std::to_integer<std::size_t>(first);
}

}  // namespace orvane::fuzz

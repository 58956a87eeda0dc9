// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/temp_dir.h"

#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace orvane::testing {

TempDir::TempDir() {
  std::random_device random;
  do {
    path_ = std::filesystem::temp_directory_path() / ("orvane-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(path_));
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::size_t TempDir::Count() const {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_),
                                                std::filesystem::directory_iterator()));
}

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool MakeLink(const std::filesystem::path& target, const std::filesystem::path& link) {
  std::error_code error;
  std::filesystem::create_symlink(target, link, error);
  return !error;
}

void WriteAll(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace orvane::testing

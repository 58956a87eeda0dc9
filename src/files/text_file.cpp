// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/text_file.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace orvane {

Result<> TextFile::Open(const std::filesystem::path& path) {
  outcome_ = file_.Open(path);
  return outcome_;
}

Result<> TextFile::Commit() {
  Flush();
  return outcome_ ? file_.Commit() : outcome_;
}

void TextFile::Flush() {
  if (outcome_) {
    outcome_ = file_.Write(std::as_bytes(std::span<const char>(buffer_.get(), at_)));
  }
  at_ = buffer_.get();
}

TextFile& TextFile::Text(std::string_view text) {
  while (text.size() > kRoom) {
    Text(text.substr(0, kRoom));
    text.remove_prefix(kRoom);
  }
  std::memcpy(at_, text.data(), text.size());
  return Took(at_ + text.size());
}

void TextFile::Fill(std::size_t count) {
  std::memset(at_, ' ', count);
  Took(at_ + count);
}

TextFile& TextFile::TextRight(std::string_view text, std::size_t width) {
  Fill(std::min(width - std::min(width, text.size()), kRoom));
  return Text(text);
}

TextFile& TextFile::TextLeft(std::string_view text, std::size_t width) {
  Text(text);
  Fill(std::min(width - std::min(width, text.size()), kRoom));
  return *this;
}

}  // namespace orvane

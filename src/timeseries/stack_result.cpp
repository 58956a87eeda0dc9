// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/stack_result.h"

#include <algorithm>
#include <cstring>

namespace orvane {
namespace {

constexpr std::size_t kPiece = std::size_t{128} * 1024;
constexpr std::size_t kLargestRecord = sizeof(StackHeader) + 255 + std::size_t{255} * 255;
static_assert(kLargestRecord < kPiece);

constexpr std::size_t kExtensionValueAt = 16;

}  // namespace

std::string_view StackHeader::Label() const {
  return {label.data(), strnlen(label.data(), label.size())};
}

float StackRecord::ExtensionValue() const {
  if (extension.size() < kExtensionValueAt + sizeof(float)) {
    return 0;
  }
  return RecordFrom<Le<float>>(extension.subspan(kExtensionValueAt));
}

// Whether that many bytes are at hand, after reading on if need be.
bool StackReader::Have(std::size_t size) {
  if (unread_.size() < size && file_.Outcome()) {
    if (buffer_ == nullptr) {
      buffer_ = std::make_unique_for_overwrite<std::byte[]>(kPiece);  // NOLINT: as declared
    }
    const std::span buffer(buffer_.get(), kPiece);
    std::copy(unread_.begin(), unread_.end(), buffer.begin());  // to the front, where they fit
    unread_ = buffer.first(unread_.size() + file_.Read(buffer.subspan(unread_.size())));
  }
  return unread_.size() >= size;
}

bool StackReader::Next(StackRecord* record) {
  if (!Have(sizeof(StackHeader))) {
    return false;
  }
  record->header = RecordFrom<StackHeader>(unread_);
  const std::size_t size = record->header.RecordBytes();
  if (!Have(size)) {
    return false;
  }
  record->extension = unread_.subspan(sizeof(StackHeader), record->header.extension_size);
  record->items = unread_.subspan(sizeof(StackHeader) + record->header.extension_size,
                                  record->header.ItemBytes());
  unread_ = unread_.subspan(size);
  offset_ += size;
  return true;
}

}  // namespace orvane

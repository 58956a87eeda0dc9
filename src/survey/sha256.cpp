// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/sha256.h"

#include <algorithm>
#include <bit>
#include <vector>

#include "files/file_io.h"

namespace orvane {
namespace {

// Fractions of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> kRoots = {
    0x428A2F98, 0x71374491, 0xB5C0FBCF, 0xE9B5DBA5, 0x3956C25B, 0x59F111F1, 0x923F82A4, 0xAB1C5ED5,
    0xD807AA98, 0x12835B01, 0x243185BE, 0x550C7DC3, 0x72BE5D74, 0x80DEB1FE, 0x9BDC06A7, 0xC19BF174,
    0xE49B69C1, 0xEFBE4786, 0x0FC19DC6, 0x240CA1CC, 0x2DE92C6F, 0x4A7484AA, 0x5CB0A9DC, 0x76F988DA,
    0x983E5152, 0xA831C66D, 0xB00327C8, 0xBF597FC7, 0xC6E00BF3, 0xD5A79147, 0x06CA6351, 0x14292967,
    0x27B70A85, 0x2E1B2138, 0x4D2C6DFC, 0x53380D13, 0x650A7354, 0x766A0ABB, 0x81C2C92E, 0x92722C85,
    0xA2BFE8A1, 0xA81A664B, 0xC24B8B70, 0xC76C51A3, 0xD192E819, 0xD6990624, 0xF40E3585, 0x106AA070,
    0x19A4C116, 0x1E376C08, 0x2748774C, 0x34B0BCB5, 0x391C0CB3, 0x4ED8AA4A, 0x5B9CCA4F, 0x682E6FF3,
    0x748F82EE, 0x78A5636F, 0x84C87814, 0x8CC70208, 0x90BEFFFA, 0xA4506CEB, 0xBEF9A3F7, 0xC67178F2};

std::uint32_t BigEndian(const std::byte* bytes) {
  std::uint32_t number = 0;
  for (int i = 0; i < 4; ++i) {
    number = number << 8U | static_cast<std::uint32_t>(bytes[i]);
  }
  return number;
}

}  // namespace

void Sha256::Block(const std::byte* block) {
  std::array<std::uint32_t, 64> words{};
  for (std::size_t i = 0; i < 16; ++i) {
    words[i] = BigEndian(block + 4 * i);
  }
  for (std::size_t i = 16; i < 64; ++i) {
    const std::uint32_t a = words[i - 15];
    const std::uint32_t b = words[i - 2];
    words[i] = words[i - 16] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ (a >> 3U)) + words[i - 7] +
               (std::rotr(b, 17) ^ std::rotr(b, 19) ^ (b >> 10U));
  }
  auto [a, b, c, d, e, f, g, h] = state_;
  for (std::size_t i = 0; i < 64; ++i) {
    const std::uint32_t one = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                              ((e & f) ^ (~e & g)) + kRoots[i] + words[i];
    const std::uint32_t two =
        (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
    h = g, g = f, f = e, e = d + one;
    d = c, c = b, b = a, a = one + two;
  }
  const std::array<std::uint32_t, 8> added = {a, b, c, d, e, f, g, h};
  std::transform(state_.begin(), state_.end(), added.begin(), state_.begin(), std::plus<>());
}

void Sha256::Add(std::span<const std::byte> bytes) {
  std::size_t filled = size_ % rest_.size();
  size_ += bytes.size();
  if (filled > 0) {
    const std::size_t count = std::min(rest_.size() - filled, bytes.size());
    std::copy_n(bytes.begin(), count, rest_.begin() + static_cast<std::ptrdiff_t>(filled));
    bytes = bytes.subspan(count);
    filled += count;
    if (filled < rest_.size()) {
      return;
    }
    Block(rest_.data());
  }
  for (; bytes.size() >= rest_.size(); bytes = bytes.subspan(rest_.size())) {
    Block(bytes.data());
  }
  std::copy(bytes.begin(), bytes.end(), rest_.begin());
}

std::string Sha256::Finish() {
  const std::uint64_t bits = size_ * 8;
  std::vector<std::byte> end((size_ % 64 < 56 ? 56 : 120) - size_ % 64);
  end[0] = std::byte{0x80};
  for (unsigned shift = 64; shift > 0; shift -= 8) {
    end.push_back(static_cast<std::byte>(bits >> (shift - 8)));
  }
  Add(end);
  std::string text;
  for (const std::uint32_t word : state_) {
    for (unsigned shift = 32; shift > 0; shift -= 4) {
      text += "0123456789abcdef"[word >> (shift - 4) & 0xFU];
    }
  }
  return text;
}

Result<std::string> Sha256OfFile(const std::filesystem::path& path,
                                 const std::function<bool()>& stopped) {
  constexpr std::size_t kPiece = 262'144;
  InFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    return Failure(opened.Message());
  }
  std::vector<std::byte> piece(kPiece);
  Sha256 sum;
  std::size_t count = kPiece;
  while (count == kPiece && !stopped()) {
    count = file.Read(piece);
    sum.Add(std::span(piece).first(count));
  }
  if (!file.Outcome()) {
    return Failure(file.Outcome().Message());
  }
  return stopped() ? Result<std::string>(Failure("stopped")) : sum.Finish();
}

}  // namespace orvane

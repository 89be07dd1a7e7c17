#include "quv/base/bitfld.h"

#include <algorithm>
#include <bit>

namespace quv {
namespace {

constexpr std::int32_t kWordBits = 64;

std::size_t WordsFor(std::int32_t bits) {
  return static_cast<std::size_t>((bits + kWordBits - 1) / kWordBits);
}

std::uint64_t Combine(std::uint64_t a, std::uint64_t b, TLogicOp op) {
  switch (op) {
    case loAND:
      return a & b;
    case loNAND:
      return ~(a & b);
    case loXOR:
      return a ^ b;
    case loOR:
      return a | b;
    case loNOR:
      return ~(a | b);
    case loXNOR:
      return ~(a ^ b);
    case loANDNOT:
      return a & ~b;
  }
  return a;
}

}  // namespace

TBitFld::TBitFld(std::int32_t nrOfBits) {
  Resize(nrOfBits);
}

void TBitFld::Resize(std::int32_t nrOfBits) {
  nrOfBits = std::max(nrOfBits, 0);
  words_.resize(WordsFor(nrOfBits), 0);
  size_ = nrOfBits;
  ClearTail();
}

bool TBitFld::Bit(std::int32_t ix) const {
  if (ix < 1 || ix > size_) return false;
  const auto i = static_cast<std::uint32_t>(ix - 1);
  return (words_[i / kWordBits] >> (i % kWordBits)) & 1u;
}

void TBitFld::SetBit(std::int32_t ix, bool value) {
  if (ix < 1 || ix > size_) return;
  const auto i = static_cast<std::uint32_t>(ix - 1);
  const std::uint64_t mask = std::uint64_t{1} << (i % kWordBits);
  if (value) {
    words_[i / kWordBits] |= mask;
  } else {
    words_[i / kWordBits] &= ~mask;
  }
}

void TBitFld::ToggleBit(std::int32_t ix) {
  SetBit(ix, !Bit(ix));
}

void TBitFld::Clear() {
  std::fill(words_.begin(), words_.end(), 0);
}

void TBitFld::SetAll() {
  std::fill(words_.begin(), words_.end(), ~std::uint64_t{0});
  ClearTail();
}

std::int32_t TBitFld::CountTrueBits() const {
  std::int32_t count = 0;
  for (std::uint64_t w : words_)
    count += std::popcount(w);
  return count;
}

void TBitFld::CombineWith(const TBitFld& other, TLogicOp op) {
  for (std::size_t i = 0; i < words_.size(); ++i) {
    const std::uint64_t b = i < other.words_.size() ? other.words_[i] : 0;
    words_[i] = Combine(words_[i], b, op);
  }
  ClearTail();
}

// Keeps the unused bits of the last word clear, so that counting and comparing stay exact.
void TBitFld::ClearTail() {
  const std::int32_t used = size_ % kWordBits;
  if (used != 0) words_.back() &= (std::uint64_t{1} << used) - 1;
}

}  // namespace quv

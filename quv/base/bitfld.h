// TBitFld: a resizable field of bits with 1-based indices, as the containers count.
#pragma once

#include <cstdint>
#include <vector>

namespace quv {

/// Logical operations of TBitFld::CombineWith; `this` is the left operand.
/// loOR (ordinal 3) keeps every bit that is set in either field.
enum TLogicOp : std::uint8_t {
  loAND,     ///< a and b
  loNAND,    ///< not (a and b)
  loXOR,     ///< a xor b
  loOR,      ///< a or b
  loNOR,     ///< not (a or b)
  loXNOR,    ///< not (a xor b)
  loANDNOT,  ///< a and not b: clears the bits set in b
};

/// A field of NrOfBits() bits numbered 1..NrOfBits(). Reads outside the range give false and
/// writes outside it are ignored, like the element access of the containers.
class TBitFld {
 public:
  explicit TBitFld(std::int32_t nrOfBits = 0);

  std::int32_t NrOfBits() const { return size_; }
  /// Changes the number of bits; kept bits keep their values, new bits are clear.
  void Resize(std::int32_t nrOfBits);

  bool Bit(std::int32_t ix) const;
  void SetBit(std::int32_t ix, bool value);
  void ToggleBit(std::int32_t ix);

  /// Clears every bit.
  void Clear();
  /// Sets every bit.
  void SetAll();
  /// Number of set bits.
  std::int32_t CountTrueBits() const;

  /// this := this <op> other, bit by bit over the common length; bits of this beyond the
  /// other's length are combined with clear bits.
  void CombineWith(const TBitFld& other, TLogicOp op);

  friend bool operator==(const TBitFld&, const TBitFld&) = default;

 private:
  void ClearTail();

  std::int32_t size_ = 0;
  std::vector<std::uint64_t> words_;
};

}  // namespace quv

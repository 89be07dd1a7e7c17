#include "quv/base/crc32.h"

#include <array>

namespace quv {
namespace {

constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t n = 0; n < 256; ++n) {
    std::uint32_t c = n;
    for (int k = 0; k < 8; ++k)
      c = (c & 1u) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
    table[n] = c;
  }
  return table;
}

constexpr std::array<std::uint32_t, 256> kCrcTable = MakeCrcTable();

}  // namespace

std::uint32_t CalcNextCRC32(std::uint8_t byte, std::uint32_t crc) {
  return kCrcTable[(crc ^ byte) & 0xFFu] ^ (crc >> 8);
}

std::uint32_t CRC32OfBytes(const void* data, std::size_t size) {
  const auto* bytes = static_cast<const std::uint8_t*>(data);
  std::uint32_t crc = 0xFFFFFFFFu;
  for (std::size_t i = 0; i < size; ++i)
    crc = CalcNextCRC32(bytes[i], crc);
  return ~crc;
}

}  // namespace quv

// One step of the standard reflected CRC-32 (polynomial 0xEDB88320).
#pragma once

#include <cstddef>
#include <cstdint>

namespace quv {

/// Feeds one byte into a CRC-32 register and returns the new register. Start the register at
/// 0xFFFFFFFF and invert it at the end: "123456789" then gives 0xCBF43926.
std::uint32_t CalcNextCRC32(std::uint8_t byte, std::uint32_t crc);

/// The finished CRC-32 (start 0xFFFFFFFF, final inversion) of a block of bytes.
std::uint32_t CRC32OfBytes(const void* data, std::size_t size);

}  // namespace quv

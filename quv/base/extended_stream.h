// 10-byte extended values in binary streams.
//
// The layout is the x87 80-bit format, little-endian: a 64-bit significand with an explicit
// integer bit (bytes 0..7), then 15 exponent bits biased by 16383 and the sign bit (bytes
// 8..9). 1.0 is 00 00 00 00 00 00 00 80 FF 3F. Where long double is the x87 format on a
// little-endian machine the image is its memory; elsewhere encoding and decoding go through
// frexp/ldexp, so that files are byte-identical on every platform.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>

#include "quv/base/types.h"

namespace quv {

using TExtendedBytes = std::array<std::uint8_t, 10>;

/// The 10-byte image of a value. Values beyond the extended range become infinities; NaNs
/// are written as the quiet NaN with the value's sign.
TExtendedBytes EncodeExtended(Extended value);
/// The value of a 10-byte image (rounded to long double where that is narrower).
Extended DecodeExtended(const TExtendedBytes& bytes);

namespace detail {
/// The arithmetic encoding behind EncodeExtended, used on every platform whose long double
/// is not the x87 format; exposed so that it can be tested everywhere.
TExtendedBytes EncodeExtendedPortable(Extended value);
Extended DecodeExtendedPortable(const TExtendedBytes& bytes);
}  // namespace detail

/// Writes the 10-byte image of value at the stream's current position.
void WriteExtendedToStream(std::ostream& stream, Extended value);
/// Reads one 10-byte value. When fewer than 10 bytes can be read, readError is set to true
/// and 0 is returned; otherwise readError is set to false.
Extended ReadExtendedFromStream(std::istream& stream, bool& readError);

}  // namespace quv

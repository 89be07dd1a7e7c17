// A program outside the library's build that uses it through the installed package.
#include <cstdint>
#include <iostream>

#include "quv/quv.h"

int main() {
  std::uint32_t crc = 0xFFFFFFFFu;
  for (char c : std::string("123456789"))
    crc = quv::CalcNextCRC32(static_cast<std::uint8_t>(c), crc);
  crc = ~crc;
  std::cout << std::hex << crc << '\n';
  return crc == 0xCBF43926u ? 0 : 1;
}

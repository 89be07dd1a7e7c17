// quvmath encode: the binary images the library writes for numbers.
#include <cstdio>
#include <ostream>
#include <string>

#include "commands.h"
#include "quv/base/base.h"

namespace quvmath {

const std::string_view kEncodeHelp =
    "usage: quvmath encode NUMBER...\n"
    "\n"
    "Prints, for each number, its 10-byte extended image as stored in binary streams\n"
    "(bytes in file order) and the CRC-32 of that image. Numbers are read in extended\n"
    "precision, so 1e4932 and 1e-4940 get their own images; beyond that range they are\n"
    "refused.\n";

namespace {

std::string HexBytes(const quv::TExtendedBytes& bytes) {
  std::string text;
  char buf[4];
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    std::snprintf(buf, sizeof buf, i == 0 ? "%02X" : " %02X", bytes[i]);
    text += buf;
  }
  return text;
}

}  // namespace

int RunEncode(const Args& all, std::ostream& out) {
  const Args args = ParseOptions(all, {}).operands;
  if (args.empty()) throw UsageError{"encode needs at least one number"};
  std::vector<std::vector<std::string>> rows{{"number", "extended bytes", "CRC-32"}};
  for (const std::string& arg : args) {
    const quv::TExtendedBytes bytes = quv::EncodeExtended(ParseExtended(arg));
    char crc[9];
    std::snprintf(crc, sizeof crc, "%08X", quv::CRC32OfBytes(bytes.data(), bytes.size()));
    rows.push_back({arg, HexBytes(bytes), crc});
  }
  PrintTable(out, rows);
  return 0;
}

}  // namespace quvmath

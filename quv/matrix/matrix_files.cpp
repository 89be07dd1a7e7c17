// The file helpers shared by the matrices: binary header, stream length and the XML
// document loop.
#include "quv/matrix/matrix_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ios>
#include <istream>

namespace quv::detail {
namespace {

void PutInt32(std::string& bytes, std::size_t offset, std::int32_t value) {
  const auto u = static_cast<std::uint32_t>(value);
  for (std::size_t k = 0; k < 4; ++k)
    bytes[offset + k] = static_cast<char>((u >> (8 * k)) & 0xFFu);
}

std::int32_t GetInt32(const std::string& bytes, std::size_t offset) {
  std::uint32_t u = 0;
  for (std::size_t k = 0; k < 4; ++k)
    u |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[offset + k])) << (8 * k);
  return static_cast<std::int32_t>(u);
}

}  // namespace

std::string EncodeMatrixHeader(const std::array<std::int32_t, 4>& dims, std::string_view dataID) {
  std::string bytes(kMatHeaderSize, '\0');
  for (std::size_t k = 0; k < dims.size(); ++k)
    PutInt32(bytes, 4 * k, dims[k]);
  const std::size_t n = std::min<std::size_t>(dataID.size(), 255);
  bytes[kMatHeaderIDOffset] = static_cast<char>(n);
  dataID.copy(bytes.data() + kMatHeaderIDOffset + 1, n);
  PutInt32(bytes, kMatHeaderKindOffset, kMatHeaderKind);
  return bytes;
}

bool ReadMatrixHeader(const std::string& fileName, std::array<std::int32_t, 4>& dims,
                      std::string& dataID, std::int32_t& kind) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(fileName, ec)) return false;
  std::ifstream file(fileName, std::ios::binary);
  std::string bytes(kMatHeaderSize, '\0');
  if (!file || !file.read(bytes.data(), static_cast<std::streamsize>(bytes.size())))
    throw std::ios_base::failure("ReadBinaryHeader: cannot read the header of \"" + fileName +
                                 "\"");
  for (std::size_t k = 0; k < dims.size(); ++k)
    dims[k] = GetInt32(bytes, 4 * k);
  const auto n = static_cast<unsigned char>(bytes[kMatHeaderIDOffset]);
  dataID.assign(bytes, kMatHeaderIDOffset + 1, n);
  kind = GetInt32(bytes, kMatHeaderKindOffset);
  return true;
}

std::int64_t StreamBytesLeft(std::istream& stream) {
  const std::istream::pos_type here = stream.tellg();
  if (here == std::istream::pos_type(-1)) {
    stream.clear(stream.rdstate() & ~std::ios::failbit);
    return -1;
  }
  stream.seekg(0, std::ios::end);
  const std::istream::pos_type end = stream.tellg();
  stream.seekg(here);
  if (end == std::istream::pos_type(-1)) return -1;
  return static_cast<std::int64_t>(end - here);
}

std::int32_t ReadMatrixDocument(std::istream& stream, std::string_view dataID,
                                const TMatTagHandler& handler, std::string& foundID) {
  bool inside = false;    // within the selected matrix element
  bool skipping = false;  // within a matrix element of another identifier
  std::int32_t status = kMatFileOk;
  const TXmlReadResult result = ReadXmlTags(stream, [&](const TXmlTag& element) {
    const TMatXmlTag tag = MatXmlTagOf(element.Name);
    if (!inside) {
      if (tag == TMatXmlTag::xmlMatEnd) skipping = false;
      if (tag != TMatXmlTag::xmlMatBegin || skipping) return kXmlTagGoOn;
      std::string id;
      XmlAttribute(element.Attributes, kMatXmlDataIDAttribute, id);
      if (!dataID.empty() && id != dataID) {
        skipping = true;
        return kXmlTagGoOn;
      }
      foundID = std::move(id);
      inside = true;
    }
    const std::int32_t r = handler(tag, element);
    if (r == kMatXmlTagDone || r == kMatXmlTagGoOn) return r;
    status = r == kMatXmlTagInvalid ? kMatXmlInvalidTag : r;
    return kXmlTagInvalid;
  });
  switch (result) {
    case xrDone:
      return kMatFileOk;
    case xrInvalidTag:
      return status;
    case xrMalformed:
      return kMatXmlMalformed;
    case xrCutShort:
      break;
  }
  return inside ? kMatXmlCutShort : kMatXmlNoMatrix;
}

}  // namespace quv::detail

// What the file forms of the matrices share: the XML tag vocabulary, the status codes of the
// document readers, the 4096-byte binary header and small stream helpers. TMatrix uses them
// here; the three- and four-dimensional matrices use the same vocabulary and header.
//
// XML form of a matrix (written with CR LF line ends, two-blank indentation):
//
//   <?xml version="1.0" encoding="UTF-8"?>        only when the writer is asked for it
//   <matrix dataid="spectra">                      dataid only when the identifier is not empty
//     <numcols>3</numcols>
//     <numrows>2</numrows>
//     <cell ix="1" iy="1">0.25</cell>              one per element, column by column
//     ...
//   </matrix>
//
// Values are written in the shortest form that reads back bit-exact (TXmlNumber: "-0",
// "5e-324", "NaN", "INF", "-INF"); the precision pair of the matrix is not used by files.
// Readers accept anything the XML layer (quv/base/xml.h) accepts: comments, a declaration,
// attributes in any order and either quote, other elements around the matrix element.
//
// The tag enumerations of the XML forms are scoped (TMatXmlTag::xmlInvalid), unlike every
// other enumeration of the library: the vocabularies of the matrices, the self-organising
// map and the memory-based learner share value names such as xmlInvalid and xmlComment.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "quv/base/xml.h"

namespace quv {

/// The tags of the matrix documents, in the order of their texts kMatXmlTagText.
enum class TMatXmlTag : std::uint8_t {
  xmlMatNumCols,       ///< "numcols": content the number of columns
  xmlMatNumRows,       ///< "numrows": content the number of rows
  xmlMatNumLayers,     ///< "numplanes": content the number of layers (3D and 4D)
  xmlMatNumTimeSlots,  ///< "numtimeslots": content the number of time slots (4D)
  xmlMatCell,          ///< "cell": attributes ix, iy (iz, it), content the value
  xmlMatBegin,         ///< "matrix": opens the matrix
  xmlMatEnd,           ///< "/matrix": closes the matrix
  xmlInvalid           ///< "invalidtag": any other tag
};

inline constexpr std::array<std::string_view, 8> kMatXmlTagText = {
    "numcols", "numrows", "numplanes", "numtimeslots", "cell", "matrix", "/matrix", "invalidtag"};

/// The tag of an element name (xmlInvalid for any other name).
inline TMatXmlTag MatXmlTagOf(std::string_view name) {
  return XmlTagOf(name, kMatXmlTagText, TMatXmlTag::xmlInvalid);
}
/// The text of a tag.
inline std::string_view MatXmlTagText(TMatXmlTag tag) {
  return kMatXmlTagText[static_cast<std::size_t>(tag)];
}

/// Attribute of the matrix element that carries the data identifier.
inline constexpr std::string_view kMatXmlDataIDAttribute = "dataid";

/// Results of ProcessXmlTag.
inline constexpr std::int32_t kMatXmlTagGoOn = kXmlTagGoOn;        ///< 0: go on
inline constexpr std::int32_t kMatXmlTagDone = kXmlTagDone;        ///< 1: closing matrix tag
inline constexpr std::int32_t kMatXmlTagInvalid = kXmlTagInvalid;  ///< -1: invalid tag

/// Results of the whole-document readers (ReadFromXMLStream, ReadFromOpenXMLFile,
/// LoadFromXMLFile). On every result but kMatFileOk the matrix is left as it was.
inline constexpr std::int32_t kMatFileOk = 0;
/// The document ended inside the matrix element, before its closing tag.
inline constexpr std::int32_t kMatXmlCutShort = -1;
/// Inside the matrix element: a tag outside the vocabulary, a size that is not a whole
/// number, or a cell whose ix, iy or value cannot be read as a number.
inline constexpr std::int32_t kMatXmlInvalidTag = -2;
/// Markup that is not XML.
inline constexpr std::int32_t kMatXmlMalformed = -3;
/// At the first cell: a size that was not announced, is below 1, or asks for more elements
/// than the document has bytes left (every written element takes more than 20 bytes).
inline constexpr std::int32_t kMatXmlBadSize = -4;
/// The document holds no matrix element with the requested identifier.
inline constexpr std::int32_t kMatXmlNoMatrix = -5;
/// The file does not exist or cannot be opened (the ASC readers' code).
inline constexpr std::int32_t kMatFileNotFound = -8;

/// Binary header of the matrix files: 4096 bytes, little-endian.
inline constexpr std::size_t kMatHeaderSize = 4096;
inline constexpr std::size_t kMatHeaderIDOffset = 16;     ///< length byte + up to 255 characters
inline constexpr std::size_t kMatHeaderKindOffset = 272;  ///< Int32, 1 for a valid file
inline constexpr std::int32_t kMatHeaderKind = 1;

namespace detail {

/// The 4096-byte header with the four dimensions (unused ones 0), the identifier (cut to 255
/// characters) and the kind 1.
std::string EncodeMatrixHeader(const std::array<std::int32_t, 4>& dims, std::string_view dataID);
/// Reads the header of a binary matrix file. False when the file does not exist; raises
/// std::ios_base::failure naming the file when it holds fewer than 4096 bytes or cannot be
/// read. Otherwise the four dimensions, the identifier and the kind are returned and the
/// result is true.
bool ReadMatrixHeader(const std::string& fileName, std::array<std::int32_t, 4>& dims,
                      std::string& dataID, std::int32_t& kind);

/// Bytes from the stream's read position to its end, or -1 when the stream cannot tell.
std::int64_t StreamBytesLeft(std::istream& stream);

/// Element handler of ReadMatrixDocument: the tag (from the vocabulary) and the element.
using TMatTagHandler = std::function<std::int32_t(TMatXmlTag tag, const TXmlTag& element)>;

/// The document loop of the matrix readers. Skips everything up to the first matrix element
/// whose dataid attribute equals dataID (any matrix element when dataID is empty; foundID
/// receives its identifier), then hands that element and every element inside it to handler
/// until the handler returns kMatXmlTagDone (kMatFileOk) or kMatXmlTagInvalid
/// (kMatXmlInvalidTag); other ends give kMatXmlCutShort, kMatXmlMalformed or kMatXmlNoMatrix.
/// A handler may also return one of the negative reader results itself to stop with it.
std::int32_t ReadMatrixDocument(std::istream& stream, std::string_view dataID,
                                const TMatTagHandler& handler, std::string& foundID);

}  // namespace detail
}  // namespace quv

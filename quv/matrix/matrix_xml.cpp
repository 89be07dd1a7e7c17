// TMatrix in XML: the tag handler, the document readers and the writers (layout in
// matrix_files.h).
#include <fstream>
#include <ios>
#include <istream>
#include <ostream>

#include "quv/matrix/tmatrix.h"

namespace quv {

std::int32_t TMatrix::ProcessXmlTag(TMatXmlTag Tag, std::string_view Attributes,
                                    std::string_view Content) {
  switch (Tag) {
    case TMatXmlTag::xmlMatBegin:
      // A new document: nothing announced yet, the matrix not yet sized for it.
      xmlNumCols_ = 0;
      xmlNumRows_ = 0;
      xmlNotSized_ = true;
      return kMatXmlTagGoOn;
    case TMatXmlTag::xmlMatNumCols:
      return XmlParseInt(Content, xmlNumCols_) ? kMatXmlTagGoOn : kMatXmlTagInvalid;
    case TMatXmlTag::xmlMatNumRows:
      return XmlParseInt(Content, xmlNumRows_) ? kMatXmlTagGoOn : kMatXmlTagInvalid;
    case TMatXmlTag::xmlMatNumLayers:
    case TMatXmlTag::xmlMatNumTimeSlots:
      return kMatXmlTagGoOn;
    case TMatXmlTag::xmlMatCell: {
      std::int32_t ix = 0;
      std::int32_t iy = 0;
      double value = 0.0;
      if (!XmlIntAttribute(Attributes, "ix", ix) || !XmlIntAttribute(Attributes, "iy", iy) ||
          !XmlParseDouble(Content, value))
        return kMatXmlTagInvalid;
      if (xmlNotSized_) {
        xmlNotSized_ = false;
        if (std::int64_t{xmlNumCols_} * xmlNumRows_ > kMaxXmlElements)
          RaiseComponentError<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap);
        Resize(xmlNumCols_, xmlNumRows_);
      }
      SetVal(ix, iy, value);
      return kMatXmlTagGoOn;
    }
    case TMatXmlTag::xmlMatEnd:
      return kMatXmlTagDone;
    case TMatXmlTag::xmlInvalid:
      break;
  }
  return kMatXmlTagInvalid;
}

std::int32_t TMatrix::ReadFromXMLStream(std::istream& Stream, const std::string& DataID) {
  // The document is read into a copy, which replaces the matrix only when complete.
  TMatrix work;
  work.store_ = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap,
                                                 [this] { return store_; });
  work.ncols_ = ncols_;
  work.nrows_ = nrows_;
  work.SetName(Name());
  const std::int64_t bytesLeft = detail::StreamBytesLeft(Stream);
  std::string foundID;
  const std::int32_t status = detail::ReadMatrixDocument(
      Stream, DataID,
      [&](TMatXmlTag tag, const TXmlTag& element) -> std::int32_t {
        if (tag == TMatXmlTag::xmlMatCell && work.xmlNotSized_) {
          const std::int64_t n = std::int64_t{work.xmlNumCols_} * work.xmlNumRows_;
          if (work.xmlNumCols_ < 1 || work.xmlNumRows_ < 1 || n > kMaxXmlElements ||
              (bytesLeft >= 0 && n > bytesLeft))
            return kMatXmlBadSize;
        }
        return work.ProcessXmlTag(tag, element.Attributes, element.Content);
      },
      foundID);
  if (status != kMatFileOk) return status;
  ReplaceStore(std::move(work.store_));
  SetDataID(std::move(foundID));
  return kMatFileOk;
}

std::int32_t TMatrix::ReadFromOpenXMLFile(std::istream& TextFile, const std::string& DataID) {
  return ReadFromXMLStream(TextFile, DataID);
}

std::int32_t TMatrix::LoadFromXMLFile(const std::string& FileName, const std::string& DataID) {
  std::ifstream file(FileName, std::ios::binary);
  if (!file) return kMatFileNotFound;
  return ReadFromXMLStream(file, DataID);
}

void TMatrix::WriteToXMLStream(std::ostream& Stream, bool WithDeclaration,
                               const std::string& DataID) const {
  TXmlWriter w(Stream);
  if (WithDeclaration) w.Declaration();
  if (DataID.empty()) {
    w.Open(MatXmlTagText(TMatXmlTag::xmlMatBegin));
  } else {
    w.Open(MatXmlTagText(TMatXmlTag::xmlMatBegin), {{kMatXmlDataIDAttribute, DataID}});
  }
  w.Element(MatXmlTagText(TMatXmlTag::xmlMatNumCols), TXmlNumber(ncols_));
  w.Element(MatXmlTagText(TMatXmlTag::xmlMatNumRows), TXmlNumber(nrows_));
  const std::string_view cell = MatXmlTagText(TMatXmlTag::xmlMatCell);
  for (std::int32_t c = 1; c <= ncols_; ++c) {
    const TXmlNumber ix(c);
    for (std::int32_t r = 1; r <= nrows_; ++r)
      w.Element(cell, TXmlNumber(At(c, r)), {{"ix", ix}, {"iy", TXmlNumber(r)}});
  }
  w.Close(MatXmlTagText(TMatXmlTag::xmlMatBegin));
}

void TMatrix::WriteToOpenXMLFile(std::ostream& TextFile, bool WithDeclaration,
                                 const std::string& DataID) const {
  WriteToXMLStream(TextFile, WithDeclaration, DataID);
}

void TMatrix::SaveAsXMLFile(const std::string& FileName, const std::string& DataID) const {
  std::ofstream file(FileName, std::ios::binary | std::ios::trunc);
  if (!file) throw std::ios_base::failure("SaveAsXMLFile: cannot create file \"" + FileName + "\"");
  WriteToXMLStream(file, true, DataID);
  file.flush();
  if (!file) throw std::ios_base::failure("SaveAsXMLFile: cannot write file \"" + FileName + "\"");
}

}  // namespace quv

// TDataTable: the XML form, through the library's XML layer.
//
// A document is read into a draft that grows only with what the document holds: the sizes it
// announces are checked against the cells it really gives before the table is allocated, so a
// hostile size costs nothing. The table takes the draft over at the closing tag.
#include <filesystem>
#include <fstream>
#include <istream>
#include <ostream>

#include "quv/datatable/datatable_core.h"
#include "quv/datatable/datatable_xml_draft.h"

namespace quv {

namespace detail {

std::string TDTXmlDraft::Size(std::string_view content, std::int32_t& size) const {
  if (itemsBegun) return "size given after the cells";
  if (size != 0) return "size given twice";
  std::int32_t n = 0;
  if (!XmlParseInt(content, n) || n < 1) return "size is not a whole number from 1 on";
  size = n;
  return {};
}

std::string TDTXmlDraft::Index(std::string_view attrs, std::string_view name, std::int32_t hi,
                               std::int32_t& ix) const {
  if (hi == 0) return "numcols and numrows must come first";
  if (!XmlIntAttribute(attrs, name, ix) || ix < 1 || ix > hi)
    return std::string(name) + " outside 1.." + std::to_string(hi);
  return {};
}

std::string TDTXmlDraft::Name(std::string_view attrs, std::string& name) {
  name.clear();
  XmlAttribute(attrs, "name", name);
  return name.size() > kMaxDTNameLength ? "name longer than 50 characters" : "";
}

std::string TDTXmlDraft::Take(TDTXmlTag tag, const TXmlTag& t) {
  const std::string_view a = t.Attributes;
  std::string why;
  switch (tag) {
    case xmlDTComment:
      comment.assign(t.Content);
      return {};
    case xmlDTNumCols:
      return Size(t.Content, cols);
    case xmlDTNumRows:
      return Size(t.Content, rows);
    case xmlDTColumn: {
      Column c;
      std::int32_t scale = 0;
      if (!(why = Index(a, "ix", cols, c.ix)).empty()) return why;
      if (XmlIntAttribute(a, "scale", scale) && (scale < stUnknown || scale > stRatio))
        return "scale beyond 4";
      c.scale = static_cast<TMScaleType>(scale);
      XmlIntAttribute(a, "attrib", c.attrib);
      if (!(why = Name(a, c.name)).empty()) return why;
      columns.push_back(std::move(c));
      break;
    }
    case xmlDTNominalID: {
      NominalID n;
      if (!(why = Index(a, "ix", cols, n.ix)).empty()) return why;
      if (!XmlIntAttribute(a, "slot", n.slot) || n.slot < 0 || n.slot >= kNominalSlots)
        return "slot outside 0..150";
      if (t.Content.size() > kMaxNominalIDLength) return "identifier longer than 10 characters";
      n.id.assign(t.Content);
      ids.push_back(std::move(n));
      break;
    }
    case xmlDTRow: {
      Row r;
      if (!(why = Index(a, "iy", rows, r.iy)).empty()) return why;
      XmlIntAttribute(a, "attrib", r.attrib);
      if (!(why = Name(a, r.name)).empty()) return why;
      rowItems.push_back(std::move(r));
      break;
    }
    case xmlDTCell: {
      Cell c;
      std::int32_t state = 0;
      if (!(why = Index(a, "ix", cols, c.ix)).empty()) return why;
      if (!(why = Index(a, "iy", rows, c.iy)).empty()) return why;
      if (XmlIntAttribute(a, "state", state) && (state < 0 || state > 255))
        return "state outside 0..255";
      if (!XmlParseDouble(t.Content, c.value)) return "value is not a number";
      c.state = static_cast<std::uint8_t>(state);
      cells.push_back(c);
      break;
    }
    default:
      return "unknown tag";
  }
  itemsBegun = true;
  return {};
}

std::string TDTXmlDraft::Build(TDTContent& c) const {
  if (cols == 0 || rows == 0) return "numcols or numrows missing";
  const auto nc = static_cast<std::size_t>(cols);
  const auto nr = static_cast<std::size_t>(rows);
  // Both sizes fit 31 bits, so their product fits 64: no overflow in this test.
  if (cells.size() != static_cast<std::uint64_t>(nc) * nr)
    return std::to_string(cells.size()) + " cells for a table of " + std::to_string(cols) + " x " +
           std::to_string(rows);
  c = TDTContent::Blank(nc, nr);
  std::vector<std::vector<bool>> seen(nc, std::vector<bool>(nr, false));
  for (const Cell& cell : cells) {
    const auto i = static_cast<std::size_t>(cell.ix - 1);
    const auto j = static_cast<std::size_t>(cell.iy - 1);
    if (seen[i][j]) return "cell given twice";
    seen[i][j] = true;
    c.Values[i][j] = cell.value;
    c.States[i][j] = cell.state;
  }
  for (const Column& col : columns) {
    const auto i = static_cast<std::size_t>(col.ix - 1);
    c.Setup[i].Scale = col.scale;
    c.ColAttribs[i] = col.attrib;
    c.ColNames[i] = col.name;
  }
  for (const NominalID& n : ids) {
    std::vector<std::string>& slots = c.Setup[static_cast<std::size_t>(n.ix - 1)].Slots;
    if (static_cast<std::size_t>(n.slot) >= slots.size())
      slots.resize(static_cast<std::size_t>(n.slot) + 1);
    slots[static_cast<std::size_t>(n.slot)] = n.id;
  }
  for (const Row& r : rowItems) {
    c.RowAttribs[static_cast<std::size_t>(r.iy - 1)] = r.attrib;
    c.RowNames[static_cast<std::size_t>(r.iy - 1)] = r.name;
  }
  return {};
}

}  // namespace detail

TDataTable::~TDataTable() = default;

void TDataTable::WriteXML(TXmlWriter& Writer, std::string_view DataID) const {
  const TXmlNumber cols(NrOfColumns());
  const TXmlNumber rows(NrOfRows());
  Writer.Open(kDTXmlTagTexts[xmlDTBegin], {{"id", DataID}});
  Writer.Element(kDTXmlTagTexts[xmlDTComment], comment_);
  Writer.Element(kDTXmlTagTexts[xmlDTNumCols], cols);
  Writer.Element(kDTXmlTagTexts[xmlDTNumRows], rows);
  for (std::int32_t c = 1; c <= NrOfColumns(); ++c) {
    const detail::TDTColumnSetup& s = setup_[Ix(c)];
    const TXmlNumber ix(c);
    if (s.Scale != stUnknown || colAttribs_[Ix(c)] != 0 || !colNames_[Ix(c)].empty()) {
      Writer.Element(kDTXmlTagTexts[xmlDTColumn], "",
                     {{"ix", ix},
                      {"scale", TXmlNumber(std::int32_t{s.Scale})},
                      {"attrib", TXmlNumber(colAttribs_[Ix(c)])},
                      {"name", colNames_[Ix(c)]}},
                     true);
    }
    for (std::size_t slot = 0; slot < s.Slots.size(); ++slot) {
      if (s.Slots[slot].empty()) continue;
      Writer.Element(kDTXmlTagTexts[xmlDTNominalID], s.Slots[slot],
                     {{"ix", ix}, {"slot", TXmlNumber(static_cast<std::int32_t>(slot))}});
    }
  }
  for (std::int32_t r = 1; r <= NrOfRows(); ++r) {
    if (rowAttribs_[Ix(r)] == 0 && rowNames_[Ix(r)].empty()) continue;
    Writer.Element(kDTXmlTagTexts[xmlDTRow], "",
                   {{"iy", TXmlNumber(r)},
                    {"attrib", TXmlNumber(rowAttribs_[Ix(r)])},
                    {"name", rowNames_[Ix(r)]}},
                   true);
  }
  for (std::int32_t c = 1; c <= NrOfColumns(); ++c) {
    const TXmlNumber ix(c);
    const auto& values = data_.Columns()[Ix(c)];
    for (std::int32_t r = 1; r <= NrOfRows(); ++r) {
      const TXmlNumber value(values[Ix(r)]);
      const std::uint8_t state = states_[Ix(c)][Ix(r)];
      if (state == 0) {
        Writer.Element(kDTXmlTagTexts[xmlDTCell], value, {{"ix", ix}, {"iy", TXmlNumber(r)}});
      } else {
        Writer.Element(
            kDTXmlTagTexts[xmlDTCell], value,
            {{"ix", ix}, {"iy", TXmlNumber(r)}, {"state", TXmlNumber(std::int32_t{state})}});
      }
    }
  }
  Writer.Close(kDTXmlTagTexts[xmlDTBegin]);
}

void TDataTable::WriteToXMLStream(std::ostream& Stream, std::string_view DataID) const {
  TXmlWriter writer(Stream);
  writer.Declaration();
  WriteXML(writer, DataID);
  writer.Flush();
}

void TDataTable::SaveAsXMLFile(const std::string& FileName, std::string_view DataID) const {
  std::ofstream file(FileName, std::ios::binary | std::ios::trunc);
  if (!file) throw std::ios_base::failure("cannot create file \"" + FileName + "\"");
  WriteToXMLStream(file, DataID);
  file.flush();
  if (!file) throw std::ios_base::failure("cannot write file \"" + FileName + "\"");
}

std::int32_t TDataTable::ProcessXmlTag(const TXmlTag& Tag) {
  const TDTXmlTag tag = XmlTagOf(Tag.Name, kDTXmlTagTexts, xmlDTInvalid);
  const auto refuse = [&](const std::string& why) {
    // Built piecewise: GCC 12 at -O2 sees a false overlap in "<" + string (-Wrestrict).
    xmlError_.assign(1, '<');
    xmlError_.append(Tag.Name).append(">: ").append(why);
    xml_.reset();
    return kXmlTagInvalid;
  };
  if (tag == xmlDTBegin) {
    xml_ = std::make_unique<detail::TDTXmlDraft>();
    XmlAttribute(Tag.Attributes, "id", xml_->id);
    xmlError_.clear();
    return kXmlTagGoOn;
  }
  if (!xml_) return refuse("outside a table");
  if (tag != xmlDTEnd) {
    const std::string why = xml_->Take(tag, Tag);
    return why.empty() ? kXmlTagGoOn : refuse(why);
  }
  detail::TDTContent c;
  const std::string why = GuardAllocation<EQUVDataTableError>(*this, msg::kNotEnoughMemory,
                                                              [&] { return xml_->Build(c); });
  if (!why.empty()) return refuse(why);
  comment_ = std::move(xml_->comment);
  xmlDataID_ = std::move(xml_->id);
  xml_.reset();
  InstallAndSignal(std::move(c));
  return kXmlTagDone;
}

std::int32_t TDataTable::ReadFromXMLStream(std::istream& Stream, std::string& DataID) {
  const TXmlReadResult result =
      ReadXmlTags(Stream, [this](const TXmlTag& tag) { return ProcessXmlTag(tag); });
  xml_.reset();
  switch (result) {
    case xrDone:
      DataID = xmlDataID_;
      return 0;
    case xrInvalidTag:
      return kDTXmlInvalid;
    case xrCutShort:
      xmlError_ = "the document ends before </datatable>";
      return kDTXmlCutShort;
    case xrMalformed:
      xmlError_ = "markup that is not XML";
      return kDTXmlMalformed;
  }
  return kDTXmlMalformed;
}

std::int32_t TDataTable::LoadFromXMLFile(const std::string& FileName, std::string& DataID) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(FileName, ec)) return kAscFileNotFound;
  std::ifstream file(FileName, std::ios::binary);
  if (!file) return kAscFileNotFound;
  return ReadFromXMLStream(file, DataID);
}

}  // namespace quv

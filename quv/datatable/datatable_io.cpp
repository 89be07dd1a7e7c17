// TDataTable: the ASC file form, through the shared ASC reader and writer.
//
// The table uses all four annotation blocks: column names, nominal variables (a column's
// scale and its used slots), and per data row its name and attribute. Cell states have no
// place in the format; a cell that is not a number is written as NAN, and a NaN read back
// makes an empty cell.
#include <cmath>
#include <limits>

#include "quv/datatable/datatable_core.h"

namespace quv {
namespace {

bool AnyNonEmpty(const TStrArray& names) {
  for (const std::string& s : names) {
    if (!s.empty()) return true;
  }
  return false;
}

bool NamesFit(const TStrArray& names) {
  for (const std::string& s : names) {
    if (s.size() > kMaxDTNameLength) return false;
  }
  return true;
}

// The slot table of one column from its nominal line, or false when the line breaks a rule.
bool SetupFromNominal(const TASCNominalColumn& in, detail::TDTColumnSetup& out) {
  if (in.Scale > stRatio) return false;
  out.Scale = static_cast<TMScaleType>(in.Scale);
  for (const auto& [slot, id] : in.IDs) {
    if (slot < 0 || slot >= kNominalSlots || id.size() > kMaxNominalIDLength) return false;
    const auto s = static_cast<std::size_t>(slot);
    if (s >= out.Slots.size()) out.Slots.resize(s + 1);
    if (!out.Slots[s].empty()) return false;  // the same slot given twice
    out.Slots[s] = id;
  }
  return true;
}

}  // namespace

TASCFile TDataTable::ASCImage(std::string line1) const {
  TASCFile f;
  const auto cols = static_cast<std::size_t>(NrOfColumns());
  const auto rows = static_cast<std::size_t>(NrOfRows());
  f.Comment = std::move(line1);
  f.NrCols = NrOfColumns();
  f.NrRows = NrOfRows();
  f.ColNames = AnyNonEmpty(colNames_);
  f.RowNames = AnyNonEmpty(rowNames_);
  for (const std::int32_t a : rowAttribs_)
    f.RowAttrib = f.RowAttrib || a != 0;
  for (const detail::TDTColumnSetup& s : setup_)
    f.NominalVars = f.NominalVars || s.Scale != stUnknown || !s.Slots.empty();
  if (f.ColNames) f.ColNameList = colNames_;
  if (f.RowNames) f.RowNameList = rowNames_;
  if (f.RowAttrib) f.RowAttribList = rowAttribs_;
  if (f.NominalVars) {
    for (const detail::TDTColumnSetup& s : setup_) {
      TASCNominalColumn n;
      n.Scale = s.Scale;
      for (std::size_t slot = 0; slot < s.Slots.size(); ++slot) {
        if (!s.Slots[slot].empty())
          n.IDs.emplace_back(static_cast<std::int32_t>(slot), s.Slots[slot]);
      }
      f.NominalList.push_back(std::move(n));
    }
  }
  f.Values.resize(cols * rows);
  for (std::size_t c = 0; c < cols; ++c) {
    const auto& v = data_.Columns()[c];
    const auto& s = states_[c];
    for (std::size_t r = 0; r < rows; ++r) {
      f.Values[r * cols + c] = (s[r] & (kCellInvalid | kCellEmpty)) != 0
                                   ? std::numeric_limits<double>::quiet_NaN()
                                   : v[r];
    }
  }
  return f;
}

void TDataTable::ExportAsASC(const std::string& FileName, std::int32_t Precision) const {
  WriteASCFile(FileName, ASCImage(ASCCommentLine(comment_, kASCHeaderText, FileName)),
               TASCNumberFormat{12, Precision, false});
}

void TDataTable::ExportAsASC(std::ostream& Stream, std::int32_t Precision) const {
  WriteASC(Stream, ASCImage(comment_), TASCNumberFormat{12, Precision, false});
}

std::int32_t TDataTable::ImportASC(const std::string& FileName) {
  TASCFile f;
  const std::int32_t status = ReadASCFile(FileName, f);
  return status == kAscHeaderOk ? ImportASC(f) : status;
}

std::int32_t TDataTable::ImportASC(std::istream& Stream) {
  TASCFile f;
  const std::int32_t status = ReadASC(Stream, f);
  return status == kAscHeaderOk ? ImportASC(f) : status;
}

std::int32_t TDataTable::ImportASC(const TASCFile& f) {
  const std::int32_t rows = f.RowsRead();
  if (rows < 1) return kAscNoData;
  if (!NamesFit(f.ColNameList) || !NamesFit(f.RowNameList)) return kDTNameTooLong;
  const auto cols = static_cast<std::size_t>(f.NrCols);
  const auto nrows = static_cast<std::size_t>(rows);
  detail::TDTContent c = GuardAllocation<EQUVDataTableError>(
      *this, msg::kNotEnoughMemory, [&] { return detail::TDTContent::Blank(cols, nrows); });
  if (f.NominalVars) {
    for (std::size_t j = 0; j < cols; ++j) {
      if (!SetupFromNominal(f.NominalList[j], c.Setup[j])) return kDTBadNominal;
    }
  }
  if (f.ColNames) c.ColNames = f.ColNameList;
  if (f.RowNames) c.RowNames.assign(f.RowNameList.begin(), f.RowNameList.begin() + rows);
  if (f.RowAttrib) c.RowAttribs.assign(f.RowAttribList.begin(), f.RowAttribList.begin() + rows);
  for (std::size_t j = 0; j < cols; ++j) {
    auto& v = c.Values[j];
    auto& s = c.States[j];
    for (std::size_t r = 0; r < nrows; ++r) {
      const double x = f.Values[r * cols + j];
      if (std::isnan(x)) {
        s[r] = kCellEmpty;
      } else {
        v[r] = x;
      }
    }
  }
  comment_ = f.Comment;
  InstallAndSignal(std::move(c));
  return kAscHeaderOk;
}

}  // namespace quv

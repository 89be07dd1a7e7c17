// TDataTable: construction, cells, states, scales, nominal identifiers, names and attributes.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <new>

#include "quv/datatable/datatable_core.h"
#include "quv/datatable/datatable_xml_draft.h"

namespace quv {
namespace {

std::string_view Cut(std::string_view s, std::size_t n) {
  return s.substr(0, std::min(s.size(), n));
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) ==
                  std::tolower(static_cast<unsigned char>(y));
         });
}

bool IsNominalScale(TMScaleType scale) {
  return scale == stNominal || scale == stOrdinal;
}

std::int32_t FindName(const TStrArray& names, std::string_view name) {
  if (name.empty()) return -1;
  name = Cut(name, kMaxDTNameLength);
  const auto it = std::find(names.begin(), names.end(), name);
  return it == names.end() ? -1 : static_cast<std::int32_t>(it - names.begin()) + 1;
}

std::int32_t LongestName(const TStrArray& names) {
  std::size_t n = 0;
  for (const std::string& s : names)
    n = std::max(n, s.size());
  return static_cast<std::int32_t>(n);
}

}  // namespace

namespace detail {

TDTContent TDTContent::Blank(std::size_t cols, std::size_t rows) {
  TDTContent c;
  c.Values.assign(cols, std::vector<double>(rows, 0.0));
  c.States.assign(cols, std::vector<std::uint8_t>(rows, 0));
  c.Setup.resize(cols);
  c.ColNames.resize(cols);
  c.ColAttribs.resize(cols);
  c.RowNames.resize(rows);
  c.RowAttribs.resize(rows);
  return c;
}

}  // namespace detail

// The inner matrix allocates its own 1 x 1 store and would report a failure in its own words;
// the table reports it in the form the table's users look for.
TDataTable::TDataTable(TComponent* owner) try
    : TComponent(owner),
      states_(1, std::vector<std::uint8_t>(1, 0)),
      setup_(1),
      colNames_(1),
      rowNames_(1),
      colAttribs_(1, 0),
      rowAttribs_(1, 0) {
} catch (const std::bad_alloc&) {
  throw EQUVDataTableError(ComponentMessage("", msg::kFailedToInitialize));
} catch (const EQUVMatrixError&) {
  throw EQUVDataTableError(ComponentMessage("", msg::kFailedToInitialize));
}

void TDataTable::PercDone(std::int32_t percent) const {
  FireEvent(OnPercentDone, const_cast<TDataTable*>(this), percent);
}

// ----- cells -----

double TDataTable::GetElem(std::int32_t Col, std::int32_t Row) const {
  if (!InsideCell(Col, Row)) return 0.0;
  const double x = data_.Columns()[Ix(Col)][Ix(Row)];
  return IsNominalScale(setup_[Ix(Col)].Scale) ? std::nearbyint(x) : x;
}

void TDataTable::SetElem(std::int32_t Col, std::int32_t Row, double Value) {
  if (!InsideCell(Col, Row)) return;
  data_.Column(Ix(Col))[Ix(Row)] = Value;
  ChangedData();
}

std::uint8_t TDataTable::GetCellState(std::int32_t Col, std::int32_t Row) const {
  return InsideCell(Col, Row) ? states_[Ix(Col)][Ix(Row)] : std::uint8_t{0};
}

void TDataTable::SetCellState(std::int32_t Col, std::int32_t Row, std::uint8_t State) {
  if (!InsideCell(Col, Row)) return;
  std::uint8_t& s = states_[Ix(Col)][Ix(Row)];
  if (s == State) return;
  s = State;
  ChangedCellStates();
}

bool TDataTable::GetIsEmpty(std::int32_t Col, std::int32_t Row) const {
  return (GetCellState(Col, Row) & kCellEmpty) != 0;
}

bool TDataTable::GetIsImputed(std::int32_t Col, std::int32_t Row) const {
  return (GetCellState(Col, Row) & kCellImputed) != 0;
}

bool TDataTable::GetIsNumber(std::int32_t Col, std::int32_t Row) const {
  return InsideCell(Col, Row) && (GetCellState(Col, Row) & (kCellInvalid | kCellEmpty)) == 0;
}

void TDataTable::SetIsEmpty(std::int32_t Col, std::int32_t Row, bool Value) {
  if (!InsideCell(Col, Row)) return;
  const std::uint8_t s = GetCellState(Col, Row);
  SetCellState(Col, Row, Value ? (s | kCellEmpty) : (s & ~kCellEmpty));
  ChangedData();
}

void TDataTable::SetIsImputed(std::int32_t Col, std::int32_t Row, bool Value) {
  if (!InsideCell(Col, Row)) return;
  const std::uint8_t s = GetCellState(Col, Row);
  SetCellState(Col, Row, Value ? (s | kCellImputed) : (s & ~kCellImputed));
  ChangedData();
}

// ----- scales and nominal identifiers -----

TMScaleType TDataTable::GetMScaleType(std::int32_t Col) const {
  return InsideCol(Col) ? setup_[Ix(Col)].Scale : stUnknown;
}

void TDataTable::SetMScaleType(std::int32_t Col, TMScaleType Scale) {
  if (!InsideCol(Col)) return;
  setup_[Ix(Col)].Scale = Scale;
  ChangedSetup();
}

std::int32_t TDataTable::OrdinalOfNominalID(std::int32_t Col, std::string_view ID,
                                            bool IgnoreCase) const {
  if (!InsideCol(Col) || ID.empty()) return -1;
  const detail::TDTColumnSetup& setup = setup_[Ix(Col)];
  if (!IsNominalScale(setup.Scale)) return -1;
  ID = Cut(ID, kMaxNominalIDLength);
  for (std::size_t slot = 0; slot < setup.Slots.size(); ++slot) {
    const std::string_view s = Cut(setup.Slots[slot], kMaxNominalIDLength);
    if (IgnoreCase ? EqualIgnoringCase(s, ID) : s == ID) return static_cast<std::int32_t>(slot);
  }
  return -1;
}

std::int32_t TDataTable::SlotFor(std::int32_t Col, std::string_view ID) const {
  const std::int32_t found = OrdinalOfNominalID(Col, ID, true);
  if (found >= 0) return found;
  const std::vector<std::string>& slots = setup_[Ix(Col)].Slots;
  const auto freeSlot =
      std::find_if(slots.begin(), slots.end(), [](const std::string& s) { return s.empty(); });
  const auto slot = static_cast<std::int32_t>(freeSlot - slots.begin());
  return slot < kNominalSlots ? slot : -1;
}

std::int32_t TDataTable::AddNominalID(std::int32_t Col, std::string_view ID) {
  if (!InsideCol(Col)) return -1;
  if (const std::int32_t found = OrdinalOfNominalID(Col, ID, true); found >= 0) return found;
  const std::int32_t slot = SlotFor(Col, ID);
  if (slot < 0) return -1;
  StoreID(Col, slot, ID);
  setup_[Ix(Col)].Scale = stNominal;
  ChangedSetup();
  return slot;
}

void TDataTable::SetElemNominal(std::int32_t Col, std::int32_t Row, std::string_view ID) {
  if (!InsideCell(Col, Row)) return;
  const std::int32_t slot = SlotFor(Col, ID);
  if (slot < 0) RaiseComponentError<EQUVDataTableError>(*this, msg::kNominalValuesExceeded);
  StoreID(Col, slot, ID);
  data_.Column(Ix(Col))[Ix(Row)] = slot;
  ChangedData();
}

void TDataTable::StoreID(std::int32_t Col, std::int32_t Slot, std::string_view ID) {
  std::vector<std::string>& slots = setup_[Ix(Col)].Slots;
  const auto s = static_cast<std::size_t>(Slot);
  if (s >= slots.size()) slots.resize(s + 1);
  // A slot found by the search keeps its identifier as first written ("Red", not "RED").
  if (slots[s].empty()) slots[s] = std::string(Cut(ID, kMaxNominalIDLength));
}

std::string TDataTable::GetElemNominal(std::int32_t Col, std::int32_t Row) const {
  if (!InsideCell(Col, Row) || !IsNominalScale(setup_[Ix(Col)].Scale)) return {};
  const double x = GetElem(Col, Row);
  if (x >= 0.0 && x < kNominalSlots) return GetNominalID(Col, static_cast<std::int32_t>(x));
  return std::string(Cut(TrimString(strff(x, 0, 0)), kMaxNominalIDLength));
}

std::string TDataTable::GetNominalID(std::int32_t Col, std::int32_t Ordinal) const {
  if (!InsideCol(Col) || Ordinal < 0 || Ordinal >= kNominalSlots) return {};
  const detail::TDTColumnSetup& setup = setup_[Ix(Col)];
  if (!IsNominalScale(setup.Scale) || static_cast<std::size_t>(Ordinal) >= setup.Slots.size())
    return {};
  return setup.Slots[static_cast<std::size_t>(Ordinal)];
}

std::int32_t TDataTable::CountNominalIDs(std::int32_t Col) const {
  if (!InsideCol(Col)) return 0;
  const std::vector<std::string>& slots = setup_[Ix(Col)].Slots;
  return static_cast<std::int32_t>(
      std::count_if(slots.begin(), slots.end(), [](const std::string& s) { return !s.empty(); }));
}

void TDataTable::ClearNominalIDs(std::int32_t Col) {
  if (!InsideCol(Col)) return;
  setup_[Ix(Col)].Slots.clear();
  ChangedSetup();
}

// ----- names and attributes -----

std::string TDataTable::GetColName(std::int32_t Col) const {
  return InsideCol(Col) ? colNames_[Ix(Col)] : std::string();
}

void TDataTable::SetColName(std::int32_t Col, std::string_view Name) {
  if (!InsideCol(Col)) return;
  colNames_[Ix(Col)] = std::string(Cut(Name, kMaxDTNameLength));
  ChangedNames();
}

std::string TDataTable::GetRowName(std::int32_t Row) const {
  return InsideRow(Row) ? rowNames_[Ix(Row)] : std::string();
}

void TDataTable::SetRowName(std::int32_t Row, std::string_view Name) {
  if (!InsideRow(Row)) return;
  rowNames_[Ix(Row)] = std::string(Cut(Name, kMaxDTNameLength));
  ChangedNames();
}

std::int32_t TDataTable::FindColIndex(std::string_view Name) const {
  return FindName(colNames_, Name);
}

std::int32_t TDataTable::FindRowIndex(std::string_view Name) const {
  return FindName(rowNames_, Name);
}

std::int32_t TDataTable::MaxColNameLength() const {
  return LongestName(colNames_);
}

std::int32_t TDataTable::MaxRowNameLength() const {
  return LongestName(rowNames_);
}

std::int32_t TDataTable::GetColAttrib(std::int32_t Col) const {
  return InsideCol(Col) ? colAttribs_[Ix(Col)] : 0;
}

void TDataTable::SetColAttrib(std::int32_t Col, std::int32_t Value) {
  if (!InsideCol(Col)) return;
  colAttribs_[Ix(Col)] = Value;
  ChangedAttrib();
}

std::int32_t TDataTable::GetRowAttrib(std::int32_t Row) const {
  return InsideRow(Row) ? rowAttribs_[Ix(Row)] : 0;
}

void TDataTable::SetRowAttrib(std::int32_t Row, std::int32_t Value) {
  if (!InsideRow(Row)) return;
  rowAttribs_[Ix(Row)] = Value;
  ChangedAttrib();
}

}  // namespace quv

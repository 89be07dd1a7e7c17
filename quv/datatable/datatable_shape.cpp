// TDataTable: size and structure (resize, insert, remove, exchange, copy) and sorting.
//
// Every change of size goes through Remap, which builds the whole new layout from a map of
// old to new columns and rows before anything is touched. One place thus keeps values,
// states, setups, names and attributes aligned, and a failed allocation leaves the table as
// it was. Sorting computes a permutation first and then carries it out as exchanges, which
// the host can mirror through OnSortExchange.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <new>
#include <numeric>

#include "quv/datatable/datatable_core.h"

namespace quv {
namespace {

// Gathers the items of new positions from old ones; -1 gives a default item.
template <class T>
std::vector<T> Gather(const std::vector<T>& old, const std::vector<std::int32_t>& map) {
  std::vector<T> out(map.size());
  for (std::size_t i = 0; i < map.size(); ++i) {
    if (map[i] >= 0) out[i] = old[static_cast<std::size_t>(map[i])];
  }
  return out;
}

// The identity map 0..n-1.
std::vector<std::int32_t> IdentityMap(std::int32_t n) {
  std::vector<std::int32_t> map(static_cast<std::size_t>(n));
  std::iota(map.begin(), map.end(), 0);
  return map;
}

std::vector<std::int32_t> ResizedMap(std::int32_t oldN, std::int32_t newN) {
  std::vector<std::int32_t> map = IdentityMap(std::min(oldN, newN));
  map.resize(static_cast<std::size_t>(newN), -1);
  return map;
}

std::string LowerCase(const std::string& s) {
  std::string t = s;
  for (char& c : t)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return t;
}

// The permutation (perm[new] = old, 0-based) that sorts the keys stably.
template <class Key, class Less>
std::vector<std::int32_t> SortingPermutation(const std::vector<Key>& keys, bool ascending,
                                             Less less) {
  std::vector<std::int32_t> perm = IdentityMap(static_cast<std::int32_t>(keys.size()));
  std::stable_sort(perm.begin(), perm.end(), [&](std::int32_t a, std::int32_t b) {
    const Key& ka = keys[static_cast<std::size_t>(a)];
    const Key& kb = keys[static_cast<std::size_t>(b)];
    return ascending ? less(ka, kb) : less(kb, ka);
  });
  return perm;
}

// Carries out a permutation (perm[new] = old, 0-based) as exchanges of two positions,
// following its cycles: position i receives the item that belongs there by exchanging it with
// the one now at that item's current place. At most n - 1 exchanges; none for the identity.
template <class Swap>
void ApplyPermutation(const std::vector<std::int32_t>& perm, Swap swap) {
  const std::size_t n = perm.size();
  std::vector<std::size_t> where(n), at(n);  // where[old] = current position, at[pos] = old
  std::iota(where.begin(), where.end(), std::size_t{0});
  std::iota(at.begin(), at.end(), std::size_t{0});
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t j = where[static_cast<std::size_t>(perm[i])];
    if (j == i) continue;
    swap(i, j);
    std::swap(at[i], at[j]);
    where[at[i]] = i;
    where[at[j]] = j;
  }
}

}  // namespace

void TDataTable::Install(detail::TDTContent&& content) {
  data_.Adopt(std::move(content.Values));
  states_ = std::move(content.States);
  setup_ = std::move(content.Setup);
  colNames_ = std::move(content.ColNames);
  rowNames_ = std::move(content.RowNames);
  colAttribs_ = std::move(content.ColAttribs);
  rowAttribs_ = std::move(content.RowAttribs);
}

void TDataTable::InstallAndSignal(detail::TDTContent&& content) {
  const std::int32_t oldCols = NrOfColumns();
  const std::int32_t oldRows = NrOfRows();
  Install(std::move(content));
  ChangedData();
  if (oldCols != NrOfColumns() || oldRows != NrOfRows())
    FireEvent(OnResize, this, oldCols, oldRows, NrOfColumns(), NrOfRows());
}

void TDataTable::Remap(const std::vector<std::int32_t>& colMap,
                       const std::vector<std::int32_t>& rowMap) {
  detail::TDTContent c = GuardAllocation<EQUVDataTableError>(*this, msg::kNotEnoughMemory, [&] {
    detail::TDTContent n;
    const auto& values = data_.Columns();
    n.Values.resize(colMap.size());
    n.States.resize(colMap.size());
    for (std::size_t j = 0; j < colMap.size(); ++j) {
      n.Values[j].assign(rowMap.size(), 0.0);
      n.States[j].assign(rowMap.size(), 0);
      if (colMap[j] < 0) continue;
      const auto& v = values[static_cast<std::size_t>(colMap[j])];
      const auto& s = states_[static_cast<std::size_t>(colMap[j])];
      for (std::size_t i = 0; i < rowMap.size(); ++i) {
        if (rowMap[i] < 0) continue;
        n.Values[j][i] = v[static_cast<std::size_t>(rowMap[i])];
        n.States[j][i] = s[static_cast<std::size_t>(rowMap[i])];
      }
    }
    n.Setup = Gather(setup_, colMap);
    n.ColNames = Gather(colNames_, colMap);
    n.ColAttribs = Gather(colAttribs_, colMap);
    n.RowNames = Gather(rowNames_, rowMap);
    n.RowAttribs = Gather(rowAttribs_, rowMap);
    return n;
  });
  InstallAndSignal(std::move(c));
}

bool TDataTable::Resize(std::int32_t NrColumns, std::int32_t NrRows) {
  if (NrColumns < 1 || NrRows < 1 || (NrColumns == NrOfColumns() && NrRows == NrOfRows()))
    return false;
  Remap(ResizedMap(NrOfColumns(), NrColumns), ResizedMap(NrOfRows(), NrRows));
  return true;
}

bool TDataTable::InsertColumn(std::int32_t Col) {
  if (Col < 1 || Col > NrOfColumns() + 1 || NrOfColumns() == uc_MaxInt) return false;
  std::vector<std::int32_t> map = IdentityMap(NrOfColumns());
  map.insert(map.begin() + (Col - 1), -1);
  Remap(map, IdentityMap(NrOfRows()));
  return true;
}

bool TDataTable::RemoveColumn(std::int32_t Col) {
  if (!InsideCol(Col) || NrOfColumns() < 2) return false;
  std::vector<std::int32_t> map = IdentityMap(NrOfColumns());
  map.erase(map.begin() + (Col - 1));
  Remap(map, IdentityMap(NrOfRows()));
  return true;
}

bool TDataTable::InsertRow(std::int32_t Row) {
  if (Row < 1 || Row > NrOfRows() + 1 || NrOfRows() == uc_MaxInt) return false;
  std::vector<std::int32_t> map = IdentityMap(NrOfRows());
  map.insert(map.begin() + (Row - 1), -1);
  Remap(IdentityMap(NrOfColumns()), map);
  return true;
}

bool TDataTable::RemoveRow(std::int32_t Row) {
  if (!InsideRow(Row) || NrOfRows() < 2) return false;
  std::vector<std::int32_t> map = IdentityMap(NrOfRows());
  map.erase(map.begin() + (Row - 1));
  Remap(IdentityMap(NrOfColumns()), map);
  return true;
}

void TDataTable::SwapColumnItems(std::size_t i, std::size_t j) {
  std::swap(data_.Column(i), data_.Column(j));
  std::swap(states_[i], states_[j]);
  std::swap(setup_[i], setup_[j]);
  std::swap(colNames_[i], colNames_[j]);
  std::swap(colAttribs_[i], colAttribs_[j]);
}

void TDataTable::SwapRowItems(std::size_t i, std::size_t j) {
  for (std::size_t c = 0; c < states_.size(); ++c) {
    auto& v = data_.Column(c);
    std::swap(v[i], v[j]);
    std::swap(states_[c][i], states_[c][j]);
  }
  std::swap(rowNames_[i], rowNames_[j]);
  std::swap(rowAttribs_[i], rowAttribs_[j]);
}

void TDataTable::ExchangeColumns(std::int32_t C1, std::int32_t C2) {
  if (!InsideCol(C1) || !InsideCol(C2)) return;
  SwapColumnItems(Ix(C1), Ix(C2));
  ChangedData();
}

void TDataTable::ExchangeRows(std::int32_t R1, std::int32_t R2) {
  if (!InsideRow(R1) || !InsideRow(R2)) return;
  SwapRowItems(Ix(R1), Ix(R2));
  ChangedData();
}

void TDataTable::Clear() {
  detail::TDTContent c = GuardAllocation<EQUVDataTableError>(
      *this, msg::kNotEnoughMemory, [] { return detail::TDTContent::Blank(1, 1); });
  comment_.clear();
  InstallAndSignal(std::move(c));
}

void TDataTable::Assign(const TDataTable& Source) {
  if (&Source == this) return;
  detail::TDTContent c = GuardAllocation<EQUVDataTableError>(*this, msg::kNotEnoughMemory, [&] {
    detail::TDTContent n;
    n.Values = Source.data_.Columns();
    n.States = Source.states_;
    n.Setup = Source.setup_;
    n.ColNames = Source.colNames_;
    n.RowNames = Source.rowNames_;
    n.ColAttribs = Source.colAttribs_;
    n.RowAttribs = Source.rowAttribs_;
    return n;
  });
  std::string comment = Source.comment_;
  comment_ = std::move(comment);
  InstallAndSignal(std::move(c));
}

void TDataTable::CopyFrom(const TDataTable* Source, std::int32_t LowCol, std::int32_t LowRow,
                          std::int32_t HighCol, std::int32_t HighRow, std::int32_t DestCol,
                          std::int32_t DestRow) {
  if (Source == nullptr) return;
  const auto clampPair = [](std::int32_t& lo, std::int32_t& hi, std::int32_t size) {
    lo = std::clamp(lo, std::int32_t{1}, size);
    hi = std::clamp(hi, std::int32_t{1}, size);
    if (lo > hi) std::swap(lo, hi);
  };
  clampPair(LowCol, HighCol, Source->NrOfColumns());
  clampPair(LowRow, HighRow, Source->NrOfRows());
  // The block is copied first, so that copying a table onto itself reads unchanged cells.
  struct Block {
    std::vector<std::vector<double>> values;
    std::vector<std::vector<std::uint8_t>> states;
  };
  Block b = GuardAllocation<EQUVDataTableError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    Block n;
    for (std::int32_t c = LowCol; c <= HighCol; ++c) {
      const auto& v = Source->data_.Columns()[Ix(c)];
      const auto& s = Source->states_[Ix(c)];
      n.values.emplace_back(v.begin() + (LowRow - 1), v.begin() + HighRow);
      n.states.emplace_back(s.begin() + (LowRow - 1), s.begin() + HighRow);
    }
    return n;
  });
  for (std::int32_t c = 0; c <= HighCol - LowCol; ++c) {
    const std::int64_t col = std::int64_t{DestCol} + c;
    if (col < 1 || col > NrOfColumns()) continue;
    auto& v = data_.Column(static_cast<std::size_t>(col - 1));
    auto& s = states_[static_cast<std::size_t>(col - 1)];
    for (std::int32_t r = 0; r <= HighRow - LowRow; ++r) {
      const std::int64_t row = std::int64_t{DestRow} + r;
      if (row < 1 || row > NrOfRows()) continue;
      v[static_cast<std::size_t>(row - 1)] = b.values[static_cast<std::size_t>(c)][Ix(r + 1)];
      s[static_cast<std::size_t>(row - 1)] = b.states[static_cast<std::size_t>(c)][Ix(r + 1)];
    }
  }
  ChangedData();
}

// ----- sorting -----

void TDataTable::PermuteRows(const std::vector<std::int32_t>& perm) {
  ApplyPermutation(perm, [&](std::size_t i, std::size_t j) {
    SwapRowItems(i, j);
    FireEvent(OnSortExchange, this, kSortExchangeRows, static_cast<std::int32_t>(i) + 1,
              static_cast<std::int32_t>(j) + 1, 1, NrOfColumns());
  });
  ChangedData();
}

void TDataTable::PermuteColumns(const std::vector<std::int32_t>& perm) {
  ApplyPermutation(perm, [&](std::size_t i, std::size_t j) {
    SwapColumnItems(i, j);
    FireEvent(OnSortExchange, this, kSortExchangeCols, static_cast<std::int32_t>(i) + 1,
              static_cast<std::int32_t>(j) + 1, 1, NrOfRows());
  });
  ChangedData();
}

void TDataTable::SortRows(std::int32_t Col, bool Ascending) {
  if (!InsideCol(Col) || NrOfRows() < 2) return;
  // Key: (not a number, value); cells that are not numbers sort last in both directions.
  struct Key {
    bool missing;
    double value;
  };
  std::vector<Key> keys(static_cast<std::size_t>(NrOfRows()));
  for (std::int32_t r = 1; r <= NrOfRows(); ++r) {
    const double x = GetElem(Col, r);
    keys[Ix(r)] = {!GetIsNumber(Col, r) || std::isnan(x), x};
  }
  std::vector<std::int32_t> perm = IdentityMap(NrOfRows());
  std::stable_sort(perm.begin(), perm.end(), [&](std::int32_t a, std::int32_t b) {
    const Key& ka = keys[static_cast<std::size_t>(a)];
    const Key& kb = keys[static_cast<std::size_t>(b)];
    if (ka.missing || kb.missing) return !ka.missing && kb.missing;
    return Ascending ? ka.value < kb.value : kb.value < ka.value;
  });
  PermuteRows(perm);
}

void TDataTable::SortRowsByName(bool Ascending) {
  if (NrOfRows() < 2) return;
  std::vector<std::string> keys(rowNames_.size());
  std::transform(rowNames_.begin(), rowNames_.end(), keys.begin(), LowerCase);
  PermuteRows(SortingPermutation(keys, Ascending, std::less<>()));
}

void TDataTable::SortRowsByAttrib(bool Ascending) {
  if (NrOfRows() < 2) return;
  PermuteRows(SortingPermutation(rowAttribs_, Ascending, std::less<>()));
}

void TDataTable::SortColumnsByName(bool Ascending) {
  if (NrOfColumns() < 2) return;
  std::vector<std::string> keys(colNames_.size());
  std::transform(colNames_.begin(), colNames_.end(), keys.begin(), LowerCase);
  PermuteColumns(SortingPermutation(keys, Ascending, std::less<>()));
}

void TDataTable::SortColumnsByAttrib(bool Ascending) {
  if (NrOfColumns() < 2) return;
  PermuteColumns(SortingPermutation(colAttribs_, Ascending, std::less<>()));
}

}  // namespace quv

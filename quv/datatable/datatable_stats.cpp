// TDataTable: statistics over the numeric cells of a block, finding cells, state operations.
#include <cmath>

#include "quv/datatable/datatable_core.h"
#include "quv/openarrays/openarrays.h"

namespace quv {
namespace {

std::uint8_t Combine(std::uint8_t a, std::uint8_t b, TLogicOp op) {
  switch (op) {
    case loAND:
      return a & b;
    case loNAND:
      return static_cast<std::uint8_t>(~(a & b));
    case loXOR:
      return a ^ b;
    case loOR:
      return a | b;
    case loNOR:
      return static_cast<std::uint8_t>(~(a | b));
    case loXNOR:
      return static_cast<std::uint8_t>(~(a ^ b));
    case loANDNOT:
      return static_cast<std::uint8_t>(a & ~b);
  }
  return a;
}

// Visits the cells of a block given as the interface gives it: (0, 0) in a pair is the whole
// dimension, other bounds are clamped to the table and put in order.
template <class F>
void ForBlock(const TMatrix& m, std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
              std::int32_t highRow, F&& f) {
  m.MakeValidColRange(lowCol, highCol);
  m.MakeValidRowRange(lowRow, highRow);
  for (std::int32_t c = lowCol; c <= highCol; ++c) {
    for (std::int32_t r = lowRow; r <= highRow; ++r)
      f(c, r);
  }
}

}  // namespace

std::vector<double> TDataTable::NumCells(std::int32_t LowCol, std::int32_t LowRow,
                                         std::int32_t HighCol, std::int32_t HighRow,
                                         std::uint8_t Mask) const {
  return GuardAllocation<EQUVDataTableError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    std::vector<double> x;
    ForBlock(data_, LowCol, LowRow, HighCol, HighRow, [&](std::int32_t c, std::int32_t r) {
      const std::uint8_t s = states_[Ix(c)][Ix(r)];
      if ((s & (kCellInvalid | kCellEmpty)) != 0 || (s & Mask) != Mask) return;
      const double v = GetElem(c, r);
      if (!std::isnan(v)) x.push_back(v);
    });
    return x;
  });
}

std::int32_t TDataTable::MeanVarOfNumCells(std::int32_t LowCol, std::int32_t LowRow,
                                           std::int32_t HighCol, std::int32_t HighRow, double& Mean,
                                           double& Variance, std::uint8_t Mask) const {
  const std::vector<double> x = NumCells(LowCol, LowRow, HighCol, HighRow, Mask);
  Mean = 0.0;
  Variance = 0.0;
  if (x.empty()) return 0;
  MeanVarArray(x, 0, static_cast<std::int32_t>(x.size()) - 1, Mean, Variance);
  return static_cast<std::int32_t>(x.size());
}

std::int32_t TDataTable::QuartilesOfNumCells(std::int32_t LowCol, std::int32_t LowRow,
                                             std::int32_t HighCol, std::int32_t HighRow, double& Q1,
                                             double& Q2, double& Q3, std::uint8_t Mask) const {
  std::vector<double> x = NumCells(LowCol, LowRow, HighCol, HighRow, Mask);
  Q1 = Q2 = Q3 = 0.0;
  if (x.empty()) return 0;
  GuardAllocation<EQUVDataTableError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    Q1 = PercentileArray(0.25, x);
    Q2 = PercentileArray(0.50, x);
    Q3 = PercentileArray(0.75, x);
  });
  return static_cast<std::int32_t>(x.size());
}

double TDataTable::GeometricMeanOfNumCells(std::int32_t LowCol, std::int32_t LowRow,
                                           std::int32_t HighCol, std::int32_t HighRow,
                                           std::uint8_t Mask) const {
  const std::vector<double> x = NumCells(LowCol, LowRow, HighCol, HighRow, Mask);
  Extended sum = 0.0L;
  bool zero = false;
  for (const double v : x) {
    if (v < 0.0) RaiseComponentError<EQUVDataTableError>(*this, msg::kNegativeArgGeometricMean);
    if (v == 0.0) zero = true;
    if (!zero) sum += std::log(static_cast<Extended>(v));
  }
  if (x.empty() || zero) return 0.0;
  return static_cast<double>(std::exp(sum / static_cast<Extended>(x.size())));
}

std::vector<TCellPos> TDataTable::FindCells(std::int32_t LowCol, std::int32_t LowRow,
                                            std::int32_t HighCol, std::int32_t HighRow, double Low,
                                            double High) const {
  std::vector<TCellPos> found;
  ForBlock(data_, LowCol, LowRow, HighCol, HighRow, [&](std::int32_t c, std::int32_t r) {
    if (!GetIsNumber(c, r)) return;
    const double v = GetElem(c, r);
    if (v >= Low && v <= High) found.push_back({c, r});
  });
  return found;
}

std::int32_t TDataTable::SetCellStates(std::int32_t LowCol, std::int32_t LowRow,
                                       std::int32_t HighCol, std::int32_t HighRow,
                                       std::uint8_t Bits, TLogicOp Op) {
  std::int32_t changed = 0;
  ForBlock(data_, LowCol, LowRow, HighCol, HighRow, [&](std::int32_t c, std::int32_t r) {
    std::uint8_t& s = states_[Ix(c)][Ix(r)];
    const std::uint8_t t = Combine(s, Bits, Op);
    if (t != s) ++changed;
    s = t;
  });
  if (changed > 0) ChangedCellStates();
  return changed;
}

void TDataTable::MarkCells(const std::vector<TCellPos>& Cells, std::uint8_t Bits, bool Set) {
  bool changed = false;
  for (const TCellPos& p : Cells) {
    if (!InsideCell(p.Col, p.Row)) continue;
    std::uint8_t& s = states_[Ix(p.Col)][Ix(p.Row)];
    const auto t = static_cast<std::uint8_t>(Set ? (s | Bits) : (s & ~Bits));
    changed = changed || t != s;
    s = t;
  }
  if (changed) ChangedCellStates();
}

}  // namespace quv

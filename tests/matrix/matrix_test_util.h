// Helpers shared by the matrix tests: event logs, matrices built from and read back as tables
// written row by row, and the message of a raised EQUVMatrixError.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "common/raised_message.h"
#include "quv/matrix/matrix.h"

namespace quv::test {

using TRows = std::vector<std::vector<double>>;
using TExchange = std::tuple<int, int, int, int, int>;  // kind, i, j, low, high

/// Counts OnChange and OnResize of one matrix and records its sort exchanges.
struct EventLog {
  int changes = 0;
  int resizes = 0;
  std::vector<TExchange> exchanges;

  explicit EventLog(TMatrix& m) {
    m.OnChange = [this](TComponent*) { ++changes; };
    m.OnResize = [this](TComponent*) { ++resizes; };
    m.OnSortExchange = [this](TComponent*, std::uint8_t what, std::int32_t i, std::int32_t j,
                              std::int32_t lo,
                              std::int32_t hi) { exchanges.emplace_back(what, i, j, lo, hi); };
  }
  /// (OnChange count, OnResize count) since construction or the last Reset.
  std::pair<int, int> Counts() const { return {changes, resizes}; }
  void Reset() {
    changes = resizes = 0;
    exchanges.clear();
  }
};

/// Installs a progress callback; on leaving the scope, no callback and no abort again.
struct FeedbackScope {
  explicit FeedbackScope(TMathFeedBackProc f) { MathFeedBackProc = std::move(f); }
  ~FeedbackScope() {
    MathFeedBackProc = nullptr;
    AbortMathProc = false;
  }
};

/// m := the matrix written down as rows (rows[r - 1][c - 1] is element (c, r)).
inline void SetRows(TMatrix& m, const TRows& rows) {
  m.Resize(static_cast<std::int32_t>(rows.front().size()), static_cast<std::int32_t>(rows.size()));
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (std::size_t c = 0; c < rows[r].size(); ++c)
      m.SetVal(static_cast<std::int32_t>(c + 1), static_cast<std::int32_t>(r + 1), rows[r][c]);
  }
}

/// The matrix as rows, the inverse of SetRows.
inline TRows RowsOf(const TMatrix& m) {
  TRows rows(static_cast<std::size_t>(m.NrOfRows()));
  for (int r = 1; r <= m.NrOfRows(); ++r) {
    for (int c = 1; c <= m.NrOfColumns(); ++c)
      rows[static_cast<std::size_t>(r - 1)].push_back(m.GetVal(c, r));
  }
  return rows;
}

/// m := nc columns x nr rows with element (c, r) = 10 c + r.
inline void FillPattern(TMatrix& m, int nc, int nr) {
  m.Resize(nc, nr);
  for (int c = 1; c <= nc; ++c) {
    for (int r = 1; r <= nr; ++r)
      m.SetVal(c, r, 10.0 * c + r);
  }
}

/// m := nc x nr uniform values in [-1, 1) from the given seed.
inline void FillRandom(TMatrix& m, int nc, int nr, std::uint64_t seed) {
  SetRandSeed(seed);
  m.Resize(nc, nr);
  m.FillRandomUniform(-1.0, 1.0);
}

inline std::pair<int, int> Dims(const TMatrix& m) {
  return {m.NrOfColumns(), m.NrOfRows()};
}

/// The message of the EQUVMatrixError that call raises, or "nothing raised".
template <class Call>
std::string MessageOf(Call&& call) {
  return RaisedMessage<EQUVMatrixError>(std::forward<Call>(call));
}

}  // namespace quv::test

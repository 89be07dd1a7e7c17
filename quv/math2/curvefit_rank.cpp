// Rank correlations of TCurveFit: pair counts by Knight's O(n log n) method, Kendall's tau-b
// with its tie-corrected z statistic, Goodman and Kruskal's gamma, Spearman's rho.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "quv/math2/curvefit.h"

namespace quv {

namespace {

struct TPairCounts {
  std::int64_t Conc = 0, Disc = 0, TiedX = 0, TiedY = 0, TiedXY = 0;
  // Tie-group terms of the variance of Kendall's statistic, for x and for y.
  Extended T2[2] = {}, T3[2] = {}, T5[2] = {};  // Σt(t-1), Σt(t-1)(t-2), Σt(t-1)(2t+5)
};

// Adds the terms of one group of t tied values.
void AddTieGroup(TPairCounts& c, int axis, std::int64_t t) {
  const Extended e = static_cast<Extended>(t);
  c.T2[axis] += e * (e - 1.0L);
  c.T3[axis] += e * (e - 1.0L) * (e - 2.0L);
  c.T5[axis] += e * (e - 1.0L) * (2.0L * e + 5.0L);
}

// Pairs of equal values within runs of a sorted sequence; tie groups go to axis.
template <class Equal>
std::int64_t TiedPairs(std::size_t n, Equal equal, TPairCounts& c, int axis) {
  std::int64_t pairs = 0;
  std::size_t start = 0;
  for (std::size_t i = 1; i <= n; ++i) {
    if (i < n && equal(i - 1, i)) continue;
    const auto t = static_cast<std::int64_t>(i - start);
    pairs += t * (t - 1) / 2;
    if (axis >= 0 && t > 1) AddTieGroup(c, axis, t);
    start = i;
  }
  return pairs;
}

// Merge sort of v that counts pairs out of order (strictly greater first).
std::int64_t CountInversions(std::vector<double>& v, std::vector<double>& work, std::size_t lo,
                             std::size_t hi) {
  if (hi - lo < 2) return 0;
  const std::size_t mid = lo + (hi - lo) / 2;
  std::int64_t inv = CountInversions(v, work, lo, mid) + CountInversions(v, work, mid, hi);
  std::size_t i = lo, j = mid, k = lo;
  while (i < mid && j < hi) {
    if (v[j] < v[i]) {
      inv += static_cast<std::int64_t>(mid - i);
      work[k++] = v[j++];
    } else {
      work[k++] = v[i++];
    }
  }
  while (i < mid)
    work[k++] = v[i++];
  while (j < hi)
    work[k++] = v[j++];
  std::copy(work.begin() + static_cast<std::ptrdiff_t>(lo),
            work.begin() + static_cast<std::ptrdiff_t>(hi),
            v.begin() + static_cast<std::ptrdiff_t>(lo));
  return inv;
}

TPairCounts CountPairs(const double* x, const double* y, std::size_t n) {
  TPairCounts c;
  std::vector<std::size_t> order(n);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return x[a] < x[b] || (x[a] == x[b] && y[a] < y[b]);
  });
  std::vector<double> xs(n), ys(n);
  for (std::size_t i = 0; i < n; ++i) {
    xs[i] = x[order[i]];
    ys[i] = y[order[i]];
  }
  const std::int64_t n1 = TiedPairs(
      n, [&](std::size_t a, std::size_t b) { return xs[a] == xs[b]; }, c, 0);
  const std::int64_t n3 = TiedPairs(
      n, [&](std::size_t a, std::size_t b) { return xs[a] == xs[b] && ys[a] == ys[b]; }, c, -1);
  std::vector<double> work(n);
  const std::int64_t disc = CountInversions(ys, work, 0, n);
  const std::int64_t n2 = TiedPairs(
      n, [&](std::size_t a, std::size_t b) { return ys[a] == ys[b]; }, c, 1);
  const auto total = static_cast<std::int64_t>(n) * static_cast<std::int64_t>(n - 1) / 2;
  c.Disc = disc;
  c.TiedXY = n3;
  c.TiedX = n1 - n3;
  c.TiedY = n2 - n3;
  c.Conc = total - n1 - n2 + n3 - disc;
  return c;
}

// Average ranks (1-based) of v; ties share the mean of their ranks.
std::vector<Extended> AverageRanks(const double* v, std::size_t n) {
  std::vector<std::size_t> order(n);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [v](std::size_t a, std::size_t b) { return v[a] < v[b]; });
  std::vector<Extended> rank(n);
  std::size_t start = 0;
  for (std::size_t i = 1; i <= n; ++i) {
    if (i < n && v[order[i]] == v[order[start]]) continue;
    const Extended mean = (static_cast<Extended>(start + 1) + static_cast<Extended>(i)) / 2.0L;
    for (std::size_t k = start; k < i; ++k)
      rank[order[k]] = mean;
    start = i;
  }
  return rank;
}

}  // namespace

void TCurveFit::BasicRankCounts(std::int64_t& Concordant, std::int64_t& Discordant,
                                std::int64_t& TiedX, std::int64_t& TiedY,
                                std::int64_t& TiedXY) const {
  const TPairCounts c = CountPairs(XData(), YData(), static_cast<std::size_t>(n_));
  Concordant = c.Conc;
  Discordant = c.Disc;
  TiedX = c.TiedX;
  TiedY = c.TiedY;
  TiedXY = c.TiedXY;
}

bool TCurveFit::KendallsTau(double& Tau, double& z) const {
  Tau = z = 0.0;
  if (n_ < 2) return false;
  const TPairCounts c = CountPairs(XData(), YData(), static_cast<std::size_t>(n_));
  const Extended n = n_;
  const Extended n0 = n * (n - 1.0L) / 2.0L;
  const Extended n1 = static_cast<Extended>(c.TiedX + c.TiedXY);
  const Extended n2 = static_cast<Extended>(c.TiedY + c.TiedXY);
  const Extended den = (n0 - n1) * (n0 - n2);
  if (!(den > 0.0L)) return false;
  const Extended s = static_cast<Extended>(c.Conc - c.Disc);
  Tau = static_cast<double>(s / std::sqrt(den));
  Extended var = (n * (n - 1.0L) * (2.0L * n + 5.0L) - c.T5[0] - c.T5[1]) / 18.0L +
                 c.T2[0] * c.T2[1] / (2.0L * n * (n - 1.0L));
  if (n_ > 2) var += c.T3[0] * c.T3[1] / (9.0L * n * (n - 1.0L) * (n - 2.0L));
  if (var > 0.0L) z = static_cast<double>(s / std::sqrt(var));
  return true;
}

double TCurveFit::GetKruskalGamma() const {
  const TPairCounts c = CountPairs(XData(), YData(), static_cast<std::size_t>(n_));
  const std::int64_t sum = c.Conc + c.Disc;
  return sum == 0 ? 0.0 : static_cast<double>(c.Conc - c.Disc) / static_cast<double>(sum);
}

double TCurveFit::GetSpearman() const {
  if (n_ < 2) return 0.0;
  const auto n = static_cast<std::size_t>(n_);
  const std::vector<Extended> rx = AverageRanks(XData(), n);
  const std::vector<Extended> ry = AverageRanks(YData(), n);
  const Extended mean = (static_cast<Extended>(n) + 1.0L) / 2.0L;
  Extended sxx = 0.0L, syy = 0.0L, sxy = 0.0L;
  for (std::size_t i = 0; i < n; ++i) {
    const Extended dx = rx[i] - mean, dy = ry[i] - mean;
    sxx += dx * dx;
    syy += dy * dy;
    sxy += dx * dy;
  }
  if (sxx == 0.0L || syy == 0.0L) return 0.0;
  return static_cast<double>(sxy / std::sqrt(sxx * syy));
}

}  // namespace quv

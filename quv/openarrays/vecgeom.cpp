#include "quv/openarrays/vecgeom.h"

#include <cmath>
#include <utility>
#include <vector>

#include "quv/openarrays/array_core.h"

namespace quv {

namespace {

template <class T>
std::int32_t DotImpl(const std::vector<T>& a, const std::vector<T>& b, double& product) {
  product = 0.0;
  if (a.empty() || b.empty()) return kOAEmpty;
  if (a.size() != b.size()) return kOABadBounds;
  Extended s = 0;
  for (std::size_t i = 0; i < a.size(); ++i)
    s += static_cast<Extended>(a[i]) * b[i];
  product = static_cast<double>(s);
  return kOAOk;
}

// Largest perpendicular distance of the points from their principal axis. The axis direction
// is the eigenvector of the larger eigenvalue of the 2x2 scatter matrix; the distance of a
// point is the length of its component along the other eigenvector.
bool PointsOnLine(const std::vector<std::pair<double, double>>& pts, double tolerance) {
  if (pts.size() <= 2) return true;
  const auto n = static_cast<Extended>(pts.size());
  Extended mx = 0, my = 0;
  for (const auto& [x, y] : pts) {
    mx += x;
    my += y;
  }
  mx /= n;
  my /= n;
  Extended sxx = 0, syy = 0, sxy = 0;
  for (const auto& [x, y] : pts) {
    sxx += (x - mx) * (x - mx);
    syy += (y - my) * (y - my);
    sxy += (x - mx) * (y - my);
  }
  // Angle of the principal axis: tan(2 theta) = 2 sxy / (sxx - syy).
  const Extended theta = std::atan2(2 * sxy, sxx - syy) / 2;
  const Extended nx = -std::sin(theta);  // unit normal of the axis
  const Extended ny = std::cos(theta);
  for (const auto& [x, y] : pts) {
    if (std::fabs((x - mx) * nx + (y - my) * ny) > tolerance) return false;
  }
  return true;
}

}  // namespace

std::int32_t VectorCrossProduct(const TDoubleArray& A, const TDoubleArray& B,
                                TDoubleArray& Result) {
  if (A.empty() || B.empty()) return kOAEmpty;
  if (A.size() != 3 || B.size() != 3) return kOABadBounds;
  Result = {A[1] * B[2] - A[2] * B[1], A[2] * B[0] - A[0] * B[2], A[0] * B[1] - A[1] * B[0]};
  return kOAOk;
}

std::int32_t VectorDotProduct(const TDoubleArray& A, const TDoubleArray& B, double& Product) {
  return DotImpl(A, B, Product);
}

std::int32_t VectorDotProduct(const TIntArray& A, const TIntArray& B, double& Product) {
  return DotImpl(A, B, Product);
}

bool CheckLinearity(const TDoubleArray& Data, double Tolerance) {
  if (Data.empty()) return false;
  std::vector<std::pair<double, double>> pts;
  pts.reserve(Data.size());
  for (std::size_t i = 0; i < Data.size(); ++i)
    pts.emplace_back(static_cast<double>(i), Data[i]);
  return PointsOnLine(pts, Tolerance);
}

bool CheckLinearity(const TDouble2DArray& Data, double Tolerance) {
  if (Data.empty()) return false;
  std::vector<std::pair<double, double>> pts;
  pts.reserve(Data.size());
  for (const auto& row : Data) {
    if (row.size() < 2) return false;
    pts.emplace_back(row[0], row[1]);
  }
  return PointsOnLine(pts, Tolerance);
}

std::int32_t NormalizeColumns(TDouble2DArray& Data) {
  if (detail::IsEmptyArray(Data)) return kOAEmpty;
  if (!detail::IsRectangular(Data)) return kOABadBounds;
  std::vector<Extended> norms(Data[0].size(), 0);
  for (const auto& row : Data) {
    for (std::size_t j = 0; j < row.size(); ++j)
      norms[j] += static_cast<Extended>(row[j]) * row[j];
  }
  for (auto& row : Data) {
    for (std::size_t j = 0; j < row.size(); ++j) {
      if (norms[j] > 0) row[j] = static_cast<double>(row[j] / std::sqrt(norms[j]));
    }
  }
  return kOAOk;
}

std::int32_t NormalizeRows(TDouble2DArray& Data) {
  if (detail::IsEmptyArray(Data)) return kOAEmpty;
  for (auto& row : Data) {
    Extended norm = 0;
    for (double x : row)
      norm += static_cast<Extended>(x) * x;
    if (norm > 0) {
      const Extended len = std::sqrt(norm);
      for (double& x : row)
        x = static_cast<double>(x / len);
    }
  }
  return kOAOk;
}

}  // namespace quv

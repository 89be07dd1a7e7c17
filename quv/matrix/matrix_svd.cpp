// Golub-Reinsch singular value decomposition, written 0-based on row arrays.
#include "quv/matrix/matrix_svd.h"

#include <algorithm>
#include <cmath>

#include "quv/base/feedback.h"

namespace quv::detail {
namespace {

constexpr int kMaxIterations = 30;

double Sign(double magnitude, double of) {
  return of >= 0.0 ? std::abs(magnitude) : -std::abs(magnitude);
}

// Householder reduction of a to bidiagonal form: diagonal in w, superdiagonal in e (e[0] = 0).
// The transformations stay in a; returns the norm estimate used by the convergence test.
double Bidiagonalize(TDouble2DArray& a, TDoubleArray& w, TDoubleArray& e) {
  const int m = static_cast<int>(a.size());
  const int n = static_cast<int>(w.size());
  double g = 0.0;
  double scale = 0.0;
  double anorm = 0.0;
  for (int i = 0; i < n; ++i) {
    const int l = i + 1;
    e[i] = scale * g;
    g = 0.0;
    scale = 0.0;
    double s = 0.0;
    // Left transformation: zero column i below the diagonal.
    for (int k = i; k < m; ++k)
      scale += std::abs(a[k][i]);
    if (scale != 0.0) {
      for (int k = i; k < m; ++k) {
        a[k][i] /= scale;
        s += a[k][i] * a[k][i];
      }
      double f = a[i][i];
      g = -Sign(std::sqrt(s), f);
      const double h = f * g - s;
      a[i][i] = f - g;
      for (int j = l; j < n; ++j) {
        s = 0.0;
        for (int k = i; k < m; ++k)
          s += a[k][i] * a[k][j];
        f = s / h;
        for (int k = i; k < m; ++k)
          a[k][j] += f * a[k][i];
      }
      for (int k = i; k < m; ++k)
        a[k][i] *= scale;
    }
    w[i] = scale * g;
    // Right transformation: zero row i right of the superdiagonal.
    g = 0.0;
    scale = 0.0;
    s = 0.0;
    if (i != n - 1) {
      for (int k = l; k < n; ++k)
        scale += std::abs(a[i][k]);
      if (scale != 0.0) {
        for (int k = l; k < n; ++k) {
          a[i][k] /= scale;
          s += a[i][k] * a[i][k];
        }
        const double f = a[i][l];
        g = -Sign(std::sqrt(s), f);
        const double h = f * g - s;
        a[i][l] = f - g;
        for (int k = l; k < n; ++k)
          e[k] = a[i][k] / h;
        for (int j = l; j < m; ++j) {
          s = 0.0;
          for (int k = l; k < n; ++k)
            s += a[j][k] * a[i][k];
          for (int k = l; k < n; ++k)
            a[j][k] += s * e[k];
        }
        for (int k = l; k < n; ++k)
          a[i][k] *= scale;
      }
    }
    anorm = std::max(anorm, std::abs(w[i]) + std::abs(e[i]));
  }
  return anorm;
}

// Accumulates the right-hand transformations into v.
void AccumulateRight(const TDouble2DArray& a, const TDoubleArray& e, TDouble2DArray& v) {
  const int n = static_cast<int>(e.size());
  double g = 0.0;
  int l = n;
  for (int i = n - 1; i >= 0; --i) {
    if (i < n - 1) {
      if (g != 0.0) {
        for (int j = l; j < n; ++j)
          v[j][i] = (a[i][j] / a[i][l]) / g;  // double division avoids underflow
        for (int j = l; j < n; ++j) {
          double s = 0.0;
          for (int k = l; k < n; ++k)
            s += a[i][k] * v[k][j];
          for (int k = l; k < n; ++k)
            v[k][j] += s * v[k][i];
        }
      }
      for (int j = l; j < n; ++j)
        v[i][j] = v[j][i] = 0.0;
    }
    v[i][i] = 1.0;
    g = e[i];
    l = i;
  }
}

// Accumulates the left-hand transformations into a, which becomes U.
void AccumulateLeft(TDouble2DArray& a, const TDoubleArray& w) {
  const int m = static_cast<int>(a.size());
  const int n = static_cast<int>(w.size());
  for (int i = std::min(m, n) - 1; i >= 0; --i) {
    const int l = i + 1;
    double g = w[i];
    for (int j = l; j < n; ++j)
      a[i][j] = 0.0;
    if (g != 0.0) {
      g = 1.0 / g;
      for (int j = l; j < n; ++j) {
        double s = 0.0;
        for (int k = l; k < m; ++k)
          s += a[k][i] * a[k][j];
        const double f = (s / a[i][i]) * g;
        for (int k = i; k < m; ++k)
          a[k][j] += f * a[k][i];
      }
      for (int j = i; j < m; ++j)
        a[j][i] *= g;
    } else {
      for (int j = i; j < m; ++j)
        a[j][i] = 0.0;
    }
    a[i][i] += 1.0;
  }
}

// Applies the plane rotation (c, s) to columns p and q of the rows of x.
void RotateColumns(TDouble2DArray& x, int p, int q, double c, double s) {
  for (TDoubleArray& row : x) {
    const double y = row[p];
    const double z = row[q];
    row[p] = y * c + z * s;
    row[q] = z * c - y * s;
  }
}

}  // namespace

TSvdStatus SingularValueDecomposition(TDouble2DArray& a, TDoubleArray& w, TDouble2DArray& v) {
  const int m = static_cast<int>(a.size());
  const int n = m > 0 ? static_cast<int>(a.front().size()) : 0;
  w.assign(static_cast<std::size_t>(n), 0.0);
  v.assign(static_cast<std::size_t>(n), TDoubleArray(static_cast<std::size_t>(n), 0.0));
  if (n == 0) return svdOK;
  TDoubleArray e(static_cast<std::size_t>(n), 0.0);
  const double anorm = Bidiagonalize(a, w, e);
  AccumulateRight(a, e, v);
  AccumulateLeft(a, w);

  auto negligible = [anorm](double x) { return std::abs(x) + anorm == anorm; };
  // Diagonalisation of the bidiagonal form, one singular value k at a time from the last.
  for (int k = n - 1; k >= 0; --k) {
    for (int its = 1;; ++its) {
      // Find the top l of the unreduced block ending at k.
      bool cancel = true;
      int l = k;
      for (; l >= 0; --l) {
        if (l == 0 || negligible(e[l])) {
          cancel = false;
          break;
        }
        if (negligible(w[l - 1])) break;
      }
      if (cancel) {
        // w[l - 1] is negligible: chase e[l] out with rotations from the left.
        const int nm = l - 1;
        double c = 0.0;
        double s = 1.0;
        for (int i = l; i <= k; ++i) {
          const double f = s * e[i];
          e[i] = c * e[i];
          if (negligible(f)) break;
          const double g = w[i];
          double h = std::hypot(f, g);
          w[i] = h;
          h = 1.0 / h;
          c = g * h;
          s = -f * h;
          RotateColumns(a, nm, i, c, s);
        }
      }
      double z = w[k];
      if (l == k) {  // converged: make the singular value non-negative
        if (z < 0.0) {
          w[k] = -z;
          for (TDoubleArray& row : v)
            row[k] = -row[k];
        }
        break;
      }
      if (its >= kMaxIterations) return svdNoConvergence;
      // Shift from the bottom 2 x 2 minor.
      double x = w[l];
      const int nm = k - 1;
      double y = w[nm];
      double g = e[nm];
      double h = e[k];
      double f = ((y - z) * (y + z) + (g - h) * (g + h)) / (2.0 * h * y);
      g = std::hypot(f, 1.0);
      f = ((x - z) * (x + z) + h * ((y / (f + Sign(g, f))) - h)) / x;
      // Next QR transformation.
      double c = 1.0;
      double s = 1.0;
      for (int j = l; j <= nm; ++j) {
        const int i = j + 1;
        g = e[i];
        y = w[i];
        h = s * g;
        g = c * g;
        z = std::hypot(f, h);
        e[j] = z;
        c = f / z;
        s = h / z;
        f = x * c + g * s;
        g = g * c - x * s;
        h = y * s;
        y *= c;
        RotateColumns(v, j, i, c, s);
        z = std::hypot(f, h);
        w[j] = z;
        if (z != 0.0) {  // the rotation can be arbitrary when z = 0
          z = 1.0 / z;
          c = f * z;
          s = h * z;
        }
        f = c * g + s * y;
        x = c * y - s * g;
        RotateColumns(a, j, i, c, s);
      }
      e[l] = 0.0;
      e[k] = f;
      w[k] = x;
    }
    if (ProgressStep(1.0)) return svdAborted;
  }
  return svdOK;
}

}  // namespace quv::detail

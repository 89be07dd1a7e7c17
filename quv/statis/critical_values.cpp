// Tables and approximations of critical values: Dixon's ratios (Dean and Dixon 1951; Rorabacher
// 1991), Grubbs' statistic through the t quantile, and Royston's approximation of the
// distribution of the Shapiro-Wilk statistic (P. Royston, "Remark AS R94", Applied Statistics
// 44(4), 1995).
#include "quv/statis/critical_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "quv/base/errors.h"
#include "quv/statis/chi2_t_f.h"
#include "quv/statis/dist_core.h"

namespace quv {

namespace {

using TDixonRow = std::array<double, 9>;

// Critical values in four blocks, one per ratio: r10 (n = 3..7), r11 (8..10), r21 (11..13) and
// r22 (14..100); columns in the order of TSignifLevelEx.
constexpr std::array<TDixonRow, 5> kDixonR10 = {{
    {0.999, 0.998, 0.994, 0.988, 0.976, 0.941, 0.886, 0.782, 0.501},  // 3
    {0.964, 0.949, 0.921, 0.889, 0.847, 0.766, 0.679, 0.561, 0.324},  // 4
    {0.895, 0.869, 0.824, 0.782, 0.729, 0.643, 0.559, 0.452, 0.251},  // 5
    {0.822, 0.792, 0.744, 0.698, 0.646, 0.563, 0.484, 0.387, 0.21},   // 6
    {0.763, 0.731, 0.681, 0.636, 0.587, 0.507, 0.433, 0.344, 0.184},  // 7
}};
constexpr std::array<TDixonRow, 3> kDixonR11 = {{
    {0.799, 0.769, 0.724, 0.682, 0.633, 0.554, 0.48, 0.386, 0.211},   // 8
    {0.75, 0.72, 0.675, 0.634, 0.586, 0.512, 0.441, 0.352, 0.19},     // 9
    {0.713, 0.683, 0.637, 0.597, 0.551, 0.477, 0.409, 0.325, 0.174},  // 10
}};
constexpr std::array<TDixonRow, 3> kDixonR21 = {{
    {0.77, 0.746, 0.708, 0.674, 0.636, 0.575, 0.518, 0.445, 0.304},  // 11
    {0.739, 0.714, 0.676, 0.643, 0.605, 0.546, 0.489, 0.42, 0.284},  // 12
    {0.713, 0.687, 0.649, 0.617, 0.58, 0.522, 0.467, 0.399, 0.269},  // 13
}};
constexpr std::array<TDixonRow, 87> kDixonR22 = {{
    {0.732, 0.708, 0.672, 0.64, 0.603, 0.546, 0.491, 0.422, 0.287},   // 14
    {0.708, 0.685, 0.648, 0.617, 0.582, 0.524, 0.47, 0.403, 0.272},   // 15
    {0.691, 0.667, 0.63, 0.598, 0.562, 0.505, 0.453, 0.386, 0.26},    // 16
    {0.671, 0.647, 0.611, 0.58, 0.545, 0.489, 0.437, 0.373, 0.249},   // 17
    {0.652, 0.628, 0.594, 0.564, 0.529, 0.475, 0.424, 0.361, 0.24},   // 18
    {0.64, 0.617, 0.581, 0.551, 0.517, 0.462, 0.412, 0.349, 0.232},   // 19
    {0.627, 0.604, 0.568, 0.538, 0.503, 0.45, 0.401, 0.339, 0.224},   // 20
    {0.614, 0.59, 0.556, 0.526, 0.493, 0.439, 0.391, 0.331, 0.218},   // 21
    {0.603, 0.58, 0.546, 0.517, 0.483, 0.43, 0.382, 0.323, 0.212},    // 22
    {0.593, 0.57, 0.536, 0.506, 0.473, 0.421, 0.374, 0.316, 0.207},   // 23
    {0.583, 0.56, 0.527, 0.498, 0.465, 0.413, 0.366, 0.309, 0.202},   // 24
    {0.574, 0.55, 0.517, 0.489, 0.457, 0.406, 0.359, 0.302, 0.197},   // 25
    {0.567, 0.544, 0.51, 0.481, 0.449, 0.399, 0.353, 0.297, 0.193},   // 26
    {0.559, 0.536, 0.503, 0.474, 0.442, 0.392, 0.347, 0.291, 0.189},  // 27
    {0.549, 0.528, 0.495, 0.468, 0.436, 0.386, 0.341, 0.286, 0.186},  // 28
    {0.544, 0.521, 0.49, 0.461, 0.43, 0.381, 0.336, 0.282, 0.182},    // 29
    {0.539, 0.517, 0.484, 0.456, 0.425, 0.376, 0.332, 0.278, 0.179},  // 30
    {0.532, 0.51, 0.478, 0.451, 0.419, 0.371, 0.327, 0.274, 0.176},   // 31
    {0.525, 0.504, 0.472, 0.445, 0.414, 0.366, 0.323, 0.27, 0.174},   // 32
    {0.522, 0.5, 0.468, 0.44, 0.41, 0.363, 0.319, 0.266, 0.171},      // 33
    {0.517, 0.495, 0.463, 0.436, 0.405, 0.358, 0.315, 0.263, 0.169},  // 34
    {0.511, 0.49, 0.459, 0.431, 0.4, 0.354, 0.311, 0.26, 0.166},      // 35
    {0.506, 0.485, 0.453, 0.427, 0.397, 0.35, 0.308, 0.257, 0.164},   // 36
    {0.502, 0.48, 0.449, 0.423, 0.392, 0.346, 0.304, 0.254, 0.162},   // 37
    {0.501, 0.479, 0.446, 0.42, 0.389, 0.343, 0.301, 0.251, 0.16},    // 38
    {0.495, 0.474, 0.443, 0.416, 0.386, 0.34, 0.298, 0.248, 0.158},   // 39
    {0.49, 0.469, 0.438, 0.412, 0.382, 0.337, 0.295, 0.246, 0.157},   // 40
    {0.488, 0.467, 0.435, 0.408, 0.379, 0.333, 0.293, 0.243, 0.155},  // 41
    {0.484, 0.463, 0.432, 0.406, 0.376, 0.331, 0.29, 0.241, 0.153},   // 42
    {0.481, 0.46, 0.428, 0.403, 0.373, 0.328, 0.288, 0.239, 0.152},   // 43
    {0.477, 0.456, 0.426, 0.399, 0.37, 0.325, 0.285, 0.237, 0.15},    // 44
    {0.475, 0.454, 0.423, 0.397, 0.368, 0.323, 0.283, 0.234, 0.149},  // 45
    {0.472, 0.451, 0.42, 0.394, 0.365, 0.32, 0.28, 0.233, 0.148},     // 46
    {0.468, 0.447, 0.417, 0.391, 0.362, 0.318, 0.278, 0.231, 0.146},  // 47
    {0.466, 0.445, 0.414, 0.389, 0.36, 0.316, 0.277, 0.229, 0.145},   // 48
    {0.462, 0.441, 0.411, 0.386, 0.358, 0.314, 0.274, 0.227, 0.144},  // 49
    {0.46, 0.439, 0.41, 0.384, 0.355, 0.312, 0.272, 0.226, 0.143},    // 50
    {0.457, 0.437, 0.408, 0.382, 0.353, 0.31, 0.271, 0.224, 0.141},   // 51
    {0.455, 0.435, 0.405, 0.379, 0.351, 0.308, 0.269, 0.222, 0.14},   // 52
    {0.453, 0.433, 0.402, 0.377, 0.349, 0.305, 0.267, 0.221, 0.139},  // 53
    {0.45, 0.429, 0.4, 0.375, 0.347, 0.304, 0.265, 0.219, 0.138},     // 54
    {0.449, 0.428, 0.399, 0.373, 0.345, 0.302, 0.263, 0.218, 0.137},  // 55
    {0.445, 0.425, 0.396, 0.371, 0.343, 0.3, 0.262, 0.216, 0.136},    // 56
    {0.444, 0.424, 0.394, 0.37, 0.341, 0.299, 0.26, 0.215, 0.135},    // 57
    {0.443, 0.422, 0.393, 0.367, 0.339, 0.297, 0.259, 0.214, 0.134},  // 58
    {0.44, 0.42, 0.391, 0.366, 0.338, 0.295, 0.257, 0.212, 0.133},    // 59
    {0.437, 0.417, 0.388, 0.363, 0.336, 0.294, 0.256, 0.211, 0.133},  // 60
    {0.436, 0.416, 0.387, 0.362, 0.334, 0.292, 0.254, 0.21, 0.132},   // 61
    {0.434, 0.414, 0.385, 0.36, 0.332, 0.29, 0.253, 0.208, 0.131},    // 62
    {0.434, 0.414, 0.383, 0.359, 0.331, 0.289, 0.252, 0.208, 0.13},   // 63
    {0.43, 0.41, 0.381, 0.357, 0.329, 0.288, 0.25, 0.206, 0.129},     // 64
    {0.429, 0.41, 0.38, 0.356, 0.328, 0.287, 0.249, 0.205, 0.129},    // 65
    {0.429, 0.408, 0.379, 0.355, 0.327, 0.286, 0.248, 0.204, 0.128},  // 66
    {0.425, 0.406, 0.377, 0.352, 0.325, 0.284, 0.247, 0.203, 0.127},  // 67
    {0.424, 0.404, 0.376, 0.351, 0.324, 0.283, 0.246, 0.202, 0.126},  // 68
    {0.422, 0.403, 0.375, 0.35, 0.324, 0.282, 0.245, 0.202, 0.126},   // 69
    {0.422, 0.403, 0.374, 0.349, 0.321, 0.28, 0.244, 0.201, 0.125},   // 70
    {0.42, 0.4, 0.371, 0.347, 0.32, 0.279, 0.243, 0.199, 0.125},      // 71
    {0.417, 0.397, 0.37, 0.346, 0.319, 0.278, 0.242, 0.199, 0.124},   // 72
    {0.416, 0.397, 0.368, 0.344, 0.317, 0.276, 0.24, 0.198, 0.123},   // 73
    {0.416, 0.396, 0.367, 0.343, 0.316, 0.276, 0.24, 0.197, 0.123},   // 74
    {0.414, 0.393, 0.366, 0.342, 0.315, 0.275, 0.238, 0.196, 0.122},  // 75
    {0.41, 0.392, 0.365, 0.341, 0.314, 0.273, 0.238, 0.195, 0.122},   // 76
    {0.412, 0.392, 0.363, 0.339, 0.313, 0.272, 0.236, 0.194, 0.121},  // 77
    {0.409, 0.39, 0.361, 0.337, 0.312, 0.271, 0.236, 0.193, 0.12},    // 78
    {0.409, 0.389, 0.361, 0.338, 0.311, 0.271, 0.235, 0.193, 0.12},   // 79
    {0.408, 0.389, 0.36, 0.337, 0.31, 0.27, 0.234, 0.192, 0.119},     // 80
    {0.406, 0.387, 0.359, 0.335, 0.308, 0.268, 0.233, 0.191, 0.119},  // 81
    {0.406, 0.387, 0.358, 0.335, 0.308, 0.267, 0.232, 0.19, 0.118},   // 82
    {0.404, 0.384, 0.356, 0.333, 0.307, 0.267, 0.231, 0.19, 0.118},   // 83
    {0.403, 0.383, 0.356, 0.332, 0.306, 0.266, 0.231, 0.189, 0.117},  // 84
    {0.402, 0.383, 0.355, 0.331, 0.304, 0.265, 0.23, 0.188, 0.117},   // 85
    {0.4, 0.38, 0.353, 0.33, 0.304, 0.264, 0.229, 0.188, 0.117},      // 86
    {0.4, 0.381, 0.353, 0.329, 0.303, 0.263, 0.228, 0.187, 0.116},    // 87
    {0.398, 0.38, 0.352, 0.328, 0.302, 0.262, 0.227, 0.187, 0.116},   // 88
    {0.397, 0.378, 0.351, 0.327, 0.301, 0.262, 0.227, 0.186, 0.115},  // 89
    {0.397, 0.377, 0.35, 0.326, 0.3, 0.261, 0.226, 0.185, 0.115},     // 90
    {0.394, 0.376, 0.348, 0.325, 0.299, 0.26, 0.225, 0.184, 0.114},   // 91
    {0.394, 0.375, 0.347, 0.324, 0.298, 0.259, 0.224, 0.184, 0.114},  // 92
    {0.393, 0.374, 0.346, 0.323, 0.297, 0.258, 0.224, 0.183, 0.113},  // 93
    {0.394, 0.374, 0.345, 0.322, 0.297, 0.258, 0.223, 0.183, 0.113},  // 94
    {0.391, 0.373, 0.345, 0.322, 0.296, 0.257, 0.223, 0.182, 0.113},  // 95
    {0.391, 0.372, 0.344, 0.32, 0.295, 0.256, 0.222, 0.181, 0.112},   // 96
    {0.392, 0.372, 0.343, 0.32, 0.294, 0.256, 0.221, 0.181, 0.112},   // 97
    {0.389, 0.37, 0.342, 0.319, 0.293, 0.255, 0.221, 0.18, 0.111},    // 98
    {0.387, 0.368, 0.341, 0.318, 0.292, 0.254, 0.22, 0.18, 0.111},    // 99
    {0.387, 0.368, 0.341, 0.317, 0.292, 0.253, 0.219, 0.179, 0.111},  // 100
}};

bool ValidLevelEx(TSignifLevelEx level) {
  return level <= Dot500;
}

// The two ratios of Dixon's test for the sorted data x[0..n-1].
struct TDixonRatios {
  long double low = 0;
  long double high = 0;
};

long double Ratio(long double num, long double den) {
  return den == 0 ? 0 : num / den;
}

TDixonRatios DixonRatios(const TDoubleArray& x) {
  const std::size_t n = x.size();
  auto v = [&x](std::size_t i) { return static_cast<long double>(x[i - 1]); };  // 1-based
  if (n <= 7) return {Ratio(v(2) - v(1), v(n) - v(1)), Ratio(v(n) - v(n - 1), v(n) - v(1))};
  if (n <= 10) return {Ratio(v(2) - v(1), v(n - 1) - v(1)), Ratio(v(n) - v(n - 1), v(n) - v(2))};
  if (n <= 13) return {Ratio(v(3) - v(1), v(n - 1) - v(1)), Ratio(v(n) - v(n - 2), v(n) - v(2))};
  return {Ratio(v(3) - v(1), v(n - 2) - v(1)), Ratio(v(n) - v(n - 2), v(n) - v(3))};
}

}  // namespace

double DeanDixonCriticalValues(std::int32_t n, TSignifLevelEx Level) {
  if (n < 3 || n > 100 || !ValidLevelEx(Level)) return -1.0;
  if (n <= 7) return kDixonR10[static_cast<std::size_t>(n - 3)][Level];
  if (n <= 10) return kDixonR11[static_cast<std::size_t>(n - 8)][Level];
  if (n <= 13) return kDixonR21[static_cast<std::size_t>(n - 11)][Level];
  return kDixonR22[static_cast<std::size_t>(n - 14)][Level];
}

bool DeanDixonTest(const TDoubleArray& Data, TSignifLevelEx Level, double& Statistic,
                   double& Suspect) {
  const std::size_t n = Data.size();
  if (n < 3)
    RaiseFunctionError<EQUVStatisError>("DeanDixonTest", "number of data points is too low");
  if (n > 100)
    RaiseFunctionError<EQUVStatisError>("DeanDixonTest", "number of data points is too high");
  TDoubleArray x = Data;
  // NaN sorts after every number, which keeps the order strict and weak.
  std::sort(x.begin(), x.end(),
            [](double a, double b) { return a < b || (!std::isnan(a) && std::isnan(b)); });
  const TDixonRatios r = DixonRatios(x);
  const bool lowEnd = !(r.high > r.low);
  Statistic = static_cast<double>(lowEnd ? r.low : r.high);
  Suspect = lowEnd ? x.front() : x.back();
  const double critical = DeanDixonCriticalValues(static_cast<std::int32_t>(n), Level);
  return critical >= 0 && critical < Statistic;
}

bool DeanDixonTest(const TDoubleArray& Data, TSignifLevelEx Level, double& Statistic) {
  double suspect = 0;
  return DeanDixonTest(Data, Level, Statistic, suspect);
}

double GrubbsCriticalValues(std::int32_t n, double Alpha, bool TwoSided) {
  if (n <= 2 || !(Alpha > 0 && Alpha < 1)) return -1;
  const long double ne = n;
  const long double p = 1 - static_cast<long double>(Alpha) / (TwoSided ? 2 : 1) / ne;
  const long double t = tDistriQuantile(static_cast<double>(p), n - 2);
  const long double t2 = t * t;
  return static_cast<double>((ne - 1) / std::sqrt(ne) * std::sqrt(t2 / (t2 + ne - 2)));
}

double ShapiroWilkIntegral(double W, std::int32_t n, std::int32_t Tail) {
  if (n < 3 || n > 5000) return -1;
  if (std::isnan(W)) return std::numeric_limits<double>::quiet_NaN();
  const bool upper = Tail != 0;
  if (W <= 0) return upper ? 1 : 0;
  if (W >= 1) return upper ? 0 : 1;
  const long double w = W;
  if (n == 3) {
    // Exact: P(W' <= w) = 6/pi (asin(sqrt(w)) - pi/3) on [3/4, 1].
    constexpr long double kPi = 3.141592653589793238462643383279502884L;
    long double p = 6 / kPi * (std::asin(std::sqrt(w)) - kPi / 3);
    p = std::clamp(p, 0.0L, 1.0L);
    return static_cast<double>(upper ? 1 - p : p);
  }
  // ln(1 - W) is close to normal with mean mu and deviation sigma fitted in n (n >= 12) or,
  // after the further transformation -ln(gamma - ln(1 - W)), in n (4 <= n <= 11).
  const long double an = n;
  long double y = std::log1p(-w);
  long double mu = 0;
  long double sigma = 0;
  auto poly = [](std::initializer_list<long double> c, long double x) {
    long double sum = 0;
    long double power = 1;
    for (long double ci : c) {
      sum += ci * power;
      power *= x;
    }
    return sum;
  };
  if (n <= 11) {
    const long double gamma = poly({-2.273L, 0.459L}, an);
    if (y >= gamma) return upper ? 1 : 0;  // beyond the fitted range: W far too small
    y = -std::log(gamma - y);
    mu = poly({0.544L, -0.39978L, 0.025054L, -6.714e-4L}, an);
    sigma = std::exp(poly({1.3822L, -0.77857L, 0.062767L, -0.0020322L}, an));
  } else {
    const long double ln = std::log(an);
    mu = poly({-1.5861L, -0.31082L, -0.083751L, 0.0038915L}, ln);
    sigma = std::exp(poly({-0.4803L, -0.082676L, 0.0030302L}, ln));
  }
  // Small W means large y: P(W' <= W) is the upper normal tail of (y - mu)/sigma.
  const detail::TTails t = detail::NormalTails((y - mu) / sigma);
  return static_cast<double>(upper ? t.lower : t.upper);
}

}  // namespace quv

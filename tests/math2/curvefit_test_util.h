// Shared helpers of the curve-fit tests: the reference data file and white-box access to the
// running sums.
#pragma once

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "quv/quv.h"

namespace quv {

/// Reads the private running sums of a curve fit.
struct TCurveFitAccess {
  static std::vector<long double> Sums(const TCurveFit& fit) {
    return {fit.sums_.begin(), fit.sums_.end()};
  }
  static long double Sum(const TCurveFit& fit, const char* which) {
    const std::string w = which;
    if (w == "x2lny") return fit.sums_[TCurveFit::sX2LY];
    if (w == "y2lnx") return fit.sums_[TCurveFit::sY2LX];
    if (w == "x") return fit.sums_[TCurveFit::sX];
    return fit.sums_[TCurveFit::sY];
  }
};

namespace test {

/// The values and data sets of tests/data/curvefit_reference.txt.
struct CurveFitReference {
  std::map<std::string, std::vector<double>> values;
  std::map<std::string, std::pair<std::vector<double>, std::vector<double>>> data;

  static const CurveFitReference& Get() {
    static const CurveFitReference ref = Load();
    return ref;
  }
  const std::vector<double>& Values(const std::string& name) const { return values.at(name); }
  /// Enters data set name into fit (after Init).
  void Enter(const std::string& name, TCurveFit& fit) const {
    const auto& [x, y] = data.at(name);
    fit.Init();
    for (std::size_t i = 0; i < x.size(); ++i)
      fit.EnterStatValue(x[i], y[i]);
  }

 private:
  static CurveFitReference Load() {
    CurveFitReference ref;
    std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/curvefit_reference.txt");
    std::string line;
    while (std::getline(in, line)) {
      std::istringstream ss(line);
      std::string name;
      ss >> name;
      if (name == "data") {
        std::size_t n = 0;
        ss >> name >> n;
        auto& [x, y] = ref.data[name];
        for (std::size_t i = 0; i < n && std::getline(in, line); ++i) {
          std::istringstream row(line);
          double a = 0, b = 0;
          row >> a >> b;
          x.push_back(a);
          y.push_back(b);
        }
      } else {
        auto& v = ref.values[name];
        for (double d; ss >> d;)
          v.push_back(d);
      }
    }
    return ref;
  }
};

}  // namespace test
}  // namespace quv

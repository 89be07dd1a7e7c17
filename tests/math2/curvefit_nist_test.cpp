// Accuracy of the straight-line, through-origin and polynomial fits against the certified
// values of the NIST StRD linear least-squares data sets with one predictor.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "quv/quv.h"

namespace quv {
namespace {

struct NistSet {
  std::string name, model;
  int degree = 0;
  std::vector<double> beta, sd, x, y;
};

std::vector<NistSet> LoadNist() {
  std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/curvefit_nist.txt");
  std::vector<NistSet> sets;
  std::string line;
  const auto numbers = [](const std::string& text) {
    std::istringstream ss(text);
    std::string word;
    ss >> word;  // the leading tag
    std::vector<double> v;
    for (double d; ss >> d;)
      v.push_back(d);
    return v;
  };
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    NistSet s;
    std::istringstream head(line);
    std::string tag;
    int n = 0;
    head >> tag >> s.name >> s.model >> s.degree >> n;
    std::getline(in, line);
    s.beta = numbers(line);
    std::getline(in, line);
    s.sd = numbers(line);
    for (int i = 0; i < n; ++i) {
      double x = 0, y = 0;
      in >> x >> y;
      s.x.push_back(x);
      s.y.push_back(y);
    }
    std::getline(in, line);
    sets.push_back(s);
  }
  return sets;
}

// Log relative error: the number of correct significant digits (absolute error for a
// certified 0), capped at 15.
double Lre(double got, double certified) {
  const double err =
      certified == 0.0 ? std::fabs(got) : std::fabs(got - certified) / std::fabs(certified);
  return err == 0.0 ? 15.0 : std::min(15.0, -std::log10(err));
}

struct Goal {
  const char* name;
  double coefficients;
};

TEST(CurveFitNist, CertifiedValuesAreReached) {
  const Goal goals[] = {{"Norris", 11},  {"Pontius", 11}, {"NoInt1", 11},  {"NoInt2", 11},
                        {"Filip", 7},    {"Wampler1", 9}, {"Wampler2", 9}, {"Wampler3", 9},
                        {"Wampler4", 9}, {"Wampler5", 9}};
  const std::vector<NistSet> sets = LoadNist();
  ASSERT_EQ(sets.size(), std::size(goals));
  for (std::size_t g = 0; g < sets.size(); ++g) {
    const NistSet& s = sets[g];
    ASSERT_EQ(s.name, goals[g].name);
    TCurveFit fit;
    for (std::size_t i = 0; i < s.x.size(); ++i)
      fit.EnterStatValue(s.x[i], s.y[i]);
    std::vector<double> coef(11, 0.0), se(11, -1.0);
    if (s.model == "line") {
      double k = 0, d = 0, q = 0;
      fit.CalcLinFit(k, d, q);
    } else if (s.model == "origin") {
      double k = 0, q = 0;
      fit.CalcLinFitThroughOrigin(k, q);
    } else {
      double q = 0;
      bool ok = false;
      fit.CalcPolyFit(s.degree, coef, se, q, ok);
      ASSERT_TRUE(ok) << s.name;
    }
    double worstCoef = 15.0, worstSe = 15.0;
    const std::size_t first = s.model == "origin" ? 1 : 0;
    for (std::size_t k = first; k < s.beta.size(); ++k) {
      // The parameter sets of the component hold what the fit returned.
      const double b = fit.GetModelPar(1, static_cast<std::int32_t>(k));
      const double e = fit.GetModelPar(2, static_cast<std::int32_t>(k));
      if (s.model == "poly") {
        EXPECT_EQ(b, coef[k]);
        EXPECT_EQ(e, se[k]);
      }
      worstCoef = std::min(worstCoef, Lre(b, s.beta[k]));
      if (s.sd[k] != 0.0) worstSe = std::min(worstSe, Lre(e, s.sd[k]));
    }
    std::printf("%-9s coefficients %5.1f  standard errors %5.1f\n", s.name.c_str(), worstCoef,
                worstSe);
    EXPECT_GE(worstCoef, goals[g].coefficients) << s.name;
    EXPECT_GE(worstSe, 6.0) << s.name;
  }
}

}  // namespace
}  // namespace quv

// quvmath crossval: cross-validates a least-squares model of one column of an ASC data file
// on the other columns with TCrossValidator, beside the model that predicts the training mean.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands.h"
#include "quv/base/random.h"
#include "quv/datatable/datatable.h"
#include "quv/matrix/matrix.h"
#include "quv/statis/statis.h"

namespace quvmath {

const std::string_view kCrossvalHelp =
    "usage: quvmath crossval [FILE.asc] [--response COL] [--mode holdout|kfold|loo]\n"
    "                        [--size N] [--folds K] [--seed S] [--class-above T]\n"
    "                        [--lenient]\n"
    "\n"
    "Cross-validates the multiple linear regression (least squares with intercept) of\n"
    "column COL (default: the last) on all other columns, and for comparison the model\n"
    "that predicts the mean of the training rows. Prints the root mean squared error of\n"
    "prediction (RMSEP) of both.\n"
    "  --mode holdout  random disjoint test sets of N rows (--size, default a tenth of\n"
    "                  the rows) until every row was tested once (the default)\n"
    "  --mode kfold    K folds (--folds, default 5) stratified on the class\n"
    "  --mode loo      leave one out\n"
    "With --class-above T the response becomes a class, 1 above T and 0 otherwise; the\n"
    "regression then predicts the class, a prediction above 0.5 counts as positive, and\n"
    "the confusion counts, accuracy, F1, Matthews correlation and informedness are\n"
    "printed too (also when the response holds only 0 and 1). Rows holding a missing or\n"
    "infinite value are skipped with a warning, and skipped data makes the exit status 1\n"
    "unless --lenient is given. Without --seed the seed comes from the clock; the seed\n"
    "used is printed. Without FILE (or with - for standard input) the bundled sample\n"
    "sample.asc is used.\n";

namespace {

struct TOptions {
  std::string path;
  std::int32_t response = 0;  // 0: the last column
  quv::TCVMode mode = quv::cvmRepeatedHoldOut;
  std::int32_t size = 0;  // 0: a tenth of the rows
  std::int32_t folds = quv::TCrossValidator::kDefaultNrOfFolds;
  bool haveSeed = false;
  std::uint64_t seed = 0;
  bool classify = false;
  double classAbove = 0;
  bool lenient = false;
};

TOptions ParseCrossvalOptions(const Args& args) {
  const ParsedArgs parsed = ParseOptions(args, {{"--response", true},
                                                {"--mode", true},
                                                {"--size", true},
                                                {"--folds", true},
                                                {"--seed", true},
                                                {"--class-above", true},
                                                {"--lenient", false}});
  if (parsed.operands.size() > 1) throw UsageError{"crossval takes at most one file"};
  TOptions o;
  o.path = parsed.operands.empty() ? SampleDataFile("sample.asc") : parsed.operands.front();
  constexpr std::int64_t kMaxInt = 2147483647;
  if (parsed.Has("--response"))
    o.response = ParseWhole(parsed.Value("--response"), 1, kMaxInt, "--response");
  const std::string mode = parsed.Value("--mode", "holdout");
  if (mode == "holdout")
    o.mode = quv::cvmRepeatedHoldOut;
  else if (mode == "kfold")
    o.mode = quv::cvmStratifiedKFold;
  else if (mode == "loo")
    o.mode = quv::cvmLeaveOneOut;
  else
    throw UsageError{"unknown mode \"" + mode + "\""};
  if (parsed.Has("--size")) o.size = ParseWhole(parsed.Value("--size"), 1, kMaxInt, "--size");
  if (parsed.Has("--folds")) o.folds = ParseWhole(parsed.Value("--folds"), 2, kMaxInt, "--folds");
  if (parsed.Has("--seed")) {
    const std::string s = parsed.Value("--seed");
    if (s.empty() || s.size() > 19 || s.find_first_not_of("0123456789") != std::string::npos)
      throw UsageError{"--seed must be a whole number between 0 and 9999999999999999999"};
    o.seed = std::stoull(s);
    o.haveSeed = true;
  }
  if (parsed.Has("--class-above")) {
    o.classAbove = ParseNumber(parsed.Value("--class-above"));
    o.classify = true;
  }
  o.lenient = parsed.Has("--lenient");
  return o;
}

// Least squares with intercept, fitted on the listed rows of x and y.
class TLeastSquares {
 public:
  // False when the normal equations are singular (too few rows or collinear columns).
  bool Fit(const quv::TMatrix& x, const quv::TMatrix& y, const quv::TIntArray& rows) {
    const std::int32_t p = x.NrOfColumns();
    const auto m = static_cast<std::int32_t>(rows.size());
    if (m <= p) return false;
    quv::TMatrix a, b, ata, aty;
    a.Resize(p + 1, m);
    b.Resize(1, m);
    for (std::int32_t k = 1; k <= m; ++k) {
      const std::int32_t r = rows[static_cast<std::size_t>(k - 1)];
      a.SetVal(1, k, 1.0);
      for (std::int32_t c = 1; c <= p; ++c)
        a.SetVal(c + 1, k, x.GetVal(c, r));
      b.SetVal(1, k, y.GetVal(1, r));
    }
    if (!a.TransposeAndMultiply(&a, &ata) || !a.TransposeAndMultiply(&b, &aty) || !ata.Invert())
      return false;
    quv::TMatrix coef;
    if (!ata.Multiply(&aty, &coef)) return false;
    coef_.assign(static_cast<std::size_t>(p + 1), 0.0);
    for (std::int32_t c = 1; c <= p + 1; ++c)
      coef_[static_cast<std::size_t>(c - 1)] = coef.GetVal(1, c);
    return true;
  }
  double Predict(const quv::TDoubleArray& x) const {
    double s = coef_[0];
    for (std::size_t c = 0; c < x.size(); ++c)
      s += coef_[c + 1] * x[c];
    return s;
  }

 private:
  quv::TDoubleArray coef_;
};

// The results of one run, in table cells.
std::vector<std::string> ResultRow(const std::string& name, const quv::TCrossValidator& cv,
                                   bool classes) {
  std::vector<std::string> row{name, FormatNumber(cv.GetRMSEP(1), 6)};
  if (classes) {
    for (std::int32_t n : {cv.GetTPCnt(1), cv.GetFPCnt(1), cv.GetTNCnt(1), cv.GetFNCnt(1)})
      row.push_back(std::to_string(n));
    for (double s : {cv.GetAccuracy(1), cv.GetF1Score(1), cv.GetMCC(1), cv.GetInformedness(1)})
      row.push_back(FormatNumber(s, 4));
  }
  return row;
}

}  // namespace

int RunCrossval(const Args& args, std::ostream& out) {
  const TOptions o = ParseCrossvalOptions(args);
  const DataFile data = ReadDataFile(o.path);
  bool skipped = WarnSkippedData(data, std::cerr);
  const quv::TASCFile& file = data.file;
  const std::int32_t cols = file.NrCols;
  if (cols < 2) throw std::runtime_error(data.name + ": needs at least two columns");
  const std::int32_t resp = o.response == 0 ? cols : o.response;
  if (resp > cols) throw UsageError{"--response beyond the " + std::to_string(cols) + " columns"};

  // Keep the rows whose values are all numbers (the reader passes NaN through as missing).
  std::vector<std::int32_t> kept;
  for (std::int32_t r = 1; r <= file.RowsRead(); ++r) {
    bool numbers = true;
    for (std::int32_t c = 1; c <= cols; ++c)
      numbers = numbers && std::isfinite(file.Value(c, r));
    if (numbers) {
      kept.push_back(r);
    } else {
      std::cerr << "quvmath crossval: " << data.name << ": data row " << r
                << " skipped: a value is missing or not finite\n";
      skipped = true;
    }
  }
  const auto n = static_cast<std::int32_t>(kept.size());
  if (n < 2) throw std::runtime_error(data.name + ": fewer than two complete data rows");

  quv::TMatrix x, y;
  x.Resize(cols - 1, n);
  y.Resize(1, n);
  bool zeroOne = true;
  for (std::int32_t k = 1; k <= n; ++k) {
    const std::int32_t r = kept[static_cast<std::size_t>(k - 1)];
    std::int32_t xc = 0;
    for (std::int32_t c = 1; c <= cols; ++c) {
      const double v = file.Value(c, r);
      if (c != resp) {
        x.SetVal(++xc, k, v);
        continue;
      }
      const double yv = o.classify ? (v > o.classAbove ? 1.0 : 0.0) : v;
      zeroOne = zeroOne && (yv == 0.0 || yv == 1.0);
      y.SetVal(1, k, yv);
    }
  }

  quv::TCrossValidator cv;
  cv.SetXMat(&x);
  cv.SetYMat(&y);
  cv.SetMode(o.mode);
  cv.SetTestSize(o.size > 0 ? o.size : std::max(1, n / 10));
  cv.SetNrOfFolds(o.folds);
  if (o.haveSeed)
    quv::SetRandSeed(o.seed);
  else
    quv::Randomize();
  const std::uint64_t seed = quv::RandSeed();

  // The least-squares model, and the training mean for comparison; both see the same splits.
  TLeastSquares model;
  double mean = 0;
  bool useMean = false;
  std::int32_t failed = 0;
  cv.OnModelCreateRequest = [&](quv::TComponent*, std::int32_t, const quv::TIntArray& rows,
                                bool& ok) {
    if (useMean) {
      double s = 0;
      for (std::int32_t r : rows)
        s += y.GetVal(1, r);
      ok = !rows.empty();
      mean = ok ? s / static_cast<double>(rows.size()) : 0.0;
    } else {
      ok = model.Fit(x, y, rows);
    }
    if (!ok) ++failed;
  };
  cv.OnModelApplyRequest = [&](quv::TComponent*, std::int32_t, const quv::TDoubleArray& pred,
                               quv::TDoubleArray& response, quv::TDoubleArray& thresh) {
    response[0] = useMean ? mean : model.Predict(pred);
    thresh[0] = 0.5;
  };

  std::vector<std::vector<std::string>> table{{"model", "RMSEP"}};
  if (zeroOne) {
    for (const char* h : {"TP", "FP", "TN", "FN", "accuracy", "F1", "MCC", "informedness"})
      table.front().push_back(h);
  }
  cv.Execute();
  const std::int32_t fitFailures = failed;
  table.push_back(ResultRow("least squares", cv, zeroOne));
  useMean = true;
  quv::SetRandSeed(seed);  // the same splits for the mean
  cv.Execute();
  table.push_back(ResultRow("training mean", cv, zeroOne));

  const char* modeText[] = {"repeated hold-out", "stratified k-fold", "leave-one-out"};
  out << data.name << '\n' << n << " rows; response ";
  if (file.ColNames) out << '"' << file.ColNameList[static_cast<std::size_t>(resp - 1)] << "\" ";
  out << "(column " << resp << ")";
  if (o.classify) out << " as a class, 1 above " << FormatNumber(o.classAbove, 10);
  out << ", from " << cols - 1 << " predictors\n" << modeText[o.mode];
  if (o.mode == quv::cvmRepeatedHoldOut) out << ", test sets of " << cv.SizeTestSet();
  if (o.mode == quv::cvmStratifiedKFold) out << ", " << std::min(o.folds, n) << " folds";
  out << ", seed " << seed << "\n\n";
  PrintTable(out, table);
  if (fitFailures > 0)
    std::cerr << "quvmath crossval: the least-squares fit failed on " << fitFailures
              << " training set(s); their test rows were not predicted (RMSEP still divides by "
                 "all rows)\n";
  if (skipped && !o.lenient) {
    std::cerr << "quvmath crossval: " << data.name
              << ": data was skipped (see the warnings); --lenient accepts the rows read\n";
    return kExitFailure;
  }
  return kExitOk;
}

}  // namespace quvmath

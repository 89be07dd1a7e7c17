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
    "printed too (also when the response holds only 0 and 1). Rows holding a value that is\n"
    "not a number are skipped with a warning. Without --seed the seed comes from the clock;\n"
    "the seed used is printed. Without FILE the bundled sample examples/data/sample.asc is\n"
    "used.\n";

namespace {

struct TOptions {
  std::string path = std::string(QUV_SAMPLE_DATA_DIR) + "/sample.asc";
  std::int32_t response = 0;  // 0: the last column
  quv::TCVMode mode = quv::cvmRepeatedHoldOut;
  std::int32_t size = 0;  // 0: a tenth of the rows
  std::int32_t folds = quv::TCrossValidator::kDefaultNrOfFolds;
  bool haveSeed = false;
  std::uint64_t seed = 0;
  bool classify = false;
  double classAbove = 0;
};

std::int32_t ParseInt(const std::string& text, std::int32_t min) {
  const double v = ParseNumber(text);
  if (!(v >= min && v <= 2147483647.0 && v == std::floor(v)))
    throw UsageError{"\"" + text + "\" is not a whole number of at least " + std::to_string(min)};
  return static_cast<std::int32_t>(v);
}

TOptions ParseOptions(const Args& args) {
  TOptions o;
  bool havePath = false;
  auto value = [&args](std::size_t& i) -> const std::string& {
    if (i + 1 >= args.size()) throw UsageError{"missing value after " + args[i]};
    return args[++i];
  };
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--response") {
      o.response = ParseInt(value(i), 1);
    } else if (a == "--mode") {
      const std::string& m = value(i);
      if (m == "holdout")
        o.mode = quv::cvmRepeatedHoldOut;
      else if (m == "kfold")
        o.mode = quv::cvmStratifiedKFold;
      else if (m == "loo")
        o.mode = quv::cvmLeaveOneOut;
      else
        throw UsageError{"unknown mode \"" + m + "\""};
    } else if (a == "--size") {
      o.size = ParseInt(value(i), 1);
    } else if (a == "--folds") {
      o.folds = ParseInt(value(i), 2);
    } else if (a == "--seed") {
      const std::string& s = value(i);
      if (s.empty() || s.find_first_not_of("0123456789") != std::string::npos)
        throw UsageError{"the seed must be a non-negative whole number"};
      o.seed = std::stoull(s);
      o.haveSeed = true;
    } else if (a == "--class-above") {
      o.classAbove = ParseNumber(value(i));
      o.classify = true;
    } else if (a.size() > 2 && a.compare(0, 2, "--") == 0) {
      throw UsageError{"unknown option " + a};
    } else if (!havePath) {
      o.path = a;
      havePath = true;
    } else {
      throw UsageError{"crossval takes at most one file"};
    }
  }
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
  const TOptions o = ParseOptions(args);
  quv::TASCFile file;
  const std::int32_t status = quv::ReadASCFile(o.path, file);
  if (status != quv::kAscHeaderOk)
    throw std::runtime_error(o.path + ": not a readable ASC file (status " +
                             std::to_string(status) + ")");
  const std::int32_t cols = file.NrCols;
  if (cols < 2) throw std::runtime_error(o.path + ": needs at least two columns");
  const std::int32_t resp = o.response == 0 ? cols : o.response;
  if (resp > cols) throw UsageError{"--response beyond the " + std::to_string(cols) + " columns"};

  // Keep the rows whose values are all numbers.
  std::vector<std::int32_t> kept;
  for (std::int32_t r = 1; r <= file.RowsRead(); ++r) {
    bool numbers = true;
    for (std::int32_t c = 1; c <= cols; ++c)
      numbers = numbers && std::isfinite(file.Value(c, r));
    if (numbers)
      kept.push_back(r);
    else
      std::cerr << "quvmath crossval: " << o.path << ": data row " << r
                << " skipped: a value is not a number\n";
  }
  const auto n = static_cast<std::int32_t>(kept.size());
  if (n < 2) throw std::runtime_error(o.path + ": fewer than two complete data rows");

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
  out << o.path << '\n' << n << " rows; response ";
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
  return 0;
}

}  // namespace quvmath

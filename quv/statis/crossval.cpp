// TCrossValidator: the splitting of the rows into test sets, the calls of the model events and
// the accumulation of residuals and confusion counts; the scores of four counts.
#include "quv/statis/crossval.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "quv/base/bitfld.h"
#include "quv/base/errors.h"
#include "quv/base/random.h"
#include "quv/matrix/matrix.h"

namespace quv {

namespace {

[[noreturn]] void Refuse(std::string_view message) {
  throw EQUVStatisError(std::string(message));
}

// num/den, or 0 when den is not positive.
double RateOf(std::int32_t num, std::int32_t den) {
  return den > 0 ? static_cast<double>(num) / den : 0.0;
}

// A quotient whose zero denominator counts as 0 (the sign of a non-zero one is kept).
double QuotientOrZero(double num, double den) {
  return den != 0 ? num / den : 0.0;
}

// Fisher-Yates shuffle with the library's random source.
void Shuffle(TIntArray& a) {
  for (std::size_t i = a.size(); i > 1; --i) {
    const auto k = static_cast<std::size_t>(Random(static_cast<std::int32_t>(i)));
    std::swap(a[i - 1], a[k]);
  }
}

// The 0-based fold of every row for a stratified k-fold split: the positive rows of column
// strat and the others are shuffled separately and dealt round-robin, positives first, so that
// fold sizes and positive shares each differ by at most one.
std::vector<std::int32_t> StratifiedFolds(const TMatrix& y, std::int32_t n, std::int32_t k,
                                          std::int32_t strat) {
  TIntArray positive, other;
  const bool stratified = strat >= 1 && strat <= y.NrOfColumns();
  for (std::int32_t r = 1; r <= n; ++r)
    (stratified && y.GetVal(strat, r) == 1.0 ? positive : other).push_back(r);
  Shuffle(positive);
  Shuffle(other);
  positive.insert(positive.end(), other.begin(), other.end());
  std::vector<std::int32_t> fold(static_cast<std::size_t>(n));
  for (std::size_t p = 0; p < positive.size(); ++p)
    fold[static_cast<std::size_t>(positive[p] - 1)] = static_cast<std::int32_t>(p) % k;
  return fold;
}

// One repeated hold-out test set: size random rows not yet used (a taken row passes on to the
// next free one, wrapping from n to 1), or, when no more than size rows are left, all of them.
void DrawHoldOutSet(TBitFld& used, TBitFld& test, std::int32_t n, std::int32_t size) {
  if (size < n - used.CountTrueBits()) {
    for (std::int32_t s = 0; s < size; ++s) {
      std::int32_t r = Random(n) + 1;
      while (used.Bit(r))
        r = r % n + 1;
      used.SetBit(r, true);
      test.SetBit(r, true);
    }
    return;
  }
  for (std::int32_t r = 1; r <= n; ++r)
    if (!used.Bit(r)) test.SetBit(r, true);
  used.SetAll();
}

std::int32_t PercentDone(std::int32_t tested, std::int32_t n) {
  return static_cast<std::int32_t>(std::nearbyint(100.0 * tested / n));
}

}  // namespace

double CFAccuracy(std::int32_t TP, std::int32_t FP, std::int32_t TN, std::int32_t FN) {
  const double sum = static_cast<double>(TP) + FP + TN + FN;
  return sum > 0 ? (static_cast<double>(TP) + TN) / sum : 0.0;
}

double CFF1Score(std::int32_t TP, std::int32_t FP, std::int32_t /*TN*/, std::int32_t FN) {
  const double den = 2.0 * TP + FP + FN;
  return den > 0 ? 2.0 * TP / den : 0.0;
}

double CFMatthewsCorr(std::int32_t TP, std::int32_t FP, std::int32_t TN, std::int32_t FN) {
  const double tp = TP, fp = FP, tn = TN, fn = FN;
  const double root = std::sqrt((tp + fp) * (tp + fn) * (tn + fp) * (tn + fn));
  return root != 0 ? (tp * tn - fp * fn) / root : 0.0;
}

double CFInformedness(std::int32_t TP, std::int32_t FP, std::int32_t TN, std::int32_t FN) {
  const double tp = TP, fp = FP, tn = TN, fn = FN;
  return QuotientOrZero(tp, tp + fn) + QuotientOrZero(tn, tn + fp) - 1;
}

TCrossValidator::TCrossValidator(TComponent* owner) : TComponent(owner) {
  SetTestSize(kDefaultSizeTestSet);
}

void TCrossValidator::InvalidateResults() {
  residuals_.Fill(-1.0);
  for (TIntVector* v : {&tp_, &fp_, &tn_, &fn_})
    v->Fill(-1);
}

void TCrossValidator::SetTestSize(std::int32_t n) {
  sizeTestSet_ = std::max(n, 1);
  InvalidateResults();
}

void TCrossValidator::SetMode(TCVMode mode) {
  mode_ = mode;
  InvalidateResults();
}

void TCrossValidator::SetNrOfFolds(std::int32_t k) {
  nrOfFolds_ = std::max(k, 2);
  InvalidateResults();
}

bool TCrossValidator::Execute() {
  if (xmat_ == nullptr || ymat_ == nullptr) Refuse(msg::kCVDataNotAssigned);
  const auto* x = dynamic_cast<const TMatrix*>(xmat_);
  const auto* y = dynamic_cast<const TMatrix*>(ymat_);
  if (x == nullptr || y == nullptr) Refuse(msg::kCVNotTMatrix);
  if (x->NrOfRows() != y->NrOfRows()) Refuse(msg::kCVRowsNotEqual);
  if (!OnModelApplyRequest) Refuse(msg::kCVApplyNotAssigned);
  if (!OnModelCreateRequest) Refuse(msg::kCVCreateNotAssigned);

  const std::int32_t n = x->NrOfRows();
  const std::int32_t nx = x->NrOfColumns();
  const std::int32_t ny = y->NrOfColumns();
  if (mode_ == cvmRepeatedHoldOut) sizeTestSet_ = std::min(sizeTestSet_, n / 2 + 1);
  std::vector<std::int32_t> foldOf;
  const std::int32_t nFolds = std::min(nrOfFolds_, n);
  if (mode_ == cvmStratifiedKFold) foldOf = StratifiedFolds(*y, n, nFolds, stratifyColumn_);

  TBitFld used(n), test(n);
  TDoubleArray predictors(static_cast<std::size_t>(nx));
  TDoubleArray response(static_cast<std::size_t>(ny)), thresh(static_cast<std::size_t>(ny));
  TIntArray testRows, trainRows;
  testRows.reserve(static_cast<std::size_t>(n));
  trainRows.reserve(static_cast<std::size_t>(n));
  residuals_.Resize(ny);
  residuals_.Fill(0.0);
  for (TIntVector* v : {&tp_, &fp_, &tn_, &fn_}) {
    v->Resize(ny);
    v->Fill(0);
  }

  // Clears the running flag on every way out; results of a run that did not end normally
  // (an exception from an event) are marked invalid.
  struct TRunGuard {
    TCrossValidator& cv;
    bool finished = false;
    ~TRunGuard() {
      cv.running_ = false;
      if (!finished) cv.InvalidateResults();
    }
  } guard{*this};
  running_ = true;

  std::int32_t tested = 0;
  std::int32_t fold = 0;
  bool abort = false;
  do {
    test.Clear();
    switch (mode_) {
      case cvmRepeatedHoldOut:
        DrawHoldOutSet(used, test, n, sizeTestSet_);
        break;
      case cvmStratifiedKFold:
        for (std::int32_t r = 1; r <= n; ++r)
          if (foldOf[static_cast<std::size_t>(r - 1)] == fold) test.SetBit(r, true);
        used.CombineWith(test, loOR);
        ++fold;
        break;
      case cvmLeaveOneOut:
        for (std::int32_t r = 1; r <= n; ++r)
          if (!used.Bit(r)) {
            test.SetBit(r, true);
            used.SetBit(r, true);
            break;
          }
        break;
    }
    testRows.clear();
    trainRows.clear();
    for (std::int32_t r = 1; r <= n; ++r)
      (test.Bit(r) ? testRows : trainRows).push_back(r);

    bool success = false;
    OnModelCreateRequest(this, PercentDone(tested, n), trainRows, success);
    if (!success) {
      // The failed rows stay used, so that a model that can never be built still ends the run.
      used.CombineWith(test, loOR);
      continue;
    }
    for (std::int32_t r : testRows) {
      ++tested;
      for (std::int32_t c = 1; c <= nx; ++c)
        predictors[static_cast<std::size_t>(c - 1)] = x->GetVal(c, r);
      OnModelApplyRequest(this, PercentDone(tested, n), predictors, response, thresh);
      if (response.size() != static_cast<std::size_t>(ny) ||
          thresh.size() != static_cast<std::size_t>(ny))
        Refuse(msg::kCVResponseLength);
      for (std::int32_t j = 1; j <= ny; ++j) {
        const double yv = y->GetVal(j, r);
        const double resp = response[static_cast<std::size_t>(j - 1)];
        const double th = thresh[static_cast<std::size_t>(j - 1)];
        residuals_.SetVal(j, residuals_.GetVal(j) + (resp - yv) * (resp - yv));
        // The tie resp == th counts against the object in both classes.
        TIntVector& count = yv == 1.0 ? (resp > th ? tp_ : fn_) : (resp >= th ? fp_ : tn_);
        count.SetVal(j, count.GetVal(j) + 1);
      }
      if (OnCheckAbort) {
        OnCheckAbort(this, abort);
        if (abort) break;
      }
    }
  } while (used.CountTrueBits() < n && !abort);

  guard.finished = true;
  if (abort) InvalidateResults();
  return !abort;
}

double TCrossValidator::GetRMSEP(std::int32_t j) const {
  const auto* x = dynamic_cast<const TMatrix*>(xmat_);
  if (x == nullptr) return std::numeric_limits<double>::quiet_NaN();
  return std::sqrt(residuals_.GetVal(j) / x->NrOfRows());
}

double TCrossValidator::GetAccuracy(std::int32_t j) const {
  return CFAccuracy(GetTPCnt(j), GetFPCnt(j), GetTNCnt(j), GetFNCnt(j));
}
double TCrossValidator::GetF1Score(std::int32_t j) const {
  return CFF1Score(GetTPCnt(j), GetFPCnt(j), GetTNCnt(j), GetFNCnt(j));
}
double TCrossValidator::GetMCC(std::int32_t j) const {
  return CFMatthewsCorr(GetTPCnt(j), GetFPCnt(j), GetTNCnt(j), GetFNCnt(j));
}
double TCrossValidator::GetInformedness(std::int32_t j) const {
  return CFInformedness(GetTPCnt(j), GetFPCnt(j), GetTNCnt(j), GetFNCnt(j));
}
double TCrossValidator::GetTPRate(std::int32_t j) const {
  return RateOf(GetTPCnt(j), GetTPCnt(j) + GetFNCnt(j));
}
double TCrossValidator::GetFPRate(std::int32_t j) const {
  return RateOf(GetFPCnt(j), GetFPCnt(j) + GetTNCnt(j));
}
double TCrossValidator::GetTNRate(std::int32_t j) const {
  return RateOf(GetTNCnt(j), GetTNCnt(j) + GetFPCnt(j));
}
double TCrossValidator::GetFNRate(std::int32_t j) const {
  return RateOf(GetFNCnt(j), GetFNCnt(j) + GetTPCnt(j));
}

}  // namespace quv

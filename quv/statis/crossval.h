// TCrossValidator: cross-validation of a model that the caller builds and applies inside two
// events, and the scores of a two-class confusion count.
//
// The validator splits the rows of XMat (predictors) and YMat (responses) into test sets,
// asks the caller through OnModelCreateRequest to build a model on the rows outside the
// current test set, asks it through OnModelApplyRequest to predict each test row, and sums per
// response column the squared prediction error and the confusion counts TP, FP, TN, FN (a
// response value of exactly 1.0 marks the positive class). Rows and response columns are
// numbered from 1.
//
// Three ways of splitting (Mode):
//  - cvmRepeatedHoldOut (default): random disjoint test sets of SizeTestSet rows until every
//    row has been tested once; the last set takes the rest.
//  - cvmStratifiedKFold: NrOfFolds folds of near-equal size, each with near-equal shares of
//    the positive rows of response column StratifyColumn.
//  - cvmLeaveOneOut: every row alone, in ascending order.
// Random choices come from the library's seedable source (quv/base/random.h), so a run is
// repeated exactly after the same SetRandSeed.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "quv/base/component.h"
#include "quv/base/events.h"
#include "quv/base/types.h"
#include "quv/vector/vector.h"

namespace quv {

/// Asks the host to build a model from the rows listed in ObjectList (1-based, ascending).
/// PercentDone is the share of rows tested so far; the host sets Success to true when a model
/// was built.
using TOnModelCreateRequestEvent = std::function<void(TComponent* sender, std::int32_t PercentDone,
                                                      const TIntArray& ObjectList, bool& Success)>;
/// Asks the host to predict one object from its predictors (one value per column of XMat).
/// The host writes one predicted value and one class threshold per column of YMat into
/// Response and Thresh; it must not change their lengths.
using TOnModelApplyRequestEvent =
    std::function<void(TComponent* sender, std::int32_t PercentDone, const TDoubleArray& Predictors,
                       TDoubleArray& Response, TDoubleArray& Thresh)>;

/// How TCrossValidator::Execute splits the rows into test sets.
enum TCVMode : std::uint8_t {
  cvmRepeatedHoldOut,  ///< random test sets of SizeTestSet rows (the default)
  cvmStratifiedKFold,  ///< NrOfFolds folds stratified on the positive class
  cvmLeaveOneOut,      ///< every row alone
};

/// Messages of TCrossValidator::Execute, raised as EQUVStatisError in this order of checks.
namespace msg {
inline constexpr std::string_view kCVDataNotAssigned =
    "TCrossValidator.Execute: data matrix not assigned";
inline constexpr std::string_view kCVNotTMatrix =
    "TCrossValidator.Execute: XMat and YMat must point to TMatrix objects";
inline constexpr std::string_view kCVRowsNotEqual =
    "TCrossValidator.Execute: number of rows of XMat and YMat not equal";
inline constexpr std::string_view kCVApplyNotAssigned =
    "TCrossValidator: OnModelApplyRequest event is not assigned";
inline constexpr std::string_view kCVCreateNotAssigned =
    "TCrossValidator: OnModelCreateRequest event is not assigned";
/// Raised when OnModelApplyRequest resized Response or Thresh.
inline constexpr std::string_view kCVResponseLength =
    "TCrossValidator.Execute: OnModelApplyRequest changed the length of Response or Thresh";
}  // namespace msg

/// Accuracy (TP + TN)/(TP + FP + TN + FN); 0 when the sum is not positive.
double CFAccuracy(std::int32_t TP, std::int32_t FP, std::int32_t TN, std::int32_t FN);
/// F1 score 2 TP/(2 TP + FP + FN); 0 when the denominator is not positive. TN is not used.
double CFF1Score(std::int32_t TP, std::int32_t FP, std::int32_t TN, std::int32_t FN);
/// Matthews correlation (TP TN - FP FN)/sqrt((TP + FP)(TP + FN)(TN + FP)(TN + FN)); 0 when the
/// root is 0.
double CFMatthewsCorr(std::int32_t TP, std::int32_t FP, std::int32_t TN, std::int32_t FN);
/// Informedness TP/(TP + FN) + TN/(TN + FP) - 1, a quotient with a zero denominator counting
/// as 0.
double CFInformedness(std::int32_t TP, std::int32_t FP, std::int32_t TN, std::int32_t FN);

/// Cross-validation driver. The matrices are not owned: the caller keeps them alive while they
/// are assigned.
///
/// Results are valid after an Execute that returned true, and stay until the next Execute or
/// the next assignment of SizeTestSet, Mode or NrOfFolds, which mark them invalid: every
/// residual sum -1.0 and every count -1 (also the state after construction, after an abort
/// and after an exception from an event). The getters then read GetRMSEP = sqrt(-1/n) = NaN,
/// counts -1, accuracy, F1, MCC, informedness and the four rates 0. A response column j
/// outside the results reads 0 everywhere (and GetRMSEP 0).
class TCrossValidator : public TComponent {
 public:
  static constexpr std::int32_t kDefaultSizeTestSet = 2;
  static constexpr std::int32_t kDefaultNrOfFolds = 5;

  /// SizeTestSet 2, repeated hold-out, results invalid, no matrices or events assigned.
  explicit TCrossValidator(TComponent* owner = nullptr);

  /// Predictors: one row per object, one column per variable. Any component may be assigned;
  /// Execute refuses one that is not a TMatrix.
  TComponent* XMat() const { return xmat_; }
  void SetXMat(TComponent* mat) { xmat_ = mat; }
  /// Responses: one row per object, one column per response; 1.0 marks the positive class.
  TComponent* YMat() const { return ymat_; }
  void SetYMat(TComponent* mat) { ymat_ = mat; }

  /// Rows per test set of the repeated hold-out; at least 1.
  std::int32_t SizeTestSet() const { return sizeTestSet_; }
  /// Values below 1 become 1; marks the results invalid.
  void SetTestSize(std::int32_t n);

  /// How the rows are split; marks the results invalid.
  TCVMode Mode() const { return mode_; }
  void SetMode(TCVMode mode);
  /// Number of folds of cvmStratifiedKFold, at least 2 (default 5); Execute uses at most n
  /// folds. Marks the results invalid.
  std::int32_t NrOfFolds() const { return nrOfFolds_; }
  void SetNrOfFolds(std::int32_t k);
  /// Response column whose positive rows (value 1.0) cvmStratifiedKFold spreads evenly over
  /// the folds (default 1); a column outside YMat forms the folds without strata.
  std::int32_t StratifyColumn() const { return stratifyColumn_; }
  void SetStratifyColumn(std::int32_t j) { stratifyColumn_ = j; }

  TOnModelCreateRequestEvent OnModelCreateRequest;
  TOnModelApplyRequestEvent OnModelApplyRequest;
  /// Polled after each tested object; setting abort ends the run.
  TOnCheckAbortEvent OnCheckAbort;

  /// True while Execute runs.
  bool Running() const { return running_; }

  /// Runs the cross-validation; true when it ran to the end, false when OnCheckAbort asked
  /// to stop. Raises EQUVStatisError before changing anything when a matrix is not assigned
  /// (msg::kCVDataNotAssigned), is not a TMatrix (kCVNotTMatrix), the row counts differ
  /// (kCVRowsNotEqual), or OnModelApplyRequest (kCVApplyNotAssigned) or OnModelCreateRequest
  /// (kCVCreateNotAssigned) is missing. In the repeated hold-out a SizeTestSet above
  /// n div 2 + 1 is lowered to that, and the property keeps the lowered value.
  ///
  /// When OnModelCreateRequest reports no success, the rows of that test set stay marked as
  /// tested (their bits are or-ed into the used rows) without being evaluated, so the run
  /// still ends when model building keeps failing; those rows then count nowhere.
  /// PercentDone is round(100 tested rows / n), rounded to nearest with ties to even (1 of 8
  /// gives 12). A positive object (y = 1.0) counts TP when Response > Thresh, else FN; any
  /// other counts FP when Response >= Thresh, else TN: a response equal to its threshold
  /// counts against the object either way. Exceptions from the events pass through.
  bool Execute();

  /// sqrt(residual sum of column j / number of rows of XMat); NaN when XMat is not a TMatrix.
  double GetRMSEP(std::int32_t j) const;
  std::int32_t GetTPCnt(std::int32_t j) const { return tp_.GetVal(j); }
  std::int32_t GetFPCnt(std::int32_t j) const { return fp_.GetVal(j); }
  std::int32_t GetTNCnt(std::int32_t j) const { return tn_.GetVal(j); }
  std::int32_t GetFNCnt(std::int32_t j) const { return fn_.GetVal(j); }
  double GetAccuracy(std::int32_t j) const;
  double GetF1Score(std::int32_t j) const;
  double GetMCC(std::int32_t j) const;
  double GetInformedness(std::int32_t j) const;
  /// TP/(TP + FN), FP/(FP + TN), TN/(TN + FP), FN/(FN + TP); 0 when the denominator is not
  /// positive.
  double GetTPRate(std::int32_t j) const;
  double GetFPRate(std::int32_t j) const;
  double GetTNRate(std::int32_t j) const;
  double GetFNRate(std::int32_t j) const;

 private:
  void InvalidateResults();

  TComponent* xmat_ = nullptr;
  TComponent* ymat_ = nullptr;
  std::int32_t sizeTestSet_ = kDefaultSizeTestSet;
  TCVMode mode_ = cvmRepeatedHoldOut;
  std::int32_t nrOfFolds_ = kDefaultNrOfFolds;
  std::int32_t stratifyColumn_ = 1;
  bool running_ = false;
  TVector residuals_;
  TIntVector tp_, fp_, tn_, fn_;
};

}  // namespace quv

#include "quv/base/feedback.h"

namespace quv {

// Constant-initialised, so no static constructor of another unit can see them unset.
constinit double ProcStat = 0.0;
constinit std::atomic<bool> AbortMathProc{false};
TMathFeedBackProc MathFeedBackProc;

void BeginAbortableOperation() {
  AbortMathProc.store(false);
}

bool ProgressStep(double step) {
  ProcStat += step;
  if (MathFeedBackProc) MathFeedBackProc(ProcStat);
  return AbortMathProc.load();
}

}  // namespace quv

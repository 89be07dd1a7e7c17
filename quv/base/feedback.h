// Process-wide progress feedback and abort request shared by every long operation.
//
// A long operation adds its step to ProcStat after each unit of work, calls MathFeedBackProc
// with the new value when one is set, and stops when AbortMathProc has become true. The
// library starts no threads; the abort flag is atomic so that a host may raise it from
// another thread while an operation runs.
#pragma once

#include <atomic>
#include <functional>

namespace quv {

/// Hook called with the current ProcStat after each step of a long operation.
using TMathFeedBackProc = std::function<void(double)>;

/// Running progress counter; the host may reset it before starting an operation.
extern double ProcStat;
/// Called after each step when not empty; empty when the library is loaded.
extern TMathFeedBackProc MathFeedBackProc;
/// Abort request, tested by long operations after each step.
extern std::atomic<bool> AbortMathProc;

/// Clears the abort request; called by abortable entry points before their first step.
void BeginAbortableOperation();

/// One step of the progress protocol: adds step to ProcStat, calls MathFeedBackProc when it
/// is set, and returns true when an abort has been requested (the caller then stops).
[[nodiscard]] bool ProgressStep(double step = 1.0);

}  // namespace quv

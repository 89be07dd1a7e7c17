// Chief header of the modelling unit: curve fitting, arithmetic expressions, nearest
// neighbours and clustering, smoothing filters and polygon functions. Each topic has its own
// header in this folder; include this one.
#pragma once

#include "quv/math2/curvefit.h"
#include "quv/math2/filters.h"
#include "quv/math2/mathexp.h"
#include "quv/math2/mathexp_eval.h"
#include "quv/math2/polygon.h"
#include "quv/math2/savgol.h"
#include "quv/math2/smoothing.h"

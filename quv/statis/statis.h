// Chief header of the statistics unit: distributions, quantiles, special functions and tables
// of critical values, the random generator with a tabulated distribution (TRandGen) and the
// cross-validation driver (TCrossValidator). The distribution functions are free functions
// without state; most return a marker value (0, 1 or -1, given with each function) for
// arguments outside their domain; of them only FisherTransform, HyperGeoDistriDensity and
// DeanDixonTest raise EQUVStatisError.
#pragma once

#include "quv/statis/chi2_t_f.h"
#include "quv/statis/critical_values.h"
#include "quv/statis/crossval.h"
#include "quv/statis/discrete.h"
#include "quv/statis/gamma_beta.h"
#include "quv/statis/kolmogorov.h"
#include "quv/statis/normal.h"
#include "quv/statis/randgen.h"
#include "quv/statis/statis_types.h"

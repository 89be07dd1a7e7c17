// Chief header of the open-array unit: statistics, construction and element-wise functions
// over dynamic arrays of one to four dimensions, and array linear algebra.
#pragma once

#include "quv/base/base.h"
#include "quv/math1/math1.h"
#include "quv/openarrays/copyfill.h"
#include "quv/openarrays/distribution.h"
#include "quv/openarrays/elementwise.h"
#include "quv/openarrays/images.h"
#include "quv/openarrays/linalg.h"
#include "quv/openarrays/ordering.h"
#include "quv/openarrays/rowcol.h"
#include "quv/openarrays/stats.h"
#include "quv/openarrays/vecgeom.h"

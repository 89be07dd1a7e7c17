// Chief header of the scalar mathematics unit: compensated summation, elementary functions,
// sorting of raw arrays and number text.
#pragma once

#include "quv/base/base.h"
#include "quv/math1/bits.h"
#include "quv/math1/bounds.h"
#include "quv/math1/elementary.h"
#include "quv/math1/exchange.h"
#include "quv/math1/geometry.h"
#include "quv/math1/integers.h"
#include "quv/math1/interpolation.h"
#include "quv/math1/kahan.h"
#include "quv/math1/numtext.h"
#include "quv/math1/polynomial.h"
#include "quv/math1/rounding.h"
#include "quv/math1/simple_random.h"
#include "quv/math1/sorting.h"

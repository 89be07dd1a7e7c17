// Chief header of the scalar mathematics unit: compensated summation, elementary functions,
// sorting of raw arrays and number text.
#pragma once

#include "quv/base/base.h"
#include "quv/math1/elementary.h"
#include "quv/math1/kahan.h"
#include "quv/math1/numtext.h"
#include "quv/math1/polynomial.h"
#include "quv/math1/simple_random.h"
#include "quv/math1/sorting.h"

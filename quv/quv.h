// Umbrella header: includes the chief header of every unit.
#pragma once

#include "quv/base/base.h"
#include "quv/complex/complex.h"
#include "quv/datatable/datatable.h"
#include "quv/fourier/fourier.h"
#include "quv/math1/math1.h"
#include "quv/math2/math2.h"
#include "quv/matrix/matrix.h"
#include "quv/openarrays/openarrays.h"
#include "quv/sline/sline.h"
#include "quv/statis/statis.h"
#include "quv/vector/vector.h"

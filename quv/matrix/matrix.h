// Chief header of the matrix unit: TMatrix, the two-dimensional matrix of doubles, with its
// storage core, linear algebra, statistics and distances.
#pragma once

#include "quv/base/base.h"
#include "quv/math1/math1.h"
#include "quv/matrix/matrix_core.h"
#include "quv/matrix/matrix_files.h"
#include "quv/matrix/matrix_types.h"
#include "quv/matrix/tintmatrix.h"
#include "quv/matrix/tmatrix.h"
#include "quv/openarrays/openarrays.h"
#include "quv/vector/vector.h"

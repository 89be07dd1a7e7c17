// The two instantiations of the matrix core: doubles (TMatrix) and integers (TIntMatrix).
#include "quv/matrix/matrix_core.h"

namespace quv::detail {

template class TMatrixCore<double>;
template class TMatrixCore<std::int32_t>;

}  // namespace quv::detail

#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// -  matrix  matrix      A fresh identity matrix.
DECLARE_OPERATOR(MatrixOperator, "matrix");

// matrix  identmatrix  matrix
DECLARE_OPERATOR(IdentmatrixOperator, "identmatrix");

// matrix1 matrix2 matrix3  concatmatrix  matrix3      The third becomes matrix1 x matrix2.
DECLARE_OPERATOR(ConcatmatrixOperator, "concatmatrix");

}  // namespace quillpress

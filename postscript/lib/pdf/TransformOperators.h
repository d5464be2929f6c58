#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// matrix  concat  -
DECLARE_GRAPHICS_OPERATOR(ConcatOperator, "concat");

// matrix  setmatrix  -      Writes the step from the current matrix, so that one must have an inverse.
DECLARE_GRAPHICS_OPERATOR(SetmatrixOperator, "setmatrix");

// matrix  currentmatrix  matrix
DECLARE_GRAPHICS_OPERATOR(CurrentmatrixOperator, "currentmatrix");

// matrix  defaultmatrix  matrix
DECLARE_GRAPHICS_OPERATOR(DefaultmatrixOperator, "defaultmatrix");

// tx ty  translate  -
// tx ty matrix  translate  matrix      Fills the matrix and writes nothing; so do scale and rotate.
DECLARE_GRAPHICS_OPERATOR(TranslateOperator, "translate");

// sx sy  scale  -
// sx sy matrix  scale  matrix
DECLARE_GRAPHICS_OPERATOR(ScaleOperator, "scale");

// angle  rotate  -
// angle matrix  rotate  matrix
DECLARE_GRAPHICS_OPERATOR(RotateOperator, "rotate");

// x y  transform  x' y'           By the current matrix.
// x y matrix  transform  x' y'    By the operand. The same holds for the three below.
DECLARE_GRAPHICS_OPERATOR(TransformOperator, "transform");

// x' y'  itransform  x y
DECLARE_GRAPHICS_OPERATOR(ItransformOperator, "itransform");

// dx dy  dtransform  dx' dy'
DECLARE_GRAPHICS_OPERATOR(DtransformOperator, "dtransform");

// dx' dy'  idtransform  dx dy
DECLARE_GRAPHICS_OPERATOR(IdtransformOperator, "idtransform");

}  // namespace quillpress

#pragma once

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/interpreter/Interpreter.h"
#include "postscript/lib/objects/NumberUtils.h"
#include "postscript/lib/pdf/Postscript2Pdf.h"

namespace quillpress {

// What makes an operator a graphics operator: it knows the converter that it belongs to, which outlives
// it.
class Postscript2PdfObject {
 public:
  explicit Postscript2PdfObject(Postscript2Pdf& owner) : converter(owner) {}

 protected:
  Postscript2Pdf& converter;
};

// Pops a number. Throws Ex for any other kind.
inline double popNumber(Interpreter& interpreter) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  return toDouble(*operand);
}

// Pops y, then x.
inline Point popPoint(Interpreter& interpreter) {
  const double y = popNumber(interpreter);
  const double x = popNumber(interpreter);
  return {x, y};
}

}  // namespace quillpress

// Declares a graphics operator that keeps nothing between calls: the class, and the one place where the
// operator's name is written.
#define DECLARE_GRAPHICS_OPERATOR(ClassName, operatorName)                                               \
  class ClassName final : public NameObject, private Postscript2PdfObject {                              \
   public:                                                                                               \
    explicit ClassName(Postscript2Pdf& owner) : NameObject(operatorName), Postscript2PdfObject(owner) {} \
    void execute(Interpreter& interpreter) override;                                                     \
  }

// The same for an operator that minds its own business, see PostscriptObject::isPlainOperator.
#define DECLARE_PLAIN_GRAPHICS_OPERATOR(ClassName, operatorName)                                        \
  class ClassName final : public NameObject, private Postscript2PdfObject {                             \
   public:                                                                                              \
    explicit ClassName(Postscript2Pdf& owner) : NameObject(operatorName), Postscript2PdfObject(owner) { \
      isPlainOperator = true;                                                                           \
    }                                                                                                   \
    void execute(Interpreter& interpreter) override;                                                    \
  }

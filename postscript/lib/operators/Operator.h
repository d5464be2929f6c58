#pragma once

#include "postscript/lib/interpreter/Interpreter.h"

// Declares an operator that keeps nothing between calls: the class, and the one place where the
// operator's name is written. Its operand picture stands above the line; `execute` is in the source.
#define DECLARE_OPERATOR(ClassName, operatorName)    \
  class ClassName final : public NameObject {        \
   public:                                           \
    ClassName() : NameObject(operatorName) {}        \
    void execute(Interpreter& interpreter) override; \
  }

// The same for an operator that minds its own business, see PostscriptObject::isPlainOperator.
#define DECLARE_PLAIN_OPERATOR(ClassName, operatorName)                \
  class ClassName final : public NameObject {                          \
   public:                                                             \
    ClassName() : NameObject(operatorName) { isPlainOperator = true; } \
    void execute(Interpreter& interpreter) override;                   \
  }

#pragma once

#include <variant>

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// What an arithmetic operator makes of its operands: an integer or a real.
using Number = std::variant<std::int32_t, double>;

// What the two-operand arithmetic operators share. Two integers are worked on as integers, any real makes
// both operands real.
class MathOperator {
 protected:
  // Pops both operands and pushes what the operator's calcInteger or calcReal makes of them. The operator's
  // type is known, so that its few instructions need no call.
  template <typename Operator>
  void calculate(Operator& self, Interpreter& interpreter);

  double realA = 0;  // the deeper operand
  double realB = 0;  // the one that was on top
  std::int32_t intA = 0;
  std::int32_t intB = 0;
};

// What cos and sin share: an angle in degrees in, a real out.
class TrigOperator {
 public:
  virtual ~TrigOperator() = default;

 protected:
  void calculate(Interpreter& interpreter) const;

 private:
  [[nodiscard]] virtual double trig(double degrees) const = 0;
};

#define DECLARE_MATH_OPERATOR(ClassName, operatorName)                 \
  class ClassName final : public NameObject, private MathOperator {    \
   public:                                                             \
    ClassName() : NameObject(operatorName) { isPlainOperator = true; } \
    void execute(Interpreter& interpreter) override;                   \
                                                                       \
   private:                                                            \
    friend class MathOperator;                                         \
    [[nodiscard]] Number calcReal() const;                             \
    [[nodiscard]] Number calcInteger() const;                          \
  }

#define DECLARE_TRIG_OPERATOR(ClassName, operatorName)                          \
  class ClassName final : public NameObject, private TrigOperator {             \
   public:                                                                      \
    ClassName() : NameObject(operatorName) { isPlainOperator = true; }          \
    void execute(Interpreter& interpreter) override { calculate(interpreter); } \
                                                                                \
   private:                                                                     \
    [[nodiscard]] double trig(double degrees) const override;                   \
  }

// num1 num2  add  num
// Kept: integers wrap at 32 bits; here and below there is no promotion to real (math/add.ps).
DECLARE_MATH_OPERATOR(AddOperator, "add");

// num1 num2  sub  num
DECLARE_MATH_OPERATOR(SubOperator, "sub");

// num1 num2  mul  num
DECLARE_MATH_OPERATOR(MulOperator, "mul");

// num1 num2  div  real      Kept: a zero divisor gives infinity or NaN (math/div.ps).
DECLARE_MATH_OPERATOR(DivOperator, "div");

// num1 num2  idiv  int      Kept: reals are divided as reals, then truncated (math/idiv.ps).
DECLARE_MATH_OPERATOR(IdivOperator, "idiv");

// int1 int2  mod  int      Never negative: the absolute value of the remainder.
DECLARE_PLAIN_OPERATOR(ModOperator, "mod");

// num  neg  num
DECLARE_PLAIN_OPERATOR(NegOperator, "neg");

// num  abs  num
DECLARE_PLAIN_OPERATOR(AbsOperator, "abs");

// num  ceiling  num
DECLARE_PLAIN_OPERATOR(CeilingOperator, "ceiling");

// num  floor  num
DECLARE_PLAIN_OPERATOR(FloorOperator, "floor");

// num  round  num      Halves go away from zero; a real is rounded through 32 bits.
DECLARE_PLAIN_OPERATOR(RoundOperator, "round");

// num  sqrt  real      Kept: NaN for a negative operand (math/sqrt.ps).
DECLARE_PLAIN_OPERATOR(SqrtOperator, "sqrt");

// num den  atan  real      Between -180 and 180; 0 0 gives 0.0.
DECLARE_PLAIN_OPERATOR(AtanOperator, "atan");

// angle  cos  real
DECLARE_TRIG_OPERATOR(CosOperator, "cos");

// angle  sin  real
DECLARE_TRIG_OPERATOR(SinOperator, "sin");

}  // namespace quillpress

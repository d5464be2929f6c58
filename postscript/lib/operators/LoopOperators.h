#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// Every loop is its own continuation: the operator that a name finds holds nothing, and makes a fresh
// object of its class that holds the state of one loop. A step pushes that object and, above it, the
// procedure on the execution stack; when the procedure has run, the loop makes its next step.

// initial increment limit proc  for  -
// Kept: the limit itself is never reached (loops/for.ps).
class ForOperator final : public NameObject {
 public:
  ForOperator() : NameObject("for") {}
  void execute(Interpreter& interpreter) override;

 private:
  void takeOperands(ObjectStack& operands);
  void step(Interpreter& interpreter);

  Ref<PostscriptObject> control_;
  Ref<PostscriptObject> procedure_;
  Ref<PostscriptObject> limit_;
  Ref<PostscriptObject> increment_;
  Ref<PostscriptObject> initial_;
  bool ascending_ = false;
};

// array proc       forall  -      Pushes every element, the very object that the array holds.
// dictionary proc  forall  -      Pushes every key, as a literal name, and value, in key order.
// string proc      forall  -      Kept: pushes every byte as a signed integer (loops/forall.ps).
class ForallOperator final : public NameObject {
 public:
  ForallOperator() : NameObject("forall") {}
  void execute(Interpreter& interpreter) override;

 private:
  void step(Interpreter& interpreter);
  void goOn(Interpreter& interpreter);

  Ref<PostscriptObject> procedure_;
  Ref<PostscriptObject> composite_;
  std::int32_t position_ = 0;
};

// proc  loop  -      Ends by exit, stop or an error only.
class LoopOperator final : public NameObject {
 public:
  LoopOperator() : NameObject("loop") {}
  void execute(Interpreter& interpreter) override;

 private:
  Ref<PostscriptObject> procedure_;
};

// n proc  repeat  -      A count of 0 or below runs nothing.
class RepeatOperator final : public NameObject {
 public:
  RepeatOperator() : NameObject("repeat") {}
  void execute(Interpreter& interpreter) override;

 private:
  void step(Interpreter& interpreter);

  Ref<PostscriptObject> procedure_;
  std::int32_t remaining_ = 0;
};

}  // namespace quillpress

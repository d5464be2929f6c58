#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// bool proc  if  -      Any object will do for the procedure; it is scheduled as it is.
DECLARE_OPERATOR(IfOperator, "if");

// bool proc1 proc2  ifelse  -
DECLARE_OPERATOR(IfelseOperator, "ifelse");

// -  exit  -      Leaves the innermost loop, and every stopped context inside it.
DECLARE_OPERATOR(ExitOperator, "exit");

// -  stop  true      The result is pushed where the innermost stopped goes on.
DECLARE_OPERATOR(StopOperator, "stop");

// any  exec  -
DECLARE_OPERATOR(ExecOperator, "exec");

// any  xcheck  bool
DECLARE_OPERATOR(XcheckOperator, "xcheck");

// any  cvx  any      The same object, made executable in place: every holder sees it.
DECLARE_OPERATOR(CvxOperator, "cvx");

// any  stopped  bool      Only stop gives true: an Ex is not caught here.
class StoppedOperator final : public NameObject {
 public:
  StoppedOperator() : NameObject("stopped") {}
  void execute(Interpreter& interpreter) override;

 private:
  Ref<PostscriptObject> guarded_;  // what a continuation runs; empty in the operator itself
};

}  // namespace quillpress

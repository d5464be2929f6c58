#pragma once

#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/streams/CallbackStreams.h"

namespace quillpress::level3 {

// What a procedure returns, piece by piece. It may well read the program that is being executed, and then the
// end of that is where its data was cut off.
class ProcedureSource final : public PieceSource {
 public:
  ProcedureSource(Interpreter& interpreter, Callback callback)
      : PieceSource(std::move(callback)), interpreter_(interpreter) {}

  void endedWithin(std::string_view what) override;

 private:
  Interpreter& interpreter_;
};

// The data source that an operand stands for: a file, a string, or a procedure that returns strings until one
// is empty. The operand must live as long as the source. Throws typecheck for anything else, and
// invalidaccess.
SourcePointer sourceOf(Interpreter& interpreter, const Object& operand);

// The data target that an operand stands for: a file, a string, or a procedure that takes a full string and a
// boolean, whether more will come, and returns the string to be filled next. Otherwise as above.
SinkPointer targetOf(Interpreter& interpreter, const Object& operand);

}  // namespace quillpress::level3

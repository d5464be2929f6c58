#pragma once

#include <span>
#include <vector>

#include "postscript/level3/images/ImageRows.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// Takes an operator's operands off the stack while the job's procedures give it data, and keeps them alive.
// They lie on the execution stack meanwhile, so that no `restore` can take them away.
class OperandsAside {
 public:
  OperandsAside(Interpreter& interpreter, std::size_t count);
  ~OperandsAside() {
    interpreter_.setOperandsAside(false);
    interpreter_.execution().popTo(depth_);
  }
  OperandsAside(const OperandsAside&) = delete;
  OperandsAside& operator=(const OperandsAside&) = delete;

 private:
  Interpreter& interpreter_;
  std::size_t depth_;
};

// Image data as an operand says: a file is read on from where it is, a string over and over, a procedure is
// run until it returns an empty string. REQUIRES: requireImageSources() did not throw, and the operand is
// kept
SourcePointer imageSource(Interpreter& interpreter, const Object& operand);
std::vector<SourcePointer> imageSources(Interpreter& interpreter, std::span<const Object> operands);

}  // namespace quillpress::level3

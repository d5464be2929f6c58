#include "postscript/lib/operators/StringOperators.h"

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/base/MemoryProbe.h"

namespace quillpress {

// A negative length is told apart from one that memory does not allow: the job is wrong, not the machine.
void StringOperator::execute(Interpreter& interpreter) {
  const std::int32_t length = interpreter.operandStack().pop<IntegerObject>("length of string")->value;
  if (length < 0) THROW_EX("Illegal negative length passed to string operator");
  probeMemory(static_cast<std::size_t>(length), 1);
  interpreter.pushString(std::string(static_cast<std::size_t>(length), '\0'));
}

void AnchorsearchOperator::execute(Interpreter& interpreter) {
  const Ref<StringObject> seek = interpreter.popStringObject();
  Ref<StringObject> string = interpreter.popStringObject();
  // By all the bytes, zeros included, unlike the comparisons.
  const bool found = string->bytes().starts_with(seek->bytes());
  if (found) {
    interpreter.pushString(string->bytes().substr(seek->length()));
    // A string of its own and no handle on seek: what a job writes into one must not show in the
    // other.
    interpreter.pushString(seek->bytes());
  } else {
    interpreter.operandStack().push(std::move(string));
  }
  interpreter.pushBoolean(found);
}

}  // namespace quillpress

#include "postscript/lib/operators/StringOperators.h"

#include <new>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

// No job needs a longer string. Beyond it the operator fails like an allocation that the system refuses,
// before the host process runs out of memory.
constexpr std::int32_t kMaxStringLength = 1 << 28;

}  // namespace

void StringOperator::execute(Interpreter& interpreter) {
  const std::int32_t length = interpreter.operandStack().pop<IntegerObject>("length of string")->value;
  if (length < 0) THROW_EX("Illegal negative length passed to string operator");
  if (length > kMaxStringLength) throw std::bad_alloc();
  interpreter.pushString(std::string(static_cast<std::size_t>(length), '\0'));
}

void AnchorsearchOperator::execute(Interpreter& interpreter) {
  const Ref<StringObject> seek = interpreter.popStringObject();
  Ref<StringObject> string = interpreter.popStringObject();
  const bool found = string->bytes().starts_with(seek->bytes());
  if (found) {
    interpreter.pushString(string->bytes().substr(seek->length()));
    interpreter.pushString(seek->bytes());
  } else {
    interpreter.operandStack().push(std::move(string));
  }
  interpreter.pushBoolean(found);
}

}  // namespace quillpress

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// int -> string
void string(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = interpreter.memory().newString(anyCountOf(operand));
}

Object part(const Object& string, std::size_t start, std::size_t count) {
  return string.interval(static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(count));
}

// string seek -> post match true
// string seek -> string false
void anchorsearch(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object string = operands.top(1);
  const Object seek = operands.top(0);
  requireReadable(string);
  requireReadable(seek);
  if (!textOf(string).starts_with(textOf(seek))) {
    operands.top() = Object::boolean(false);
    return;
  }
  operands.require(1);
  operands.top(1) = part(string, seek.length(), string.length() - seek.length());
  operands.top(0) = part(string, 0, seek.length());
  operands.push(Object::boolean(true));
}

// string seek -> post match pre true
// string seek -> string false
void search(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object string = operands.top(1);
  const Object seek = operands.top(0);
  requireReadable(string);
  requireReadable(seek);
  const std::size_t place = textOf(string).find(textOf(seek));
  if (place == std::string_view::npos) {
    operands.top() = Object::boolean(false);
    return;
  }
  operands.require(2);
  const std::size_t behind = place + seek.length();
  operands.top(1) = part(string, behind, string.length() - behind);
  operands.top(0) = part(string, place, seek.length());
  operands.push(part(string, 0, place));
  operands.push(Object::boolean(true));
}

constexpr OperatorRow kStringOperators[] = {
    {"string", "int", string},
    {"anchorsearch", "string string", anchorsearch},
    {"search", "count string string", search},
};

}  // namespace

void addStringOperators(Interpreter& interpreter) {
  interpreter.addOperators(kStringOperators);
}

}  // namespace quillpress::level3

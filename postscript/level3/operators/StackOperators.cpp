#include <algorithm>

#include "postscript/level3/operators/CompositeCopy.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// any ->
void pop(Interpreter& interpreter) {
  interpreter.operands().pop();
}

// any1 any2 -> any2 any1
void exch(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  std::swap(operands.top(0), operands.top(1));
}

// any -> any any
void dup(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  operands.push(Object(operands.top()));
}

// any1 ... anyN n -> any1 ... anyN any1 ... anyN
void copyOperands(ObjectStack& operands) {
  const std::size_t count = anyCountOf(operands.top());
  if (count > operands.depth() - 1) raise(ErrorName::kStackUnderflow);
  if (count > 0) operands.require(count - 1);
  operands.pop();
  const std::span<Object> copied = operands.last(count);
  for (const Object& object : copied) operands.push(object);
}

// any1 ... anyN n -> any1 ... anyN any1 ... anyN
// composite1 composite2 -> composite2'
void copy(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  if (operands.top().isInteger()) {
    copyOperands(operands);
  } else {
    copyComposite(interpreter);
  }
}

// anyN ... any0 n -> anyN ... any0 anyN
void index(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const std::size_t place = anyCountOf(operands.top());
  if (place >= operands.depth() - 1) raise(ErrorName::kStackUnderflow);
  operands.top() = operands.top(place + 1);
}

// Most rolls take one of a few objects from one end to the other.
void rollUp(std::span<Object> objects, std::size_t places) {
  if (places == 1) {
    const Object last = objects.back();
    std::copy_backward(objects.begin(), objects.end() - 1, objects.end());
    objects.front() = last;
  } else if (places + 1 == objects.size()) {
    const Object first = objects.front();
    std::copy(objects.begin() + 1, objects.end(), objects.begin());
    objects.back() = first;
  } else {
    std::rotate(objects.begin(), objects.end() - static_cast<std::ptrdiff_t>(places), objects.end());
  }
}

// anyN-1 ... any0 n j -> any(j-1) mod n ... any0 anyN-1 ... anyj mod n
void roll(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const std::size_t count = anyCountOf(operands.top(1));
  if (count > operands.depth() - 2) raise(ErrorName::kStackUnderflow);
  std::int64_t turns = operands.top(0).asInteger();
  operands.pop(2);
  if (count < 2) return;
  const auto modulus = static_cast<std::int64_t>(count);
  // A division takes longer than all the rest.
  if (turns >= modulus || turns <= -modulus) turns %= modulus;
  if (turns < 0) turns += modulus;
  rollUp(operands.last(count), static_cast<std::size_t>(turns));
}

// any1 ... anyN ->
void clear(Interpreter& interpreter) {
  interpreter.operands().popTo(0);
}

// any1 ... anyN -> any1 ... anyN n
void count(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  operands.push(Object::integer(static_cast<std::int64_t>(operands.depth())));
}

// -> mark
void mark(Interpreter& interpreter) {
  interpreter.operands().push(Object::mark());
}

// mark any1 ... anyN ->
void cleartomark(Interpreter& interpreter) {
  interpreter.operands().pop(countToMark(interpreter) + 1);
}

// mark any1 ... anyN -> mark any1 ... anyN n
void counttomark(Interpreter& interpreter) {
  interpreter.operands().push(Object::integer(static_cast<std::int64_t>(countToMark(interpreter))));
}

constexpr OperatorRow kStackOperators[] = {
    {"pop", "any", pop},
    {"exch", "any any", exch},
    {"dup", "any", dup},
    {"copy", "any", copy},
    {"index", "int", index},
    {"roll", "count int int", roll},
    {"clear", "", clear},
    {"count", "", count},
    {"mark", "", mark},
    {"[", "", mark},
    {"<<", "", mark},
    {"cleartomark", "", cleartomark},
    {"counttomark", "", counttomark},
};

}  // namespace

void addStackOperators(Interpreter& interpreter) {
  interpreter.addOperators(kStackOperators);
}

}  // namespace quillpress::level3

#include "postscript/level3/operators/CompositeCopy.h"

#include <algorithm>
#include <cstring>

#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

void copyEntries(VirtualMemory& memory, Dictionary& from, Dictionary& to) {
  if (to.isGlobal()) {
    for (const Dictionary::Entry& entry : from.entries()) {
      VirtualMemory::checkStorable(to, entry.key);
      VirtualMemory::checkStorable(to, entry.value);
    }
  }
  if (&from == &to) return;
  for (std::size_t i = 0; i < from.entryCount(); ++i) {
    const Dictionary::Entry entry = from.entry(i);
    if (!entry.key.isNull()) memory.put(to, entry.key, entry.value);
  }
}

}  // namespace

void copyElements(VirtualMemory& memory, const Object& from, const Object& to) {
  if (from.isString()) {
    if (from.length() > 0) std::memmove(to.bytes(), from.bytes(), from.length());
    return;
  }
  const std::span<const Object> elements = elementsOf(from);
  for (const Object& element : elements) VirtualMemory::checkStorable(*to.arrayStorage(), element);
  memory.willChange(*to.arrayStorage());
  // std::copy goes up and copy_backward goes down: the parts may overlap either way.
  if (from.elements() >= to.elements()) {
    std::copy(elements.begin(), elements.end(), to.elements());
  } else {
    std::copy_backward(elements.begin(), elements.end(), to.elements() + elements.size());
  }
}

void copyComposite(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  if (operands.depth() < 2) raise(ErrorName::kStackUnderflow);
  const Object from = operands.top(1);
  const Object to = operands.top(0);
  Object result = to;
  if (from.isDictionary() && to.isDictionary()) {
    requireReadable(from);
    requireWritable(to);
    copyEntries(interpreter.memory(), *from.asDictionary(), *to.asDictionary());
  } else if ((from.isArray() && to.is(Type::kArray)) || (from.isString() && to.isString())) {
    requireReadable(from);
    requireWritable(to);
    if (from.length() > to.length()) raise(ErrorName::kRangeCheck);
    copyElements(interpreter.memory(), from, to);
    result = to.interval(0, from.length());
  } else if (from.is(Type::kGState) && to.is(Type::kGState)) {
    interpreter.memory().willChange(*to.storage());
    to.foreignStorage()->contents().assign(from.foreignStorage()->contents());
  } else {
    raise(ErrorName::kTypeCheck);
  }
  operands.pop();
  operands.top() = result;
}

}  // namespace quillpress::level3

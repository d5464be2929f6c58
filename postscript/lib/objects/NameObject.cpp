#include "postscript/lib/objects/NameObject.h"

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/interpreter/Interpreter.h"

namespace quillpress {

void NameObject::execute(Interpreter& interpreter) {
  PostscriptObject* value = interpreter.dictionaries().valueOf(known_, key());
  if (value == nullptr) THROW_EX(std::string("NOTHING TO EXECUTE for ") + text.c_str() + "\n");
  // Kept: the very object that the dictionary holds is rewound, so a procedure that runs its own name
  // restarts the position that it shares with itself (execution/recursion.ps).
  if (auto* array = as<ArrayObject>(value)) array->startIfProcedure();
  interpreter.executionStack().push(value);
}

std::string NameObject::describe() const {
  return PostscriptObject::describe() + " " + text;
}

std::string NameObject::printString() const {
  return text;
}

std::string NameObject::cvsString() const {
  return text;
}

Ref<PostscriptObject> NameObject::clone(int /*argument*/) const {
  auto copy = make<NameObject>(text);
  copy->executable = executable;
  return copy;
}

}  // namespace quillpress

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

Name* tableName(Interpreter& interpreter) {
  return interpreter.memory().name("UserObjects");
}

// The array UserObjects of userdict, or nullptr before the first definition.
const Object* tableOf(Interpreter& interpreter) {
  const Object* const table = interpreter.userDictionary().find(tableName(interpreter));
  return table != nullptr && table->is(Type::kArray) ? table : nullptr;
}

// A table with room for `index`, in local memory whatever the job has chosen.
Object grownTable(Interpreter& interpreter, std::size_t index) {
  constexpr std::size_t kFirstSize = 10;
  VirtualMemory& memory = interpreter.memory();
  const Object* const old = tableOf(interpreter);
  if (old != nullptr && index < old->length()) return *old;
  const std::size_t size =
      std::max({kFirstSize, index + 1, old != nullptr ? old->length() * std::size_t{2} : 0});
  const bool wasGlobal = memory.isGlobal();
  memory.setGlobal(false);
  const Object table = memory.newArray(std::min<std::size_t>(size, Object::kMaxLength));
  memory.setGlobal(wasGlobal);
  if (old != nullptr) std::copy(old->elements(), old->elements() + old->length(), table.elements());
  memory.put(interpreter.userDictionary(), tableName(interpreter), table);
  return table;
}

// index any ->
void defineuserobject(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const std::size_t index = countOf(operands.top(1), Object::kMaxLength - 1);
  interpreter.memory().setElement(grownTable(interpreter, index), static_cast<std::uint32_t>(index),
                                  operands.top(0));
  operands.pop(2);
}

// index ->
void undefineuserobject(Interpreter& interpreter) {
  const Object* const table = tableOf(interpreter);
  if (table == nullptr) raise(ErrorName::kUndefined);
  const std::uint32_t index = indexOf(interpreter.operands().top(), table->length());
  interpreter.memory().setElement(*table, index, Object::null());
  interpreter.operands().pop();
}

// index ->
void execuserobject(Interpreter& interpreter) {
  const Object* const table = tableOf(interpreter);
  if (table == nullptr) raise(ErrorName::kUndefined);
  const std::uint32_t index = indexOf(interpreter.operands().top(), table->length());
  const Object object = table->elements()[index];
  interpreter.execution().push(object);
  interpreter.operands().pop();
}

constexpr OperatorRow kUserObjectOperators[] = {
    {"defineuserobject", "int any", defineuserobject},
    {"undefineuserobject", "int", undefineuserobject},
    {"execuserobject", "int", execuserobject},
};

}  // namespace

void addUserObjectOperators(Interpreter& interpreter) {
  interpreter.addOperators(kUserObjectOperators);
}

}  // namespace quillpress::level3

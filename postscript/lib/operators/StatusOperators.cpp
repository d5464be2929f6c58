#include "postscript/lib/operators/StatusOperators.h"

namespace quillpress {

namespace {

constexpr std::int32_t kMemoryUsed = 100000;
constexpr std::int32_t kMemoryMaximum = 100000000;

}  // namespace

void VmstatusOperator::execute(Interpreter& interpreter) {
  interpreter.pushInteger(interpreter.saveLevel());
  interpreter.pushInteger(kMemoryUsed);
  interpreter.pushInteger(kMemoryMaximum);
}

void ResourcestatusOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().pop();
  interpreter.operandStack().pop();
  interpreter.pushInteger(0);
  interpreter.pushInteger(0);
  interpreter.pushBoolean(true);
}

void StatusdictOperator::execute(Interpreter& interpreter) {
  MemorySet& memory = interpreter.memory();
  const Ref<DictionaryObject> status = memory.newDictionary();
  status->executable = true;  // Kept: like the built-in dictionaries, unlike those of dict
  status->define("product", memory.newString("marlowtin postscript interpreter - all rights reservered"));
  status->define("processcolors", make<IntegerObject>(3));
  interpreter.operandStack().push(status);
}

void DefinefontOperator::execute(Interpreter& interpreter) {
  Ref<DictionaryObject> font = interpreter.popDictionaryObject();
  const Ref<PostscriptObject> key = interpreter.operandStack().pop();
  interpreter.dictionaries().fontDirectory().define(*key, font);
  interpreter.operandStack().push(std::move(font));
}

void SetglobalOperator::execute(Interpreter& interpreter) {
  interpreter.memory().useGlobal();
}

void CurrentglobalOperator::execute(Interpreter& interpreter) {
  interpreter.pushBoolean(interpreter.memory().isGlobalCurrent());
}

}  // namespace quillpress

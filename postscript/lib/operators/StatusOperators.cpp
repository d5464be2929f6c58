#include "postscript/lib/operators/StatusOperators.h"

namespace quillpress {

namespace {

// Procedure sets measure whether a font or a bitmap fits, and leave things out when it does not.
constexpr std::int32_t kMemoryUsed = 100000;
constexpr std::int32_t kMemoryMaximum = 100000000;

}  // namespace

void VmstatusOperator::execute(Interpreter& interpreter) {
  interpreter.pushInteger(interpreter.saveLevel());
  interpreter.pushInteger(kMemoryUsed);
  interpreter.pushInteger(kMemoryMaximum);
}

// A job that is told that something is missing sends its own, or leaves something out; both cost more
// than a name that turns out not to be there.
void ResourcestatusOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().pop();
  interpreter.operandStack().pop();
  // Status 0 says defined by the job, size 0 nothing about its memory.
  interpreter.pushInteger(0);
  interpreter.pushInteger(0);
  interpreter.pushBoolean(true);
}

void StatusdictOperator::execute(Interpreter& interpreter) {
  MemorySet& memory = interpreter.memory();
  const Ref<DictionaryObject> status = memory.newDictionary();
  // Kept: like the built-in dictionaries, unlike those of dict (status/statusdict.ps).
  status->executable = true;
  // Kept: "reservered", as the field knows it (status/statusdict.ps).
  status->define("product", memory.newString("marlowtin postscript interpreter - all rights reservered"));
  status->define("processcolors", make<IntegerObject>(3));
  interpreter.operandStack().push(status);
}

// Nothing is checked and no FID is added: findfont only has to give the dictionary back.
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

#include "postscript/lib/operators/DictionaryOperators.h"

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

// Kept: dictionaries have no capacity, so this much room is always reported (dictionaries/maxlength.ps).
constexpr std::int32_t kSpareEntries = 10;

}  // namespace

// Popped and not looked at: jobs give sizes of any kind, and some count them themselves.
void DictOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().pop();
  interpreter.operandStack().push(interpreter.memory().newDictionary());
}

void BeginOperator::execute(Interpreter& interpreter) {
  Ref<PostscriptObject> dictionary = interpreter.operandStack().pop();
  if (dictionary->typeCode != TypeCode::kDictionary) THROW_EX("expecting dictionary on op stack");
  interpreter.dictionaries().begin(std::move(dictionary));
}

// Jobs that begin and end unevenly must not fail for it before the dictionary is missed.
void EndOperator::execute(Interpreter& interpreter) {
  interpreter.dictionaries().end();
}

void DefOperator::execute(Interpreter& interpreter) {
  Ref<PostscriptObject> value = interpreter.operandStack().pop();
  const Ref<PostscriptObject> key = interpreter.operandStack().pop();
  interpreter.dictionaries().current().define(*key, std::move(value));
}

void LoadOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> key = interpreter.operandStack().pop();
  PostscriptObject* value = interpreter.dictionaries().lookup(*key);
  if (value == nullptr) THROW_EX("Undefined name passed to load operator");
  interpreter.operandStack().push(value);
}

void StoreOperator::execute(Interpreter& interpreter) {
  Ref<PostscriptObject> value = interpreter.operandStack().pop();
  const Ref<PostscriptObject> key = interpreter.operandStack().pop();
  // Where the key is known already, so that a procedure can set a variable of its caller.
  DictionaryObject* holder = interpreter.dictionaries().findHolder(*key);
  DictionaryObject& target = holder != nullptr ? *holder : interpreter.dictionaries().current();
  target.define(*key, std::move(value));
}

void WhereOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> key = interpreter.operandStack().pop();
  DictionaryObject* holder = interpreter.dictionaries().findHolder(*key);
  if (holder != nullptr) interpreter.operandStack().push(holder);
  interpreter.pushBoolean(holder != nullptr);
}

// Takes any key, unlike get; so a job can ask for what it cannot get.
void KnownOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> key = interpreter.operandStack().pop();
  const auto dictionary = interpreter.operandStack().pop<DictionaryObject>(text);
  interpreter.pushBoolean(dictionary->lookup(*key) != nullptr);
}

void UndefOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> key = interpreter.operandStack().pop();
  const Ref<PostscriptObject> container = interpreter.operandStack().pop();
  if (auto* dictionary = as<DictionaryObject>(container)) dictionary->remove(*key);
}

// The object that lies on the stack, not a new handle: what a job does to its flag stays with it.
void CurrentdictOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().push(&interpreter.dictionaries().current());
}

void CleardictstackOperator::execute(Interpreter& interpreter) {
  interpreter.dictionaries().resetStack();
}

void MaxlengthOperator::execute(Interpreter& interpreter) {
  const auto dictionary = interpreter.operandStack().pop<DictionaryObject>(text);
  interpreter.pushInteger(static_cast<std::int32_t>(dictionary->count()) + kSpareEntries);
}

}  // namespace quillpress

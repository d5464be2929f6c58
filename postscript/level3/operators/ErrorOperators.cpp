#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/ObjectText.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// command errorname -> (stops)
// What every handler in errordict does unless the job puts another one there.
void recordError(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  Name* const errorName = operands.top(0).asName();
  const Object command = operands.top(1);
  operands.pop(2);
  interpreter.recordError(errorName, command);
}

// A value of $error as text.
std::string recorded(Interpreter& interpreter, std::string_view key) {
  const Object* const value = interpreter.errorState().find(interpreter.memory().name(key));
  return value == nullptr ? std::string() : plainText(*value);
}

// ->
// Says what error there was, once.
void handleerror(Interpreter& interpreter) {
  Name* const newError = interpreter.memory().name("newerror");
  const Object* const isNew = interpreter.errorState().find(newError);
  if (isNew == nullptr || !isNew->is(Type::kBoolean) || !isNew->asBoolean()) return;
  interpreter.memory().put(interpreter.errorState(), newError, Object::boolean(false));
  const std::string line = "%%[ Error: " + recorded(interpreter, "errorname") +
                           "; OffendingCommand: " + recorded(interpreter, "command") + " ]%%\n";
  interpreter.output().write(bytesOf(line));
}

constexpr OperatorRow kErrorOperators[] = {
    {".recorderror", "any name", recordError},
};

constexpr OperatorRow kHandler[] = {
    {".handleerror", "", handleerror},
};

// { /errorname .recorderror }
Object handlerOf(Interpreter& interpreter, ErrorName error) {
  VirtualMemory& memory = interpreter.memory();
  const Object elements[] = {
      Object::literalName(memory.name(textOf(error))),
      *interpreter.systemDictionary().find(memory.name(".recorderror")),
  };
  return memory.newArray(elements).asExecutable().withAccess(Access::kExecuteOnly);
}

void fillErrorDictionary(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  for (std::size_t i = 0; i < kErrorNameCount; ++i) {
    const auto error = static_cast<ErrorName>(i);
    memory.put(interpreter.errorDictionary(), memory.name(textOf(error)), handlerOf(interpreter, error));
  }
  const Object call[] = {*interpreter.systemDictionary().find(memory.name(".handleerror"))};
  memory.put(interpreter.errorDictionary(), memory.name("handleerror"), memory.newArray(call).asExecutable());
}

void fillErrorState(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  const auto set = [&](std::string_view key, const Object& value) {
    memory.put(interpreter.errorState(), memory.name(key), value);
  };
  set("newerror", Object::boolean(false));
  set("recordstacks", Object::boolean(true));
  set("binary", Object::boolean(false));
  for (const char* key : {"errorname", "command", "errorinfo", "ostack", "estack", "dstack"}) {
    set(key, Object::null());
  }
}

}  // namespace

void addErrorOperators(Interpreter& interpreter) {
  interpreter.addOperators(kErrorOperators);
  interpreter.addOperators(kHandler);
  fillErrorDictionary(interpreter);
  fillErrorState(interpreter);
  interpreter.define("errordict", Object::dictionary(&interpreter.errorDictionary()));
  interpreter.define("$error", Object::dictionary(&interpreter.errorState()));
  VirtualMemory& memory = interpreter.memory();
  // Looks the handler up when it is called: a job may put its own into errordict.
  const Object call[] = {
      Object::executableName(memory.name("errordict")), Object::literalName(memory.name("handleerror")),
      Object::executableName(memory.name("get")), Object::executableName(memory.name("exec"))};
  memory.setGlobal(true);
  interpreter.define("handleerror", memory.newArray(call).asExecutable());
  memory.setGlobal(false);
}

}  // namespace quillpress::level3

#include <chrono>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"
#include "postscript/level3/operators/SystemNames.h"

namespace quillpress::level3 {

namespace {

// Printer drivers' prologues ask for the version before they choose how to download fonts. From 2015 on they
// send outlines of TrueType fonts instead of bitmaps, and from 3011 on with incremental glyph directories.
constexpr std::string_view kVersion = "3017.102";
constexpr std::string_view kProduct = "Quillpress";
constexpr std::int64_t kRevision = 1;
constexpr std::int64_t kSerialNumber = 0;
constexpr std::int64_t kLanguageLevel = 3;

// The password that `internaldict` asks for, printed in the book on Type 1 fonts.
constexpr std::int64_t kInternalPassword = 1183615869;

std::int64_t milliseconds(std::chrono::steady_clock::duration duration) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(duration).count();
}

// -> int
void realtime(Interpreter& interpreter) {
  interpreter.operands().push(
      Object::integer(milliseconds(std::chrono::steady_clock::now().time_since_epoch())));
}

// -> int
void usertime(Interpreter& interpreter) {
  interpreter.operands().push(
      Object::integer(milliseconds(std::chrono::steady_clock::now() - interpreter.startTime())));
}

// int -> dict
void internaldict(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  if (operand.asInteger() != kInternalPassword) raise(ErrorName::kInvalidAccess);
  operand = *interpreter.systemDictionary().find(interpreter.memory().name(".internaldict"));
}

// bool ->
// There is no terminal to echo on.
void echo(Interpreter& interpreter) {
  interpreter.operands().pop();
}

// ->
void prompt(Interpreter& interpreter) {
  interpreter.output().write(bytesOf("PS>"));
}

// int ->
void setobjectformat(Interpreter& interpreter) {
  interpreter.scanner().setObjectFormat(static_cast<int>(countOf(interpreter.operands().top(), 4)));
  interpreter.operands().pop();
}

// -> int
void currentobjectformat(Interpreter& interpreter) {
  interpreter.operands().push(Object::integer(interpreter.scanner().objectFormat()));
}

// index name ->
void defineusername(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  constexpr std::size_t kLastUserName = 65535;
  interpreter.scanner().setUserName(countOf(operands.top(1), kLastUserName), operands.top(0).asName());
  operands.pop(2);
}

// ->
void nothing(Interpreter& /*interpreter*/) {}

constexpr OperatorRow kSystemOperators[] = {
    {"realtime", "", realtime},
    {"usertime", "", usertime},
    {"internaldict", "int", internaldict},
    {"echo", "bool", echo},
    {"prompt", "", prompt},
    {"setobjectformat", "int", setobjectformat},
    {"currentobjectformat", "", currentobjectformat},
    {"defineusername", "int name", defineusername},
    // What ends a job on a serial line; in a file it means nothing.
    {"\004", "", nothing},
};

Object text(Interpreter& interpreter, std::string_view characters) {
  return interpreter.memory().newString(characters).withAccess(Access::kReadOnly);
}

}  // namespace

void addSystemOperators(Interpreter& interpreter) {
  interpreter.addOperators(kSystemOperators);
  setSystemNames(interpreter);
  VirtualMemory& memory = interpreter.memory();
  interpreter.define(".internaldict", memory.newDictionary(10));
  interpreter.define("statusdict", memory.newDictionary(100));
  memory.setGlobal(true);
  interpreter.define("version", text(interpreter, kVersion));
  interpreter.define("product", text(interpreter, kProduct));
  interpreter.define("revision", Object::integer(kRevision));
  interpreter.define("serialnumber", Object::integer(kSerialNumber));
  interpreter.define("languagelevel", Object::integer(kLanguageLevel));
  memory.setGlobal(false);
}

}  // namespace quillpress::level3

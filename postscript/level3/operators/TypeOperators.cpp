#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/ObjectText.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// any -> name
void type(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = Object::executableName(interpreter.memory().name(typeName(operand)));
}

// any -> any
void cvlit(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = operand.asLiteral();
}

// any -> any
void cvx(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = operand.asExecutable();
}

// any -> bool
void xcheck(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = Object::boolean(operand.isExecutable());
}

Access accessOf(const Object& composite) {
  return composite.isDictionary() ? composite.asDictionary()->access() : composite.access();
}

// Access can only be taken away.
void limitAccess(Interpreter& interpreter, Access access) {
  Object& operand = interpreter.operands().top();
  if (accessOf(operand) > access) raise(ErrorName::kInvalidAccess);
  // A dictionary's access is everybody's, and one that is read-only may be relied on.
  const bool isReliedOn = operand.isDictionary() && accessOf(operand) == Access::kReadOnly;
  if (isReliedOn && access == Access::kNone) raise(ErrorName::kInvalidAccess);
  if (operand.isDictionary()) {
    interpreter.memory().setAccess(*operand.asDictionary(), access);
  } else {
    operand = operand.withAccess(access);
  }
}

// array|dict|file|string -> the same
void readonly(Interpreter& interpreter) {
  limitAccess(interpreter, Access::kReadOnly);
}
void noaccess(Interpreter& interpreter) {
  limitAccess(interpreter, Access::kNone);
}

// array|file|string -> the same
void executeonly(Interpreter& interpreter) {
  limitAccess(interpreter, Access::kExecuteOnly);
}

// A file that can only be written is no more readable than a string without access.
bool canRead(const Object& composite) {
  return accessOf(composite) <= Access::kReadOnly && (!composite.isFile() || fileOf(composite).isReadable());
}

bool canWrite(const Object& composite) {
  return accessOf(composite) == Access::kUnlimited && (!composite.isFile() || fileOf(composite).isWritable());
}

// array|dict|file|string -> bool
void rcheck(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = Object::boolean(canRead(operand));
}

// array|dict|file|string -> bool
void wcheck(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = Object::boolean(canWrite(operand));
}

constexpr OperatorRow kTypeOperators[] = {
    {"type", "any", type},
    {"cvlit", "any", cvlit},
    {"cvx", "any", cvx},
    {"xcheck", "any", xcheck},
    {"readonly", "array|dict|file|string", readonly},
    {"noaccess", "array|dict|file|string", noaccess},
    {"executeonly", "array|file|string", executeonly},
    {"rcheck", "array|dict|file|string", rcheck},
    {"wcheck", "array|dict|file|string", wcheck},
};

}  // namespace

void addTypeOperators(Interpreter& interpreter) {
  interpreter.addOperators(kTypeOperators);
}

}  // namespace quillpress::level3

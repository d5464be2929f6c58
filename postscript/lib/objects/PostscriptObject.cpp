#include "postscript/lib/objects/PostscriptObject.h"

#include "postscript/lib/interpreter/Interpreter.h"

namespace quillpress {

PostscriptObject::~PostscriptObject() = default;

void PostscriptObject::execute(Interpreter& interpreter) {
  interpreter.operandStack().push(this);
}

std::string PostscriptObject::describe() const {
  return std::string(typeName(typeCode));
}

std::string PostscriptObject::printString() const {
  return describe();
}

std::string PostscriptObject::cvsString() const {
  return "--nostringval--";
}

}  // namespace quillpress

#include "postscript/lib/objects/PostscriptObject.h"

#include "postscript/lib/interpreter/Interpreter.h"

namespace quillpress {

// Here and not in the header, so that there is one table of virtual functions for all sources.
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

// What cvs stores for the kinds that have no text.
std::string PostscriptObject::cvsString() const {
  return "--nostringval--";
}

}  // namespace quillpress

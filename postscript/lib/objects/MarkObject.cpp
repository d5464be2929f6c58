#include "postscript/lib/objects/MarkObject.h"

namespace quillpress {

// Nothing to do, not even for the stack: a mark that a job makes executable is lost.
void MarkObject::execute(Interpreter& /*interpreter*/) {}

std::string MarkObject::printString() const {
  return "-mark-";
}

Ref<PostscriptObject> MarkObject::clone(int /*argument*/) const {
  return make<MarkObject>();
}

}  // namespace quillpress

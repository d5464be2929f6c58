#include "postscript/lib/objects/MarkObject.h"

namespace quillpress {

void MarkObject::execute(Interpreter& /*interpreter*/) {}

std::string MarkObject::printString() const {
  return "-mark-";
}

Ref<PostscriptObject> MarkObject::clone(int /*argument*/) const {
  return make<MarkObject>();
}

}  // namespace quillpress

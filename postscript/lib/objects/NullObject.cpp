#include "postscript/lib/objects/NullObject.h"

namespace quillpress {

// Only inside arrays and with ==; cvs and = give the text of the kinds that have none.
std::string NullObject::printString() const {
  return "null";
}

Ref<PostscriptObject> NullObject::clone(int /*argument*/) const {
  return make<NullObject>();
}

}  // namespace quillpress

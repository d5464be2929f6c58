#include "postscript/lib/objects/NullObject.h"

namespace quillpress {

std::string NullObject::printString() const {
  return "null";
}

Ref<PostscriptObject> NullObject::clone(int /*argument*/) const {
  return make<NullObject>();
}

}  // namespace quillpress

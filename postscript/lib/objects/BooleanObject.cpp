#include "postscript/lib/objects/BooleanObject.h"

namespace quillpress {

// These words are also the text under which a boolean is a dictionary key.
std::string BooleanObject::describe() const {
  return PostscriptObject::describe() + " " + printString();
}

std::string BooleanObject::printString() const {
  return value ? "true" : "false";
}

std::string BooleanObject::cvsString() const {
  return printString();
}

Ref<PostscriptObject> BooleanObject::clone(int /*argument*/) const {
  return make<BooleanObject>(value);
}

}  // namespace quillpress

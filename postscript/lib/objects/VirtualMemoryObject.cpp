#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

VirtualMemoryObject::~VirtualMemoryObject() {
  while (lastMade_ != nullptr) {
    CompositeData* const payload = lastMade_;
    lastMade_ = payload->madeBefore_;
    payload->~CompositeData();
  }
}

// A dictionary's text ends with this, so it tells in which area the dictionary was made.
std::string VirtualMemoryObject::describe() const {
  return PostscriptObject::describe() + " " + name_;
}

Ref<PostscriptObject> VirtualMemoryObject::clone(int /*argument*/) const {
  return make<VirtualMemoryObject>("Copy of " + name_);
}

}  // namespace quillpress

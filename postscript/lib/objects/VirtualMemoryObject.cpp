#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

void VirtualMemoryObject::add(std::unique_ptr<CompositeData> payload) {
  payloads_.push_back(std::move(payload));
}

// A dictionary's text ends with this, so it tells in which area the dictionary was made.
std::string VirtualMemoryObject::describe() const {
  return PostscriptObject::describe() + " " + name_;
}

Ref<PostscriptObject> VirtualMemoryObject::clone(int /*argument*/) const {
  return make<VirtualMemoryObject>("Copy of " + name_);
}

}  // namespace quillpress

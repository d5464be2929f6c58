#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

std::size_t VirtualMemoryObject::add(std::unique_ptr<CompositeData> payload) {
  payloads_.push_back(std::move(payload));
  return payloads_.size() - 1;
}

std::string VirtualMemoryObject::describe() const {
  return PostscriptObject::describe() + " " + name_;
}

Ref<PostscriptObject> VirtualMemoryObject::clone(int /*argument*/) const {
  return make<VirtualMemoryObject>("Copy of " + name_);
}

}  // namespace quillpress

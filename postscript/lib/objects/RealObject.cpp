#include "postscript/lib/objects/RealObject.h"

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/IntegerObject.h"
#include "postscript/lib/objects/NumberUtils.h"

namespace quillpress {

// The same text for all, since a dictionary key that is a real is stored under it.
std::string RealObject::describe() const {
  return PostscriptObject::describe() + " " + realText(value);
}

std::string RealObject::printString() const {
  return realText(value);
}

Ref<PostscriptObject> RealObject::clone(int /*argument*/) const {
  return make<RealObject>(value);
}

void RealObject::add(const PostscriptObject& summand) {
  if (const auto* real = as<RealObject>(&summand)) {
    value += real->value;
  } else if (const auto* integer = as<IntegerObject>(&summand)) {
    value += integer->value;
  } else {
    THROW_EX("Unsupported number type for adding");
  }
}

}  // namespace quillpress

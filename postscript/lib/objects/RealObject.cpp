#include "objects/RealObject.h"

#include "base/Ex.h"
#include "objects/IntegerObject.h"
#include "objects/NumberUtils.h"

namespace quillpress {

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

#include "postscript/lib/objects/IntegerObject.h"

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/NumberUtils.h"
#include "postscript/lib/objects/RealObject.h"

namespace quillpress {

std::string IntegerObject::describe() const {
  return PostscriptObject::describe() + " " + std::to_string(value);
}

std::string IntegerObject::printString() const {
  return std::to_string(value);
}

std::string IntegerObject::cvsString() const {
  return std::to_string(value);
}

Ref<PostscriptObject> IntegerObject::clone(int /*argument*/) const {
  return make<IntegerObject>(value);
}

// The real is truncated before the sum, not the sum after it: a loop of integers stays one.
void IntegerObject::add(const PostscriptObject& summand) {
  if (const auto* integer = as<IntegerObject>(&summand)) {
    value = wrappingAdd(value, integer->value);
  } else if (const auto* real = as<RealObject>(&summand)) {
    value = wrappingAdd(value, truncateToInt32(real->value));
  } else {
    THROW_EX("Unsupported number type for IntegerObject adding");
  }
}

}  // namespace quillpress

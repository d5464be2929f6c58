#include "postscript/lib/objects/ObjectStack.h"

#include <algorithm>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

void ObjectStack::put(std::ptrdiff_t index, Ref<PostscriptObject> object) {
  const auto size = static_cast<std::ptrdiff_t>(objects_.size());
  if (index < 0 || index > size) THROW_EX("Illegal array index");
  if (index == size) {
    push(std::move(object));
  } else {
    objects_[static_cast<std::size_t>(index)] = std::move(object);
  }
}

void ObjectStack::rotateTop(std::size_t size, std::size_t first) {
  const auto begin = objects_.end() - static_cast<std::ptrdiff_t>(size);
  std::rotate(begin, begin + static_cast<std::ptrdiff_t>(first), objects_.end());
}

void ObjectStack::throwNullPush() {
  THROW_EX("cannot push null item onto stack");
}

void ObjectStack::throwEmptyPop() {
  THROW_EX("pop - expected item on stack");
}

void ObjectStack::throwWrongKind(TypeCode expected, std::string_view context) {
  std::string message("Expected ");
  message.append(typeName(expected)).append(" at ").append(context);
  THROW_EX(message);
}

}  // namespace quillpress

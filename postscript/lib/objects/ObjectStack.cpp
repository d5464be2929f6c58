#include "postscript/lib/objects/ObjectStack.h"

#include <algorithm>
#include <limits>
#include <new>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

void ObjectStack::put(std::ptrdiff_t index, Ref<PostscriptObject> object) {
  const auto position = static_cast<std::size_t>(index);  // one below 0 is beyond every count
  if (position > count_) THROW_EX("Illegal array index");
  if (position == count_) {
    push(std::move(object));
  } else {
    const auto replaced = Ref<PostscriptObject>::adopt(slots_[position]);
    slots_[position] = object.leak();
  }
}

void ObjectStack::rotateTop(std::size_t size, std::size_t first) {
  PostscriptObject** const end = slots_ + count_;
  std::rotate(end - size, end - size + first, end);
}

void ObjectStack::moveTop(std::size_t size, ObjectStack& destination) {
  destination.reserve(destination.count_ + size);
  const auto moved = static_cast<std::uint32_t>(size);
  count_ -= moved;
  std::copy_n(slots_ + count_, moved, destination.slots_ + destination.count_);
  destination.count_ += moved;
}

void ObjectStack::reserve(std::size_t count) {
  if (count > capacity_) grow(count);
}

void ObjectStack::grow(std::size_t capacity) {
  if (capacity > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
  auto* const grown = new PostscriptObject*[capacity];
  std::copy_n(slots_, count_, grown);
  freeGrown();
  slots_ = grown;
  capacity_ = static_cast<std::uint32_t>(capacity);
}

void ObjectStack::clear() {
  while (count_ > 0) release(slots_[--count_]);
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

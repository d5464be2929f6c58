#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "postscript/lib/objects/Ref.h"

namespace quillpress {

// A growable stack of objects, bottom first; also the elements of an array. Every slot holds one
// reference. A pop hands that reference to the popper.
class ObjectStack {
 public:
  // REQUIRES: `displayName` outlives the stack.
  explicit ObjectStack(std::string_view displayName) : name_(displayName) {}

  [[nodiscard]] std::string_view name() const { return name_; }

  // Throws Ex for a null object.
  void push(Ref<PostscriptObject> object) {
    if (!object) throwNullPush();
    objects_.push_back(std::move(object));
  }

  // Throws Ex when the stack is empty.
  Ref<PostscriptObject> pop() {
    if (objects_.empty()) throwEmptyPop();
    Ref<PostscriptObject> top = std::move(objects_.back());
    objects_.pop_back();
    return top;
  }

  // Pops an object of one kind; `context` says in the error who wanted it. Kept: an object of another
  // kind has left the stack when Ex is thrown (registry/typed_operands.ps).
  Ref<PostscriptObject> pop(TypeCode expected, std::string_view context) {
    Ref<PostscriptObject> top = pop();
    if (top->typeCode != expected) throwWrongKind(expected, context);
    return top;
  }

  template <typename T>
  Ref<T> pop(std::string_view context) {
    return Ref<T>::adopt(static_cast<T*>(pop(T::kTypeCode, context).leak()));
  }

  // The object `depth` places below the top, borrowed; null outside the stack.
  [[nodiscard]] PostscriptObject* peek(std::ptrdiff_t depth) const {
    const auto size = static_cast<std::ptrdiff_t>(objects_.size());
    return depth >= 0 && depth < size ? objects_[static_cast<std::size_t>(size - 1 - depth)].get() : nullptr;
  }

  // The object at a position from the bottom, borrowed; null outside the stack.
  [[nodiscard]] PostscriptObject* at(std::ptrdiff_t index) const {
    const auto size = static_cast<std::ptrdiff_t>(objects_.size());
    return index >= 0 && index < size ? objects_[static_cast<std::size_t>(index)].get() : nullptr;
  }

  // Replaces the object at a position from the bottom, or appends at the position just past the end.
  // Throws Ex for any other index; nothing has changed then.
  void put(std::ptrdiff_t index, Ref<PostscriptObject> object);

  // Makes the two topmost objects change places. REQUIRES: count() >= 2
  void exchangeTop() { std::swap(objects_[objects_.size() - 1], objects_[objects_.size() - 2]); }

  // Rotates the `size` topmost objects so that the one `first` places above the deepest becomes the
  // deepest. REQUIRES: size <= count(), first <= size
  void rotateTop(std::size_t size, std::size_t first);

  [[nodiscard]] std::size_t count() const { return objects_.size(); }
  [[nodiscard]] bool empty() const { return objects_.empty(); }
  void reserve(std::size_t count) { objects_.reserve(count); }

  // Releases every object.
  void clear() { objects_.clear(); }

 private:
  [[noreturn]] static void throwNullPush();
  [[noreturn]] static void throwEmptyPop();
  [[noreturn]] static void throwWrongKind(TypeCode expected, std::string_view context);

  std::vector<Ref<PostscriptObject>> objects_;
  std::string_view name_;
};

}  // namespace quillpress

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "postscript/lib/objects/Ref.h"

namespace quillpress {

// A growable stack of objects, bottom first; also the elements of an array. Every slot holds one
// reference. A pop hands that reference to the popper.
//
// Every object of a job passes through a stack several times. So what all of that needs is here, inlined
// whatever the compiler thinks of its size, and growing and throwing are elsewhere.
class ObjectStack {
 public:
  // REQUIRES: `displayName` outlives the stack.
  explicit ObjectStack(const char* displayName) : name_(displayName) {}
  ObjectStack(const ObjectStack&) = delete;
  ObjectStack& operator=(const ObjectStack&) = delete;
  ~ObjectStack() {
    clear();
    freeGrown();
  }

  [[nodiscard]] std::string_view name() const { return name_; }

  // Throws Ex for a null object.
  [[gnu::always_inline]] void push(Ref<PostscriptObject> object) {
    if (!object) throwNullPush();
    if (count_ == capacity_) grow(std::size_t{capacity_} * 2);
    slots_[count_++] = object.leak();
  }

  // Throws Ex when the stack is empty.
  [[gnu::always_inline]] Ref<PostscriptObject> pop() {
    if (count_ == 0) throwEmptyPop();
    return Ref<PostscriptObject>::adopt(slots_[--count_]);
  }

  // Pops an object and releases it. Throws Ex when the stack is empty.
  [[gnu::always_inline]] void drop() {
    if (count_ == 0) throwEmptyPop();
    release(slots_[--count_]);
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

  // The topmost object, borrowed; null when the stack is empty.
  [[nodiscard]] PostscriptObject* top() const { return count_ == 0 ? nullptr : slots_[count_ - 1]; }

  // The object `depth` places below the top, borrowed; null outside the stack.
  [[nodiscard]] PostscriptObject* peek(std::ptrdiff_t depth) const {
    const auto below = static_cast<std::size_t>(depth);  // one below 0 is beyond every count
    return below < count_ ? slots_[count_ - 1 - below] : nullptr;
  }

  // The object at a position from the bottom, borrowed; null outside the stack.
  [[nodiscard]] PostscriptObject* at(std::ptrdiff_t index) const {
    const auto position = static_cast<std::size_t>(index);
    return position < count_ ? slots_[position] : nullptr;
  }

  // Replaces the object at a position from the bottom, or appends at the position just past the end.
  // Throws Ex for any other index; nothing has changed then.
  void put(std::ptrdiff_t index, Ref<PostscriptObject> object);

  // Makes the two topmost objects change places. REQUIRES: count() >= 2
  void exchangeTop() { std::swap(slots_[count_ - 1], slots_[count_ - 2]); }

  // Rotates the `size` topmost objects so that the one `first` places above the deepest becomes the
  // deepest. REQUIRES: size <= count(), first <= size
  void rotateTop(std::size_t size, std::size_t first);

  // Moves the `size` topmost objects to the top of another stack, in their order. REQUIRES: size <= count()
  void moveTop(std::size_t size, ObjectStack& destination);

  [[nodiscard]] std::size_t count() const { return count_; }
  [[nodiscard]] bool empty() const { return count_ == 0; }

  // Makes room for that many objects in all.
  void reserve(std::size_t count);

  // Releases every object.
  void clear();

 private:
  void grow(std::size_t capacity);
  void freeGrown() {
    if (slots_ != first_.data()) delete[] slots_;
  }
  [[noreturn]] static void throwNullPush();
  [[noreturn]] static void throwEmptyPop();
  [[noreturn]] static void throwWrongKind(TypeCode expected, std::string_view context);

  // Every array of a job has one of these and keeps it to the end of its area, so its size counts. Most
  // arrays are short, and a block of their own would cost them more than their elements.
  static constexpr std::uint32_t kFirstCapacity = 2;

  std::array<PostscriptObject*, kFirstCapacity> first_;
  PostscriptObject** slots_ = first_.data();  // of which count_ are filled; later a block of its own
  std::uint32_t count_ = 0;
  std::uint32_t capacity_ = kFirstCapacity;
  const char* name_;
};

}  // namespace quillpress

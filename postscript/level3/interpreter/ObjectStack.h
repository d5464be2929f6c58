#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "postscript/level3/objects/ErrorName.h"
#include "postscript/level3/objects/Object.h"

namespace quillpress::level3 {

// A stack of objects of fixed capacity; beyond it, an error. The memory is reserved at once and costs nothing
// until it is used.
class ObjectStack {
 public:
  ObjectStack(std::size_t capacity, ErrorName overflow)
      : objects_(std::make_unique_for_overwrite<std::byte[]>(capacity * sizeof(Object))),
        bottom_(reinterpret_cast<Object*>(objects_.get())),
        top_(bottom_),
        limit_(bottom_ + capacity),
        overflow_(overflow) {}

  [[nodiscard]] std::size_t depth() const { return static_cast<std::size_t>(top_ - bottom_); }
  [[nodiscard]] std::size_t room() const { return static_cast<std::size_t>(limit_ - top_); }

  void push(const Object& object) {
    if (top_ == limit_) raise(overflow_);
    *top_++ = object;
  }

  // Throws the overflow error when that many do not fit; a function that pushes several asks first.
  void require(std::size_t count) const {
    if (room() < count) raise(overflow_);
  }

  // 0 is the topmost. REQUIRES: depth() > index
  [[nodiscard]] Object& top(std::size_t index = 0) { return *(top_ - 1 - index); }
  [[nodiscard]] const Object& top(std::size_t index = 0) const { return *(top_ - 1 - index); }

  // REQUIRES: depth() >= count
  void pop(std::size_t count = 1) { top_ -= count; }
  void popTo(std::size_t depth) { top_ = bottom_ + depth; }

  // Bottom first. Borrowed until the next push or pop.
  [[nodiscard]] std::span<Object> all() { return {bottom_, depth()}; }
  [[nodiscard]] std::span<const Object> all() const { return {bottom_, depth()}; }
  // The `count` topmost, the deepest first.
  [[nodiscard]] std::span<Object> last(std::size_t count) { return {top_ - count, count}; }

  // One past the topmost; changes whenever the depth does.
  [[nodiscard]] const Object* end() const { return top_; }

 private:
  std::unique_ptr<std::byte[]> objects_;
  Object* bottom_;
  Object* top_;
  Object* limit_;
  ErrorName overflow_;
};

}  // namespace quillpress::level3

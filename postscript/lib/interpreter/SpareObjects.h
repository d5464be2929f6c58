#pragma once

#include <array>
#include <cstddef>

#include "postscript/lib/objects/IntegerObject.h"
#include "postscript/lib/objects/RealObject.h"

namespace quillpress {

// Spares the heap a new object for most numbers of a job: nearly all are consumed soon after they are made.
// The objects that were made last are kept, and one is handed out again when its turn comes and nobody else
// holds it any more, so nobody can tell. One that a job keeps, in an array say, is left to it and another
// takes its place.
template <typename T>
class SpareNumbers {
 public:
  using Value = decltype(T::value);

  // A literal number.
  [[gnu::always_inline]] Ref<T> take(Value value) {
    Ref<T>& spare = spares_[next_++ % kCount];
    if (!spare || spare->refCount > 1) {
      spare = make<T>(value);
    } else {
      spare->value = value;
      spare->executable = false;  // cvx may have changed it
    }
    return spare;
  }

 private:
  // More than the operands of most operators taken together; few enough to stay in the processor's cache.
  static constexpr std::size_t kCount = 64;

  std::array<Ref<T>, kCount> spares_;
  std::size_t next_ = 0;
};

// An object that is handed out again and again.
template <typename T>
class SharedObject {
 public:
  // The arguments are those of the constructor, the same every time.
  template <typename... Arguments>
  Ref<T> get(Arguments... arguments) {
    if (!object_ || object_->refCount > kMostHolders) object_ = make<T>(arguments...);
    return object_;
  }

 private:
  Ref<T> object_;
};

}  // namespace quillpress

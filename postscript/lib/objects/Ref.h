#pragma once

#include <type_traits>
#include <utility>

#include "postscript/lib/objects/PostscriptObject.h"

namespace quillpress {

// A class whose pointers convert to pointers to Base.
template <typename Derived, typename Base>
concept PointerTo = std::is_convertible_v<Derived*, Base*>;

// One counted reference to an object, or none. A Ref that goes out of scope drops its reference, so a
// popped operand is released on every path, errors included. Moving a Ref moves the reference without
// touching the count.
template <typename T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}              // NOLINT(google-explicit-constructor): reads like a pointer
  Ref(T* object) : object_(object) {  // NOLINT(google-explicit-constructor): sharing is the common case
    if (object_ != nullptr) retain(object_);
  }
  Ref(const Ref& other) : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

  template <PointerTo<T> U>
  Ref(const Ref<U>& other) : Ref(other.get()) {}  // NOLINT(google-explicit-constructor): as pointers convert
  template <PointerTo<T> U>
  Ref(Ref<U>&& other) noexcept : object_(other.leak()) {}  // NOLINT(google-explicit-constructor)

  ~Ref() {
    if (object_ != nullptr) release(object_);
  }

  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  [[nodiscard]] T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  // Gives the counted reference away; the caller must adopt it.
  [[nodiscard]] T* leak() { return std::exchange(object_, nullptr); }

  // Takes over a reference that somebody gave away with leak.
  [[nodiscard]] static Ref adopt(T* object) {
    Ref ref;
    ref.object_ = object;
    return ref;
  }

 private:
  T* object_ = nullptr;
};

// Makes an object and holds the first reference to it.
template <typename T, typename... Arguments>
[[nodiscard]] Ref<T> make(Arguments&&... arguments) {
  return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

// The object as a kind, or null when it is of another kind. T::kTypeCode tells the kind.
template <typename T>
[[nodiscard]] T* as(PostscriptObject* object) {
  return object != nullptr && object->typeCode == T::kTypeCode ? static_cast<T*>(object) : nullptr;
}
template <typename T>
[[nodiscard]] const T* as(const PostscriptObject* object) {
  return object != nullptr && object->typeCode == T::kTypeCode ? static_cast<const T*>(object) : nullptr;
}
template <typename T, typename U>
[[nodiscard]] T* as(const Ref<U>& object) {
  return as<T>(static_cast<PostscriptObject*>(object.get()));
}

}  // namespace quillpress

#pragma once

#include <cstdint>
#include <string>

#include "postscript/lib/objects/TypeCode.h"

namespace quillpress {

class Interpreter;
template <typename T>
class Ref;

// Any value of the language: the root of the class tree. Objects live on the heap, are shared by pointer
// and counted by hand: only Ref, through retain and release, touches refCount.
class PostscriptObject {
 public:
  explicit PostscriptObject(TypeCode code) : typeCode(code) {}
  PostscriptObject(const PostscriptObject&) = delete;
  PostscriptObject& operator=(const PostscriptObject&) = delete;
  virtual ~PostscriptObject();

  // What happens when the execution loop meets the object and `executable` is set. The caller holds the
  // object for the time of the call. Here: push it on the operand stack.
  virtual void execute(Interpreter& interpreter);

  // A debugging text: the type's name and details.
  [[nodiscard]] virtual std::string describe() const;

  // The text of the object inside an array's text, and the text that == prints.
  [[nodiscard]] virtual std::string printString() const;

  // The text that cvs stores and = prints.
  [[nodiscard]] virtual std::string cvsString() const;

  // A new object of the same kind. Every kind ignores the argument.
  [[nodiscard]] virtual Ref<PostscriptObject> clone(int argument) const = 0;

  bool executable = true;

  // Whether it is an operator that neither looks at nor changes the execution stack, a dictionary or
  // anybody's `executable`. The loop runs such an operator without care for what may have become of the rest.
  bool isPlainOperator = false;

  std::int32_t refCount = 0;
  const TypeCode typeCode;
};

// How many holders the objects get that are handed out again and again. The count has 32 bits, and a job may
// hold more than that.
inline constexpr std::int32_t kMostHolders = 1 << 30;

// Counts one more holder of an object.
inline void retain(PostscriptObject* object) {
  ++object->refCount;
}

// Counts one holder less and deletes the object that nobody holds any more.
[[gnu::always_inline]] inline void release(PostscriptObject* object) {
  if (--object->refCount < 1) delete object;
}

}  // namespace quillpress

#pragma once

#include "postscript/lib/objects/CompositeObject.h"
#include "postscript/lib/objects/ObjectStack.h"

namespace quillpress {

// The elements that handles on an array share, and how the array was opened: '{' makes it a procedure.
class ArrayData final : public CompositeData {
 public:
  explicit ArrayData(char openingCharacter);

  const char opening;
  ObjectStack elements;
};

// An array or a procedure. A running procedure keeps its position in the handle that the execution stack
// holds.
class ArrayObject final : public CompositeObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kArray;

  // A literal, empty array; '{' opens a procedure, '[' an array.
  ArrayObject(VirtualMemoryObject& memoryArea, char opening);

  // One step of a procedure: pushes the array back on the execution stack with the next element, the very
  // object, above it. The step past the last element retires the procedure, which is then literal and
  // rewound.
  void execute(Interpreter& interpreter) override;

  // The next element of a running procedure, borrowed, and the step to the one after; null past the last.
  [[nodiscard]] PostscriptObject* takeNext() {
    PostscriptObject* next = elements().at(executionIndex_);
    executionIndex_ += next != nullptr ? 1 : 0;
    return next;
  }

  // The count, and the execution index while the array is executable.
  [[nodiscard]] std::string describe() const override;

  // "[1 2 3 ]": every element followed by a blank. Throws Ex when arrays are nested too deeply, as one
  // that contains itself is.
  [[nodiscard]] std::string printString() const override;
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

  [[nodiscard]] ObjectStack& elements() const { return data().elements; }
  [[nodiscard]] std::size_t count() const { return elements().count(); }

  // The element, borrowed; null outside the array.
  [[nodiscard]] PostscriptObject* element(std::ptrdiff_t index) const { return elements().at(index); }

  // The element as a number. Throws Ex for an index outside the array and for what is no number.
  [[nodiscard]] double number(std::ptrdiff_t index) const;

  [[nodiscard]] bool isProcedure() const { return data().opening == '{'; }

  // Makes a procedure executable from its beginning; an array that is no procedure stays as it is.
  void startIfProcedure() {
    if (isProcedure()) start();
  }

  // Makes the array literal and rewinds it.
  void retire() {
    executable = false;
    executionIndex_ = 0;
  }

  // Makes the array executable from its beginning, procedure or not.
  void start() {
    executable = true;
    executionIndex_ = 0;
  }

 private:
  ArrayObject(const ArrayObject& other) = default;

  [[nodiscard]] ArrayData& data() const { return static_cast<ArrayData&>(payload()); }

  std::int32_t executionIndex_ = 0;
};

}  // namespace quillpress

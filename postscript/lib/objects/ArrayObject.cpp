#include "postscript/lib/objects/ArrayObject.h"

#include <vector>

#include "postscript/lib/base/Bounds.h"
#include "postscript/lib/base/Ex.h"
#include "postscript/lib/interpreter/Interpreter.h"
#include "postscript/lib/objects/NumberUtils.h"
#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

namespace {

struct Level {
  const ArrayObject* array;
  std::ptrdiff_t next;
};

}  // namespace

ArrayData::ArrayData(char openingCharacter)
    : CompositeData(TypeCode::kArray),
      opening(openingCharacter),
      elements(openingCharacter == '{' ? "Array { Stack" : "Array [ Stack") {}

ArrayObject::ArrayObject(VirtualMemoryObject& memoryArea, char opening)
    : CompositeObject(memoryArea, memoryArea.add<ArrayData>(opening)) {
  executable = false;
}

void ArrayObject::execute(Interpreter& interpreter) {
  Ref<PostscriptObject> next = takeNext();
  if (!next) {
    retire();
    return;
  }
  // Kept: the element itself, also of a literal name, so cvx on what a body pushed changes the body
  // (control/cvx.ps).
  interpreter.executionStack().push(this);
  interpreter.executionStack().push(std::move(next));
}

std::string ArrayObject::describe() const {
  std::string text = PostscriptObject::describe() + ", size=" + std::to_string(count());
  if (executable) text += ", exec index=" + std::to_string(executionIndex_);
  return text;
}

std::string ArrayObject::printString() const {
  std::string text("[");
  std::vector<Level> levels{{this, 0}};
  while (true) {
    if (text.size() > kMaxArrayText) THROW_EX("Array text too long to print");
    Level& level = levels.back();
    if (static_cast<std::size_t>(level.next) >= level.array->count()) {
      text += "]";
      levels.pop_back();
      if (levels.empty()) return text;
      text += " ";
      continue;
    }
    const PostscriptObject* element = level.array->element(level.next++);
    if (const auto* inner = as<ArrayObject>(element)) {
      if (levels.size() >= kMaxNesting) THROW_EX("Arrays nested too deeply to print");
      text += "[";
      levels.push_back({inner, 0});
      continue;
    }
    text += element == nullptr ? "-invalid null ob-" : element->printString();
    text += " ";
  }
}

Ref<PostscriptObject> ArrayObject::clone(int /*argument*/) const {
  return Ref<PostscriptObject>(new ArrayObject(*this));
}

double ArrayObject::number(std::ptrdiff_t index) const {
  const PostscriptObject* object = element(index);
  if (object == nullptr) THROW_EX("No object at given array index");
  return toDouble(*object);
}

}  // namespace quillpress

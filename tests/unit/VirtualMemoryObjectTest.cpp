#include <gtest/gtest.h>

#include "postscript/lib/objects/VirtualMemoryObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

TEST(VirtualMemoryObjectTest, KeepsAPayloadWhoseLastHandleHasGone) {
  const auto element = make<IntegerObject>(1);
  {
    VirtualMemoryObject area("Area");
    make<ArrayObject>(area, '[')->elements().push(element);
    EXPECT_EQ(element->refCount, 2);
  }
  EXPECT_EQ(element->refCount, 1);
}

TEST(VirtualMemoryObjectTest, ItsCopyIsEmptyAndNamedSo) {
  VirtualMemoryObject area("Local Memory");
  const auto element = make<IntegerObject>(1);
  make<ArrayObject>(area, '[')->elements().push(element);
  Ref<PostscriptObject> copy = area.clone(0);
  EXPECT_EQ(copy->describe(), "ps_save Copy of Local Memory");
  EXPECT_EQ(copy->typeCode, TypeCode::kSave);
  copy = nullptr;
  EXPECT_EQ(element->refCount, 2) << "the array stayed with its area";
}

TEST(MemorySetTest, TheAreasAreNamedAndTheLocalOneIsCurrent) {
  const MemorySet memory;
  EXPECT_EQ(memory.local().describe(), "ps_save Local Memory");
  EXPECT_EQ(memory.global().describe(), "ps_save Global Memory");
  EXPECT_EQ(&memory.current(), &memory.local());
  EXPECT_EQ(memory.local().refCount, 1);
  EXPECT_EQ(memory.global().refCount, 1);
}

TEST(MemorySetTest, NewValuesGoToTheCurrentArea) {
  Interpreter interpreter;
  run(interpreter,
      "(a) [1] {2} 1 dict 3 string currentfile true setglobal pop (b) [1] {2} 1 dict currentfile ");
  const ObjectStack& operands = interpreter.operandStack();
  for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(operands.count()); ++i) {
    const auto& composite = dynamic_cast<CompositeObject&>(*operands.at(i));
    EXPECT_EQ(&composite.memoryArea(), i < 6 ? &interpreter.memory().local() : &interpreter.memory().global())
        << i;
  }
  EXPECT_EQ(operands.count(), 11U);
}

}  // namespace
}  // namespace quillpress

#include <gtest/gtest.h>

#include "postscript/lib/objects/ObjectStack.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

TEST(ObjectStackTest, PushCountsAndPopHandsTheReferenceOver) {
  ObjectStack stack("Stack");
  const auto object = make<IntegerObject>(1);
  stack.push(object);
  EXPECT_EQ(object->refCount, 2);
  stack.push(object);
  EXPECT_EQ(object->refCount, 3);
  {
    const Ref<PostscriptObject> popped = stack.pop();
    EXPECT_EQ(popped.get(), object.get());
    EXPECT_EQ(object->refCount, 3);
  }
  EXPECT_EQ(object->refCount, 2);
  EXPECT_EQ(stack.count(), 1U);
}

TEST(ObjectStackTest, AnObjectPoppedAndPushedAgainIsNeverDeleted) {
  ObjectStack stack("Stack");
  PostscriptObject* object = new IntegerObject(1);
  stack.push(object);
  stack.push(stack.pop());
  EXPECT_EQ(stack.peek(0), object);
  EXPECT_EQ(object->refCount, 1);
}

TEST(ObjectStackTest, ANullObjectCannotBePushed) {
  ObjectStack stack("Stack");
  EXPECT_EQ(messageOf([&] { stack.push(nullptr); }), "cannot push null item onto stack");
  EXPECT_TRUE(stack.empty());
}

TEST(ObjectStackTest, AnEmptyStackCannotBePopped) {
  ObjectStack stack("Stack");
  EXPECT_EQ(messageOf([&] { stack.pop(); }), "pop - expected item on stack");
  try {
    stack.pop();
    FAIL();
  } catch (const Ex& error) {
    EXPECT_TRUE(error.formatted().starts_with("[ObjectStack.cpp:")) << error.formatted();
  }
}

TEST(ObjectStackTest, ATypedPopNamesTheKindAndTheContext) {
  ObjectStack stack("Stack");
  const auto object = make<RealObject>(1);
  stack.push(object);
  EXPECT_EQ(messageOf([&] { stack.pop(TypeCode::kInteger, "popIntegerObject"); }),
            "Expected ps_integer at popIntegerObject");
  EXPECT_TRUE(stack.empty());
  EXPECT_EQ(object->refCount, 1);
}

TEST(ObjectStackTest, PeekCountsFromTheTopAndBorrows) {
  ObjectStack stack("Stack");
  const auto bottom = make<IntegerObject>(1);
  const auto top = make<IntegerObject>(2);
  stack.push(bottom);
  stack.push(top);
  EXPECT_EQ(stack.peek(0), top.get());
  EXPECT_EQ(stack.peek(1), bottom.get());
  EXPECT_EQ(stack.peek(2), nullptr);
  EXPECT_EQ(stack.peek(-1), nullptr);
  EXPECT_EQ(top->refCount, 2);
}

TEST(ObjectStackTest, PutReplacesAndReleasesTheOldObject) {
  ObjectStack stack("Stack");
  const auto old = make<IntegerObject>(1);
  const auto fresh = make<IntegerObject>(2);
  stack.push(old);
  stack.put(0, fresh);
  EXPECT_EQ(old->refCount, 1);
  EXPECT_EQ(fresh->refCount, 2);
  stack.put(0, stack.at(0));
  EXPECT_EQ(fresh->refCount, 2);
}

TEST(ObjectStackTest, PutAtTheEndAppends) {
  ObjectStack stack("Stack");
  stack.put(0, make<IntegerObject>(1));
  stack.put(1, make<IntegerObject>(2));
  EXPECT_EQ(stack.count(), 2U);
}

TEST(ObjectStackTest, PutElsewhereThrowsAndChangesNothing) {
  ObjectStack stack("Stack");
  const auto object = make<IntegerObject>(1);
  stack.push(object);
  const auto other = make<IntegerObject>(2);
  EXPECT_EQ(messageOf([&] { stack.put(2, other); }), "Illegal array index");
  EXPECT_EQ(messageOf([&] { stack.put(-1, other); }), "Illegal array index");
  EXPECT_EQ(stack.count(), 1U);
  EXPECT_EQ(other->refCount, 1);
}

TEST(ObjectStackTest, ClearAndDestructionReleaseEveryObject) {
  const auto object = make<IntegerObject>(1);
  {
    ObjectStack stack("Stack");
    stack.push(object);
    stack.clear();
    EXPECT_EQ(object->refCount, 1);
    EXPECT_EQ(stack.count(), 0U);
    stack.push(object);
    stack.push(object);
  }
  EXPECT_EQ(object->refCount, 1);
}

TEST(ObjectStackTest, RotatesItsTop) {
  ObjectStack stack("Stack");
  for (int i = 0; i < 4; ++i) stack.push(make<IntegerObject>(i));
  stack.rotateTop(3, 1);
  std::string text;
  for (std::ptrdiff_t i = 0; i < 4; ++i) text += stack.at(i)->printString();
  EXPECT_EQ(text, "0231");
}

}  // namespace
}  // namespace quillpress

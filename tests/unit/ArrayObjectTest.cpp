#include <gtest/gtest.h>

#include "postscript/lib/objects/ArrayObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

class ArrayObjectTest : public testing::Test {
 protected:
  Ref<ArrayObject> arrayOf(std::initializer_list<int> values, char opening = '[') {
    auto array = make<ArrayObject>(area, opening);
    for (const int value : values) array->elements().push(make<IntegerObject>(value));
    return array;
  }

  VirtualMemoryObject area{"Local Memory"};
};

TEST_F(ArrayObjectTest, TheElementsAreNamedAfterTheOpeningCharacter) {
  EXPECT_EQ(arrayOf({}, '[')->elements().name(), "Array [ Stack");
  EXPECT_EQ(arrayOf({}, '{')->elements().name(), "Array { Stack");
}

TEST_F(ArrayObjectTest, OnlyABraceMakesAProcedure) {
  EXPECT_TRUE(arrayOf({}, '{')->isProcedure());
  EXPECT_FALSE(arrayOf({}, '[')->isProcedure());
}

TEST_F(ArrayObjectTest, ElementsOutsideAreNull) {
  const auto array = arrayOf({1, 2});
  EXPECT_EQ(array->element(-1), nullptr);
  EXPECT_EQ(array->element(2), nullptr);
  EXPECT_EQ(array->element(1)->printString(), "2");
}

TEST_F(ArrayObjectTest, PrintsABlankBehindEveryElement) {
  EXPECT_EQ(arrayOf({})->printString(), "[]");
  EXPECT_EQ(arrayOf({1, 2, 3})->printString(), "[1 2 3 ]");
  const auto outer = arrayOf({1});
  outer->elements().push(arrayOf({2}));
  outer->elements().push(make<RealObject>(2.5));
  EXPECT_EQ(outer->printString(), "[1 [2 ] 2.500000 ]");
}

TEST_F(ArrayObjectTest, DescribesItsPositionWhileItIsExecutable) {
  const auto array = arrayOf({1, 2, 3}, '{');
  EXPECT_EQ(array->describe(), "ps_array, size=3");
  array->start();
  EXPECT_EQ(array->describe(), "ps_array, size=3, exec index=0");
}

TEST_F(ArrayObjectTest, ACopySharesTheElementsAndCopiesFlagAndPosition) {
  Interpreter interpreter;
  const auto array = arrayOf({1, 2, 3}, '{');
  array->start();
  array->execute(interpreter);
  const Ref<PostscriptObject> copy = array->clone(0);
  EXPECT_EQ(copy->describe(), "ps_array, size=3, exec index=1");
  array->elements().put(0, make<IntegerObject>(9));
  EXPECT_EQ(copy->printString(), "[9 2 3 ]");
  array->retire();
  EXPECT_EQ(copy->describe(), "ps_array, size=3, exec index=1");
}

TEST_F(ArrayObjectTest, ACopyIsAHandleOnTheSameElements) {
  const auto array = arrayOf({1});
  const Ref<PostscriptObject> copy = array->clone(0);
  EXPECT_TRUE(static_cast<ArrayObject&>(*copy).sharesPayloadWith(*array));
  EXPECT_EQ(&static_cast<ArrayObject&>(*copy).memoryArea(), &area);
}

TEST_F(ArrayObjectTest, AStepPushesTheArrayAndTheElementAboveIt) {
  Interpreter interpreter;
  const auto array = arrayOf({1, 2}, '{');
  array->start();
  array->execute(interpreter);
  EXPECT_EQ(interpreter.executionStack().count(), 2U);
  EXPECT_EQ(interpreter.executionStack().peek(0), array->element(0));
  EXPECT_EQ(interpreter.executionStack().peek(1), array.get());
  EXPECT_EQ(array->describe(), "ps_array, size=2, exec index=1");
}

TEST_F(ArrayObjectTest, TheStepPastTheEndMakesItLiteralAgain) {
  Interpreter interpreter;
  const auto array = arrayOf({1}, '{');
  array->start();
  array->execute(interpreter);
  array->execute(interpreter);
  EXPECT_FALSE(array->executable);
  EXPECT_EQ(interpreter.executionStack().count(), 2U);
  array->start();
  EXPECT_EQ(array->describe(), "ps_array, size=1, exec index=0");
}

TEST_F(ArrayObjectTest, AnEmptyProcedureIsRetiredAtOnce) {
  Interpreter interpreter;
  const auto array = arrayOf({}, '{');
  array->start();
  array->execute(interpreter);
  EXPECT_FALSE(array->executable);
  EXPECT_TRUE(interpreter.executionStack().empty());
}

TEST_F(ArrayObjectTest, NumbersAreReadByIndex) {
  const auto array = arrayOf({4});
  array->elements().push(make<RealObject>(2.5));
  array->elements().push(make<NullObject>());
  EXPECT_EQ(array->number(0), 4.0);
  EXPECT_EQ(array->number(1), 2.5);
  EXPECT_EQ(messageOf([&] { (void)array->number(2); }), "Unsupported number type");
  EXPECT_EQ(messageOf([&] { (void)array->number(3); }), "No object at given array index");
  EXPECT_EQ(messageOf([&] { (void)array->number(-1); }), "No object at given array index");
}

TEST_F(ArrayObjectTest, PrintingEndsWhenArraysAreNestedTooDeeply) {
  Ref<ArrayObject> array = arrayOf({});
  for (int i = 0; i < 100000; ++i) {
    const auto outer = arrayOf({});
    outer->elements().push(array);
    array = outer;
  }
  EXPECT_EQ(messageOf([&] { (void)array->printString(); }), "Arrays nested too deeply to print");
}

TEST_F(ArrayObjectTest, PrintingFourHundredLevelsWorks) {
  Ref<ArrayObject> array = arrayOf({});
  for (int i = 0; i < 400; ++i) {
    const auto outer = arrayOf({});
    outer->elements().push(array);
    array = outer;
  }
  EXPECT_EQ(array->printString().size(), 2U + 400U * 3U);
}

// Every level doubles the text although there are only forty arrays.
TEST_F(ArrayObjectTest, PrintingSharedPartsEndsBeforeItFillsTheMemory) {
  for (const bool withLeaf : {false, true}) {
    Ref<ArrayObject> array = withLeaf ? arrayOf({1}) : arrayOf({});
    for (int i = 0; i < 40; ++i) {
      const auto outer = arrayOf({});
      outer->elements().push(array);
      outer->elements().push(array);
      array = outer;
    }
    EXPECT_EQ(messageOf([&] { (void)array->printString(); }), "Array text too long to print");
  }
}

}  // namespace
}  // namespace quillpress

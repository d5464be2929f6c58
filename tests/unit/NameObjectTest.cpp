#include <gtest/gtest.h>

#include "postscript/lib/objects/NameObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

TEST(NameObjectTest, MayHoldAnyBytes) {
  const std::string bytes("a\0b\xff", 4);
  EXPECT_EQ(NameObject(bytes).text, bytes);
  EXPECT_EQ(NameObject(bytes).cvsString(), bytes);
  EXPECT_EQ(NameObject("").text, "");
}

TEST(NameObjectTest, IsMadeOfOneCharacter) {
  EXPECT_EQ(NameObject('[').text, "[");
}

TEST(NameObjectTest, SchedulesTheValueItselfAndCountsIt) {
  Interpreter interpreter;
  const auto value = make<IntegerObject>(5);
  interpreter.dictionaries().userDictionary().define("x", value);
  NameObject("x").execute(interpreter);
  EXPECT_EQ(interpreter.executionStack().peek(0), value.get());
  EXPECT_EQ(value->refCount, 3);
  EXPECT_TRUE(interpreter.operandStack().empty());
}

TEST(NameObjectTest, StartsAProcedureFromItsBeginning) {
  Interpreter interpreter;
  run(interpreter, "/p {1 2} def ");
  NameObject("p").execute(interpreter);
  EXPECT_EQ(interpreter.executionStack().peek(0)->describe(), "ps_array, size=2, exec index=0");
  Ref<PostscriptObject> procedure = interpreter.executionStack().pop();
  procedure->execute(interpreter);
  EXPECT_EQ(procedure->describe(), "ps_array, size=2, exec index=1");
  NameObject("p").execute(interpreter);
  EXPECT_EQ(procedure->describe(), "ps_array, size=2, exec index=0");
}

TEST(NameObjectTest, LeavesAnArrayThatIsNoProcedureLiteral) {
  Interpreter interpreter;
  run(interpreter, "/a [1 2] def ");
  NameObject("a").execute(interpreter);
  EXPECT_FALSE(interpreter.executionStack().peek(0)->executable);
}

TEST(NameObjectTest, ThrowsWhenNothingIsDefined) {
  Interpreter interpreter;
  EXPECT_EQ(messageOf([&] { NameObject("foo").execute(interpreter); }), "NOTHING TO EXECUTE for foo\n");
  try {
    NameObject("foo").execute(interpreter);
    FAIL();
  } catch (const Ex& error) {
    EXPECT_TRUE(error.formatted().starts_with("[NameObject.cpp:")) << error.formatted();
    EXPECT_TRUE(error.formatted().ends_with("] NOTHING TO EXECUTE for foo\n")) << error.formatted();
  }
}

TEST(NameObjectTest, TheSearchStopsAtAnEntryThatIsNoDictionary) {
  Interpreter interpreter;
  interpreter.dictionaries().userDictionary().define("x", make<IntegerObject>(5));
  interpreter.dictionaries().begin(make<IntegerObject>(1));
  EXPECT_EQ(messageOf([&] { NameObject("x").execute(interpreter); }), "NOTHING TO EXECUTE for x\n");
  interpreter.dictionaries().begin(interpreter.memory().newDictionary());
  EXPECT_EQ(messageOf([&] { NameObject("add").execute(interpreter); }), "NOTHING TO EXECUTE for add\n");
}

TEST(NameObjectTest, ACopyOfAnOperatorIsAPlainExecutableName) {
  Interpreter interpreter;
  PostscriptObject* add = interpreter.dictionaries().lookup(DictionaryKey("add"));
  ASSERT_NE(add, nullptr);
  const Ref<PostscriptObject> copy = add->clone(0);
  EXPECT_TRUE(copy->executable);
  EXPECT_EQ(copy->describe(), "ps_name add");
  copy->execute(interpreter);
  EXPECT_EQ(interpreter.executionStack().peek(0), add);
}

TEST(NameObjectTest, ACopyKeepsTheFlag) {
  NameObject literal("x");
  literal.executable = false;
  EXPECT_FALSE(literal.clone(0)->executable);
  EXPECT_TRUE(NameObject("x").clone(0)->executable);
}

}  // namespace
}  // namespace quillpress

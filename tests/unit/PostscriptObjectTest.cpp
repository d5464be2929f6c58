#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "postscript/lib/objects/PostscriptObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

struct TypeRow {
  int code;
  const char* debugName;
  const char* operatorName;
};

constexpr std::array<TypeRow, 15> kTypeRows{{
    {0, "ps_boolean", "booleantype"},
    {1, "ps_fontID", "fonttype"},
    {2, "ps_integer", "integertype"},
    {3, "ps_mark", "marktype"},
    {4, "ps_name", "nametype"},
    {5, "ps_null", "nulltype"},
    {6, "ps_operator", "operatortype"},
    {7, "ps_real", "realtype"},
    {8, "ps_array", "arraytype"},
    {9, "ps_dictionary", "dicttype"},
    {10, "ps_file", "filetype"},
    {11, "ps_gstate", "gstatetype"},
    {12, "ps_packedarray", "packedarraytype"},
    {13, "ps_save", "savetype"},
    {14, "ps_string", "stringtype"},
}};

TEST(TypeCodeTest, EveryCodeHasItsDebugName) {
  for (const TypeRow& row : kTypeRows) EXPECT_EQ(typeName(row.code), row.debugName) << row.code;
}

TEST(TypeCodeTest, EveryCodeHasItsOperatorName) {
  for (const TypeRow& row : kTypeRows) EXPECT_EQ(typeOperatorName(row.code), row.operatorName) << row.code;
}

TEST(TypeCodeTest, OtherCodesAreUnknown) {
  for (const int code : {-1, 15, 16, 255, -2147483647, 2147483647}) {
    EXPECT_EQ(typeName(code), "unknown") << code;
    EXPECT_EQ(typeOperatorName(code), "unknown") << code;
  }
}

// One object of every kind with the texts that it must give.
struct Texts {
  std::string describe;
  std::string print;
  std::string cvs;
};

void expectTexts(const PostscriptObject& object, const Texts& expected) {
  EXPECT_EQ(object.describe(), expected.describe);
  EXPECT_EQ(object.printString(), expected.print);
  EXPECT_EQ(object.cvsString(), expected.cvs);
}

constexpr const char* kNoText = "--nostringval--";

class KindsTest : public testing::Test {
 protected:
  VirtualMemoryObject area{"Local Memory"};
};

TEST_F(KindsTest, IntegerTexts) {
  expectTexts(*make<IntegerObject>(-5), {"ps_integer -5", "-5", "-5"});
}

TEST_F(KindsTest, RealTextsHaveNoCvsText) {
  expectTexts(*make<RealObject>(2.5), {"ps_real 2.500000", "2.500000", kNoText});
}

TEST_F(KindsTest, BooleanTexts) {
  expectTexts(*make<BooleanObject>(true), {"ps_boolean true", "true", "true"});
  expectTexts(*make<BooleanObject>(false), {"ps_boolean false", "false", "false"});
}

TEST_F(KindsTest, NullTexts) {
  expectTexts(*make<NullObject>(), {"ps_null", "null", kNoText});
}

TEST_F(KindsTest, MarkTexts) {
  expectTexts(*make<MarkObject>(), {"ps_mark", "-mark-", kNoText});
}

TEST_F(KindsTest, NameTexts) {
  expectTexts(*make<NameObject>("abc"), {"ps_name abc", "abc", "abc"});
}

TEST_F(KindsTest, ArrayTexts) {
  expectTexts(*make<ArrayObject>(area, '['), {"ps_array, size=0", "[]", kNoText});
}

TEST_F(KindsTest, DictionaryTexts) {
  expectTexts(*make<DictionaryObject>(area),
              {"ps_dictionary 0 entries (ps_save Local Memory)", "-dict-", kNoText});
  expectTexts(*make<DictionaryObject>(area, "User"),
              {"ps_dictionary User  0 entries (ps_save Local Memory)", "-dict-", kNoText});
}

TEST_F(KindsTest, StringTexts) {
  expectTexts(*make<StringObject>(area, "ab"), {"ps_string ab", "(ab)", "ab"});
}

TEST_F(KindsTest, FileTexts) {
  expectTexts(*make<FileObject>(area), {"ps_file", "ps_file", kNoText});
}

TEST_F(KindsTest, SaveTexts) {
  expectTexts(area, {"ps_save Local Memory", "ps_save Local Memory", kNoText});
}

TEST_F(KindsTest, EveryKindCarriesItsCode) {
  EXPECT_EQ(make<BooleanObject>(true)->typeCode, TypeCode::kBoolean);
  EXPECT_EQ(make<IntegerObject>(1)->typeCode, TypeCode::kInteger);
  EXPECT_EQ(make<MarkObject>()->typeCode, TypeCode::kMark);
  EXPECT_EQ(make<NameObject>("a")->typeCode, TypeCode::kName);
  EXPECT_EQ(make<NullObject>()->typeCode, TypeCode::kNull);
  EXPECT_EQ(make<RealObject>(1)->typeCode, TypeCode::kReal);
  EXPECT_EQ(make<ArrayObject>(area, '[')->typeCode, TypeCode::kArray);
  EXPECT_EQ(make<DictionaryObject>(area)->typeCode, TypeCode::kDictionary);
  EXPECT_EQ(make<FileObject>(area)->typeCode, TypeCode::kFile);
  EXPECT_EQ(area.typeCode, TypeCode::kSave);
  EXPECT_EQ(make<StringObject>(area, "a")->typeCode, TypeCode::kString);
}

TEST_F(KindsTest, SomeKindsAreMadeLiteralAndSomeExecutable) {
  EXPECT_FALSE(make<IntegerObject>(1)->executable);
  EXPECT_FALSE(make<RealObject>(1)->executable);
  EXPECT_FALSE(make<StringObject>(area, "a")->executable);
  EXPECT_FALSE(make<ArrayObject>(area, '[')->executable);
  EXPECT_FALSE(make<ArrayObject>(area, '{')->executable);
  EXPECT_TRUE(make<NameObject>("a")->executable);
  EXPECT_TRUE(make<NameObject>('[')->executable);
  EXPECT_TRUE(make<BooleanObject>(true)->executable);
  EXPECT_TRUE(make<NullObject>()->executable);
  EXPECT_TRUE(make<MarkObject>()->executable);
  EXPECT_TRUE(make<DictionaryObject>(area)->executable);
  EXPECT_TRUE(area.executable);
}

TEST_F(KindsTest, ACountStartsAtZero) {
  const auto object = std::make_unique<IntegerObject>(1);
  EXPECT_EQ(object->refCount, 0);
}

TEST_F(KindsTest, ClonesAreNewObjectsOfTheSameKindAndValue) {
  const auto expectClone = [](const Ref<PostscriptObject>& object) {
    for (const int argument : {0, 1, -7}) {
      const Ref<PostscriptObject> copy = object->clone(argument);
      EXPECT_NE(copy.get(), object.get());
      EXPECT_EQ(copy->typeCode, object->typeCode);
      EXPECT_EQ(copy->describe(), object->describe());
      EXPECT_EQ(copy->executable, object->executable);
      EXPECT_EQ(copy->refCount, 1);
    }
  };
  expectClone(make<IntegerObject>(5));
  expectClone(make<RealObject>(2.5));
  expectClone(make<BooleanObject>(true));
  expectClone(make<BooleanObject>(false));
  expectClone(make<NullObject>());
  expectClone(make<MarkObject>());
  expectClone(make<NameObject>("abc"));
  expectClone(make<ArrayObject>(area, '{'));
  expectClone(make<DictionaryObject>(area, "User"));
  expectClone(make<StringObject>(area, "ab"));
  expectClone(make<FileObject>(area));
}

TEST_F(KindsTest, ClonedNumbersAreLiteral) {
  const auto integer = make<IntegerObject>(5);
  integer->executable = true;
  EXPECT_FALSE(integer->clone(0)->executable);
  const auto real = make<RealObject>(5);
  real->executable = true;
  EXPECT_FALSE(real->clone(0)->executable);
}

TEST(PostscriptObjectTest, ExecutingAnObjectPushesIt) {
  Interpreter interpreter;
  const auto object = make<IntegerObject>(7);
  object->execute(interpreter);
  EXPECT_EQ(interpreter.operandStack().peek(0), object.get());
  EXPECT_EQ(object->refCount, 2);
}

TEST(PostscriptObjectTest, ExecutingAMarkLeavesEveryStackUnchanged) {
  Interpreter interpreter;
  make<MarkObject>()->execute(interpreter);
  EXPECT_EQ(interpreter.operandStack().count(), 0U);
  EXPECT_EQ(interpreter.executionStack().count(), 0U);
  EXPECT_EQ(interpreter.deferredStack().count(), 0U);
  EXPECT_EQ(interpreter.dictionaries().stack().count(), 3U);
}

TEST(PostscriptObjectTest, ExecutingANullBooleanOrDictionaryPushesIt) {
  Interpreter interpreter;
  make<NullObject>()->execute(interpreter);
  make<BooleanObject>(true)->execute(interpreter);
  interpreter.memory().newDictionary()->execute(interpreter);
  EXPECT_EQ(operandsOf(interpreter), "null true -dict-");
}

TEST(PostscriptObjectTest, AsTellsTheKind) {
  const Ref<PostscriptObject> integer = make<IntegerObject>(5);
  EXPECT_NE(as<IntegerObject>(integer), nullptr);
  EXPECT_EQ(as<RealObject>(integer), nullptr);
  EXPECT_EQ(as<IntegerObject>(Ref<PostscriptObject>()), nullptr);
}

}  // namespace
}  // namespace quillpress

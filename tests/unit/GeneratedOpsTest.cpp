// The 316 generated operators against the language's own definitions.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>

#include "postscript/lib/operators/GeneratedOperators.h"
#include "postscript/lib/operators/ImplementedGenOps.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

// One letter an operand, the first one first: i integer, b boolean, s string, a array or procedure,
// d dictionary, m mark; x for what may be of several kinds (numbers, names, files ...).
// One letter a result, the first one pushed first: the same, and r real, t a boolean that is true, N name,
// f file, 0 null.
struct Effect {
  std::string_view name;
  std::string_view operands;
  std::string_view results;
};

constexpr std::array<Effect, 316> kEffects{{
    {"add", "xx", "r"},
    {"div", "xx", "r"},
    {"idiv", "ii", "i"},
    {"mod", "ii", "i"},
    {"mul", "xx", "r"},
    {"sub", "xx", "r"},
    {"abs", "x", "r"},
    {"neg", "x", "r"},
    {"ceiling", "x", "r"},
    {"floor", "x", "r"},
    {"round", "x", "r"},
    {"truncate", "x", "r"},
    {"sqrt", "x", "r"},
    {"atan", "xx", "r"},
    {"cos", "x", "r"},
    {"sin", "x", "r"},
    {"exp", "xx", "r"},
    {"ln", "x", "r"},
    {"log", "x", "r"},
    {"rand", "", "i"},
    {"srand", "i", ""},
    {"rrand", "", "i"},
    {"array", "i", "a"},
    {"length", "x", "i"},
    {"astore", "a", "a"},
    {"aload", "a", "a"},
    {"forall", "xa", ""},
    {"packedarray", "i", "a"},
    {"setpacking", "b", ""},
    {"currentpacking", "", "b"},
    {"dict", "i", "d"},
    {"maxlength", "d", "i"},
    {"begin", "d", ""},
    {"end", "", ""},
    {"def", "xx", ""},
    {"load", "x", "0"},
    {"store", "xx", ""},
    {"undef", "dx", ""},
    {"known", "dx", "b"},
    {"currentdict", "", "d"},
    {"errordict", "", "d"},
    {"userdict", "", "d"},
    {"globaldict", "", "d"},
    {"statusdict", "", "d"},
    {"countdictstack", "", "i"},
    {"dictstack", "a", "a"},
    {"cleardictstack", "", ""},
    {"string", "i", "s"},
    {"get", "xx", "0"},
    {"getinterval", "xii", "a"},
    {"putinterval", "xix", ""},
    {"anchorsearch", "ss", "sb"},
    {"search", "ss", "sb"},
    {"token", "x", "b"},
    {"eq", "xx", "b"},
    {"ne", "xx", "b"},
    {"ge", "xx", "b"},
    {"gt", "xx", "b"},
    {"le", "xx", "b"},
    {"lt", "xx", "b"},
    {"and", "xx", "b"},
    {"not", "x", "b"},
    {"or", "xx", "b"},
    {"xor", "xx", "b"},
    {"btrue", "", "b"},
    {"bfalse", "", "b"},
    {"bitshift", "ii", "i"},
    {"exec", "x", ""},
    {"repeat", "ia", ""},
    {"loop", "a", ""},
    {"exit", "", ""},
    {"stop", "", ""},
    {"stopped", "x", "b"},
    {"countexecstack", "", "i"},
    {"execstack", "a", "a"},
    {"quit", "", ""},
    {"start", "", ""},
    {"type", "x", "N"},
    {"cvlit", "x", "0"},
    {"cvx", "x", "0"},
    {"xcheck", "x", "t"},
    {"executeonly", "x", "0"},
    {"noaccess", "x", "0"},
    {"readonly", "x", "0"},
    {"rcheck", "x", "t"},
    {"wcheck", "x", "t"},
    {"cvi", "x", "i"},
    {"cvn", "s", "N"},
    {"cvr", "x", "r"},
    {"cvrs", "xis", "s"},
    {"cvs", "xs", "s"},
    {"file", "ss", "f"},
    {"filter", "xx", "f"},
    {"closefile", "x", ""},
    {"read", "x", "b"},
    {"write", "xi", ""},
    {"readhexstring", "xs", "sb"},
    {"writehexstring", "xs", ""},
    {"readstring", "xs", "sb"},
    {"writestring", "xs", ""},
    {"readline", "xs", "sb"},
    {"bytesavailable", "x", "i"},
    {"flush", "", ""},
    {"flushfile", "x", ""},
    {"resetfile", "x", ""},
    {"status", "x", "b"},
    {"run", "s", ""},
    {"currentfile", "", "f"},
    {"deletefile", "s", ""},
    {"renamefile", "ss", ""},
    {"filenameforall", "sas", ""},
    {"setfileposition", "xi", ""},
    {"fileposition", "x", "i"},
    {"print", "s", ""},
    {"stack", "", ""},
    {"pstack", "", ""},
    {"printobject", "xi", ""},
    {"writeobject", "xxi", ""},
    {"setobjectformat", "i", ""},
    {"currentobjectformat", "", "i"},
    {"defineresource", "xxx", "0"},
    {"undefineresource", "xx", ""},
    {"findresource", "xx", "0"},
    {"findcolorrendering", "x", "Nb"},
    {"resourcestatus", "xx", "b"},
    {"resourceforall", "sasx", ""},
    {"save", "", "r"},
    {"restore", "x", ""},
    {"setglobal", "b", ""},
    {"currentglobal", "", "b"},
    {"gcheck", "x", "b"},
    {"startjob", "bx", "b"},
    {"defineuserobject", "ix", ""},
    {"execuserobject", "i", ""},
    {"undefineuserobject", "i", ""},
    {"UserObjects", "", "a"},
    {"bind", "a", "a"},
    {"null", "", "0"},
    {"version", "", "s"},
    {"realtime", "", "i"},
    {"usertime", "", "i"},
    {"languagelevel", "", "i"},
    {"product", "", "s"},
    {"revision", "", "i"},
    {"serialnumber", "", "i"},
    {"executive", "", ""},
    {"echo", "b", ""},
    {"prompt", "", ""},
    {"gsave", "", ""},
    {"grestore", "", ""},
    {"clipsave", "", ""},
    {"cliprestore", "", ""},
    {"grestoreall", "", ""},
    {"initgraphics", "", ""},
    {"gstate", "", "0"},
    {"setgstate", "x", ""},
    {"currentgstate", "x", "0"},
    {"setlinewidth", "x", ""},
    {"currentlinewidth", "", "r"},
    {"setlinecap", "i", ""},
    {"currentlinecap", "", "i"},
    {"setlinejoin", "i", ""},
    {"currentlinejoin", "", "i"},
    {"setmiterlimit", "x", ""},
    {"currentmiterlimit", "", "r"},
    {"setstrokeadjust", "b", ""},
    {"currentstrokeadjust", "", "b"},
    {"setdash", "ax", ""},
    {"currentdash", "", "ar"},
    {"setcolorspace", "x", ""},
    {"currentcolorspace", "", "a"},
    {"setcolor", "x", ""},
    {"currentcolor", "", "r"},
    {"setgray", "x", ""},
    {"currentgray", "", "r"},
    {"sethsbcolor", "xxx", ""},
    {"currenthsbcolor", "", "rrr"},
    {"setrgbcolor", "xxx", ""},
    {"setcmykcolor", "xxxx", ""},
    {"currentcmykcolor", "", "rrrr"},
    {"sethalftone", "d", ""},
    {"currenthalftone", "", "d"},
    {"setscreen", "xxx", ""},
    {"currentscreen", "", "rra"},
    {"setcolorscreen", "xxxxxxxxxxxx", ""},
    {"currentcolorscreen", "", "rrarrarrarra"},
    {"settransfer", "a", ""},
    {"currenttransfer", "", "a"},
    {"setcolortransfer", "aaaa", ""},
    {"currentcolortransfer", "", "aaaa"},
    {"setblackgeneration", "a", ""},
    {"currentblackgeneration", "", "a"},
    {"setundercolorremoval", "a", ""},
    {"currentundercolorremoval", "", "a"},
    {"setcolorrendering", "d", ""},
    {"currentcolorrendering", "", "d"},
    {"setflat", "x", ""},
    {"currentflat", "", "r"},
    {"setoverprint", "b", ""},
    {"currentoverprint", "", "b"},
    {"setsmoothness", "x", ""},
    {"currentsmoothness", "", "r"},
    {"matrix", "", "a"},
    {"initmatrix", "", ""},
    {"identmatrix", "a", "a"},
    {"defaultmatrix", "a", "a"},
    {"currentmatrix", "a", "a"},
    {"setmatrix", "a", ""},
    {"translate", "xx", ""},
    {"scale", "xx", ""},
    {"rotate", "x", ""},
    {"concat", "a", ""},
    {"concatmatrix", "aaa", "a"},
    {"transform", "xx", "rr"},
    {"dtransform", "xx", "rr"},
    {"itransform", "xx", "rr"},
    {"idtransform", "xx", "rr"},
    {"invertmatrix", "aa", "a"},
    {"newpath", "", ""},
    {"currentpoint", "", "rr"},
    {"moveto", "xx", ""},
    {"rmoveto", "xx", ""},
    {"lineto", "xx", ""},
    {"rlineto", "xx", ""},
    {"arc", "xxxxx", ""},
    {"arcn", "xxxxx", ""},
    {"arct", "xxxxx", ""},
    {"arcto", "xxxxx", "rrrr"},
    {"curveto", "xxxxxx", ""},
    {"rcurveto", "xxxxxx", ""},
    {"closepath", "", ""},
    {"flattenpath", "", ""},
    {"reversepath", "", ""},
    {"strokepath", "", ""},
    {"ustrokepath", "a", ""},
    {"charpath", "sb", ""},
    {"uappend", "a", ""},
    {"clippath", "", ""},
    {"setbbox", "xxxx", ""},
    {"pathbbox", "", "rrrr"},
    {"pathforall", "aaaa", ""},
    {"upath", "b", "a"},
    {"initclip", "", ""},
    {"clip", "", ""},
    {"eoclip", "", ""},
    {"rectclip", "xxxx", ""},
    {"ucache", "", ""},
    {"erasepage", "", ""},
    {"stroke", "", ""},
    {"fill", "", ""},
    {"eofill", "", ""},
    {"rectstroke", "xxxx", ""},
    {"rectfill", "xxxx", ""},
    {"ustroke", "a", ""},
    {"ufill", "a", ""},
    {"ueofill", "a", ""},
    {"shfill", "d", ""},
    {"image", "iiiax", ""},
    {"colorimage", "iiiaxbi", ""},
    {"imagemask", "iibax", ""},
    {"infill", "xx", "b"},
    {"ineofill", "xx", "b"},
    {"inufill", "xxa", "b"},
    {"inueofill", "xxa", "b"},
    {"instroke", "xx", "b"},
    {"inustroke", "xxa", "b"},
    {"makepattern", "da", "d"},
    {"setpattern", "d", ""},
    {"execform", "d", ""},
    {"showpage", "", ""},
    {"copypage", "", ""},
    {"setpagedevice", "d", ""},
    {"currentpagedevice", "", "d"},
    {"nulldevice", "", ""},
    {"definefont", "xd", "d"},
    {"undefinefont", "x", ""},
    {"findfont", "x", "d"},
    {"scalefont", "dx", "d"},
    {"makefont", "da", "d"},
    {"setfont", "d", ""},
    {"rootfont", "", "d"},
    {"currentfont", "", "d"},
    {"selectfont", "xx", ""},
    {"show", "s", ""},
    {"ashow", "xxs", ""},
    {"widthshow", "xxis", ""},
    {"awidthshow", "xxixxs", ""},
    {"xshow", "sx", ""},
    {"xyshow", "sx", ""},
    {"yshow", "sx", ""},
    {"glyphshow", "x", ""},
    {"stringwidth", "s", "rr"},
    {"cshow", "as", ""},
    {"kshow", "as", ""},
    {"FontDirectory", "", "d"},
    {"GlobalFontDirectory", "", "d"},
    {"StandardEncoding", "", "a"},
    {"ISOLatinEncoding", "", "a"},
    {"findencoding", "x", "a"},
    {"setcachedevice", "xxxxxx", ""},
    {"setcharwidth", "xx", ""},
    {"setsystemparams", "d", ""},
    {"currentsystemparams", "", "d"},
    {"setuserparams", "d", ""},
    {"currentuserparams", "", "d"},
    {"setdevparams", "sd", ""},
    {"currentdevparams", "s", "d"},
    {"vmreclaim", "i", ""},
    {"setvmthreshold", "i", ""},
    {"vmstatus", "", "iii"},
    {"cachestatus", "", "iiiiiii"},
    {"setcachelimit", "x", ""},
    {"setcacheparams", "miii", ""},
    {"currentcacheparams", "", "miii"},
    {"setucacheparams", "mi", ""},
    {"ucachestatus", "", "miiiii"},
}};

Ref<PostscriptObject> operandOf(Interpreter& interpreter, char letter) {
  MemorySet& memory = interpreter.memory();
  switch (letter) {
    case 'i':
      return make<IntegerObject>(7);
    case 'b':
      return make<BooleanObject>(true);
    case 's':
      return memory.newString("text");
    case 'a':
      return memory.newProcedure();
    case 'd':
      return memory.newDictionary();
    case 'm':
      return make<MarkObject>();
    default:
      return make<NullObject>();
  }
}

// What a typed pop says to a null; empty for an operand of any kind.
std::string complaintOf(char letter) {
  static const std::map<char, std::string> kComplaints{{'i', "Expected ps_integer at popIntegerObject"},
                                                       {'b', "Expected ps_boolean at popBooleanObject"},
                                                       {'s', "Expected ps_string at popStringObject"},
                                                       {'a', "Expected ps_array at popArrayObject"},
                                                       {'d', "Expected ps_dictionary at popDictionaryObject"},
                                                       {'m', "Expected ps_mark at popMarkObject"}};
  const auto found = kComplaints.find(letter);
  return found == kComplaints.end() ? std::string() : found->second;
}

std::string resultText(char letter) {
  static const std::map<char, std::string> kTexts{
      {'i', "0"},      {'r', "0.000000"}, {'b', "false"}, {'t', "true"},    {'s', "()"},  {'a', "[]"},
      {'d', "-dict-"}, {'m', "-mark-"},   {'N', ""},      {'f', "ps_file"}, {'0', "null"}};
  return kTexts.at(letter);
}

TypeCode resultKind(char letter) {
  static const std::map<char, TypeCode> kKinds{
      {'i', TypeCode::kInteger},    {'r', TypeCode::kReal},   {'b', TypeCode::kBoolean},
      {'t', TypeCode::kBoolean},    {'s', TypeCode::kString}, {'a', TypeCode::kArray},
      {'d', TypeCode::kDictionary}, {'m', TypeCode::kMark},   {'N', TypeCode::kName},
      {'f', TypeCode::kFile},       {'0', TypeCode::kNull}};
  return kKinds.at(letter);
}

// The four operators whose results are filled in, by themselves or by nobody else.
std::string resultText(const Effect& effect, char letter) {
  if (effect.name == "countdictstack") return "3";
  if (effect.name == "product") return "(quillpress ps interpreter)";
  if (effect.name == "cvs") return "(--nostringval--)";
  return resultText(letter);
}

// The operators as they are registered, before hand-written ones replace some of them. Making each of the 316
// here once more took the compiler longer than all other tests of this program.
class GeneratedOperators {
 public:
  GeneratedOperators() { registerGeneratedOperators(dictionaries_); }

  NameObject* find(std::string_view name) const {
    return as<NameObject>(dictionaries_.systemDictionary().lookup(name));
  }

 private:
  MemorySet memory_;
  DictionarySet dictionaries_{memory_};
};

NameObject* generatedOperator(std::string_view name) {
  static const GeneratedOperators operators;
  return operators.find(name);
}

// Runs the operator on operands of which one may be replaced by a null; a 42 lies below them.
std::string runOn(Interpreter& interpreter, const Effect& effect, std::size_t replaced) {
  ObjectStack& operands = interpreter.operandStack();
  operands.push(make<IntegerObject>(42));
  for (std::size_t i = 0; i < effect.operands.size(); ++i) {
    operands.push(operandOf(interpreter, i == replaced ? 'x' : effect.operands[i]));
  }
  NameObject* const generated = generatedOperator(effect.name);
  return messageOf([&] { generated->execute(interpreter); });
}

constexpr std::size_t kNone = 99;

TEST(GeneratedOpsTest, EveryNameHasItsClass) {
  for (const Effect& effect : kEffects) {
    NameObject* const generated = generatedOperator(effect.name);
    ASSERT_NE(generated, nullptr) << effect.name;
    EXPECT_EQ(generated->text, effect.name);
    EXPECT_TRUE(generated->executable) << effect.name;
  }
}

TEST(GeneratedOpsTest, TheyAreRegisteredInThisOrder) {
  const Interpreter interpreter;
  const auto& names = const_cast<Interpreter&>(interpreter).dictionaries().generatedNames();
  ASSERT_EQ(names.size(), kEffects.size());
  for (std::size_t i = 0; i < names.size(); ++i) EXPECT_EQ(names[i], kEffects[i].name) << i;
}

TEST(GeneratedOpsTest, EveryOneTakesItsOperandsAndLeavesItsResults) {
  for (const Effect& effect : kEffects) {
    SCOPED_TRACE(effect.name);
    Interpreter interpreter;
    EXPECT_EQ(runOn(interpreter, effect, kNone), "");
    std::string expected = "42";
    for (const char letter : effect.results) expected += " " + resultText(effect, letter);
    EXPECT_EQ(operandsOf(interpreter), expected);
  }
}

TEST(GeneratedOpsTest, EveryResultIsOfItsKindAndItsNumbersStringsAndCompositesAreLiteral) {
  for (const Effect& effect : kEffects) {
    SCOPED_TRACE(effect.name);
    Interpreter interpreter;
    runOn(interpreter, effect, kNone);
    const ObjectStack& operands = interpreter.operandStack();
    ASSERT_EQ(operands.count(), effect.results.size() + 1);
    for (std::size_t i = 0; i < effect.results.size(); ++i) {
      const char letter = effect.results[i];
      const PostscriptObject* result = operands.at(static_cast<std::ptrdiff_t>(i) + 1);
      EXPECT_EQ(result->typeCode, resultKind(letter));
      const bool keepsBaseFlag = std::string_view("btm0").find(letter) != std::string_view::npos;
      EXPECT_EQ(result->executable, keepsBaseFlag);
      EXPECT_EQ(result->refCount, 1);
    }
  }
}

TEST(GeneratedOpsTest, AnOperandOfAFixedKindIsPoppedTypedAndAnyOtherAsItComes) {
  for (const Effect& effect : kEffects) {
    for (std::size_t i = 0; i < effect.operands.size(); ++i) {
      SCOPED_TRACE(std::string(effect.name) + ", operand " + std::to_string(i + 1));
      Interpreter interpreter;
      EXPECT_EQ(runOn(interpreter, effect, i), complaintOf(effect.operands[i]));
    }
  }
}

TEST(GeneratedOpsTest, AWrongOperandIsLostWithThoseAboveItAndNothingIsPushed) {
  for (const Effect& effect : kEffects) {
    for (std::size_t i = 0; i < effect.operands.size(); ++i) {
      if (complaintOf(effect.operands[i]).empty()) continue;
      SCOPED_TRACE(std::string(effect.name) + ", operand " + std::to_string(i + 1));
      Interpreter interpreter;
      runOn(interpreter, effect, i);
      EXPECT_EQ(interpreter.operandStack().count(), i + 1);
    }
  }
}

TEST(GeneratedOpsTest, AnOperandThatIsMissingEmptiesTheStack) {
  for (const Effect& effect : kEffects) {
    if (effect.operands.empty()) continue;
    SCOPED_TRACE(effect.name);
    Interpreter interpreter;
    for (std::size_t i = 1; i < effect.operands.size(); ++i) {
      interpreter.operandStack().push(operandOf(interpreter, effect.operands[i]));
    }
    NameObject* const generated = generatedOperator(effect.name);
    EXPECT_EQ(messageOf([&] { generated->execute(interpreter); }), "pop - expected item on stack");
    EXPECT_TRUE(interpreter.operandStack().empty());
  }
}

TEST(GeneratedOpsTest, PoppedOperandsAreReleased) {
  Interpreter interpreter;
  const auto operand = make<IntegerObject>(7);
  interpreter.operandStack().push(operand);
  interpreter.operandStack().push(operand);
  BitshiftGeneratedOp().execute(interpreter);
  EXPECT_EQ(operand->refCount, 1);
  interpreter.operandStack().push(operand);
  interpreter.operandStack().push(make<RealObject>(1));
  EXPECT_EQ(messageOf([&] { BitshiftGeneratedOp().execute(interpreter); }),
            "Expected ps_integer at popIntegerObject");
  EXPECT_EQ(operand->refCount, 2);
}

TEST(GeneratedOpsTest, CvsConvertsItsOperand) {
  Interpreter interpreter;
  interpreter.operandStack().push(make<IntegerObject>(-12));
  interpreter.operandStack().push(interpreter.memory().newString("12345"));
  CvsGeneratedOp().execute(interpreter);
  EXPECT_EQ(operandsOf(interpreter), "(-12)");
}

TEST(GeneratedOpsTest, CountdictstackCounts) {
  Interpreter interpreter;
  run(interpreter, "1 dict begin 1 dict begin ");
  CountdictstackGeneratedOp().execute(interpreter);
  EXPECT_EQ(operandsOf(interpreter), "5");
}

TEST(GeneratedOpsTest, ResultsAreNewWithEveryCall) {
  Interpreter interpreter;
  run(interpreter, "currentpagedevice currentpagedevice product product ");
  const ObjectStack& operands = interpreter.operandStack();
  EXPECT_FALSE(
      as<DictionaryObject>(operands.at(0))->sharesPayloadWith(*as<DictionaryObject>(operands.at(1))));
  EXPECT_FALSE(as<StringObject>(operands.at(2))->sharesPayloadWith(*as<StringObject>(operands.at(3))));
  EXPECT_EQ(operands.at(3)->printString(), "(quillpress ps interpreter)");
}

TEST(GeneratedOpsTest, NamesThatLanguageKeepsFromTheCompilerHaveTheirOwnClasses) {
  EXPECT_EQ(AndGeneratedOp().text, "and");
  EXPECT_EQ(NotGeneratedOp().text, "not");
  EXPECT_EQ(OrGeneratedOp().text, "or");
  EXPECT_EQ(XorGeneratedOp().text, "xor");
  EXPECT_EQ(BtrueGeneratedOp().text, "btrue");
  EXPECT_EQ(BfalseGeneratedOp().text, "bfalse");
  EXPECT_EQ(SetflatGeneratedOp().text, "setflat");
  EXPECT_EQ(TruncateGeneratedOp().text, "truncate");
}

}  // namespace
}  // namespace quillpress

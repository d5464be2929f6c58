#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "postscript/lib/interpreter/DictionarySet.h"
#include "postscript/lib/pdf/Postscript2Pdf.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

constexpr auto kLanguageNames = std::to_array<std::string_view>({"{",
                                                                 "}",
                                                                 "[",
                                                                 "]",
                                                                 "mark",
                                                                 "cleartomark",
                                                                 "counttomark",
                                                                 "where",
                                                                 "known",
                                                                 "ifelse",
                                                                 "if",
                                                                 "true",
                                                                 "false",
                                                                 "null",
                                                                 "not",
                                                                 "and",
                                                                 "or",
                                                                 "xor",
                                                                 "pop",
                                                                 "ge",
                                                                 "gt",
                                                                 "eq",
                                                                 "ne",
                                                                 "lt",
                                                                 "le",
                                                                 "dup",
                                                                 "put",
                                                                 "get",
                                                                 "store",
                                                                 "dict",
                                                                 "undef",
                                                                 "currentdict",
                                                                 "begin",
                                                                 "def",
                                                                 "for",
                                                                 "forall",
                                                                 "loop",
                                                                 "repeat",
                                                                 "exit",
                                                                 "end",
                                                                 "sub",
                                                                 "add",
                                                                 "mul",
                                                                 "div",
                                                                 "idiv",
                                                                 "cos",
                                                                 "sin",
                                                                 "atan",
                                                                 "sqrt",
                                                                 "neg",
                                                                 "abs",
                                                                 "mod",
                                                                 "bind",
                                                                 "matrix",
                                                                 "identmatrix",
                                                                 "concatmatrix",
                                                                 "clear",
                                                                 "count",
                                                                 "cleardictstack",
                                                                 "exch",
                                                                 "roll",
                                                                 "index",
                                                                 "load",
                                                                 "currentfile",
                                                                 "read",
                                                                 "readline",
                                                                 "readhexstring",
                                                                 "currentglobal",
                                                                 "setglobal",
                                                                 "filter",
                                                                 "string",
                                                                 "readstring",
                                                                 "stopped",
                                                                 "stop",
                                                                 "exec",
                                                                 "cvx",
                                                                 "xcheck",
                                                                 "array",
                                                                 "packedarray",
                                                                 "setpacking",
                                                                 "currentpacking",
                                                                 "floor",
                                                                 "ceiling",
                                                                 "round",
                                                                 "copy",
                                                                 "readonly",
                                                                 "aload",
                                                                 "astore",
                                                                 "type",
                                                                 "cvr",
                                                                 "cvi",
                                                                 "cvn",
                                                                 "cvs",
                                                                 "length",
                                                                 "maxlength",
                                                                 "putinterval",
                                                                 "getinterval",
                                                                 "stack",
                                                                 "=",
                                                                 "==",
                                                                 "vmstatus",
                                                                 "statusdict",
                                                                 "definefont",
                                                                 "resourcestatus",
                                                                 "anchorsearch"});
static_assert(kLanguageNames.size() == 105);

constexpr auto kGraphicsNames = std::to_array<std::string_view>({"setscreen",
                                                                 "setcolorscreen",
                                                                 "sethalftone",
                                                                 "currenthalftone",
                                                                 "gsave",
                                                                 "initclip",
                                                                 "eoclip",
                                                                 "clip",
                                                                 "clippath",
                                                                 "rectclip",
                                                                 "setrgbcolor",
                                                                 "sethsbcolor",
                                                                 "setcmykcolor",
                                                                 "setgray",
                                                                 "currentrgbcolor",
                                                                 "currenthsbcolor",
                                                                 "currentcmykcolor",
                                                                 "currentgray",
                                                                 "stroke",
                                                                 "newpath",
                                                                 "fill",
                                                                 "eofill",
                                                                 "moveto",
                                                                 "rmoveto",
                                                                 "lineto",
                                                                 "rlineto",
                                                                 "curveto",
                                                                 "rcurveto",
                                                                 "arc",
                                                                 "arcn",
                                                                 "arct",
                                                                 "arcto",
                                                                 "currentpoint",
                                                                 "closepath",
                                                                 "translate",
                                                                 "transform",
                                                                 "itransform",
                                                                 "idtransform",
                                                                 "dtransform",
                                                                 "rotate",
                                                                 "concat",
                                                                 "currentmatrix",
                                                                 "scale",
                                                                 "grestore",
                                                                 "findfont",
                                                                 "scalefont",
                                                                 "setfont",
                                                                 "FontDirectory",
                                                                 "GlobalFontDirectory",
                                                                 "show",
                                                                 "stringwidth",
                                                                 "setlinewidth",
                                                                 "setlinecap",
                                                                 "setlinejoin",
                                                                 "setmiterlimit",
                                                                 "setdash",
                                                                 "currentlinewidth",
                                                                 "setstrokeadjust",
                                                                 "currentstrokeadjust",
                                                                 "setmatrix",
                                                                 "defaultmatrix",
                                                                 "showpage",
                                                                 "imagemask",
                                                                 "settransfer",
                                                                 "currenttransfer",
                                                                 "setcolortransfer",
                                                                 "currentcolortransfer",
                                                                 "setflat",
                                                                 "currentflat",
                                                                 "colorimage",
                                                                 "image",
                                                                 "setoverprint",
                                                                 "currentoverprint",
                                                                 "save",
                                                                 "restore",
                                                                 "makepattern",
                                                                 "setpattern",
                                                                 "currentfont",
                                                                 "print",
                                                                 "setcolorspace"});
static_assert(kGraphicsNames.size() == 80);

// The operators that have no generated counterpart and so replace nothing.
constexpr auto kNewNames =
    std::to_array<std::string_view>({"{",     "}",      "[",           "]",           "=",
                                     "==",    "mark",   "cleartomark", "counttomark", "where",
                                     "if",    "ifelse", "true",        "false",       "pop",
                                     "dup",   "exch",   "roll",        "index",       "copy",
                                     "clear", "count",  "for",         "put",         "currentrgbcolor"});

bool isNew(std::string_view name) {
  return std::ranges::find(kNewNames, name) != kNewNames.end();
}

TEST(DictionarySetTest, TheDictionariesHaveTheirNamesAndAreas) {
  const MemorySet memory;
  DictionarySet dictionaries(memory);
  EXPECT_EQ(dictionaries.systemDictionary().describe(),
            "ps_dictionary System  0 entries (ps_save Global Memory)");
  EXPECT_EQ(dictionaries.globalDictionary().describe(),
            "ps_dictionary Global  0 entries (ps_save Global Memory)");
  EXPECT_EQ(dictionaries.userDictionary().describe(), "ps_dictionary User  0 entries (ps_save Local Memory)");
  EXPECT_EQ(dictionaries.errorDictionary().describe(),
            "ps_dictionary Error  0 entries (ps_save Local Memory)");
  EXPECT_EQ(dictionaries.fontDirectory().describe(), "ps_dictionary Font  0 entries (ps_save Global Memory)");
}

TEST(DictionarySetTest, TheStackStartsWithThreeDictionaries) {
  const MemorySet memory;
  DictionarySet dictionaries(memory);
  EXPECT_EQ(dictionaries.stack().name(), "Dictionary Stack");
  ASSERT_EQ(dictionaries.stack().count(), 3U);
  EXPECT_EQ(dictionaries.stack().at(0), &dictionaries.systemDictionary());
  EXPECT_EQ(dictionaries.stack().at(1), &dictionaries.globalDictionary());
  EXPECT_EQ(dictionaries.stack().at(2), &dictionaries.userDictionary());
  EXPECT_EQ(&dictionaries.current(), &dictionaries.userDictionary());
  EXPECT_EQ(dictionaries.systemDictionary().refCount, 2);
  EXPECT_EQ(dictionaries.errorDictionary().refCount, 1);
  EXPECT_EQ(dictionaries.fontDirectory().refCount, 1);
}

TEST(DictionarySetTest, ResettingLeavesExactlyTheThree) {
  const MemorySet memory;
  DictionarySet dictionaries(memory);
  for (int i = 0; i < 3; ++i) dictionaries.end();
  dictionaries.resetStack();
  EXPECT_EQ(dictionaries.stack().count(), 3U);
  dictionaries.begin(memory.newDictionary());
  dictionaries.resetStack();
  EXPECT_EQ(dictionaries.stack().count(), 3U);
  EXPECT_EQ(&dictionaries.current(), &dictionaries.userDictionary());
}

TEST(DictionarySetTest, LookUpGoesFromTheTopDown) {
  const MemorySet memory;
  DictionarySet dictionaries(memory);
  const auto lower = make<IntegerObject>(1);
  const auto upper = make<IntegerObject>(2);
  dictionaries.systemDictionary().define("x", lower);
  EXPECT_EQ(dictionaries.lookup(DictionaryKey("x")), lower.get());
  EXPECT_EQ(dictionaries.findHolder(NameObject("x")), &dictionaries.systemDictionary());
  dictionaries.userDictionary().define("x", upper);
  EXPECT_EQ(dictionaries.lookup(NameObject("x")), upper.get());
  EXPECT_EQ(dictionaries.findHolder(NameObject("x")), &dictionaries.userDictionary());
  EXPECT_EQ(dictionaries.lookup(DictionaryKey("y")), nullptr);
  EXPECT_EQ(dictionaries.findHolder(NameObject("y")), nullptr);
}

TEST(DictionarySetTest, LookUpStopsAtAnEntryThatIsNoDictionary) {
  const MemorySet memory;
  DictionarySet dictionaries(memory);
  dictionaries.userDictionary().define("x", make<IntegerObject>(1));
  dictionaries.begin(make<IntegerObject>(5));
  EXPECT_EQ(dictionaries.lookup(DictionaryKey("x")), nullptr);
  EXPECT_EQ(dictionaries.findHolder(NameObject("x")), nullptr);
  EXPECT_THROW((void)dictionaries.current(), Ex);
}

TEST(DictionarySetTest, ALaterRegistrationWinsAndIsNoted) {
  const MemorySet memory;
  DictionarySet dictionaries(memory);
  const auto first = make<NameObject>("op");
  const auto second = make<NameObject>("op");
  dictionaries.registerGenerated(first);
  EXPECT_EQ(first->refCount, 2);
  EXPECT_TRUE(dictionaries.replacedNames().empty());
  dictionaries.registerOperator(second);
  EXPECT_EQ(first->refCount, 1);
  EXPECT_EQ(second->refCount, 2);
  EXPECT_EQ(dictionaries.generatedNames(), std::vector<std::string>{"op"});
  EXPECT_EQ(dictionaries.replacedNames(), std::vector<std::string>{"op"});
  EXPECT_EQ(dictionaries.systemDictionary().lookup("op"), second.get());
  EXPECT_EQ(dictionaries.globalDictionary().count() + dictionaries.userDictionary().count(), 0U);
}

TEST(DictionarySetTest, TheLanguageOperatorsReplaceGeneratedOnesInTheirOrder) {
  Interpreter interpreter;
  std::vector<std::string> expected;
  for (const std::string_view name : kLanguageNames) {
    if (!isNew(name)) expected.emplace_back(name);
  }
  EXPECT_EQ(expected.size(), 81U);
  EXPECT_EQ(interpreter.dictionaries().replacedNames(), expected);
  EXPECT_EQ(interpreter.dictionaries().generatedNames().size(), 316U);
}

TEST(DictionarySetTest, TheGraphicsOperatorsReplaceGeneratedOnesInTheirOrder) {
  Postscript2Pdf converter({1, 0, 0, 1, 0, 0});
  std::vector<std::string> expected;
  for (const std::string_view name : kLanguageNames) {
    if (!isNew(name)) expected.emplace_back(name);
  }
  for (const std::string_view name : kGraphicsNames) {
    if (!isNew(name)) expected.emplace_back(name);
  }
  EXPECT_EQ(converter.interpreter().dictionaries().replacedNames(), expected);
}

TEST(DictionarySetTest, EveryOperatorIsInSystemdictUnderItsText) {
  Postscript2Pdf converter({1, 0, 0, 1, 0, 0});
  const DictionaryObject& system = converter.interpreter().dictionaries().systemDictionary();
  const auto expectOperator = [&](std::string_view name) {
    const PostscriptObject* found = system.lookup(name);
    ASSERT_NE(found, nullptr) << name;
    const auto* op = dynamic_cast<const NameObject*>(found);
    ASSERT_NE(op, nullptr) << name;
    EXPECT_EQ(op->text, name);
    EXPECT_TRUE(op->executable) << name;
    EXPECT_EQ(op->typeCode, TypeCode::kName) << name;
  };
  for (const std::string_view name : kLanguageNames) expectOperator(name);
  for (const std::string_view name : kGraphicsNames) expectOperator(name);
  expectOperator("btrue");
  expectOperator("bfalse");
  expectOperator("bitshift");
}

TEST(DictionarySetTest, SystemdictHoldsTheOperatorsTheDictionariesAndTheConstants) {
  Interpreter interpreter;
  DictionarySet& dictionaries = interpreter.dictionaries();
  const DictionaryObject& system = dictionaries.systemDictionary();
  EXPECT_EQ(system.lookup("systemdict"), &system);
  EXPECT_EQ(system.lookup("globaldict"), &dictionaries.globalDictionary());
  EXPECT_EQ(system.lookup("userdict"), &dictionaries.userDictionary());
  EXPECT_EQ(system.lookup("errordict"), &dictionaries.errorDictionary());
  EXPECT_EQ(system.lookup("languagelevel")->describe(), "ps_integer 2");
  EXPECT_EQ(system.lookup("version")->describe(), "ps_string 49");
  // The generated operators, the 24 language operators without a counterpart among them, and systemdict:
  // the other constants carry names of generated operators.
  EXPECT_EQ(system.count(), 316U + 24U + 1U);
}

}  // namespace
}  // namespace quillpress

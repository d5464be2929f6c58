#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>

#include "postscript/lib/interpreter/Interpreter.h"
#include "postscript/lib/pdf/Postscript2Pdf.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

TEST(InterpreterTest, TheStacksAreNamed) {
  Interpreter interpreter;
  EXPECT_EQ(interpreter.operandStack().name(), "Operand Stack");
  EXPECT_EQ(interpreter.executionStack().name(), "Execution Stack");
  EXPECT_EQ(interpreter.deferredStack().name(), "Deferred execution stack");
}

TEST(InterpreterTest, ANegativeLengthReachesToTheZeroByte) {
  Interpreter interpreter;
  interpreter.run("1 2 add ", -1);
  EXPECT_EQ(operandsOf(interpreter), "3");
}

TEST(InterpreterTest, ALengthEndsTheChunk) {
  Interpreter interpreter;
  interpreter.run("1 2 3 ", 4);
  EXPECT_EQ(operandsOf(interpreter), "1 2");
}

TEST(InterpreterTest, ANameIsExecutedOnceItsEndHasArrived) {
  Interpreter interpreter;
  run(interpreter, "1 2 ad");
  EXPECT_EQ(operandsOf(interpreter), "1 2");
  run(interpreter, "d ");
  EXPECT_EQ(operandsOf(interpreter), "3");
}

TEST(InterpreterTest, ANameAtTheVeryEndIsNeverExecuted) {
  EXPECT_EQ(resultOf("1 2 add"), "1 2");
}

TEST(InterpreterTest, AProcedureIsBuiltAcrossChunks) {
  const std::string text = "{ 1 2 add } exec ";
  for (std::size_t cut = 0; cut <= text.size(); ++cut) {
    Interpreter interpreter;
    run(interpreter, text.substr(0, cut));
    run(interpreter, text.substr(cut));
    EXPECT_EQ(operandsOf(interpreter), "3") << cut;
    EXPECT_TRUE(interpreter.deferredStack().empty());
    EXPECT_TRUE(interpreter.executionStack().empty());
  }
}

TEST(InterpreterTest, AnOpenProcedureWaitsOnTheDeferredStack) {
  Interpreter interpreter;
  run(interpreter, "{ 1 { 2 ");
  ASSERT_EQ(interpreter.deferredStack().count(), 2U);
  EXPECT_EQ(interpreter.deferredStack().at(0)->printString(), "[1 ]");
  EXPECT_EQ(interpreter.deferredStack().at(1)->printString(), "[2 ]");
  EXPECT_FALSE(interpreter.deferredStack().at(0)->executable);
  EXPECT_TRUE(interpreter.operandStack().empty());
}

TEST(InterpreterTest, TypedPopsNameThemselves) {
  Interpreter interpreter;
  const auto messageOfPop = [&](auto pop) {
    interpreter.operandStack().push(make<NullObject>());
    std::string message = messageOf([&] { (interpreter.*pop)(); });
    EXPECT_TRUE(interpreter.operandStack().empty());
    return message;
  };
  EXPECT_EQ(messageOfPop(&Interpreter::popBooleanObject), "Expected ps_boolean at popBooleanObject");
  EXPECT_EQ(messageOfPop(&Interpreter::popIntegerObject), "Expected ps_integer at popIntegerObject");
  EXPECT_EQ(messageOfPop(&Interpreter::popMarkObject), "Expected ps_mark at popMarkObject");
  EXPECT_EQ(messageOfPop(&Interpreter::popArrayObject), "Expected ps_array at popArrayObject");
  EXPECT_EQ(messageOfPop(&Interpreter::popDictionaryObject), "Expected ps_dictionary at popDictionaryObject");
  EXPECT_EQ(messageOfPop(&Interpreter::popStringObject), "Expected ps_string at popStringObject");
}

TEST(InterpreterTest, TypedPopsGiveTheObject) {
  Interpreter interpreter;
  run(interpreter, "(a) 1 dict [1] mark 7 true ");
  EXPECT_TRUE(interpreter.popBooleanObject()->value);
  EXPECT_EQ(interpreter.popIntegerObject()->value, 7);
  EXPECT_EQ(interpreter.popMarkObject()->printString(), "-mark-");
  EXPECT_EQ(interpreter.popArrayObject()->count(), 1U);
  EXPECT_EQ(interpreter.popDictionaryObject()->count(), 0U);
  EXPECT_EQ(interpreter.popStringObject()->bytes(), "a");
}

TEST(InterpreterTest, AClosingBraceThatFindsNoArrayNamesItsContext) {
  Interpreter interpreter;
  interpreter.deferredStack().push(make<IntegerObject>(1));
  EXPECT_EQ(messageOf([&] { run(interpreter, "} "); }), "Expected ps_array at Mark execute");
}

TEST(InterpreterTest, AnErrorDropsTheRestOfItsChunk) {
  Interpreter interpreter;
  EXPECT_THROW(run(interpreter, "1 nosuchname 2 3 "), Ex);
  EXPECT_EQ(operandsOf(interpreter), "1");
  run(interpreter, "4 ");
  EXPECT_EQ(operandsOf(interpreter), "1 4");
}

TEST(InterpreterTest, AProcedureGoesOnAfterAnErrorBeforeTheNextChunk) {
  Interpreter interpreter;
  EXPECT_THROW(run(interpreter, "{1 nosuchname 2 3} exec 9 "), Ex);
  EXPECT_EQ(operandsOf(interpreter), "1");
  run(interpreter, "4 ");
  EXPECT_EQ(operandsOf(interpreter), "1 2 3 4");
}

TEST(InterpreterTest, AShortNameIsFoundOnTheExecutionStackAfterItsError) {
  Interpreter interpreter;
  run(interpreter, "/a {add} def 1 2 a pop ");
  EXPECT_THROW(run(interpreter, "{a 3} exec "), Ex);
  ASSERT_EQ(interpreter.executionStack().count(), 2U);
  const auto* shortName = as<ArrayObject>(interpreter.executionStack().top());
  ASSERT_NE(shortName, nullptr);
  EXPECT_TRUE(shortName->executable);
  EXPECT_NE(shortName->describe().find("exec index=1"), std::string::npos);
  run(interpreter, "4 ");
  EXPECT_EQ(operandsOf(interpreter), "3 4");
  EXPECT_FALSE(shortName->executable);
}

TEST(InterpreterTest, AnEmptyChunkRunsWhatIsLeftToDo) {
  Interpreter interpreter;
  EXPECT_THROW(run(interpreter, "{1 nosuchname 2 3} exec "), Ex);
  interpreter.run("", 0);
  EXPECT_EQ(operandsOf(interpreter), "1 2 3");
  EXPECT_TRUE(interpreter.executionStack().empty());
}

TEST(InterpreterTest, AWaitingReadStaysOnTheExecutionStackWithItsOperandsInPlace) {
  Interpreter interpreter;
  run(interpreter, "currentfile 10 string readstring abcd");
  EXPECT_EQ(interpreter.executionStack().count(), 1U);
  EXPECT_EQ(interpreter.operandStack().count(), 2U);
  EXPECT_EQ(interpreter.operandStack().at(0)->typeCode, TypeCode::kFile);
  EXPECT_EQ(interpreter.operandStack().at(1)->typeCode, TypeCode::kString);
  run(interpreter, "");
  EXPECT_EQ(interpreter.executionStack().count(), 1U);
  run(interpreter, "efghij5 ");
  EXPECT_EQ(operandsOf(interpreter), "(abcdefghij) true 5");
}

TEST(InterpreterTest, AnExecutingObjectIsHeldWhileItIsRedefined) {
  EXPECT_EQ(resultOf("/f {/f 1 def 2} def f f "), "2 1");
  EXPECT_EQ(resultOf("systemdict /undef undef 1 "), "1");
  EXPECT_EQ(resultOf("/f {userdict /f undef 2 3} def f "), "2 3");
}

TEST(InterpreterTest, CountsReturnToWhatTheyWere) {
  Interpreter interpreter;
  const auto object = make<IntegerObject>(5);
  interpreter.dictionaries().userDictionary().define("x", object);
  run(interpreter, "x x [x x] {x} exec ");
  EXPECT_EQ(object->refCount, 2 + 5);
  run(interpreter, "clear ");
  EXPECT_EQ(object->refCount, 2 + 2);  // the array's elements stay with the memory area
  run(interpreter, "/x 6 def ");
  EXPECT_EQ(object->refCount, 1 + 2);
}

TEST(InterpreterTest, OperandsOfAFailingOperatorAreReleased) {
  Interpreter interpreter;
  const auto object = make<StringObject>(interpreter.memory().local(), "text");
  interpreter.operandStack().push(object);
  EXPECT_THROW(run(interpreter, "1 add "), Ex);
  EXPECT_EQ(object->refCount, 1);
}

TEST(InterpreterTest, AnotherInterpreterSharesNothing) {
  Interpreter first;
  Interpreter second;
  run(first, "/x 5 def systemdict /add undef ");
  EXPECT_THROW(run(second, "x "), Ex);
  run(second, "1 2 add ");
  EXPECT_EQ(operandsOf(second), "3");
}

// The published vector, by code; every other code is .notdef.
struct Glyph {
  int code;
  const char* name;
};

constexpr auto kGlyphs = std::to_array<Glyph>({{040, "space"},
                                               {041, "exclam"},
                                               {042, "quotedbl"},
                                               {043, "numbersign"},
                                               {044, "dollar"},
                                               {045, "percent"},
                                               {046, "ampersand"},
                                               {047, "quoteright"},
                                               {050, "parenleft"},
                                               {051, "parenright"},
                                               {052, "asterisk"},
                                               {053, "plus"},
                                               {054, "comma"},
                                               {055, "hyphen"},
                                               {056, "period"},
                                               {057, "slash"},
                                               {060, "zero"},
                                               {061, "one"},
                                               {062, "two"},
                                               {063, "three"},
                                               {064, "four"},
                                               {065, "five"},
                                               {066, "six"},
                                               {067, "seven"},
                                               {070, "eight"},
                                               {071, "nine"},
                                               {072, "colon"},
                                               {073, "semicolon"},
                                               {074, "less"},
                                               {075, "equal"},
                                               {076, "greater"},
                                               {077, "question"},
                                               {0100, "at"},
                                               {0101, "A"},
                                               {0102, "B"},
                                               {0103, "C"},
                                               {0104, "D"},
                                               {0105, "E"},
                                               {0106, "F"},
                                               {0107, "G"},
                                               {0110, "H"},
                                               {0111, "I"},
                                               {0112, "J"},
                                               {0113, "K"},
                                               {0114, "L"},
                                               {0115, "M"},
                                               {0116, "N"},
                                               {0117, "O"},
                                               {0120, "P"},
                                               {0121, "Q"},
                                               {0122, "R"},
                                               {0123, "S"},
                                               {0124, "T"},
                                               {0125, "U"},
                                               {0126, "V"},
                                               {0127, "W"},
                                               {0130, "X"},
                                               {0131, "Y"},
                                               {0132, "Z"},
                                               {0133, "bracketleft"},
                                               {0134, "backslash"},
                                               {0135, "bracketright"},
                                               {0136, "asciicircum"},
                                               {0137, "underscore"},
                                               {0140, "quoteleft"},
                                               {0141, "a"},
                                               {0142, "b"},
                                               {0143, "c"},
                                               {0144, "d"},
                                               {0145, "e"},
                                               {0146, "f"},
                                               {0147, "g"},
                                               {0150, "h"},
                                               {0151, "i"},
                                               {0152, "j"},
                                               {0153, "k"},
                                               {0154, "l"},
                                               {0155, "m"},
                                               {0156, "n"},
                                               {0157, "o"},
                                               {0160, "p"},
                                               {0161, "q"},
                                               {0162, "r"},
                                               {0163, "s"},
                                               {0164, "t"},
                                               {0165, "u"},
                                               {0166, "v"},
                                               {0167, "w"},
                                               {0170, "x"},
                                               {0171, "y"},
                                               {0172, "z"},
                                               {0173, "braceleft"},
                                               {0174, "bar"},
                                               {0175, "braceright"},
                                               {0176, "asciitilde"},
                                               {0241, "exclamdown"},
                                               {0242, "cent"},
                                               {0243, "sterling"},
                                               {0244, "fraction"},
                                               {0245, "yen"},
                                               {0246, "florin"},
                                               {0247, "section"},
                                               {0250, "currency"},
                                               {0251, "quotesingle"},
                                               {0252, "quotedblleft"},
                                               {0253, "guillemotleft"},
                                               {0254, "guilsinglleft"},
                                               {0255, "guilsinglright"},
                                               {0256, "fi"},
                                               {0257, "fl"},
                                               {0261, "endash"},
                                               {0262, "dagger"},
                                               {0263, "daggerdbl"},
                                               {0264, "periodcentered"},
                                               {0266, "paragraph"},
                                               {0267, "bullet"},
                                               {0270, "quotesinglbase"},
                                               {0271, "quotedblbase"},
                                               {0272, "quotedblright"},
                                               {0273, "guillemotright"},
                                               {0274, "ellipsis"},
                                               {0275, "perthousand"},
                                               {0277, "questiondown"},
                                               {0301, "grave"},
                                               {0302, "acute"},
                                               {0303, "circumflex"},
                                               {0304, "tilde"},
                                               {0305, "macron"},
                                               {0306, "breve"},
                                               {0307, "dotaccent"},
                                               {0310, "dieresis"},
                                               {0312, "ring"},
                                               {0313, "cedilla"},
                                               {0315, "hungarumlaut"},
                                               {0316, "ogonek"},
                                               {0317, "caron"},
                                               {0320, "emdash"},
                                               {0341, "AE"},
                                               {0343, "ordfeminine"},
                                               {0350, "Lslash"},
                                               {0351, "Oslash"},
                                               {0352, "OE"},
                                               {0353, "ordmasculine"},
                                               {0361, "ae"},
                                               {0365, "dotlessi"},
                                               {0370, "lslash"},
                                               {0371, "oslash"},
                                               {0372, "oe"},
                                               {0373, "germandbls"}});
static_assert(kGlyphs.size() == 149);

TEST(PrologueTest, StandardEncodingIsThePublishedVector) {
  Postscript2Pdf converter({1, 0, 0, 1, 0, 0});
  const auto* encoding =
      as<ArrayObject>(converter.interpreter().dictionaries().userDictionary().lookup("StandardEncoding"));
  ASSERT_NE(encoding, nullptr);
  ASSERT_EQ(encoding->count(), 256U);
  std::array<std::string, 256> expected;
  expected.fill(".notdef");
  for (const Glyph& glyph : kGlyphs) expected[static_cast<std::size_t>(glyph.code)] = glyph.name;
  for (std::size_t code = 0; code < expected.size(); ++code) {
    const PostscriptObject* name = encoding->element(static_cast<std::ptrdiff_t>(code));
    EXPECT_EQ(name->describe(), "ps_name " + expected[code]) << code;
    EXPECT_FALSE(name->executable) << code;
  }
}

TEST(PrologueTest, HelveticaHasSevenEntries) {
  Postscript2Pdf converter({1, 0, 0, 1, 0, 0});
  const auto* font =
      as<DictionaryObject>(converter.interpreter().dictionaries().fontDirectory().lookup("Helvetica"));
  ASSERT_NE(font, nullptr);
  std::string entries;
  for (std::size_t i = 0; i < font->count(); ++i) {
    const auto& entry = font->entryInOrder(i);
    entries += entry.key + " " + (entry.key == "Encoding" ? "..." : entry.value->printString()) + ";";
  }
  EXPECT_EQ(entries,
            "Encoding ...;FontBBox [-174 -285 1028 953 ];FontMatrix [0.001000 0 0 0.001000 0 0 ];"
            "FontName Helvetica;FontType 1;PaintType 0;UniqueID 15139632;");
  EXPECT_EQ(font->lookup("Encoding")->describe(), "ps_array, size=256");
}

TEST(PrologueTest, LeavesTheStacksEmpty) {
  Postscript2Pdf converter({1, 0, 0, 1, 0, 0});
  Interpreter& interpreter = converter.interpreter();
  EXPECT_TRUE(interpreter.operandStack().empty());
  EXPECT_TRUE(interpreter.executionStack().empty());
  EXPECT_TRUE(interpreter.deferredStack().empty());
  EXPECT_EQ(interpreter.dictionaries().stack().count(), 3U);
  EXPECT_EQ(interpreter.dictionaries().userDictionary().count(),
            38U + 1U);  // abbreviations, StandardEncoding
}

TEST(PrologueTest, AnErrorEndsItQuietly) {
  Interpreter interpreter;
  run(interpreter, "systemdict /def undef ");
  EXPECT_NO_THROW(interpreter.loadPrologue());
  EXPECT_EQ(interpreter.dictionaries().userDictionary().lookup("StandardEncoding"), nullptr);
  EXPECT_EQ(interpreter.dictionaries().fontDirectory().count(), 0U);
}

#ifndef _WIN32  // there the text goes to the debugger
TEST(PrologueTest, AnErrorIsReportedWithItsPlace) {
  Interpreter interpreter;
  run(interpreter, "systemdict /definefont undef ");
  setenv("QUILLPRESS_MESSAGES", "stderr", 1);
  testing::internal::CaptureStderr();
  interpreter.loadPrologue();
  const std::string text = testing::internal::GetCapturedStderr();
  unsetenv("QUILLPRESS_MESSAGES");
  EXPECT_TRUE(text.starts_with("Exception in Procset:[NameObject.cpp:")) << text;
  EXPECT_TRUE(text.ends_with("] NOTHING TO EXECUTE for definefont\n")) << text;
}
#endif

// A converter may be closed at any moment. The sanitizers look for what stays behind.
TEST(InterpreterTest, MayBeClosedAtAnyMoment) {
  const std::string text =
      "/x 5 def (a(b\\101\\\nc)) <48 65> <~87cURDZ~> //x { 1 { 2 } [ 3 ] } pop 2 { x } repeat "
      "0 1 3 { pop } for [1 2] { pop } forall { stop } stopped { exit } loop currentfile 9 string readstring "
      "123456789 1 dict begin /d currentdict def end % comment\n{ nosuchname 1 } exec ";
  for (std::size_t length = 0; length <= text.size(); ++length) {
    Interpreter interpreter;
    try {
      run(interpreter, text.substr(0, length));
    } catch (const Ex&) {
      EXPECT_EQ(length, text.size());
    }
  }
}

TEST(InterpreterTest, MayBeClosedInEveryKindOfLoop) {
  for (const std::string_view loop :
       {"5 {nosuchname} repeat ", "{nosuchname} loop ", "0 1 5 {nosuchname} for ",
        "[1 2] {nosuchname} forall ", "(ab) {nosuchname} forall ", "systemdict {nosuchname} forall ",
        "{nosuchname} stopped ", "{currentfile 9 string readstring} loop ",
        "5 {currentfile 9 string readline} repeat ", "{currentfile 9 string readhexstring} stopped 41 ",
        "true {nosuchname} if "}) {
    Interpreter interpreter;
    try {
      run(interpreter, loop);
    } catch (const Ex& error) {
      EXPECT_EQ(error.message(), "NOTHING TO EXECUTE for nosuchname\n") << loop;
    }
    EXPECT_FALSE(interpreter.executionStack().empty()) << loop;
  }
}

TEST(InterpreterTest, MayBeClosedWithStructuresThatContainThemselves) {
  EXPECT_EQ(resultOf("1 array dup dup 0 exch put length "), "1");
  EXPECT_EQ(resultOf("1 dict dup dup /d exch put length "), "1");
  EXPECT_EQ(resultOf("/p {p} def /p load dup 0 exch put "), "");
  EXPECT_EQ(resultOf("systemdict /s systemdict put userdict /s userdict put "), "");
}

TEST(InterpreterTest, TakesAHundredThousandOpenBraces) {
  Interpreter interpreter;
  run(interpreter, std::string(100000, '{'));
  EXPECT_EQ(interpreter.deferredStack().count(), 100000U);
  run(interpreter, std::string(100000, '}'));
  EXPECT_TRUE(interpreter.deferredStack().empty());
  EXPECT_EQ(interpreter.operandStack().count(), 1U);
  EXPECT_THROW(run(interpreter, "== "), Ex);
}

TEST(InterpreterTest, MayBeClosedWithAHundredThousandOpenBraces) {
  Interpreter interpreter;
  run(interpreter, std::string(100000, '{'));
  EXPECT_EQ(interpreter.deferredStack().count(), 100000U);
}

TEST(InterpreterTest, TakesDeeplyNestedArraysDictionariesAndExecutions) {
  constexpr int kDepth = 100000;
  Interpreter interpreter;
  run(interpreter, std::string(kDepth, '[') + std::string(kDepth, ']') + " pop ");
  run(interpreter, "2000 {1 dict begin} repeat countdictstack cleardictstack ");
  EXPECT_EQ(operandsOf(interpreter), "2003");
  run(interpreter, "pop {} 100000 {1 array dup 0 4 -1 roll put cvx} repeat ");
  EXPECT_EQ(interpreter.operandStack().count(), 1U);
  run(interpreter,
      "clear /n 0 def /f {/n n 1 add def n 100000 lt /f load /g load ifelse} def /g {} def f clear n ");
  EXPECT_EQ(operandsOf(interpreter), "100000");
}

TEST(InterpreterTest, TakesAMillionTokensWithoutAnyDelimiterButParentheses) {
  Interpreter interpreter;
  std::string text;
  for (int i = 0; i < 1000000; ++i) text += "()";
  run(interpreter, text);
  EXPECT_EQ(interpreter.operandStack().count(), 1000000U);
}

}  // namespace
}  // namespace quillpress

#include <gtest/gtest.h>
#include <quillpress/converter.h>

#include <string>
#include <string_view>

#include "tests/unit/ConverterFixture.h"

namespace quillpress {
namespace {

class PatternTest : public ConverterFixture {
 protected:
  // A program that leaves a pattern dictionary with one more pair of key and value under the name p.
  static std::string dictionary(const std::string& paintProcedure, const std::string& more = "") {
    return "/p 9 dict def p /XStep 8 put p /YStep 4 put p /BBox [0 0 8 4] put p /PaintProc {" +
           paintProcedure + "} put " + more;
  }

  const std::string make_ = "p [1 0 0 1 0 0] makepattern ";
};

TEST_F(PatternTest, DataIsWhatThePaintProcedureDraws) {
  EXPECT_EQ(content("gsave " + dictionary("pop 0 0 moveto 8 0 lineto 8 4 lineto fill") + make_), "q ");
  ASSERT_EQ(objectCount(), 1U);
  EXPECT_EQ(dataOf(object(0)), "q 8 0 0 4 0 0 cm\n0 0 m\n8 0 l\n8 4 l\nf\nQ\n");
  EXPECT_EQ(object(0).kind, PDF_OBJECT_PATTERN);
  EXPECT_EQ(object(0).compress, 1);
  EXPECT_STREQ(object(0).name, "/PA1");
  EXPECT_STREQ(object(0).content, "");
}

TEST_F(PatternTest, DictionaryTextHasItsEntriesInOrder) {
  content(dictionary("pop", "p /TilingType 2 put p /PatternType 1 put p /PaintType 1 put ") +
          "p [1 0 0.5 -1 10 12345.6] makepattern ");
  EXPECT_STREQ(object(0).dictionary,
               "/Type /Pattern\n/Matrix [1 0 0.5 -1 10 12346 ]\n/XStep 8\n/YStep 4\n/PaintType 1\n"
               "/PatternType 1\n/TilingType 2\n/BBox [0 0 8 4 ]\n/Resources <<>> ");
}

TEST_F(PatternTest, MissingKeysAreLeftOut) {
  content(dictionary("pop") + make_);
  EXPECT_STREQ(
      object(0).dictionary,
      "/Type /Pattern\n/Matrix [1 0 0 1 0 0 ]\n/XStep 8\n/YStep 4\n/BBox [0 0 8 4 ]\n/Resources <<>> ");
}

TEST_F(PatternTest, ADegenerateMatrixLeavesItsBracketOpen) {
  content(dictionary("pop") + "p [0 0 0 0 5 5] makepattern ");
  EXPECT_STREQ(object(0).dictionary,
               "/Type /Pattern\n/Matrix [/XStep 8\n/YStep 4\n/BBox [0 0 8 4 ]\n/Resources <<>> ");
}

TEST_F(PatternTest, FiveNumbersOfTheBoxHaveABlankBehindThem) {
  content(dictionary("pop", "p /BBox [1 2 3] put ") + make_);
  content(dictionary("pop", "p /BBox [] put ") + make_);
  content(dictionary("pop", "p /BBox [1 2 3 4 5 6 7] put ") + make_);
  EXPECT_NE(std::string(object(0).dictionary).find("/BBox [1 2 3 ]\n"), std::string::npos);
  EXPECT_NE(std::string(object(1).dictionary).find("/BBox []\n"), std::string::npos);
  EXPECT_NE(std::string(object(2).dictionary).find("/BBox [1 2 3 4 5 67]\n"), std::string::npos);
}

TEST_F(PatternTest, StepsAreNumbersOfContentText) {
  content(dictionary("pop", "p /XStep 0.123456 put p /YStep 12345.6 put ") + make_);
  EXPECT_EQ(dataOf(object(0)), "q 0.12346 0 0 12346 0 0 cm\nQ\n");
  EXPECT_NE(std::string(object(0).dictionary).find("/XStep 0.12346\n/YStep 12346\n"), std::string::npos);
}

TEST_F(PatternTest, StepsOfNothingWriteNoScaling) {
  content(dictionary("pop", "p /XStep 0 put p /YStep 0.00001 put ") + make_);
  EXPECT_EQ(dataOf(object(0)), "q Q\n");
}

TEST_F(PatternTest, TheStepsDoNotTouchTheCurrentMatrix) {
  content(dictionary("pop /seen matrix currentmatrix def") + make_ + "seen 0 get seen 3 get ");
  EXPECT_EQ(converter_.interpreter().operandStack().peek(1)->printString(), "1.000000");
  EXPECT_EQ(converter_.interpreter().operandStack().peek(0)->printString(), "1.000000");
}

TEST_F(PatternTest, TheRecordKeepsTheDictionary) {
  content(dictionary("pop") + make_);
  EXPECT_EQ(object(0).patternDictionary, converter_.interpreter().operandStack().peek(0));
}

TEST_F(PatternTest, TheConverterIsInThePatternOnlyWhileItIsPainted) {
  content("/s 1 string def " + dictionary("pop currentfile s readstring pop pop") + make_);
  EXPECT_TRUE(converter_.isInPattern());
  content("x");
  EXPECT_FALSE(converter_.isInPattern());
}

TEST_F(PatternTest, APaintProcedureThatWaitsLeavesWhatTheLastCallWrote) {
  EXPECT_EQ(content("/s 2 string def " +
                    dictionary("pop 1 setlinewidth currentfile s readstring pop pop "
                               "2 setlinewidth") +
                    make_),
            "q 8 0 0 4 0 0 cm\n1 w ");
  EXPECT_EQ(content("xy setpattern "), "/Pattern cs\n/PA1 scn\n");
  EXPECT_EQ(dataOf(object(0)), "2 w Q\n");
}

TEST_F(PatternTest, AFailedPaintProcedureGoesOnWithTheNextCall) {
  EXPECT_EQ(message(dictionary("pop 1 setlinewidth 5 concat 2 setlinewidth") + make_),
            "Illegal param to concat operator");
  EXPECT_TRUE(converter_.isInPattern());
  EXPECT_EQ(object(0).data, nullptr);
  EXPECT_EQ(content("gsave "), "q ");
  EXPECT_EQ(dataOf(object(0)), "2 w Q\n");
  EXPECT_FALSE(converter_.isInPattern());
}

TEST_F(PatternTest, WithoutAPaintProcedureTheContinuationEndsThePattern) {
  EXPECT_EQ(message("/p 9 dict def p /XStep 8 put p /YStep 4 put p /BBox [0 0 8 4] put " + make_),
            "expecting paintProc");
  ASSERT_EQ(objectCount(), 1U);
  EXPECT_NE(std::string(object(0).dictionary), "");
  EXPECT_EQ(object(0).data, nullptr);
  EXPECT_TRUE(converter_.isInPattern());
  EXPECT_EQ(content("gsave "), "q ");
  EXPECT_EQ(dataOf(object(0)), "Q\n");
}

TEST_F(PatternTest, AfterAFailureTheNextMakepatternEndsTheFailedOne) {
  EXPECT_EQ(message("/q 9 dict def q /XStep 8 put q /YStep 4 put q [1 0 0 1 0 0] makepattern "),
            "expected array to be here");
  ASSERT_EQ(objectCount(), 1U);
  EXPECT_EQ(content(dictionary("pop") + "gsave " + make_ + "grestore pop "), "Q ");
  EXPECT_EQ(objectCount(), 1U);
  EXPECT_EQ(dataOf(object(0)), "q Q\n");
  EXPECT_EQ(converter_.interpreter().operandStack().count(), 1U);
}

TEST_F(PatternTest, FailuresBeforeThePatternMakeNoObject) {
  EXPECT_EQ(message("1 dict [1 0 0 1 0] makepattern "), "expecting array of 6 doubles");
  EXPECT_EQ(message("/p 1 dict def " + make_), "expecting XStep");
  EXPECT_EQ(message(dictionary("pop") + "p [1 0 0 1 0 (a)] makepattern "), "Unsupported number type");
  EXPECT_EQ(objectCount(), 0U);
  EXPECT_FALSE(converter_.isInPattern());
}

TEST_F(PatternTest, ErrorsNameTheConverter) {
  message("1 dict [1 0 0 1 0] makepattern ");
  EXPECT_EQ(converter_.errorText().find("Exception:[Postscript2Pdf.cpp:"), 0U);
}

TEST_F(PatternTest, PageStartClearsTheFlagAndKeepsThePatternInProgress) {
  message(dictionary("pop 5 concat 2 setlinewidth") + make_);
  converter_.startPage({});
  EXPECT_FALSE(converter_.isInPattern());
  EXPECT_EQ(content(""), "");
  EXPECT_EQ(dataOf(object(0)), "2 w Q\n");
}

TEST_F(PatternTest, APatternOfAnEarlierPageDoesNotBringItsStatesBack) {
  message("9 setlinewidth gsave " + dictionary("pop 5 concat") + make_);
  converter_.startPage({3, 0, 0, 3, 0, 0});
  content("");
  EXPECT_EQ(converter_.state().ctm.a, 3);
  EXPECT_EQ(converter_.state().lineWidth, 0);
}

TEST_F(PatternTest, StatesAreRestoredWhenThePaintProcedureEnds) {
  content("7 setlinewidth gsave " + dictionary("pop 9 setlinewidth 0 1 1 sethsbcolor grestore grestore") +
          make_);
  EXPECT_EQ(converter_.state().lineWidth, 7);
  EXPECT_EQ(converter_.state().colourSpace, ColourSpace::kGray);
  EXPECT_EQ(content("8 setlinewidth grestore "), "8 w Q ");
  EXPECT_EQ(converter_.state().lineWidth, 7);
}

TEST_F(PatternTest, ThePatternBeginsWithoutThePathOfThePage) {
  content("1 2 moveto 3 4 lineto " + dictionary("pop 0 0 100 0 90 arc") + make_);
  EXPECT_EQ(dataOf(object(0)), "q 8 0 0 4 0 0 cm\n100 0 m\n100 55.228 55.228 100 0 100 c\nQ\n");
  content("1 2 moveto " + dictionary("pop 3 4 lineto") + make_);
  EXPECT_EQ(dataOf(object(1)), "q 8 0 0 4 0 0 cm\n3 4 l\nQ\n");
}

TEST_F(PatternTest, APatternThatHasDataAlreadyIsNested) {
  message(dictionary("pop 5 concat") + make_);
  char data[] = "x";
  object(0).data = data;
  EXPECT_EQ(message(""), "dont supported nested patterns yet");
  object(0).data = nullptr;
  EXPECT_EQ(objectCount(), 1U);
}

TEST_F(PatternTest, AClearedListDoesNotHurtThePatternInProgress) {
  content("/s 1 string def " + dictionary("pop currentfile s readstring pop pop") + make_);
  PdfObjectList::ofProcess().clear();
  EXPECT_EQ(content("x setpattern "), "");
  EXPECT_EQ(objectCount(), 0U);
}

TEST_F(PatternTest, PatternsOutliveTheirConverter) {
  {
    Postscript2Pdf other({});
    const std::string job = dictionary("pop stroke") + make_;
    EXPECT_TRUE(other.convert(job.data(), static_cast<int>(job.size())));
  }
  ASSERT_EQ(objectCount(), 1U);
  EXPECT_EQ(dataOf(object(0)), "q 8 0 0 4 0 0 cm\nS Q\n");
  EXPECT_EQ(content("1 dict setpattern "), "");
}

TEST_F(PatternTest, SetpatternKeepsTheStateOfTheColour) {
  content("0.5 setgray " + dictionary("pop") + make_);
  EXPECT_EQ(content("setpattern "), "/Pattern cs\n/PA1 scn\n");
  EXPECT_EQ(converter_.state().colourSpace, ColourSpace::kGray);
  EXPECT_EQ(converter_.state().colour[0], 0.5);
}

}  // namespace
}  // namespace quillpress

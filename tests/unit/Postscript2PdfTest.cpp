#include <gtest/gtest.h>
#include <quillpress/converter.h>

#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include "postscript/lib/base/Ex.h"
#include "tests/unit/ConverterFixture.h"

namespace quillpress {
namespace {

constexpr float kMatrix[6] = {2, 0, 0, -2, 10, 800};

class Postscript2PdfTest : public ConverterFixture {
 protected:
  Postscript2PdfTest() : ConverterFixture({2, 0, 0, -2, 10, 800}) {}
};

TEST_F(Postscript2PdfTest, BeginsWithOneFreshState) {
  EXPECT_EQ(converter_.state().ctm.a, 2);
  EXPECT_EQ(converter_.state().ctm.ty, 800);
  EXPECT_EQ(converter_.state().fontName, "Helvetica");
  EXPECT_EQ(converter_.errorText(), "");
  EXPECT_EQ(converter_.pageContent(), "");
  EXPECT_FALSE(converter_.isInPattern());
}

TEST_F(Postscript2PdfTest, EachChunkBeginsWithAnEmptyPageContent) {
  EXPECT_EQ(content("gsave "), "q ");
  EXPECT_EQ(content("grestore "), "Q ");
  EXPECT_EQ(content(""), "");
}

TEST_F(Postscript2PdfTest, MeasuresTheChunkWhenItsLengthIsNegative) {
  EXPECT_TRUE(converter_.convert("gsave grestore \0gsave ", -1));
  EXPECT_EQ(converter_.pageContent(), "q Q ");
}

TEST_F(Postscript2PdfTest, ACutTokenWaitsForItsRest) {
  EXPECT_EQ(content("0.2"), "");
  EXPECT_EQ(content("5 setg"), "");
  EXPECT_EQ(content("ray"), "");
  EXPECT_EQ(content(" "), "0.25 G 0.25 g ");
}

TEST_F(Postscript2PdfTest, ACutProcedureWaitsForItsRest) {
  EXPECT_EQ(content("2 {gsave "), "");
  EXPECT_EQ(content("grestore} "), "");
  EXPECT_EQ(content("repeat "), "q Q q Q ");
}

TEST_F(Postscript2PdfTest, ErrorTextNamesThePlace) {
  EXPECT_EQ(message("5 concat "), "Illegal param to concat operator");
  EXPECT_EQ(converter_.errorText().find("Exception:[TransformOperators.cpp:"), 0U);
  EXPECT_EQ(converter_.errorText().back(), '\n');
}

TEST_F(Postscript2PdfTest, ASecondErrorReplacesTheFirst) {
  EXPECT_EQ(message("5 concat "), "Illegal param to concat operator");
  EXPECT_EQ(message("5 setmatrix "), "Matrix param expected for setmatrix operator");
}

TEST_F(Postscript2PdfTest, SuccessKeepsTheErrorText) {
  message("5 concat ");
  content("gsave ");
  EXPECT_NE(converter_.errorText(), "");
}

TEST_F(Postscript2PdfTest, ContentBeforeAnErrorIsNotGivenOutLater) {
  EXPECT_EQ(message("gsave 5 concat gsave "), "Illegal param to concat operator");
  EXPECT_EQ(content("grestore "), "Q ");
}

TEST_F(Postscript2PdfTest, NothingElseIsResetByAnError) {
  message("7 5 setlinewidth 3 setlinecap gsave 5 concat ");
  EXPECT_EQ(converter_.state().lineWidth, 5);
  EXPECT_EQ(converter_.interpreter().operandStack().count(), 1U);
}

// An operator that fails with something that is no Ex.
class FailingOperator final : public NameObject {
 public:
  explicit FailingOperator(bool isMemory) : NameObject("fail"), isMemory_(isMemory) {}
  void execute(Interpreter& /*interpreter*/) override {
    if (isMemory_) throw std::bad_alloc();
    throw std::runtime_error("not an Ex");
  }

 private:
  bool isMemory_;
};

TEST_F(Postscript2PdfTest, OtherExceptionsReturnNullAndKeepTheErrorText) {
  message("5 concat ");
  const std::string before = PSGetErrorStr(&converter_);
  for (const bool isMemory : {true, false}) {
    converter_.interpreter().dictionaries().registerOperator(make<FailingOperator>(isMemory));
    int length = -1;
    EXPECT_EQ(PSConvertToPdf(&converter_, "gsave fail gsave ", &length), nullptr);
    EXPECT_EQ(length, -1);
    EXPECT_EQ(PSGetErrorStr(&converter_), before);
    EXPECT_EQ(content("grestore "), "Q ");
  }
}

TEST_F(Postscript2PdfTest, TheHandleIsTheConverter) {
  int length = -1;
  EXPECT_STREQ(PSConvertToPdf(&converter_, "gsave ", &length), "q ");
  EXPECT_EQ(length, 2);
}

TEST_F(Postscript2PdfTest, MatricesAreWidenedFromFloats) {
  const float matrix[6] = {0.1F, 0, 0, 1, 0, 0};
  EXPECT_NE(PSStartPage(&converter_, matrix), -1);
  EXPECT_EQ(converter_.state().ctm.a, static_cast<double>(0.1F));
}

TEST_F(Postscript2PdfTest, StartPageLeavesOneFreshState) {
  content("gsave gsave 5 setlinewidth 1 0 0 setrgbcolor 3 3 scale ");
  PSStartPage(&converter_, kMatrix);
  EXPECT_EQ(converter_.state().lineWidth, 0);
  EXPECT_EQ(converter_.state().colourSpace, ColourSpace::kGray);
  EXPECT_EQ(converter_.state().ctm.a, 2);
  content("7 setlinewidth grestore ");
  EXPECT_EQ(converter_.state().lineWidth, 0) << "the state was the last one";
}

TEST_F(Postscript2PdfTest, StartPageSetsTheDefaultMatrix) {
  converter_.startPage({1, 2, 3, 4, 5, 6});
  EXPECT_EQ(converter_.defaultMatrix().tx, 5);
  EXPECT_EQ(converter_.state().ctm.tx, 5);
  content("gsave 9 9 scale grestore grestore matrix defaultmatrix ");
  EXPECT_EQ(converter_.state().ctm.tx, 5);
  EXPECT_EQ(converter_.interpreter().operandStack().peek(0)->printString(),
            "[1.000000 2.000000 3.000000 4.000000 5.000000 6.000000 ]");
}

TEST_F(Postscript2PdfTest, StartPageForgetsThePendingMove) {
  content("1 2 moveto ");
  converter_.startPage({});
  EXPECT_EQ(content("3 4 lineto "), "3 4 l\n");
}

TEST_F(Postscript2PdfTest, StartPageForgetsThePathThatWasWritten) {
  content("1 2 moveto 3 4 lineto ");
  converter_.startPage({});
  EXPECT_EQ(content("newpath "), "");
}

TEST_F(Postscript2PdfTest, StartPageKeepsThePageContent) {
  content("gsave ");
  converter_.startPage({});
  EXPECT_EQ(converter_.pageContent(), "q ");
}

TEST_F(Postscript2PdfTest, StartPageKeepsDefinitionsFontsAndOperands) {
  content("7 /five 5 def /draw {five setlinewidth} def /Mine 1 dict definefont pop ");
  converter_.startPage({});
  EXPECT_EQ(content("draw /Mine findfont /FontName known {gsave} if "), "5 w ");
  EXPECT_EQ(converter_.interpreter().operandStack().count(), 1U);
}

TEST_F(Postscript2PdfTest, SetfontSetsNameAndSize) {
  content("/Helvetica findfont 24 scalefont setfont ");
  EXPECT_EQ(converter_.state().fontName, "Helvetica");
  EXPECT_NEAR(converter_.state().fontSize, 24, 1e-9);
  content("/Helvetica findfont 2 scalefont setfont ");
  EXPECT_NEAR(converter_.state().fontSize, 48, 1e-9);
}

TEST_F(Postscript2PdfTest, TheFontSizeIsTheVerticalColumnOfItsMatrix) {
  content("/f 2 dict def f /FontName /Slanted put f /FontMatrix [0.1 0.002 0.3 0.005 7 8] put f setfont ");
  EXPECT_EQ(converter_.state().fontName, "Slanted");
  EXPECT_DOUBLE_EQ(converter_.state().fontSize, 7);
}

TEST_F(Postscript2PdfTest, GrestoreBringsTheFontBack) {
  content("gsave /f 2 dict def f /FontName /Mine put f /FontMatrix [1 0 0 1 0 0] put f setfont ");
  EXPECT_EQ(converter_.state().fontName, "Mine");
  content("grestore grestore ");
  EXPECT_EQ(converter_.state().fontName, "Helvetica");
  EXPECT_EQ(converter_.state().fontSize, 12);
}

TEST_F(Postscript2PdfTest, DrawnPointsOpenAndPaintingClosesThePath) {
  content("1 2 moveto ");
  EXPECT_FALSE(converter_.path().isOpen());
  for (const std::string_view end : {"stroke ", "fill ", "eofill ", "clip ", "eoclip ", "closepath "}) {
    content("1 2 moveto 3 4 lineto ");
    EXPECT_TRUE(converter_.path().isOpen());
    content(end);
    EXPECT_FALSE(converter_.path().isOpen()) << end;
  }
}

TEST_F(Postscript2PdfTest, ColoursSetCodeAndComponents) {
  content("0.1 0.2 0.3 sethsbcolor ");
  EXPECT_EQ(converter_.state().colourSpace, ColourSpace::kHsb);
  EXPECT_EQ(converter_.state().colour, (std::array<double, 4>{0.1, 0.2, 0.3, 0}));
  content("0.1 0.2 0.3 0.4 setcmykcolor ");
  EXPECT_EQ(converter_.state().colourSpace, ColourSpace::kCmyk);
  EXPECT_EQ(converter_.state().colour, (std::array<double, 4>{0.1, 0.2, 0.3, 0.4}));
}

TEST_F(Postscript2PdfTest, CurrentgrayRefusesUnknownCodes) {
  converter_.state().colourSpace = static_cast<ColourSpace>(4);
  EXPECT_EQ(message("currentgray "), "color conversion not supported");
}

TEST_F(Postscript2PdfTest, AFiveOperandImageRefusesUnknownCodes) {
  converter_.state().colourSpace = static_cast<ColourSpace>(4);
  EXPECT_EQ(message("1 1 8 [1 0 0 1 0 0] (a) image "), "unsupported colorspace");
}

TEST_F(Postscript2PdfTest, TheDashLimitCountsTheTextOfTheArray) {
  content("/d 249 array def 0 1 249 {d exch 123 put} for ");
  EXPECT_EQ(content("d 0 setdash ").size(), 998U + std::string_view("0 d\n").size());
}

TEST_F(Postscript2PdfTest, ASaveOutlivesItsPage) {
  content("save ");
  converter_.startPage({});
  EXPECT_EQ(content("gsave gsave "), "q q ");
  EXPECT_EQ(content("restore "), "Q Q ");
}

}  // namespace
}  // namespace quillpress

#include <gtest/gtest.h>

#include "postscript/level3/fonts/Charstrings.h"
#include "tests/level3/fonts/CharstringText.h"

namespace quillpress::level3 {

namespace {

using testing::charstringOf;

class CharstringsTest : public ::testing::Test {
 protected:
  void setSubroutines(const std::vector<std::string>& texts) {
    subroutines_.clear();
    for (const std::string& text : texts) subroutines_.push_back(charstringOf(text));
    context_.local = {subroutines_.size(),
                      [this](std::size_t i) -> std::string_view { return subroutines_[i]; }};
  }
  GlyphProgram type1(std::string_view text) { return runType1Charstring(charstringOf(text), context_); }
  GlyphProgram type2(std::string_view text) { return runType2Charstring(charstringOf(text), context_); }

  // What is drawn is the same once the glyph has been written as a Type 2 charstring.
  void expectSameWhenWritten(const GlyphProgram& program) {
    context_.defaultWidthX = 500;
    context_.nominalWidthX = 100;
    const GlyphProgram again = runType2Charstring(type2Charstring(program, 500, 100), context_);
    EXPECT_EQ(again.path(), program.path());
    EXPECT_EQ(again.advance, program.advance);
    EXPECT_EQ(again.hintGroups, program.hintGroups);
    EXPECT_EQ(again.kinds, program.kinds);
    EXPECT_EQ(again.counterGroups, program.counterGroups);
  }

  std::vector<std::string> subroutines_;
  CharstringContext context_;
};

Path square(double left, double bottom, double side) {
  Path path;
  path.moveTo({left, bottom});
  path.lineTo({left + side, bottom});
  path.lineTo({left + side, bottom + side});
  path.lineTo({left, bottom + side});
  path.close();
  return path;
}

TEST_F(CharstringsTest, SideBearingIsWhereType1Begins) {
  const GlyphProgram program =
      type1("50 600 hsbw 10 vmoveto 100 hlineto 100 vlineto -100 hlineto closepath endchar");
  EXPECT_EQ(program.path(), square(50, 10, 100));
  EXPECT_EQ(program.advance, (Point{600, 0}));
  expectSameWhenWritten(program);
}

TEST_F(CharstringsTest, SbwHasBothCoordinates) {
  const GlyphProgram program =
      type1("50 20 600 7 sbw 0 0 rmoveto 100 hlineto 100 vlineto -100 hlineto closepath endchar");
  EXPECT_EQ(program.path(), square(50, 20, 100));
  EXPECT_EQ(program.advance, (Point{600, 7}));
}

TEST_F(CharstringsTest, ClosepathLeavesTheCurrentPointOfType1) {
  const GlyphProgram program = type1(
      "0 600 hsbw 100 hlineto 100 vlineto -100 hlineto closepath 200 hmoveto 100 hlineto 100 vlineto -100 "
      "hlineto "
      "closepath endchar");
  Path expected = square(0, 0, 100);
  expected.append(square(200, 100, 100));
  EXPECT_EQ(program.path(), expected);
}

TEST_F(CharstringsTest, DivMakesFractions) {
  const GlyphProgram program = type1("0 1001 2 div hsbw 3 2 div hmoveto 7 vlineto 7 hlineto endchar");
  EXPECT_EQ(program.advance.x, 500.5);
  EXPECT_EQ(program.points.front(), (Point{1.5, 0}));
  expectSameWhenWritten(program);
}

constexpr const char* kFlex =
    "0 600 hsbw 100 vmoveto 1 callsubr 50 0 rmoveto 2 callsubr -20 0 rmoveto 2 callsubr 10 10 rmoveto 2 "
    "callsubr 10 0 "
    "rmoveto 2 callsubr 10 0 rmoveto 2 callsubr 20 -10 rmoveto 2 callsubr 20 0 rmoveto 2 callsubr 50 100 100 "
    "0 "
    "callsubr 200 vlineto closepath endchar";

TEST_F(CharstringsTest, FlexIsTwoCurves) {
  const GlyphProgram program = type1(kFlex);
  Path expected;
  expected.moveTo({0, 100});
  expected.curveTo({30, 100}, {40, 110}, {50, 110});
  expected.curveTo({60, 110}, {80, 100}, {100, 100});
  expected.lineTo({100, 300});
  expected.close();
  EXPECT_EQ(program.path(), expected);
  EXPECT_EQ(program.flexDepths, std::vector<double>{50});
  expectSameWhenWritten(program);
  EXPECT_NE(type2Charstring(program, 0, 0).find("\x0C\x22"), std::string::npos) << "an hflex";
}

TEST_F(CharstringsTest, FlexNeedsSevenPoints) {
  EXPECT_THROW(type1("0 600 hsbw 1 callsubr 50 0 rmoveto 2 callsubr 50 100 100 0 callsubr endchar"),
               FontError);
}

TEST_F(CharstringsTest, HintReplacementBecomesMasks) {
  setSubroutines({"3 0 callothersubr pop pop setcurrentpoint return", "0 1 callothersubr return",
                  "0 2 callothersubr return", "return", "1 3 callothersubr pop callsubr return",
                  "10 30 hstem return"});
  const GlyphProgram program = type1(
      "20 600 hsbw 0 30 hstem 5 40 vstem 100 hlineto 5 4 callsubr 100 vlineto -100 hlineto closepath "
      "endchar");
  const std::vector<std::vector<Stem>> groups{{{0, 30, false}, {25, 40, true}}, {{10, 30, false}}};
  EXPECT_EQ(program.hintGroups, groups);
  EXPECT_EQ(program.path(), square(20, 0, 100));
  expectSameWhenWritten(program);
}

TEST_F(CharstringsTest, ThreeStemsAreCounters) {
  const GlyphProgram program =
      type1("0 600 hsbw 0 20 100 20 200 20 vstem3 50 hlineto 50 vlineto closepath endchar");
  ASSERT_EQ(program.counterGroups.size(), 1U);
  EXPECT_EQ(program.counterGroups[0].size(), 3U);
  expectSameWhenWritten(program);
}

TEST_F(CharstringsTest, EdgeStemsKeepTheirMark) {
  const GlyphProgram program = type1("0 600 hsbw 100 -20 hstem 50 -30 vstem 9 hlineto 9 vlineto endchar");
  const std::vector<Stem> stems{{20, 30, true}, {100, -20, false}};
  EXPECT_EQ(program.hintGroups.at(0), stems);
}

TEST_F(CharstringsTest, AccentIsPlacedByItsSideBearing) {
  context_.standardGlyph = [](std::uint8_t code) {
    return charstringOf(code == 65 ? "30 700 hsbw 100 hlineto 100 vlineto -100 hlineto closepath endchar"
                                   : "40 300 hsbw 10 hlineto 10 vlineto -10 hlineto closepath endchar");
  };
  const GlyphProgram program = type1("30 710 hsbw 40 80 150 65 193 seac");
  Path expected = square(30, 0, 100);
  expected.append(square(30 - 40 + 80 + 40, 150, 10));
  EXPECT_EQ(program.path(), expected);
  EXPECT_EQ(program.advance.x, 710);
  EXPECT_EQ(accentPartsOfType1(charstringOf("30 710 hsbw 40 80 150 65 193 seac"), context_), "A\xC1");
}

TEST_F(CharstringsTest, AccentOfAnAccentIsRefused) {
  context_.standardGlyph = [](std::uint8_t) { return charstringOf("0 700 hsbw 0 0 0 65 66 seac"); };
  EXPECT_THROW(type1("0 700 hsbw 0 0 0 65 66 seac"), FontError);
}

TEST_F(CharstringsTest, BlendTakesTheWeightsOfMasters) {
  const std::vector<double> weights{0.25, 0.75};
  context_.weightVector = weights;
  // 100 and 200 blended with differences of 40 and 80
  const GlyphProgram program =
      type1("0 100 40 2 14 callothersubr pop hsbw 10 20 4 8 4 15 callothersubr pop pop rlineto");
  EXPECT_EQ(program.advance.x, 130);
  EXPECT_EQ(program.points.back(), (Point{13, 26}));
}

TEST_F(CharstringsTest, EndlessSubroutinesAreRefused) {
  setSubroutines({"return", "return", "return", "return", "4 callsubr 4 callsubr return"});
  EXPECT_THROW(type1("0 600 hsbw 4 callsubr endchar"), FontError);
}

TEST_F(CharstringsTest, SubroutinesThatMultiplyAreRefused) {
  std::vector<std::string> texts{"return", "return", "return", "return"};
  for (int i = 4; i < 24; ++i) {
    std::string text;
    for (int j = 0; j < 8; ++j) text += std::to_string(i + 1) + " callsubr ";
    texts.push_back(text);
  }
  texts.push_back("1 hlineto return");
  setSubroutines(texts);
  EXPECT_THROW(type1("0 600 hsbw 4 callsubr endchar"), FontError);
}

TEST_F(CharstringsTest, MissingOperandsAreRefused) {
  EXPECT_THROW(type1("0 600 hsbw 1 rlineto endchar"), FontError);
  EXPECT_THROW(type1("0 600 hsbw pop endchar"), FontError);
  EXPECT_THROW(type2("1 2 3 flex endchar"), FontError);
}

TEST_F(CharstringsTest, OverflowIsRefused) {
  EXPECT_THROW(type1("0 1 0 div hsbw endchar"), FontError);
  std::string text = "0 600 hsbw 1000 ";
  for (int i = 0; i < 40; ++i) text += "1 1000 div div ";
  EXPECT_THROW(type1(text + "hlineto endchar"), FontError);
}

TEST_F(CharstringsTest, Type2WidthIsOptional) {
  context_.defaultWidthX = 400;
  context_.nominalWidthX = 300;
  EXPECT_EQ(type2("10 hmoveto 5 hlineto endchar").advance.x, 400);
  EXPECT_EQ(type2("50 10 hmoveto 5 hlineto endchar").advance.x, 350);
  EXPECT_EQ(type2("-20 1 2 hstem 10 hmoveto endchar").advance.x, 280);
  EXPECT_EQ(type2("7 endchar").advance.x, 307);
  EXPECT_EQ(type2("endchar").advance.x, 400);
}

TEST_F(CharstringsTest, EveryCurveOperatorOfType2Draws) {
  const auto last = [this](const char* text) {
    return type2(std::string("0 hmoveto ") + text + " endchar").points.back();
  };
  EXPECT_EQ(last("1 2 3 4 5 6 rrcurveto"), (Point{9, 12}));
  EXPECT_EQ(last("1 2 3 4 hhcurveto"), (Point{7, 3}));
  EXPECT_EQ(last("9 1 2 3 4 hhcurveto"), (Point{7, 12}));
  EXPECT_EQ(last("1 2 3 4 vvcurveto"), (Point{2, 8}));
  EXPECT_EQ(last("9 1 2 3 4 vvcurveto"), (Point{11, 8}));
  EXPECT_EQ(last("1 2 3 4 hvcurveto"), (Point{3, 7}));
  EXPECT_EQ(last("1 2 3 4 5 hvcurveto"), (Point{8, 7}));
  EXPECT_EQ(last("1 2 3 4 vhcurveto"), (Point{6, 4}));
  EXPECT_EQ(last("1 2 3 4 5 6 7 8 9 vhcurveto"), (Point{26, 19}));
  EXPECT_EQ(last("1 2 3 4 5 6 7 8 rcurveline"), (Point{16, 20}));
  EXPECT_EQ(last("1 2 3 4 5 6 7 8 rlinecurve"), (Point{16, 20}));
  EXPECT_EQ(last("1 2 3 4 5 6 7 hflex"), (Point{1 + 2 + 4 + 5 + 6 + 7, 0}));
  EXPECT_EQ(last("1 2 3 4 5 6 7 8 9 10 11 12 50 flex"), (Point{36, 42}));
  EXPECT_EQ(last("1 2 3 4 5 6 7 8 9 hflex1"), (Point{1 + 3 + 5 + 6 + 7 + 9, 0}));
  EXPECT_EQ(last("1 2 3 4 5 6 7 8 9 10 11 flex1"), (Point{0, 30 + 11}));
}

TEST_F(CharstringsTest, MasksChooseStems) {
  const GlyphProgram program =
      type2("0 10 20 10 hstemhm 5 6 hintmask #A0 0 hmoveto 9 hlineto hintmask #40 9 vlineto endchar");
  const std::vector<std::vector<Stem>> groups{{{0, 10, false}, {5, 6, true}}, {{30, 10, false}}};
  EXPECT_EQ(program.hintGroups, groups);
  expectSameWhenWritten(program);
}

TEST_F(CharstringsTest, ArithmeticOfType2) {
  EXPECT_EQ(type2("1 2 add hmoveto 1 2 3 3 1 roll mul add hlineto endchar").points.back().x, 3 + 5);
  EXPECT_EQ(type2("7 0 hmoveto 10 20 1 index add add hlineto endchar").points.back().x, 40);
  EXPECT_EQ(type2("0 hmoveto 5 6 1 2 ifelse hlineto endchar").points.back().x, 5);
}

TEST_F(CharstringsTest, Type2SubroutinesHaveABias) {
  setSubroutines({"9 hlineto return"});
  EXPECT_EQ(type2("0 hmoveto -107 callsubr endchar").points.back().x, 9);
  EXPECT_THROW(type2("0 hmoveto -106 callsubr endchar"), FontError);
  EXPECT_THROW(type2("0 hmoveto -107 callgsubr endchar"), FontError);
}

TEST_F(CharstringsTest, GlyphsBeyondCharstringNumbersAreNotWritten) {
  GlyphProgram program;
  program.kinds = {GlyphProgram::Kind::kMove};
  program.points = {{40000, 0}};
  EXPECT_THROW(type2Charstring(program, 0, 0), FontError);
}

}  // namespace

}  // namespace quillpress::level3

#include <gtest/gtest.h>

#include "postscript/level3/pdf/ContentWriter.h"

namespace quillpress::level3 {
namespace {

class Nowhere final : public Output {
 public:
  void write(std::string_view) override {}
};

class ContentWriterTest : public ::testing::Test {
 protected:
  void fill(const Box& box, const Paint& paint = Paint::gray(0), const ClipPointer& clip = nullptr) {
    content_.fill(rectangle(box), FillRule::kNonzero, paint, clip, {});
  }
  void fillPentagonAt(double x) {
    Path path;
    path.moveTo({x, 0});
    for (const Point point : {Point{9, 0}, Point{9, 5}, Point{5, 9}, Point{0, 9}}) {
      path.lineTo({x + point.x, point.y});
    }
    content_.fill(path, FillRule::kNonzero, Paint::gray(0), nullptr, {});
  }
  void stroke(const Path& path, const LineStyle& style = {}, const Matrix& matrix = {}) {
    content_.stroke(path, style, matrix, Paint::gray(0), nullptr, {});
  }
  // A glyph half its size wide, whose ink fills a square on the baseline.
  void show(char code, Point at, double size = 10, const Paint& paint = Paint::gray(0),
            const ClipPointer& clip = nullptr, const RareParameters& rare = {}) {
    TextGlyph glyph;
    glyph.font = 7;
    glyph.code = static_cast<unsigned char>(code);
    glyph.width = 0.5;
    glyph.toDevice = {size, 0, 0, size, at.x, at.y};
    content_.showGlyph(glyph, {at.x, at.y, at.x + size / 2, at.y + size / 2}, paint, clip, rare);
  }
  // The same glyph by its code and place alone.
  bool follow(char code, Point at, ObjectNumber font = 7, const ClipPointer& clip = nullptr) {
    return content_.showNext({font, static_cast<unsigned char>(code), 1, 0.5, at, 5}, clip);
  }
  std::string finished() {
    content_.finish();
    return content_.text();
  }

  static Path rectangle(const Box& box) {
    Path path;
    path.appendRectangle(box);
    return path;
  }
  static Path line(Point from, Point to) {
    Path path;
    path.moveTo(from);
    path.lineTo(to);
    return path;
  }
  static ClipPointer clipTo(const Box& box, const ClipPointer& parent = nullptr) {
    return Clip::within(parent, rectangle(box), FillRule::kNonzero);
  }
  static ClipPointer triangularClip(double size, const ClipPointer& parent = nullptr) {
    Path path;
    path.moveTo({0, 0});
    path.lineTo({size, 0});
    path.lineTo({0, size});
    return Clip::within(parent, path, FillRule::kEvenOdd);
  }

  Nowhere nowhere_;
  PdfFile file_{nowhere_};
  ContentWriter content_{file_, {Matrix(), {0, 0, 1000, 1000}, true}};
};

TEST_F(ContentWriterTest, NothingPaintedIsNothingWritten) {
  EXPECT_EQ(finished(), "");
}

TEST_F(ContentWriterTest, BlackIsThereFromTheBeginning) {
  fill({1, 2, 3, 5});
  EXPECT_EQ(finished(), "1 2 2 3 re\nf\n");
}

TEST_F(ContentWriterTest, ColourIsWrittenWhenItChanges) {
  fill({0, 0, 1, 1}, Paint::rgb(1, 0, 0.5));
  fill({20, 0, 21, 1}, Paint::rgb(1, 0, 0.5));
  fill({40, 0, 41, 1}, Paint::cmyk(0, 0, 0, 1));
  EXPECT_EQ(finished(), "1 0 .5 rg\n0 0 1 1 re\nf\n20 0 1 1 re\nf\n0 0 0 1 k\n40 0 1 1 re\nf\n");
}

TEST_F(ContentWriterTest, PathsFarApartAreJoined) {
  fillPentagonAt(0);
  fillPentagonAt(50);
  EXPECT_EQ(finished(), "0 0 m\n9 0 l\n9 5 l\n5 9 l\n0 9 l\n50 0 m\n59 0 l\n59 5 l\n55 9 l\n50 9 l\nf\n");
}

TEST_F(ContentWriterTest, RectanglesAreFilledOneByOne) {
  fill({0, 0, 10, 10});
  fill({50, 0, 60, 10});
  EXPECT_EQ(finished(), "0 0 10 10 re\nf\n50 0 10 10 re\nf\n");
}

TEST_F(ContentWriterTest, PathsThatTouchStayApart) {
  fill({0, 0, 10, 10});
  fill({10, 0, 20, 10});
  EXPECT_EQ(finished(), "0 0 10 10 re\nf\n10 0 10 10 re\nf\n");
}

TEST_F(ContentWriterTest, LinesOfEqualStyleAreJoinedWhenApart) {
  stroke(line({0, 0}, {5, 5}));
  stroke(line({0, 100}, {5, 105}));
  stroke(line({5, 100}, {0, 105}));
  EXPECT_EQ(finished(), "0 0 m\n5 5 l\n0 100 m\n5 105 l\nS\n5 100 m\n0 105 l\nS\n");
}

TEST_F(ContentWriterTest, FillAndStrokeOfOnePathAreOneOperator) {
  fill({1, 1, 2, 2}, Paint::gray(1));
  stroke(rectangle({1, 1, 2, 2}));
  EXPECT_EQ(finished(), "1 g\n1 1 1 1 re\nB\n");
}

TEST_F(ContentWriterTest, StyleIsWrittenWhenItDiffers) {
  LineStyle style;
  style.width = 2.5;
  style.cap = LineCap::kRound;
  style.join = LineJoin::kBevel;
  style.dash = {{3, 1}, 0.5};
  stroke(line({0, 0}, {5, 5}), style);
  stroke(line({0, 0}, {5, 5}));
  EXPECT_EQ(finished(),
            "2.5 w\n1 J\n2 j\n[3 1].5 d\n0 0 m\n5 5 l\nS\n1 w\n0 J\n0 j\n[]0 d\n0 0 m\n5 5 l\nS\n");
}

TEST_F(ContentWriterTest, MiterLimitCountsForMitersOnly) {
  LineStyle style;
  style.miterLimit = 3;
  style.join = LineJoin::kRound;
  stroke(line({0, 0}, {5, 5}), style);
  EXPECT_EQ(finished(), "1 j\n0 0 m\n5 5 l\nS\n");
}

TEST_F(ContentWriterTest, WidthIsMeasuredInUserSpace) {
  stroke(line({0, 0}, {5, 5}), {}, Matrix::scaling(3, -3));
  EXPECT_EQ(finished(), "3 w\n0 0 m\n5 5 l\nS\n");
}

TEST_F(ContentWriterTest, OvalPenIsAMatrixOfItsOwn) {
  stroke(line({0, 0}, {8, 8}), {}, Matrix::scaling(4, 1));
  stroke(line({200, 0}, {208, 8}), {}, Matrix::scaling(4, 1));
  fill({0, 0, 1, 1});
  EXPECT_EQ(finished(), "q\n2 0 0 .5 0 0 cm\n2 w\n0 0 m\n4 16 l\n100 0 m\n104 16 l\nS\nQ\n0 0 1 1 re\nf\n");
}

TEST_F(ContentWriterTest, RectangularClipAroundWhatIsPaintedIsLeftOut) {
  fill({10, 10, 20, 20}, Paint::gray(0), clipTo({0, 0, 50, 50}));
  EXPECT_EQ(finished(), "10 10 10 10 re\nf\n");
}

TEST_F(ContentWriterTest, ClipIsSharedByNeighbours) {
  fill({10, 10, 90, 20}, Paint::gray(0), clipTo({0, 0, 50, 50}));
  fill({10, 30, 90, 40}, Paint::gray(0), clipTo({0, 0, 50, 50}));
  fill({10, 30, 90, 40});
  EXPECT_EQ(finished(), "q\n0 0 50 50 re\nW n\n10 10 80 10 re\nf\n10 30 80 10 re\nf\nQ\n10 30 80 10 re\nf\n");
}

TEST_F(ContentWriterTest, InnerClipAddsToTheOuterOne) {
  const ClipPointer outer = triangularClip(50);
  fill({0, 0, 50, 50}, Paint::gray(0), outer);
  fill({0, 0, 50, 50}, Paint::gray(0), clipTo({0, 0, 20, 20}, outer));
  fill({0, 0, 50, 50}, Paint::gray(0), triangularClip(50));
  EXPECT_EQ(finished(),
            "q\n0 0 m\n50 0 l\n0 50 l\nW* n\n0 0 50 50 re\nf\nq\n0 0 20 20 re\nW n\n0 0 50 50 re\nf\nQ\n"
            "0 0 50 50 re\nf\nQ\n");
}

TEST_F(ContentWriterTest, ColourSetWithinAClipIsForgottenBehindIt) {
  fill({0, 0, 50, 50}, Paint::gray(0.5), triangularClip(50));
  fill({60, 0, 70, 10}, Paint::gray(0.5));
  EXPECT_EQ(finished(), "q\n0 0 m\n50 0 l\n0 50 l\nW* n\n.5 g\n0 0 50 50 re\nf\nQ\n.5 g\n60 0 10 10 re\nf\n");
}

TEST_F(ContentWriterTest, WhatCannotBeSeenIsNotWritten) {
  fill({2000, 0, 3000, 10});
  fill({10, 10, 20, 20}, Paint::gray(0), clipTo({100, 100, 200, 200}));
  EXPECT_EQ(finished(), "");
}

TEST_F(ContentWriterTest, UnitsOfUserSpaceMakeShortNumbers) {
  content_.preferUnitsOf(Matrix{1.2, 0, 0, -1.2, 0, 792});
  fill({120, 792 - 360, 240, 792 - 120});
  EXPECT_EQ(finished(), "1.2 0 0 -1.2 0 792 cm\n100 300 100 -200 re\nf\n");
}

TEST_F(ContentWriterTest, ObjectsAreDrawnWithinTheirOwnMatrix) {
  content_.draw(12, {100, 0, 0, 50, 10, 20}, {10, 20, 110, 70}, nullptr, {});
  EXPECT_EQ(finished(), "q\n100 0 0 50 10 20 cm\n/X12 Do\nQ\n");
  EXPECT_EQ(content_.resources().text(), "<</XObject<</X12 12 0 R>>>>");
}

TEST_F(ContentWriterTest, FormsSetAllThatTheyUse) {
  ContentWriter form(file_, {Matrix(), {0, 0, 100, 100}, false});
  form.fill(rectangle({0, 0, 1, 1}), FillRule::kNonzero, Paint::gray(0), nullptr, {});
  form.finish();
  EXPECT_NE(form.text().find("0 g\n"), std::string::npos);
}

TEST_F(ContentWriterTest, GlyphsThatFollowEachOtherAreOneString) {
  show('a', {10, 20});
  show('b', {15, 20});
  show('c', {20, 20});
  EXPECT_EQ(finished(), "BT\n/F7 10 Tf\n10 20 Td\n(abc)Tj\nET\n");
}

TEST_F(ContentWriterTest, GlyphsFollowByCodeAndPlaceAlone) {
  show('a', {10, 20});
  EXPECT_TRUE(follow('b', {15, 20}));
  EXPECT_TRUE(follow('c', {21, 20}));
  EXPECT_TRUE(follow('d', {10, 40}));
  EXPECT_EQ(finished(), "BT\n/F7 10 Tf\n10 20 Td\n[(ab)-100(c)]TJ\n0 20 Td\n(d)Tj\nET\n");
}

TEST_F(ContentWriterTest, NothingFollowsWhereNoTextIsOpen) {
  EXPECT_FALSE(follow('a', {15, 20}));
  show('a', {10, 20});
  fill({0, 0, 10, 10});
  EXPECT_FALSE(follow('b', {15, 20}));
}

TEST_F(ContentWriterTest, NoGlyphOfAnotherFontFollows) {
  show('a', {10, 20});
  EXPECT_FALSE(follow('b', {15, 20}, 8));
}

TEST_F(ContentWriterTest, NoGlyphFollowsOneThatIsTooSmallToBeShown) {
  show('a', {10, 20});
  show('b', {15, 20}, 1e-9);
  EXPECT_FALSE(follow('c', {20, 20}));
}

TEST_F(ContentWriterTest, NoGlyphFollowsThatMayReachBeyondTheClip) {
  const ClipPointer clip = clipTo({0, 0, 100, 100});
  show('a', {10, 20}, 10, Paint::gray(0), clip);
  EXPECT_FALSE(follow('b', {15, 20}));
  EXPECT_TRUE(follow('b', {95, 20}, 7, clip));
  EXPECT_FALSE(follow('c', {96, 20}, 7, clip));
  EXPECT_FALSE(follow('c', {10, 4}, 7, clip));
}

TEST_F(ContentWriterTest, SpacingBetweenGlyphsIsInThousandthsOfTheSize) {
  show('a', {10, 20});
  show('b', {16, 20});
  show('c', {19, 20});
  EXPECT_EQ(finished(), "BT\n/F7 10 Tf\n10 20 Td\n[(a)-100(b)200(c)]TJ\nET\n");
}

TEST_F(ContentWriterTest, AnotherSizeAndAnotherLineAreWrittenBetweenGlyphs) {
  show('a', {10, 20});
  show('b', {15, 20}, 12);
  show('c', {10, 8}, 12);
  EXPECT_EQ(finished(), "BT\n/F7 10 Tf\n10 20 Td\n(a)Tj\n/F7 12 Tf\n(b)Tj\n0 -12 Td\n(c)Tj\nET\n");
}

TEST_F(ContentWriterTest, AnotherColourEndsTheText) {
  show('a', {10, 20});
  show('b', {15, 20}, 10, Paint::gray(0.5));
  show('c', {20, 20}, 10, Paint::gray(0.5));
  EXPECT_EQ(finished(), "BT\n/F7 10 Tf\n10 20 Td\n(a)Tj\nET\n.5 g\nBT\n15 20 Td\n(bc)Tj\nET\n");
}

TEST_F(ContentWriterTest, WhatTouchesAreaAndClipIsVisible) {
  const ClipPointer clip = clipTo({0, 0, 100, 100});
  EXPECT_TRUE(content_.isVisible({990, 0, 1010, 10}, nullptr));
  EXPECT_FALSE(content_.isVisible({1001, 0, 1010, 10}, nullptr));
  EXPECT_TRUE(content_.isVisible({90, 90, 110, 110}, clip));
  EXPECT_FALSE(content_.isVisible({110, 90, 120, 110}, clip));
  EXPECT_FALSE(content_.isVisible({20, 20, 30, 30}, clipTo({200, 0, 300, 10}, clip)));
  EXPECT_FALSE(content_.isVisible({}, nullptr));
}

TEST_F(ContentWriterTest, ClippedGlyphsAreWritten) {
  show('a', {10, 20}, 10, Paint::gray(0), clipTo({200, 0, 300, 100}));
  EXPECT_EQ(finished(), "q\n200 0 100 100 re\nW n\nBT\n/F7 10 Tf\n10 20 Td\n(a)Tj\nET\nQ\n");
}

TEST_F(ContentWriterTest, GlyphsWithinTheirClipNeedNoneUntilOneReachesBeyondIt) {
  const ClipPointer clip = clipTo({0, 0, 100, 100});
  show('a', {85, 20}, 10, Paint::gray(0), clip);
  show('b', {90, 20}, 10, Paint::gray(0), clip);
  show('c', {95, 20}, 12, Paint::gray(0), clip);
  show('d', {10, 20}, 12, Paint::gray(0), clip);
  EXPECT_EQ(finished(),
            "BT\n/F7 10 Tf\n85 20 Td\n(ab)Tj\nET\nq\n0 0 100 100 re\nW n\n"
            "BT\n/F7 12 Tf\n95 20 Td\n[(c)7583(d)]TJ\nET\nQ\n");
}

TEST_F(ContentWriterTest, AnotherClipHoldsFromItsFirstGlyphOn) {
  show('a', {10, 20});
  show('b', {15, 20}, 10, Paint::gray(0), clipTo({0, 0, 18, 100}));
  show('c', {20, 20});
  EXPECT_EQ(finished(),
            "BT\n/F7 10 Tf\n10 20 Td\n(a)Tj\nET\nq\n0 0 18 100 re\nW n\nBT\n15 20 Td\n(b)Tj\nET\nQ\n"
            "BT\n20 20 Td\n(c)Tj\nET\n");
}

TEST_F(ContentWriterTest, OverprintBetweenGlyphsIsSet) {
  RareParameters overprint;
  overprint.overprint = true;
  show('a', {10, 20});
  show('b', {15, 20}, 10, Paint::gray(0), nullptr, overprint);
  EXPECT_NE(finished().find("(a)Tj\nET\n/G1 gs\nBT\n15 20 Td\n(b)Tj\nET\n"), std::string::npos)
      << content_.text();
}

TEST_F(ContentWriterTest, BlendModesAreSetAndTakenBack) {
  RareParameters multiplied;
  multiplied.blendMode = BlendMode::kMultiply;
  fill({0, 0, 1, 1});
  content_.fill(rectangle({20, 0, 21, 1}), FillRule::kNonzero, Paint::gray(0), nullptr, multiplied);
  fill({40, 0, 41, 1});
  EXPECT_EQ(finished(), "0 0 1 1 re\nf\n/G1 gs\n20 0 1 1 re\nf\n/G3 gs\n40 0 1 1 re\nf\n");
}

TEST_F(ContentWriterTest, ShadingsHaveTheParametersToo) {
  RareParameters overprint;
  overprint.overprint = true;
  content_.shade(9, Matrix(), {0, 0, 10, 10}, nullptr, overprint);
  content_.shade(9, Matrix(), {0, 0, 10, 10}, nullptr, {});
  EXPECT_EQ(finished(), "/G1 gs\nq\n1 0 0 1 0 0 cm\n/S9 sh\nQ\n/G3 gs\nq\n1 0 0 1 0 0 cm\n/S9 sh\nQ\n");
}

TEST_F(ContentWriterTest, TheNextPageKnowsNothingOfTheTextBefore) {
  const ClipPointer clip = clipTo({0, 0, 100, 100});
  show('a', {10, 20}, 10, Paint::gray(0), clip);
  content_.finish();
  content_.reset({Matrix(), {0, 0, 50, 50}, true});
  show('b', {10, 20}, 10, Paint::gray(0), clip);
  EXPECT_EQ(finished(), "BT\n/F7 10 Tf\n10 20 Td\n(b)Tj\nET\n");
}

TEST_F(ContentWriterTest, LongContentIsSpilledInPieces) {
  std::string spilled;
  ContentWriter content(file_, {Matrix(), {0, 0, 1e6, 1000}, true},
                        [&spilled](std::string_view part) { spilled += part; });
  for (int index = 0; index < 100'000; ++index) {
    const double left = 2.0 * index;
    content.fill(rectangle({left, 0, left + 1, 100}), FillRule::kNonzero, Paint::gray(index % 2), nullptr,
                 {});
  }
  EXPECT_GT(spilled.size(), 1'000'000U);
  EXPECT_LT(content.text().size(), 1'100'000U);
  EXPECT_FALSE(content.isEmpty());
}

}  // namespace
}  // namespace quillpress::level3

#include <gtest/gtest.h>

#include <memory>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/ByteWriter.h"
#include "postscript/level3/fonts/TrueTypeFont.h"
#include "tests/level3/fonts/FreeTypeFont.h"

namespace quillpress::level3 {

namespace {

using testing::areNear;
using testing::bytesOfFile;
using testing::FreeTypeFont;

constexpr const char* kTables[] = {"head", "hhea", "hmtx", "maxp", "cvt ", "fpgm", "prep", "loca", "glyf"};

class TrueTypeOfSystem : public ::testing::TestWithParam<const char*> {
 protected:
  TrueTypeOfSystem()
      : bytes_(bytesOfFile(std::string("/usr/share/fonts/truetype/") + GetParam())),
        font_({bytes_}),
        file_(bytes_) {}

  void expectSame(const OutlineFont& font, GlyphIndex glyph, unsigned place,
                  const FreeTypeFont& reference) const {
    const Matrix toUnits = Matrix::scaling(reference.unitsPerEm(), reference.unitsPerEm());
    const Glyph own = font.glyph(glyph);
    const auto outline = reference.outline(place);
    ASSERT_TRUE(outline) << glyph;
    // FreeType rounds what components are scaled by.
    EXPECT_TRUE(areNear(own.path.transformed(toUnits), *outline, 1.5)) << glyph;
    EXPECT_NEAR(own.advance.x * reference.unitsPerEm(), reference.advance(place), 0.01) << glyph;
  }

  std::string dataOf(GlyphIndex glyph) const {
    const SfntTables tables({bytes_});
    const bool isLong = ByteReader(tables.find("head"), 50).u16() != 0;
    const auto place = [&](GlyphIndex each) -> std::size_t {
      return isLong ? ByteReader(tables.find("loca"), 4 * each).u32()
                    : 2U * ByteReader(tables.find("loca"), 2 * each).u16();
    };
    return std::string(tables.find("glyf").substr(place(glyph), place(glyph + 1) - place(glyph)));
  }

  std::string bytes_;
  TrueTypeFont font_;
  FreeTypeFont file_;
};

TEST_P(TrueTypeOfSystem, OutlinesAndWidthsAreThoseOfFreeType) {
  ASSERT_TRUE(file_.isOpen());
  ASSERT_EQ(font_.glyphCount(), file_.glyphCount());
  for (GlyphIndex i = 0; i < font_.glyphCount(); ++i) expectSame(font_, i, i, file_);
}

TEST_P(TrueTypeOfSystem, SubsetDrawsTheSameGlyphs) {
  SubsetRequest request{"ABCDEF+Subset", {}, {}, true};
  for (GlyphIndex i = 3; i < font_.glyphCount(); i += 7) request.glyphs.push_back(i);
  const FontSubset subset = font_.subset(request);
  ASSERT_EQ(subset.kind, FontFileKind::kTrueType);
  const FreeTypeFont reference(subset.bytes);
  ASSERT_TRUE(reference.isOpen());
  for (const GlyphIndex i : request.glyphs) expectSame(font_, i, subset.indices.at(i), reference);
}

TEST_P(TrueTypeOfSystem, SubsetOfASimpleFontMapsItsCodes) {
  SubsetRequest request{"ABCDEF+Subset", {}, {}, false};
  for (unsigned code = 65; code < 91; ++code) {
    request.encoding.push_back(
        {static_cast<std::uint8_t>(code - 30), file_.glyphOfCode(FT_ENCODING_UNICODE, code)});
  }
  const FontSubset subset = font_.subset(request);
  const FreeTypeFont reference(subset.bytes);
  ASSERT_TRUE(reference.isOpen());
  for (const auto& [code, glyph] : request.encoding) {
    EXPECT_EQ(reference.glyphOfCode(FT_ENCODING_APPLE_ROMAN, code), subset.indices.at(glyph));
  }
  EXPECT_LT(subset.bytes.size(), bytes_.size() / 4);
}

TEST_P(TrueTypeOfSystem, PiecesMayBeOddByAPaddingByte) {
  std::vector<std::string> pieces;
  for (std::size_t at = 0; at < bytes_.size(); at += 1000) {
    pieces.push_back(bytes_.substr(at, 1000));
    if (pieces.back().size() % 2 == 0 && at % 3000 == 0) pieces.back() += 'x';
  }
  const TrueTypeFont font(pieces);
  const FreeTypeFont reference(bytes_);
  for (GlyphIndex i = 0; i < font.glyphCount(); i += 11) expectSame(font, i, i, reference);
}

TEST_P(TrueTypeOfSystem, GlyphsCanBeAddedOneByOne) {
  const SfntTables tables({bytes_});
  std::map<std::string, std::string> kept;
  for (const char* tag : kTables) {
    if (tag != std::string("loca") && tag != std::string("glyf")) kept[tag] = tables.find(tag);
  }
  TrueTypeFont font({sfntOf(kept)});
  SubsetRequest request{"ABCDEF+Subset", {}, {}, true};
  for (GlyphIndex i = 5; i < font_.glyphCount(); i += 13) {
    font.add(i, dataOf(i));
    std::vector<GlyphIndex> missing = font.missingParts(i);
    while (!missing.empty()) {
      for (const GlyphIndex part : missing) font.add(part, dataOf(part));
      missing = font.missingParts(i);
    }
    request.glyphs.push_back(i);
  }
  const FreeTypeFont whole(bytes_);
  const FontSubset subset = font.subset(request);
  const FreeTypeFont reference(subset.bytes);
  ASSERT_TRUE(reference.isOpen());
  for (const GlyphIndex i : request.glyphs) {
    expectSame(font, i, i, whole);
    expectSame(font, i, subset.indices.at(i), reference);
  }
}

TEST_P(TrueTypeOfSystem, CharactersAreThoseOfTheUnicodeMap) {
  EXPECT_EQ(font_.unicodeOf(file_.glyphOfCode(FT_ENCODING_UNICODE, 'Q')), U'Q');
  EXPECT_EQ(font_.unicodeOf(file_.glyphOfCode(FT_ENCODING_UNICODE, 0x0416)), U'\u0416');
  EXPECT_EQ(font_.unicodeOf(60000), 0U);
}

INSTANTIATE_TEST_SUITE_P(Debian, TrueTypeOfSystem,
                         ::testing::Values("dejavu/DejaVuSansMono.ttf", "dejavu/DejaVuSerif-Bold.ttf",
                                           "liberation/LiberationSerif-Regular.ttf",
                                           "liberation/LiberationSans-BoldItalic.ttf"));

std::string headTable() {
  std::string head;
  append32(head, 0x00010000);
  head.append(14, '\0');
  append16(head, 1000);
  head.append(34, '\0');
  return head;
}

// A triangle of three points on the curve.
std::string triangle() {
  std::string data;
  for (const unsigned value : {1, 0, 0, 100, 100, 2, 0}) append16(data, value);
  data += "\x31\x33\x27";              // same; right; left and up
  data += std::string("\x64\x32", 2);  // x: 100, -50
  data += "\x64";                      // y: 100
  return data + std::string(1, '\0');
}

std::string compositeOf(GlyphIndex part) {
  std::string data;
  for (const unsigned value : {0xFFFFU, 0U, 0U, 100U, 100U, 0x0002U, part}) append16(data, value);
  append16(data, 0x050A);
  return data;
}

TEST(TrueTypeFont, MetricsMayStandInFrontOfAGlyph) {
  TrueTypeFont font({sfntOf({{"head", headTable()}})});
  std::string entry;
  for (const unsigned value : {900, 50, 600, 20}) append16(entry, value);
  font.add(7, entry + triangle(), 4);
  const Glyph glyph = font.glyph(7);
  EXPECT_DOUBLE_EQ(glyph.advance.x, 0.6);
  ASSERT_TRUE(glyph.vertical);
  EXPECT_DOUBLE_EQ(glyph.vertical->advance.y, -0.9);
  EXPECT_DOUBLE_EQ(glyph.vertical->origin.x, 0.3);
  EXPECT_DOUBLE_EQ(glyph.vertical->origin.y, 0.15);
  EXPECT_DOUBLE_EQ(glyph.bounds().left, 0.02);
  EXPECT_EQ(font.glyphCount(), 8U);
}

TEST(TrueTypeFont, ComponentsGoWhereTheCompositeSays) {
  TrueTypeFont font({sfntOf({{"head", headTable()}})});
  font.add(1, triangle());
  font.add(2, compositeOf(1));
  EXPECT_DOUBLE_EQ(font.glyph(2).bounds().left, 0.005);
  EXPECT_DOUBLE_EQ(font.glyph(2).bounds().bottom, 0.01);
}

TEST(TrueTypeFont, CyclesOfComponentsAreRefused) {
  TrueTypeFont font({sfntOf({{"head", headTable()}})});
  font.add(1, compositeOf(2));
  font.add(2, compositeOf(1));
  EXPECT_THROW(font.glyph(1), FontError);
  EXPECT_TRUE(font.missingParts(1).empty());
  const FontSubset subset = font.subset({"A", {1}, {}, true});
  EXPECT_EQ(subset.indices.at(1), 0);
}

TEST(TrueTypeFont, MissingGlyphsAreRefused) {
  const TrueTypeFont font({sfntOf({{"head", headTable()}})});
  EXPECT_THROW(font.glyph(3), FontError);
  EXPECT_FALSE(font.glyphOfCid(3));
}

TEST(TrueTypeFont, CutDataIsRefused) {
  EXPECT_THROW(TrueTypeFont({std::string("abc")}), FontError);
  TrueTypeFont font({sfntOf({{"head", headTable()}})});
  const std::string whole = triangle();
  for (std::size_t size = 10; size + 1 < whole.size(); ++size) {
    font.add(1, whole.substr(0, size));
    EXPECT_THROW(font.glyph(1), FontError) << size;
  }
}

}  // namespace

}  // namespace quillpress::level3

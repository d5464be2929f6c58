#include <gtest/gtest.h>

#include "postscript/level3/fonts/ByteWriter.h"
#include "postscript/level3/fonts/CffFont.h"
#include "postscript/level3/fonts/CidFont.h"
#include "postscript/level3/fonts/Encodings.h"
#include "postscript/level3/fonts/SfntTables.h"
#include "postscript/level3/fonts/Type1File.h"
#include "tests/level3/fonts/FreeTypeFont.h"

namespace quillpress::level3 {

namespace {

using testing::areNear;
using testing::bytesOfFile;
using testing::FreeTypeFont;

std::string cffOf(const char* name) {
  const std::string file = bytesOfFile(std::string("/usr/share/fonts/opentype/urw-base35/") + name + ".otf");
  return std::string(SfntTables({file}).find("CFF "));
}

void expectSame(const Glyph& glyph, unsigned place, const FreeTypeFont& reference) {
  const auto outline = reference.outline(place);
  ASSERT_TRUE(outline) << place;
  EXPECT_TRUE(areNear(glyph.path, *outline, 0.6)) << place;
  EXPECT_NEAR(glyph.advance.x, reference.advance(place), 0.6) << place;
}

class CffOfSystem : public ::testing::TestWithParam<const char*> {
 protected:
  CffOfSystem() : bytes_(cffOf(GetParam())), font_(bytes_), file_(bytes_) {}

  std::vector<GlyphIndex> everyThird() const {
    std::vector<GlyphIndex> glyphs;
    for (GlyphIndex i = 1; i < font_.glyphCount(); i += 3) glyphs.push_back(i);
    return glyphs;
  }

  std::string bytes_;
  CffFont font_;
  FreeTypeFont file_;
};

TEST_P(CffOfSystem, GlyphsAreThoseOfFreeType) {
  ASSERT_TRUE(file_.isOpen());
  ASSERT_EQ(font_.glyphCount(), file_.glyphCount());
  EXPECT_EQ(CffFont::fontNames(bytes_), std::vector<std::string>{font_.name()});
  for (GlyphIndex i = 0; i < font_.glyphCount(); ++i) {
    expectSame(font_.glyph(i), i, file_);
    EXPECT_EQ(font_.glyphName(i), file_.glyphName(i));
    EXPECT_EQ(font_.glyphNamed(font_.glyphName(i)), i);
  }
}

TEST_P(CffOfSystem, SubsetDrawsTheSameGlyphs) {
  const FontSubset subset = font_.subset({"ABCDEF+Subset", everyThird(), {}, false});
  ASSERT_EQ(subset.kind, FontFileKind::kType1C);
  const FreeTypeFont reference(subset.bytes);
  ASSERT_TRUE(reference.isOpen());
  for (const GlyphIndex i : everyThird()) expectSame(font_.glyph(i), subset.indices.at(i), reference);
}

TEST_P(CffOfSystem, CompositeSubsetIsACidFont) {
  const FontSubset subset = font_.subset({"ABCDEF+Subset", everyThird(), {}, true});
  ASSERT_EQ(subset.kind, FontFileKind::kCidFontType0C);
  const FreeTypeFont reference(subset.bytes);
  ASSERT_TRUE(reference.isOpen());
  const CffFont again(subset.bytes);
  EXPECT_TRUE(again.isCid());
  for (const GlyphIndex i : everyThird()) {
    const std::uint16_t place = subset.indices.at(i);
    expectSame(font_.glyph(i), place, reference);
    EXPECT_EQ(again.glyphOfCid(place), place);
    EXPECT_EQ(again.glyph(place).path, font_.glyph(i).path);
  }
  const FontSubset third = again.subset({"ABCDEF+Subset", {1, 2}, {}, true});
  EXPECT_EQ(CffFont(third.bytes).glyph(2).path, again.glyph(2).path);
}

TEST_P(CffOfSystem, CompositeSubsetHasTheCidsAskedFor) {
  SubsetRequest request{"ABCDEF+Subset", {3, 4, 5, 6}, {}, true};
  request.cids = {7, 8, 300, 65535};
  const FontSubset subset = font_.subset(request);
  ASSERT_TRUE(FreeTypeFont(subset.bytes).isOpen());
  const CffFont again(subset.bytes);
  for (std::size_t i = 0; i < request.cids.size(); ++i) {
    EXPECT_EQ(again.glyphOfCid(request.cids[i]), i + 1);
    EXPECT_EQ(again.glyph(static_cast<GlyphIndex>(i + 1)).path, font_.glyph(request.glyphs[i]).path);
  }
  EXPECT_FALSE(again.glyphOfCid(9));
}

TEST_P(CffOfSystem, SubsetKeepsItsEncoding) {
  SubsetRequest request{"ABCDEF+Subset", {}, {}, false};
  request.encoding = {{65, 5}, {66, 6}, {200, 5}, {0, 9}};
  const FontSubset subset = font_.subset(request);
  const CffFont again(subset.bytes);
  for (const auto& [code, glyph] : request.encoding) {
    EXPECT_EQ(again.encoding()[code], subset.indices.at(glyph));
    EXPECT_EQ(again.glyphName(again.encoding()[code]), font_.glyphName(glyph));
  }
  const FreeTypeFont reference(subset.bytes);
  EXPECT_EQ(reference.glyphOfCode(FT_ENCODING_ADOBE_CUSTOM, 200), subset.indices.at(5));
}

INSTANTIATE_TEST_SUITE_P(Urw, CffOfSystem,
                         ::testing::Values("NimbusRoman-Regular", "URWGothic-Demi", "D050000L"));

TEST(CffFont, EveryStandardStringIsThatOfFreeType) {
  SubsetRequest request{"ABCDEF+Names", {}, {}, false};
  Type1Font font({});
  for (const EncodingTable* table : {&standardEncoding(), &expertEncoding()}) {
    for (const std::string_view name : *table) {
      if (name == ".notdef") continue;
      request.glyphs.push_back(font.add(name, std::string(4, 'x')));
    }
  }
  // What is not a charstring still has a place as long as it can be read: nothing is drawn.
  const FontSubset subset = font.subset(request);
  const FreeTypeFont reference(subset.bytes);
  ASSERT_TRUE(reference.isOpen());
  for (const GlyphIndex glyph : request.glyphs) {
    EXPECT_EQ(reference.glyphName(subset.indices.at(glyph)), font.glyphName(glyph));
  }
}

TEST(CffFont, GlyphsOfOneNameAreToldApart) {
  Type1Font font({});
  const GlyphIndex one = font.add("A", std::string(4, 'x') + "abcd");
  const GlyphIndex other = font.add("A", std::string(4, 'x') + "abce");
  EXPECT_NE(one, other);
  EXPECT_EQ(font.add("A", std::string(4, 'x') + "abce"), other);
  EXPECT_EQ(font.glyphNamed("A"), other);
}

TEST(CffFont, UnusualMatrixIsKept) {
  Type1Font::Data data;
  data.matrix = Matrix::scaling(1.0 / 2048, 1.0 / 2048);
  Type1Font font(data);
  const GlyphIndex glyph = font.add("A", std::string(4, 'x'));
  const FontSubset simple = font.subset({"ABCDEF+A", {glyph}, {}, false});
  EXPECT_NEAR(CffFont(simple.bytes).matrix().a, 1.0 / 2048, 1e-9);
  EXPECT_EQ(FreeTypeFont(simple.bytes).unitsPerEm(), 2048U);
  const FontSubset composite = font.subset({"ABCDEF+A", {glyph}, {}, true});
  EXPECT_DOUBLE_EQ(CffFont(composite.bytes).matrix().a, 0.001);
}

TEST(CffFont, CutDataIsRefused) {
  const std::string whole = cffOf("D050000L");
  for (std::size_t size = 0; size < 4000; size += 37) {
    EXPECT_THROW(CffFont(whole.substr(0, size)), FontError) << size;
  }
}

TEST(CffFont, BrokenBytesEndInErrorsOnly) {
  const std::string whole = cffOf("NimbusRoman-Regular");
  for (std::size_t at = 0; at < 3000; at += 11) {
    std::string broken = whole;
    broken[at] = static_cast<char>(broken[at] ^ 0x5A);
    try {
      const CffFont font(broken);
      for (GlyphIndex i = 0; i < 20; ++i) font.glyph(i);
    } catch (const FontError&) {
      continue;
    }
  }
}

// The charstrings of a Type 1 font as the binary data of a CIDFont: map of CIDs, map of subroutines, all
// bytes.
class CidFontTest : public ::testing::Test {
 protected:
  CidFontTest() : file_(readType1File(bytesOfFile("/usr/share/fonts/type1/urw-base35/P052-Roman.t1"))) {
    for (const auto& [name, charstring] : file_.charstrings) type1_.add(name, charstring);
    data_.matrix = Matrix();
    data_.fdBytes = 1;
    data_.gdBytes = 3;
    data_.cidCount = file_.charstrings.size();
    CidFont::FontDictionary dictionary;
    dictionary.privateData = file_.data.privateData;
    dictionary.privateData.subrs.clear();
    dictionary.subrCount = file_.data.privateData.subrs.size();
    dictionary.sdBytes = 3;
    dictionary.subrMapOffset = 4 * (data_.cidCount + 1);
    std::size_t at = dictionary.subrMapOffset + 3 * (dictionary.subrCount + 1);
    std::string map;
    std::string contents;
    const auto keep = [&](std::string_view bytes) {
      appendBytes(map, static_cast<std::uint32_t>(at + contents.size()), 3);
      contents += bytes;
    };
    for (const auto& [name, charstring] : file_.charstrings) {
      append8(map, 0);
      keep(charstring);
    }
    append8(map, 0);
    appendBytes(map, static_cast<std::uint32_t>(at + contents.size()), 3);
    for (const std::string& subroutine : file_.data.privateData.subrs) keep(subroutine);
    appendBytes(map, static_cast<std::uint32_t>(at + contents.size()), 3);
    data_.glyphData = map + contents;
    data_.fontDictionaries.push_back(dictionary);
  }

  Type1File file_;
  Type1Font type1_{file_.data};
  CidFont::Data data_;
};

TEST_F(CidFontTest, BinaryDataHasGlyphsAndSubroutines) {
  const CidFont font(data_);
  for (GlyphIndex cid = 0; cid < font.glyphCount(); cid += 5) {
    if (type1_.glyphName(cid).size() > 8) continue;
    const Glyph expected = type1_.glyph(cid);
    EXPECT_TRUE(areNear(font.glyph(cid).path.transformed(Matrix::scaling(1000, 1000)), expected.path, 1e-6))
        << cid;
    EXPECT_NEAR(font.glyph(cid).advance.x, expected.advance.x / 1000, 1e-9);
  }
}

TEST_F(CidFontTest, SubsetIsReadByFreeType) {
  const CidFont font(data_);
  const FontSubset subset = font.subset({"ABCDEF+Cid", {10, 20, 30}, {}, true});
  ASSERT_EQ(subset.kind, FontFileKind::kCidFontType0C);
  const FreeTypeFont reference(subset.bytes);
  ASSERT_TRUE(reference.isOpen());
  for (const GlyphIndex cid : {10U, 20U, 30U})
    expectSame(type1_.glyph(cid), subset.indices.at(cid), reference);
}

TEST_F(CidFontTest, AddedGlyphsGoFirst) {
  CidFont font(data_);
  std::string entry(1, '\0');
  font.add(10, entry + std::string(file_.charstrings[20].second));
  EXPECT_EQ(font.glyph(10).path, font.glyph(20).path);
  EXPECT_TRUE(font.hasAdded(10));
}

TEST_F(CidFontTest, MissingGlyphsAndDictionariesAreRefused) {
  CidFont font(data_);
  EXPECT_FALSE(font.glyphOfCid(60000));
  EXPECT_THROW(font.glyph(60000), FontError);
  font.add(5, "\x09 wrong");
  EXPECT_THROW(font.glyph(5), FontError);
}

// CIDs of the subset are places: what is broken leaves those behind it where they are.
TEST_F(CidFontTest, BrokenGlyphsKeepTheirPlacesInSubsets) {
  CidFont font(data_);
  font.add(5, "\x09 wrong");
  const FontSubset subset = font.subset({"A", {5, 1}, {}, true});
  EXPECT_EQ(subset.indices.at(5), 1);
  EXPECT_EQ(subset.indices.at(1), 2);
}

TEST_F(CidFontTest, WrongMapsAreRefused) {
  CidFont::Data data = data_;
  data.fontDictionaries[0].subrMapOffset = data.glyphData.size() - 3;
  EXPECT_THROW(CidFont{data}, FontError);
  data = data_;
  data.cidMapOffset = data.glyphData.size();
  EXPECT_THROW(CidFont{data}.glyph(3), FontError);
}

}  // namespace

}  // namespace quillpress::level3

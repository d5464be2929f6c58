#include <gtest/gtest.h>

#include "postscript/level3/fonts/Type1File.h"
#include "postscript/level3/fonts/Type1Font.h"
#include "tests/level3/fonts/FreeTypeFont.h"

namespace quillpress::level3 {

namespace {

using testing::areNear;
using testing::bytesOfFile;
using testing::FreeTypeFont;

constexpr const char* kFolder = "/usr/share/fonts/type1/urw-base35/";

class Type1OfSystem : public ::testing::TestWithParam<const char*> {
 protected:
  Type1OfSystem()
      : bytes_(bytesOfFile(std::string(kFolder) + GetParam() + ".t1")), file_(readType1File(bytes_)) {
    font_ = std::make_unique<Type1Font>(file_.data);
    for (const auto& [name, charstring] : file_.charstrings) font_->add(name, charstring);
  }

  std::string bytes_;
  Type1File file_;
  std::unique_ptr<Type1Font> font_;
};

TEST_P(Type1OfSystem, OutlinesAndWidthsAreThoseOfFreeType) {
  const FreeTypeFont reference(bytes_);
  ASSERT_TRUE(reference.isOpen());
  ASSERT_EQ(font_->glyphCount(), reference.glyphCount());
  for (GlyphIndex i = 0; i < font_->glyphCount(); ++i) {
    const std::string name = font_->glyphName(i);
    const unsigned other = reference.glyphNamed(name);
    const Glyph glyph = font_->glyph(i);
    EXPECT_TRUE(areNear(glyph.path, *reference.outline(other), 0.01)) << name;
    EXPECT_NEAR(glyph.advance.x, reference.advance(other), 0.5) << name;
  }
}

TEST_P(Type1OfSystem, SubsetDrawsTheSameGlyphs) {
  SubsetRequest request{"ABCDEF+Subset", {}, {}, false};
  for (GlyphIndex i = 0; i < font_->glyphCount(); i += 3) request.glyphs.push_back(i);
  const FontSubset subset = font_->subset(request);
  ASSERT_EQ(subset.kind, FontFileKind::kType1C);
  const FreeTypeFont reference(subset.bytes);
  ASSERT_TRUE(reference.isOpen());
  EXPECT_LE(reference.glyphCount(), request.glyphs.size() + 1);
  for (const GlyphIndex i : request.glyphs) {
    const unsigned place = subset.indices.at(i);
    const Glyph glyph = font_->glyph(i);
    EXPECT_TRUE(areNear(glyph.path, *reference.outline(place), 0.01)) << font_->glyphName(i);
    EXPECT_NEAR(glyph.advance.x, reference.advance(place), 0.5) << font_->glyphName(i);
    EXPECT_EQ(reference.glyphName(place), font_->glyphName(i));
    EXPECT_EQ(reference.glyphName(place), subset.names[place]);
  }
}

INSTANTIATE_TEST_SUITE_P(Urw, Type1OfSystem,
                         ::testing::Values("NimbusRoman-Regular", "NimbusSans-BoldItalic",
                                           "NimbusMonoPS-Regular", "Z003-MediumItalic", "D050000L",
                                           "StandardSymbolsPS", "C059-Italic"));

}  // namespace

}  // namespace quillpress::level3

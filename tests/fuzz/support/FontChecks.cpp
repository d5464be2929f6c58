#include "tests/fuzz/support/FontChecks.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "postscript/level3/fonts/CffFont.h"
#include "postscript/level3/fonts/TrueTypeFont.h"
#include "tests/fuzz/support/Check.h"

namespace quillpress::fuzz {

namespace {

using level3::FontError;
using level3::FontFileKind;
using level3::FontSubset;
using level3::Glyph;
using level3::GlyphIndex;
using level3::OutlineFont;
using level3::Path;

// Enough to reach all code, few enough to be quick.
constexpr std::size_t kMostGlyphs = 8;
// Half a step of a charstring's number, twice, and the roundings on the way.
constexpr double kTolerance = 1e-4;

std::unique_ptr<OutlineFont> fontOf(const FontSubset& subset) {
  if (subset.kind == FontFileKind::kTrueType) {
    return std::make_unique<level3::TrueTypeFont>(std::vector<std::string>{subset.bytes});
  }
  return std::make_unique<level3::CffFont>(subset.bytes);
}

bool areNear(const Path& left, const Path& right) {
  if (left.kinds() != right.kinds()) return false;
  return std::ranges::equal(left.points(), right.points(), [](level3::Point one, level3::Point other) {
    return length(one - other) < kTolerance;
  });
}

std::optional<Glyph> glyphOf(const OutlineFont& font, GlyphIndex index) {
  try {
    return font.glyph(index);
  } catch (const FontError&) {
    return std::nullopt;
  }
}

void checkSubset(const OutlineFont& font, const level3::SubsetRequest& request, Units units) {
  const FontSubset subset = font.subset(request);
  const std::unique_ptr<OutlineFont> again = fontOf(subset);
  for (const GlyphIndex index : request.glyphs) {
    const std::uint16_t place = subset.indices.at(index);
    if (place == 0) continue;
    FUZZ_CHECK(place < again->glyphCount());
    const Glyph written = again->glyph(place);
    const std::optional<Glyph> original = glyphOf(font, index);
    if (!original) {
      // What cannot be read is an empty glyph, so that those behind it keep their places.
      FUZZ_CHECK(request.isComposite && written.path.points().empty());
      continue;
    }
    if (request.isComposite || units == Units::kOther) continue;
    FUZZ_CHECK(areNear(original->path, written.path));
  }
}

}  // namespace

void checkFont(const OutlineFont& font, Units units) {
  level3::SubsetRequest request;
  request.fontName = "ABCDEF+Font";
  for (GlyphIndex i = 0; i < std::min(font.glyphCount(), kMostGlyphs); ++i) {
    request.glyphs.push_back(i);
    request.encoding.push_back({static_cast<std::uint8_t>(40 + i % 5), i});
    font.glyphName(i);
  }
  checkSubset(font, request, units);
  request.isComposite = true;
  checkSubset(font, request, units);
}

}  // namespace quillpress::fuzz

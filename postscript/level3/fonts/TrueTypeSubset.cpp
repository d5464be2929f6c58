#include <set>

#include "postscript/level3/fonts/ByteWriter.h"
#include "postscript/level3/fonts/CharacterMap.h"
#include "postscript/level3/fonts/GlyfOutline.h"
#include "postscript/level3/fonts/TrueTypeFont.h"

// Subsets of TrueType fonts: the glyphs in use and their components, numbered anew, with the tables that PDF
// wants.

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMostSubsetGlyphs = 65535;
// Beyond, places no longer fit the short form of the loca table.
constexpr std::size_t kMostShortPlaces = 2 * 65535;

void replace16(std::string& bytes, std::size_t at, std::uint32_t value) {
  std::string number;
  append16(number, value);
  bytes.replace(at, 2, number);
}

// What the font says, or the least that a header must say.
std::string headTable(std::string_view original, unsigned unitsPerEm, bool hasLongPlaces) {
  std::string head(original.substr(0, 54));
  if (head.size() < 54) {
    head.clear();
    append32(head, 0x00010000);
    head.append(8, '\0');
    append32(head, 0x5F0F3CF5);
    append16(head, 0);
    append16(head, unitsPerEm);
    head.append(54 - head.size(), '\0');
  }
  head.replace(8, 4, 4, '\0');
  replace16(head, 50, hasLongPlaces ? 1 : 0);
  replace16(head, 52, 0);
  return head;
}

std::string maxpTable(std::string_view original, std::size_t glyphs) {
  std::string profile(original.substr(0, 32));
  if (profile.size() < 32) {
    // Readers take these as limits; nothing says better.
    constexpr std::uint32_t kLimits[] = {0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 2,   256, 256,
                                         256,    0,      1024,   0xFFFF, 256, 10};
    profile.clear();
    append32(profile, 0x00010000);
    append16(profile, 0);
    for (const std::uint32_t limit : kLimits) append16(profile, limit);
  }
  replace16(profile, 4, static_cast<std::uint32_t>(glyphs));
  return profile;
}

std::string hheaTable(std::string_view original, unsigned unitsPerEm, std::size_t metrics) {
  std::string header(original.substr(0, 36));
  if (header.size() < 36) {
    header.clear();
    append32(header, 0x00010000);
    append16(header, unitsPerEm);
    header.append(36 - header.size(), '\0');
  }
  replace16(header, 34, static_cast<std::uint32_t>(metrics));
  return header;
}

}  // namespace

bool TrueTypeFont::isReadable(GlyphIndex glyph) const {
  try {
    const GlyfOutline outline([this](GlyphIndex each) { return outlineData(each); }, glyph);
    return true;
  } catch (const FontError&) {
    return false;
  }
}

// .notdef, the glyphs asked for that can be read, and the components of all of them. Archives show no glyph
// 0, so that it comes again when it is asked for.
std::vector<GlyphIndex> TrueTypeFont::glyphsWithParts(const SubsetRequest& request) const {
  std::vector<GlyphIndex> glyphs{0};
  std::set<GlyphIndex> seen;
  const auto include = [&](GlyphIndex glyph) {
    if (glyphs.size() < kMostSubsetGlyphs && seen.insert(glyph).second) glyphs.push_back(glyph);
  };
  for (const SubsetRequest::Code& each : request.encoding) {
    if (isReadable(each.glyph)) include(each.glyph);
  }
  for (const GlyphIndex glyph : request.glyphs) {
    if (isReadable(glyph)) include(glyph);
  }
  // Grows as it goes. Components of what can be read can be read, too.
  for (std::size_t i = isReadable(0) ? 0 : 1; i < glyphs.size(); ++i) {
    for (const GlyfComponent& component : componentsOf(*outlineData(glyphs[i]))) include(component.glyph);
  }
  return glyphs;
}

FontSubset TrueTypeFont::subset(const SubsetRequest& request) const {
  const std::vector<GlyphIndex> glyphs = glyphsWithParts(request);
  std::unordered_map<GlyphIndex, std::uint16_t> places;
  for (std::size_t i = 0; i < glyphs.size(); ++i) {
    places.insert_or_assign(glyphs[i], static_cast<std::uint16_t>(i));
  }

  std::string outlines;
  std::string metrics;
  std::vector<std::size_t> starts;
  for (const GlyphIndex glyph : glyphs) {
    starts.push_back(outlines.size());
    const bool isMissing = glyph == 0 && !isReadable(0);
    const std::size_t start = outlines.size();
    if (!isMissing) outlines += *outlineData(glyph);
    for (const GlyfComponent& component : componentsOf(std::string_view(outlines).substr(start))) {
      replace16(outlines, start + component.numberPlace, places.at(component.glyph));
    }
    outlines.append(outlines.size() % 2, '\0');
    const Metrics own = isMissing ? Metrics{} : horizontalMetrics(glyph);
    append16(metrics, static_cast<std::uint32_t>(own.advance));
    append16(metrics, static_cast<std::uint32_t>(own.bearing));
  }
  starts.push_back(outlines.size());
  const bool hasLongPlaces = outlines.size() > kMostShortPlaces;
  std::string locations;
  for (const std::size_t start : starts) {
    const std::size_t value = hasLongPlaces ? start : start / 2;
    appendBytes(locations, static_cast<std::uint32_t>(value), hasLongPlaces ? 4 : 2);
  }

  std::map<std::string, std::string> tables;
  tables["head"] = headTable(tables_.find("head"), unitsPerEm_, hasLongPlaces);
  tables["hhea"] = hheaTable(tables_.find("hhea"), unitsPerEm_, glyphs.size());
  tables["maxp"] = maxpTable(tables_.find("maxp"), glyphs.size());
  tables["hmtx"] = std::move(metrics);
  tables["loca"] = std::move(locations);
  tables["glyf"] = std::move(outlines);
  for (const char* tag : {"cvt ", "fpgm", "prep"}) {
    if (const std::string_view table = tables_.find(tag); !table.empty()) tables[tag] = table;
  }

  FontSubset subset;
  subset.kind = FontFileKind::kTrueType;
  const auto placeOf = [&places](GlyphIndex glyph) {
    const auto found = places.find(glyph);
    return found != places.end() ? found->second : std::uint16_t{0};
  };
  for (const GlyphIndex glyph : request.glyphs) subset.indices[glyph] = placeOf(glyph);
  std::vector<std::pair<std::uint8_t, std::uint16_t>> codes;
  for (const SubsetRequest::Code& each : request.encoding) {
    subset.indices[each.glyph] = placeOf(each.glyph);
    codes.emplace_back(each.code, placeOf(each.glyph));
  }
  if (!request.isComposite && !codes.empty()) tables["cmap"] = cmapOf(codes);
  subset.bytes = sfntOf(tables);
  return subset;
}

}  // namespace quillpress::level3

#include "postscript/level3/fonts/TrueTypeFont.h"

#include <algorithm>
#include <set>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/CharacterMap.h"
#include "postscript/level3/fonts/GlyfOutline.h"

namespace quillpress::level3 {

namespace {

// A glyph and all that it is made of cannot be more.
constexpr std::size_t kMostParts = 2000;
constexpr GlyphIndex kGlyphNumbers = 65536;

}  // namespace

TrueTypeFont::TrueTypeFont(const std::vector<std::string>& sfnts) : tables_(sfnts) {
  const std::string_view head = tables_.find("head");
  if (head.size() >= 52) {
    unitsPerEm_ = ByteReader(head, 18).u16();
    if (unitsPerEm_ == 0) throw FontError("a TrueType font has no units to the em");
    hasLongPlaces_ = ByteReader(head, 50).i16() != 0;
  }
  const std::string_view profile = tables_.find("maxp");
  if (profile.size() >= 6) countInTables_ = ByteReader(profile, 4).u16();
}

void TrueTypeFont::add(GlyphIndex glyph, std::string_view entry, int metricsCount) {
  if (glyph >= kGlyphNumbers) throw FontError("a TrueType glyph's number is too large");
  Added added;
  ByteReader reader(entry);
  const auto metrics = [&reader] {
    const int advance = reader.u16();
    return Metrics{advance, reader.i16()};
  };
  if (metricsCount == 4) added.vertical = metrics();
  if (metricsCount == 4 || metricsCount == 2) added.horizontal = metrics();
  added.outline = entry.substr(reader.position());
  added_.insert_or_assign(glyph, std::move(added));
}

std::size_t TrueTypeFont::glyphCount() const {
  const std::size_t countOfAdded = added_.empty() ? 0 : added_.rbegin()->first + std::size_t{1};
  return std::max(countInTables_, countOfAdded);
}

std::optional<std::string_view> TrueTypeFont::outlineData(GlyphIndex glyph) const {
  if (const auto found = added_.find(glyph); found != added_.end()) return found->second.outline;
  const std::string_view places = tables_.find("loca");
  const std::string_view outlines = tables_.find("glyf");
  const std::size_t size = hasLongPlaces_ ? 4 : 2;
  // The table has one place more than glyphs, as the end of the last.
  if (glyph >= kGlyphNumbers || places.size() < size * (glyph + std::size_t{2})) return std::nullopt;
  ByteReader reader(places, size * glyph);
  const std::size_t factor = hasLongPlaces_ ? 1 : 2;
  const std::size_t start = reader.unsignedOf(size) * factor;
  const std::size_t end = reader.unsignedOf(size) * factor;
  if (start >= end) return std::string_view();
  if (start >= outlines.size()) return std::nullopt;
  return outlines.substr(start, end - start);
}

std::vector<GlyphIndex> TrueTypeFont::missingParts(GlyphIndex glyph) const {
  std::set<GlyphIndex> seen{glyph};
  std::vector<GlyphIndex> missing;
  std::vector<GlyphIndex> waiting{glyph};
  while (!waiting.empty() && seen.size() < kMostParts) {
    const GlyphIndex each = waiting.back();
    waiting.pop_back();
    const auto data = outlineData(each);
    if (!data) {
      if (each != glyph) missing.push_back(each);
      continue;
    }
    for (const GlyfComponent& component : componentsOf(*data)) {
      if (seen.insert(component.glyph).second) waiting.push_back(component.glyph);
    }
  }
  return missing;
}

char32_t TrueTypeFont::unicodeOf(GlyphIndex glyph) const {
  if (!characters_) characters_ = charactersOfGlyphs(tables_.find("cmap"));
  const auto found = characters_->find(glyph);
  return found != characters_->end() ? found->second : 0;
}

std::optional<GlyphIndex> TrueTypeFont::glyphOfCid(std::uint32_t cid) const {
  return outlineData(cid) ? std::optional<GlyphIndex>(cid) : std::nullopt;
}

// Tables hmtx and vmtx: as many pairs as their header says, then bearings of the other glyphs.
std::optional<TrueTypeFont::Metrics> TrueTypeFont::metricsOf(GlyphIndex glyph, std::string_view header,
                                                             std::string_view table) const {
  const std::string_view headerTable = tables_.find(header);
  const std::string_view metrics = tables_.find(table);
  if (headerTable.size() < 36 || metrics.size() < 4) return std::nullopt;
  const std::size_t pairs = std::min<std::size_t>(ByteReader(headerTable, 34).u16(), metrics.size() / 4);
  if (pairs == 0) return std::nullopt;
  ByteReader reader(metrics, 4 * std::min<std::size_t>(glyph, pairs - 1));
  const int advance = reader.u16();
  if (glyph < pairs) return Metrics{advance, reader.i16()};
  const std::size_t place = 4 * pairs + 2 * (glyph - pairs);
  return Metrics{advance, place + 2 <= metrics.size() ? ByteReader(metrics, place).i16() : 0};
}

TrueTypeFont::Metrics TrueTypeFont::horizontalMetrics(GlyphIndex glyph) const {
  const auto found = added_.find(glyph);
  if (found != added_.end() && found->second.horizontal) return *found->second.horizontal;
  if (const auto metrics = metricsOf(glyph, "hhea", "hmtx")) return *metrics;
  const auto data = outlineData(glyph);
  return {0, data && data->size() >= 4 ? ByteReader(*data, 2).i16() : 0};
}

std::optional<TrueTypeFont::Metrics> TrueTypeFont::verticalMetrics(GlyphIndex glyph) const {
  const auto found = added_.find(glyph);
  if (found != added_.end() && found->second.vertical) return *found->second.vertical;
  return metricsOf(glyph, "vhea", "vmtx");
}

Glyph TrueTypeFont::glyph(GlyphIndex glyph) const {
  const GlyfOutline::Source source = [this](GlyphIndex each) { return outlineData(each); };
  const GlyfOutline outline(source, glyph);
  const Metrics metrics = horizontalMetrics(glyph);
  const double unit = 1.0 / unitsPerEm_;
  // The outline goes where its left edge has the side bearing, as all readers of such fonts have it.
  const double shift = outline.isEmpty() ? 0 : metrics.bearing - outline.left();
  Glyph result;
  result.path = outline.path().transformed({unit, 0, 0, unit, shift * unit, 0});
  result.advance = {metrics.advance * unit, 0};
  if (const auto vertical = verticalMetrics(glyph)) {
    result.vertical =
        VerticalMetrics{{0, -vertical->advance * unit},
                        {metrics.advance * unit / 2, (outline.top() + vertical->bearing) * unit}};
  }
  return result;
}

}  // namespace quillpress::level3

#include "postscript/level3/fonts/CharacterMap.h"

#include <algorithm>
#include <array>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/ByteWriter.h"

namespace quillpress::level3 {

namespace {

// In one map; ranges of hostile fonts may overlap.
constexpr std::size_t kMostMappings = 300'000;

class ReverseMap {
 public:
  void add(std::uint32_t character, std::uint32_t glyph) {
    if (++mappings_ > kMostMappings) throw FontError("a character map is too large");
    if (glyph == 0 || character == 0) return;
    const auto [place, isNew] = map_.emplace(glyph, static_cast<char32_t>(character));
    if (!isNew) place->second = std::min(place->second, static_cast<char32_t>(character));
  }
  std::unordered_map<GlyphIndex, char32_t> take() { return std::move(map_); }

 private:
  std::unordered_map<GlyphIndex, char32_t> map_;
  std::size_t mappings_ = 0;
};

// Segments of 16-bit characters.
void readFormat4(std::string_view table, ReverseMap& map) {
  const std::size_t count = ByteReader(table, 6).u16() / 2;
  const std::size_t ends = 14;
  const std::size_t starts = ends + 2 * count + 2;
  const std::size_t deltas = starts + 2 * count;
  const std::size_t offsets = deltas + 2 * count;
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t end = ByteReader(table, ends + 2 * i).u16();
    const std::uint32_t start = ByteReader(table, starts + 2 * i).u16();
    const std::uint32_t delta = ByteReader(table, deltas + 2 * i).u16();
    const std::size_t offset = ByteReader(table, offsets + 2 * i).u16();
    for (std::uint32_t character = start; character <= end && character < 0xFFFF; ++character) {
      std::uint32_t glyph = character;
      if (offset != 0) {
        glyph = ByteReader(table, offsets + 2 * i + offset + 2 * (character - start)).u16();
        // Nothing, and no delta makes something of it.
        if (glyph == 0) glyph = 0x10000 - delta;
      }
      map.add(character, (glyph + delta) & 0xFFFF);
    }
  }
}

// Groups of 32-bit characters.
void readFormat12(std::string_view table, ReverseMap& map) {
  ByteReader reader(table, 12);
  for (std::uint32_t count = reader.u32(); count > 0; --count) {
    const std::uint32_t start = reader.u32();
    const std::uint32_t end = std::min<std::uint32_t>(reader.u32(), 0x10FFFF);
    const std::uint32_t glyph = reader.u32();
    for (std::uint32_t character = start; character <= end; ++character) {
      map.add(character, glyph + (character - start));
    }
  }
}

// Which of the maps says most; 0 for those that are not of Unicode.
int rank(unsigned platform, unsigned encoding) {
  if (platform == 3 && encoding == 10) return 4;
  if (platform == 0 && encoding >= 4 && encoding != 5) return 3;
  if (platform == 3 && encoding == 1) return 2;
  return platform == 0 && encoding != 5 ? 1 : 0;
}

// The place of the best map, 0 when there is none.
std::size_t bestMap(std::string_view cmap) {
  ByteReader reader(cmap, 2);
  std::size_t best = 0;
  int bestRank = 0;
  for (unsigned count = reader.u16(); count > 0; --count) {
    const unsigned platform = reader.u16();
    const unsigned encoding = reader.u16();
    const std::size_t place = reader.u32();
    if (rank(platform, encoding) <= bestRank) continue;
    bestRank = rank(platform, encoding);
    best = place;
  }
  return best;
}

}  // namespace

std::unordered_map<GlyphIndex, char32_t> charactersOfGlyphs(std::string_view cmap) {
  ReverseMap map;
  try {
    const std::size_t place = cmap.empty() ? 0 : bestMap(cmap);
    if (place == 0 || place >= cmap.size()) return {};
    const std::string_view table = cmap.substr(place);
    const unsigned format = ByteReader(table).u16();
    if (format == 4) readFormat4(table, map);
    if (format == 12) readFormat12(table, map);
  } catch (const FontError&) {
    // What has been read up to here is right.
  }
  return map.take();
}

std::string cmapOf(const std::vector<std::pair<std::uint8_t, std::uint16_t>>& glyphsOfCodes) {
  std::array<std::uint16_t, 256> glyphs{};
  std::size_t first = 255;
  std::size_t last = 0;
  for (const auto& [code, glyph] : glyphsOfCodes) {
    glyphs[code] = glyph;
    first = std::min<std::size_t>(first, code);
    last = std::max<std::size_t>(last, code);
  }
  if (first > last) first = last;
  const std::size_t count = last - first + 1;
  std::string table;
  append16(table, 0);  // version
  append16(table, 1);  // one map: Macintosh, Roman
  append16(table, 1);
  append16(table, 0);
  append32(table, 12);
  append16(table, 6);  // format 6: a range of codes
  append16(table, static_cast<std::uint32_t>(10 + 2 * count));
  append16(table, 0);
  append16(table, static_cast<std::uint32_t>(first));
  append16(table, static_cast<std::uint32_t>(count));
  for (std::size_t code = first; code <= last; ++code) append16(table, glyphs[code]);
  return table;
}

}  // namespace quillpress::level3

#pragma once

#include <map>

#include "postscript/level3/fonts/CharstringPrivate.h"
#include "postscript/level3/fonts/OutlineFont.h"
#include "postscript/level3/geometry/Matrix.h"

namespace quillpress::level3 {

struct CharstringContext;
struct GlyphProgram;

// A Type 1 font: glyphs with names, which may arrive one by one.
class Type1Font final : public OutlineFont {
 public:
  struct Data {
    Matrix matrix{0.001, 0, 0, 0.001, 0, 0};
    CharstringPrivate privateData;
    // Of a multiple-master instance, else empty.
    std::vector<double> weightVector;
  };

  explicit Type1Font(Data data);

  // Adds a charstring as CharStrings holds it. The same name with the same bytes is the same glyph; with
  // other bytes it is a new one, which takes over the name.
  GlyphIndex add(std::string_view name, std::string_view charstring);

  // The names of the glyphs that an accented one is made of (seac) and that have not been added yet.
  std::vector<std::string> missingParts(GlyphIndex glyph) const;

  std::optional<GlyphIndex> glyphNamed(std::string_view name) const override;
  std::size_t glyphCount() const override { return glyphs_.size(); }
  std::string glyphName(GlyphIndex glyph) const override;
  Glyph glyph(GlyphIndex glyph) const override;
  FontSubset subset(const SubsetRequest& request) const override;

 private:
  struct Entry {
    std::string name;
    std::string charstring;  // not encrypted
  };

  const Entry& entryOf(GlyphIndex glyph) const;
  CharstringContext context() const;
  GlyphProgram program(GlyphIndex glyph) const;

  Data data_;
  std::vector<Entry> glyphs_;
  std::map<std::string, GlyphIndex, std::less<>> byName_;
};

}  // namespace quillpress::level3

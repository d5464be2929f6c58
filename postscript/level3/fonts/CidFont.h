#pragma once

#include <unordered_map>

#include "postscript/level3/fonts/CharstringPrivate.h"
#include "postscript/level3/fonts/OutlineFont.h"
#include "postscript/level3/geometry/Matrix.h"

namespace quillpress::level3 {

struct GlyphProgram;

// A CIDFont of type 0: charstrings by CID, each with one of several Private dictionaries. GlyphIndex is the
// CID.
class CidFont final : public OutlineFont {
 public:
  // A member of FDArray.
  struct FontDictionary {
    // Maps charstring units to the character space of the whole CIDFont.
    Matrix matrix{0.001, 0, 0, 0.001, 0, 0};
    // Subroutines may be given here, or lie in the binary data at the places below.
    CharstringPrivate privateData;
    std::size_t subrMapOffset = 0;
    std::size_t subrCount = 0;
    std::size_t sdBytes = 0;
  };

  struct Data {
    // FontMatrix of the CIDFont: character space to text space.
    Matrix matrix;
    std::vector<FontDictionary> fontDictionaries;
    // The binary data, all strings of GlyphData (or the file's) in one. Empty with GlyphDirectory.
    std::string glyphData;
    std::size_t cidMapOffset = 0;
    std::size_t cidCount = 0;
    std::size_t fdBytes = 0;
    std::size_t gdBytes = 0;
  };

  explicit CidFont(Data data);

  // Adds an entry of GlyphDirectory: FDBytes bytes that tell the font dictionary, then the charstring. It
  // goes before what the binary data has.
  void add(std::uint32_t cid, std::string_view entry);
  bool hasAdded(std::uint32_t cid) const { return added_.contains(cid); }

  std::optional<GlyphIndex> glyphOfCid(std::uint32_t cid) const override;
  std::size_t glyphCount() const override;
  Glyph glyph(GlyphIndex glyph) const override;
  FontSubset subset(const SubsetRequest& request) const override;

 private:
  struct Entry {
    std::size_t fontDictionary = 0;
    std::string_view charstring;
  };
  Entry entryOf(std::uint32_t cid) const;
  GlyphProgram program(std::uint32_t cid) const;

  Data data_;
  std::unordered_map<std::uint32_t, std::string> added_;
};

}  // namespace quillpress::level3
